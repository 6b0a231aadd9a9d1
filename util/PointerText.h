// Window handles as text: on the command line and in the registry.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// Reads a handle the way scanf's "%p" does: blanks, an optional 0x, then hexadecimal digits up to the first
/// other character. Nothing when there is no digit, or more than a pointer holds.
std::optional<std::uintptr_t> ParsePointer(std::wstring_view text);
