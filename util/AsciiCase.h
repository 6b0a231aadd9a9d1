// Names that people may write in capitals or not: switches, languages, devices.
#pragma once

#include <algorithm>
#include <string_view>

constexpr wchar_t AsciiLower(wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

/// Case counts for other letters than A to Z.
constexpr bool EqualsIgnoringCase(std::wstring_view a, std::wstring_view b) {
    return std::ranges::equal(a, b, {}, AsciiLower, AsciiLower);
}
