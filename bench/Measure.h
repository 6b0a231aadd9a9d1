// Timing by medians, and the table of results.
#pragma once

#include <functional>
#include <string>

using Work = std::function<void()>;

struct Comparison {
    double ours = 0;   // ms, median
    double floor = 0;  // ms, median
    double Ratio() const { return ours / floor; }
};

/// Runs the two in turn after one run of each that does not count, so that a machine that drifts drifts for
/// both. What goes before each run is not measured.
Comparison Compare(
    int runs, const Work& ours, const Work& floor, const Work& before = [] {});

/// One line of the table: what was measured, how much of it, both times, their ratio, and ours for each item.
void PrintHeader();
void PrintRow(const std::string& what, int items, const Comparison& result);
