// The frame of the bench: measures rows beside their floors, prints them, and holds them to their bounds.
#pragma once

#include <functional>
#include <string>
#include <string_view>

using Work = std::function<void()>;

/// Measures a row of the table in Rows.h, `ours` and `floor` in turn after one of each that does not count,
/// so that a machine that drifts drifts for both. `before` comes before each of them, and is not measured. A
/// row that comes several times, with growing sizes, also tells how its time grows.
void Row(
    std::string_view name, int size, const Work& ours, const Work& floor, const Work& before = [] {});

/// A number that may not be larger than its bound: calls, bytes, handles.
void Figure(const std::string& what, double value, double bound);

void PrintHeader();
/// Prints how the rows grow, and writes everything as JSON, one record a line. False when anything has missed
/// its bound.
bool Finish(const std::wstring& json);
