#include "Measure.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <utility>
#include <vector>

#include "Rows.h"

namespace {

using Clock = std::chrono::steady_clock;

// What misses its bound is measured again, and the best counts: a busy machine is slow now and then, a fault
// always.
constexpr int kTries = 3;
// A smaller difference from the floor counts as none.
constexpr double kNoise = 2;  // ms
constexpr double kExponentBound = 0.1;
constexpr std::size_t kFewestSizes = 3;  // that tell how something grows

struct Times {
    double ours = 0;   // ms, median
    double floor = 0;  // ms, median
    double ratio = 0;  // median of those of each two runs in turn, which a busy machine has slowed alike
};

struct Measured {
    /// The ratio as far as it counts: what is not slower than its floor is as good as that.
    double Excess() const { return times.ours - times.floor > kNoise ? std::max(1.0, times.ratio) : 1.0; }
    int size;
    Times times;
};

struct Series {
    const RowBound* row;
    std::vector<Measured> sizes;

    bool TellsGrowth() const { return sizes.size() >= kFewestSizes; }
    /// The slope of a line through the logarithms: 1 is in proportion to the size, 2 with its square.
    template <typename TValue>
    double Exponent(TValue&& value) const {
        double sizeSum = 0;
        double valueSum = 0;
        for (const Measured& each : sizes) {
            sizeSum += std::log(each.size);
            valueSum += std::log(std::invoke(value, each));
        }
        const auto count = static_cast<double>(sizes.size());
        double both = 0;
        double square = 0;
        for (const Measured& each : sizes) {
            const double offset = std::log(each.size) - sizeSum / count;
            both += offset * (std::log(std::invoke(value, each)) - valueSum / count);
            square += offset * offset;
        }
        return both / square;
    }
    double OurExponent() const {
        return Exponent([](const Measured& each) { return each.times.ours; });
    }
    double FloorExponent() const {
        return Exponent([](const Measured& each) { return each.times.floor; });
    }
    bool GrowsTooFast() const {
        return TellsGrowth() &&
               std::min(OurExponent() - FloorExponent(), Exponent(&Measured::Excess)) > kExponentBound;
    }
    bool Misses(const Measured& each) const { return each.Excess() > row->bound; }
};

struct Counted {
    std::string name;
    double value;
    double bound;
    bool Misses() const { return value > bound; }
};

std::vector<Series> g_series;
std::vector<Counted> g_figures;

double MillisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double MillisecondsOf(const Work& work) {
    const auto start = Clock::now();
    work();
    return MillisecondsSince(start);
}

double Median(std::vector<double>& times) {
    std::ranges::sort(times);
    return times[times.size() / 2];
}

/// The shorter they are with all that belongs to them, the more runs.
bool IsEnough(std::size_t runs, double milliseconds) {
    return runs >= 101 || (runs >= 7 && milliseconds >= 400) || (runs >= 3 && milliseconds >= 4000);
}

Times Compare(const Work& ours, const Work& floor, const Work& before) {
    std::vector<double> ourTimes;
    std::vector<double> floorTimes;
    std::vector<double> ratios;
    before();
    ours();
    before();
    floor();
    const auto start = Clock::now();
    while (!IsEnough(ratios.size(), MillisecondsSince(start))) {
        before();
        ourTimes.push_back(MillisecondsOf(ours));
        before();
        floorTimes.push_back(MillisecondsOf(floor));
        ratios.push_back(ourTimes.back() / floorTimes.back());
    }
    return {Median(ourTimes), Median(floorTimes), Median(ratios)};
}

Series& SeriesOf(std::string_view name) {
    const auto known =
        std::ranges::find(g_series, name, [](const Series& series) { return series.row->name; });
    if (known != g_series.end()) return *known;
    const auto* row = std::ranges::find(kRows, name, &RowBound::name);
    if (row == std::end(kRows)) {
        std::printf("not in the table of rows: %s\n", std::string(name).c_str());
        std::exit(1);
    }
    return g_series.emplace_back(Series{row, {}});
}

const char* Mark(bool missed) { return missed ? "  MISSED" : ""; }

void WriteJson(const std::filesystem::path& path) {
    std::ofstream json(path);
    const char* separator = "";
    const auto begin = [&](const char* list) {
        json << list;
        separator = "\n";
    };
    const auto record = [&](const std::string& name, bool missed) -> std::ostream& {
        return json << std::exchange(separator, ",\n") << R"({"name": ")" << name << R"(", "missed": )"
                    << missed;
    };
    begin("{\"rows\": [");
    for (const Series& series : g_series) {
        for (const Measured& each : series.sizes)
            record(std::string(series.row->name), series.Misses(each))
                << R"(, "size": )" << each.size << R"(, "ours": )" << each.times.ours << R"(, "floor": )"
                << each.times.floor << R"(, "ratio": )" << each.times.ratio << R"(, "bound": )"
                << series.row->bound << R"(, "why": ")" << series.row->why << "\"}";
    }
    begin("\n],\n\"growth\": [");
    for (const Series& series : g_series) {
        if (series.TellsGrowth())
            record(std::string(series.row->name), series.GrowsTooFast())
                << R"(, "ours": )" << series.OurExponent() << R"(, "floor": )" << series.FloorExponent()
                << "}";
    }
    begin("\n],\n\"figures\": [");
    for (const Counted& figure : g_figures)
        record(figure.name, figure.Misses())
            << R"(, "value": )" << figure.value << R"(, "bound": )" << figure.bound << "}";
    json << "\n]}\n";
}

}  // namespace

void Row(std::string_view name, int size, const Work& ours, const Work& floor, const Work& before) {
    Series& series = SeriesOf(name);
    Measured& row = series.sizes.emplace_back(Measured{size, Compare(ours, floor, before)});
    for (int tried = 1; tried < kTries && (series.Misses(row) || series.GrowsTooFast()); ++tried) {
        const Times again = Compare(ours, floor, before);
        if (again.ratio < row.times.ratio) row.times = again;
    }
    std::printf("%-36s %7d %11.2f %11.2f %7.2f %7.2f %13.1f%s\n", std::string(name).c_str(), size,
                row.times.ours, row.times.floor, row.times.ratio, series.row->bound,
                row.times.ours * 1000 / size, Mark(series.Misses(row)));
    std::fflush(stdout);
}

void Figure(const std::string& what, double value, double bound) {
    const Counted& figure = g_figures.emplace_back(Counted{what, value, bound});
    std::printf("%-60s %11.1f, bound %.1f%s\n", what.c_str(), value, bound, Mark(figure.Misses()));
    std::fflush(stdout);
}

void PrintHeader() {
    std::printf("%-36s %7s %11s %11s %7s %7s %13s\n", "what", "size", "ours ms", "floor ms", "ratio", "bound",
                "ours us/item");
}

bool Finish(const std::wstring& json) {
    std::printf("%-36s %11s %11s\n", "growth, as an exponent", "ours", "floor");
    auto missed = std::ranges::count_if(g_figures, &Counted::Misses);
    for (const Series& series : g_series) {
        missed += std::ranges::count_if(series.sizes, [&](const auto& each) { return series.Misses(each); });
        if (!series.TellsGrowth()) continue;
        missed += series.GrowsTooFast();
        std::printf("%-36s %11.2f %11.2f%s\n", std::string(series.row->name).c_str(), series.OurExponent(),
                    series.FloorExponent(), Mark(series.GrowsTooFast()));
    }
    if (!json.empty()) WriteJson(json);
    std::printf("%lld missed\n", static_cast<long long>(missed));
    return missed == 0;
}
