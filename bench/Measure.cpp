#include "Measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace {

double MillisecondsOf(const Work& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double>& times) {
    std::ranges::sort(times);
    return times[times.size() / 2];
}

}  // namespace

Comparison Compare(int runs, const Work& ours, const Work& floor, const Work& before) {
    const auto measure = [&before](const Work& work) {
        before();
        return MillisecondsOf(work);
    };
    measure(ours);
    measure(floor);
    std::vector<double> ourTimes;
    std::vector<double> floorTimes;
    for (int run = 0; run < runs; ++run) {
        ourTimes.push_back(measure(ours));
        floorTimes.push_back(measure(floor));
    }
    return {Median(ourTimes), Median(floorTimes)};
}

void PrintHeader() {
    std::printf("%-28s %7s %11s %11s %7s %13s\n", "what", "items", "ours ms", "floor ms", "ratio",
                "ours us/item");
}

void PrintRow(const std::string& what, int items, const Comparison& result) {
    std::printf("%-28s %7d %11.1f %11.1f %7.2f %13.1f\n", what.c_str(), items, result.ours, result.floor,
                result.Ratio(), result.ours * 1000 / items);
    std::fflush(stdout);
}
