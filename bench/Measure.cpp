#include "Measure.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <utility>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kTries = 3;
constexpr std::size_t kMostRuns = 101;
constexpr double kShortMs = 200;  // of ours, in all runs
constexpr double kUnseenMs = 10;  // more than its floor may take anything, whatever the ratio
constexpr double kExponentBound = 0.1;
constexpr std::size_t kFewestSizes = 3;  // that tell how something grows

struct Measured {
    std::string name;
    int size;
    Comparison times;
    double bound;
    bool Misses() const {
        return bound != kNoBound && times.Ratio() > bound && times.ours - times.floor > kUnseenMs;
    }
};
struct Counted {
    std::string name;
    double value;
    double bound;
};
std::vector<Measured> g_rows;
std::vector<Counted> g_figures;

double MillisecondsOf(const Work& work) {
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double Median(std::vector<double>& times) {
    std::ranges::sort(times);
    return times[times.size() / 2];
}

/// How the times grow with the sizes, as the slope of a line through their logarithms: 1 is in proportion, 2
/// with the square.
double ExponentOf(const std::vector<Measured>& rows, double Comparison::*time) {
    double sizes = 0;
    double times = 0;
    const auto count = static_cast<double>(rows.size());
    for (const Measured& row : rows) {
        sizes += std::log(row.size) / count;
        times += std::log(row.times.*time) / count;
    }
    double both = 0;
    double square = 0;
    for (const Measured& row : rows) {
        const double offset = std::log(row.size) - sizes;
        both += offset * (std::log(row.times.*time) - times);
        square += offset * offset;
    }
    return both / square;
}

struct Growth {
    std::string name;
    double ours;
    double floor;
    double ratio;
    bool bound;
    bool Misses() const { return bound && ratio > kExponentBound; }
};

std::vector<Growth> GrowthOfRows() {
    std::map<std::string, std::vector<Measured>> series;
    for (const Measured& row : g_rows) series[row.name].push_back(row);
    std::vector<Growth> growth;
    for (const auto& [name, rows] : series) {
        if (rows.size() >= kFewestSizes)
            growth.push_back({name, ExponentOf(rows, &Comparison::ours), ExponentOf(rows, &Comparison::floor),
                              ExponentOf(rows, &Comparison::ratio), rows.front().bound != kNoBound});
    }
    return growth;
}

/// One record a line, which is all that the script for the plot can read.
void WriteJson(const std::filesystem::path& path, const std::vector<Growth>& growth) {
    std::ofstream json(path);
    const char* separator = "\n";
    const auto next = [&]() -> std::ostream& { return json << std::exchange(separator, ",\n"); };
    json << R"({"rows": [)";
    for (const Measured& row : g_rows)
        next() << R"({"name": ")" << row.name << R"(", "size": )" << row.size << R"(, "ours": )"
               << row.times.ours << R"(, "floor": )" << row.times.floor << R"(, "ratio": )"
               << row.times.Ratio() << R"(, "bound": )" << row.bound << "}";
    json << "\n],\n\"growth\": [";
    separator = "\n";
    for (const Growth& row : growth)
        next() << R"({"name": ")" << row.name << R"(", "ours": )" << row.ours << R"(, "floor": )" << row.floor
               << "}";
    json << "\n],\n\"figures\": [";
    separator = "\n";
    for (const Counted& figure : g_figures)
        next() << R"({"name": ")" << figure.name << R"(", "value": )" << figure.value << R"(, "bound": )"
               << figure.bound << "}";
    json << "\n]}\n";
}

}  // namespace

Comparison Compare(int runs, const Work& ours, const Work& floor, const Work& before) {
    before();
    ours();
    before();
    floor();
    std::vector<double> ourTimes;
    std::vector<double> floorTimes;
    std::vector<double> ratios;
    double inAll = 0;
    const auto isEnough = [&](std::size_t done) {
        return done >= static_cast<std::size_t>(runs) && (inAll >= kShortMs || done >= kMostRuns);
    };
    while (!isEnough(ourTimes.size())) {
        before();
        ourTimes.push_back(MillisecondsOf(ours));
        before();
        floorTimes.push_back(MillisecondsOf(floor));
        ratios.push_back(ourTimes.back() / floorTimes.back());
        inAll += ourTimes.back();
    }
    return {Median(ourTimes), Median(floorTimes), Median(ratios)};
}

Comparison Row(const RowSpec& row, const Work& ours, const Work& floor) {
    Measured best{row.name, row.size, Compare(row.runs, ours, floor, row.before), row.bound};
    for (int tried = 1; tried < kTries && best.Misses(); ++tried) {
        const Comparison again = Compare(row.runs, ours, floor, row.before);
        if (again.Ratio() < best.times.Ratio()) best.times = again;
    }
    PrintRow(row.name, row.size, best.times, row.bound);
    return best.times;
}

void PrintHeader() {
    std::printf("%-36s %7s %11s %11s %7s %7s %13s\n", "what", "items", "ours ms", "floor ms", "ratio",
                "bound", "ours us/item");
}

void PrintRow(const std::string& what, int items, const Comparison& result, double bound) {
    g_rows.push_back({what, items, result, bound});
    const Measured& row = g_rows.back();
    std::printf("%-36s %7d %11.2f %11.2f %7.2f %7.2f %13.1f%s\n", what.c_str(), items, result.ours,
                result.floor, result.Ratio(), bound, result.ours * 1000 / items,
                row.Misses() ? "  MISSED" : "");
    std::fflush(stdout);
}

void Figure(const std::string& what, double value, double bound) {
    g_figures.push_back({what, value, bound});
    std::printf("%-60s %11.1f, bound %.1f%s\n", what.c_str(), value, bound, value > bound ? "  MISSED" : "");
    std::fflush(stdout);
}

bool Finish(const std::wstring& json) {
    const std::vector<Growth> growth = GrowthOfRows();
    std::printf("%-36s %11s %11s\n", "growth, as an exponent", "ours", "floor");
    for (const Growth& row : growth)
        std::printf("%-36s %11.2f %11.2f%s\n", row.name.c_str(), row.ours, row.floor,
                    row.Misses() ? "  MISSED" : "");
    if (!json.empty()) WriteJson(json, growth);
    const auto missed =
        std::ranges::count_if(g_rows, &Measured::Misses) + std::ranges::count_if(growth, &Growth::Misses) +
        std::ranges::count_if(g_figures, [](const Counted& figure) { return figure.value > figure.bound; });
    std::printf("%lld missed\n", static_cast<long long>(missed));
    return missed == 0;
}
