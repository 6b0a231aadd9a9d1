// Names compared as the system compares those of files and registry keys: by their characters' codes, case
// ignored.
#pragma once

#include <string_view>

/// Below 0, 0, or above it, as `a` stands before, beside or behind `b`.
int CompareIgnoringCase(std::wstring_view a, std::wstring_view b);

inline bool SamePath(std::wstring_view a, std::wstring_view b) { return CompareIgnoringCase(a, b) == 0; }
