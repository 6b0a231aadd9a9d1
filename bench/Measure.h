// The frame of the bench: measures rows beside their floors, prints them, and holds them to their bounds.
#pragma once

#include <functional>
#include <string>

using Work = std::function<void()>;

/// How much longer than its floor something may take, if that can be seen at all (10 ms): usually, and where
/// a file dialog or the order of a list box is part of it.
inline constexpr double kUsualBound = 1.3;
inline constexpr double kSortedBound = 1.5;
/// For a floor that is there to compare with, and is none.
inline constexpr double kNoBound = 0;

struct Comparison {
    double ours = 0;   // ms, median
    double floor = 0;  // ms, median
    double ratio = 0;  // median of those of each two runs in turn, which a busy machine has slowed alike
    double Ratio() const { return ratio; }
};

struct RowSpec {
    std::string name;  // rows of one name at several sizes tell how the time grows
    int size;
    double bound = kUsualBound;
    int runs = 7;
    Work before = [] {};  // before each run of either, and not measured
};

/// Measures, prints and judges a row. What misses its bound is measured again, up to three times in all, and
/// the best counts, because a busy machine makes things slow now and then, and a fault always.
Comparison Row(const RowSpec& row, const Work& ours, const Work& floor);

/// The same in two steps, without the second chance. The runs go in turn after one of each that does not
/// count, so that a machine that drifts drifts for both; short ones are run more often.
Comparison Compare(
    int runs, const Work& ours, const Work& floor, const Work& before = [] {});
void PrintRow(const std::string& what, int items, const Comparison& result, double bound = kUsualBound);

/// A number that may not be larger than its bound: calls, bytes, handles.
void Figure(const std::string& what, double value, double bound);

void PrintHeader();
/// Prints how the rows grow, which may be by 0.1 in the exponent more than their floors, and writes all of it
/// as JSON. False when anything has missed its bound.
bool Finish(const std::wstring& json);
