// The bytes that a fuzzer makes up, as what the program reads.
#pragma once

#include <cstdlib>
#include <string>
#include <vector>

#include "AsciiCase.h"

/// What a target does with each input. A fault ends the process.
void TryInput(std::string_view bytes);

namespace support {

inline void Require(bool holds) {
    if (!holds) std::abort();
}

/// A name that leads nowhere else, and that the system takes as it stands.
inline void RequirePlain(std::wstring_view name) {
    Require(!name.empty() && name != L"." && name != L".." && name.back() != L'.' && name.back() != L' ');
    Require(name.find_first_of(L"\\/:*?\"<>|") == std::wstring_view::npos);
    Require(std::ranges::none_of(name, [](wchar_t c) { return c < L' '; }));
}

/// Like UTF-8, so that a corpus can be read, but nothing is refused: there is a way to write each unit of 16
/// bits, halves of surrogate pairs among them.
inline std::wstring TextOf(std::string_view bytes) {
    std::wstring text;
    while (!bytes.empty()) {
        const auto first = static_cast<unsigned char>(bytes.front());
        const std::size_t wanted = first >= 0xE0 ? 3 : first >= 0xC0 ? 2 : 1;
        unsigned unit = wanted == 3 ? first & 0xFU : wanted == 2 ? first & 0x1FU : first;
        bytes.remove_prefix(1);
        for (std::size_t i = 1; i < wanted && !bytes.empty(); ++i, bytes.remove_prefix(1))
            unit = (unit << 6U) | (static_cast<unsigned char>(bytes.front()) & 0x3FU);
        text += static_cast<wchar_t>(unit);
    }
    return text;
}

/// At least so many, the missing ones empty. A line break within a line is written in two bytes.
inline std::vector<std::wstring> LinesOf(std::string_view bytes, std::size_t least = 1) {
    std::vector<std::wstring> lines;
    for (std::size_t end = 0; end != std::string_view::npos;) {
        end = bytes.find('\n');
        lines.push_back(TextOf(bytes.substr(0, end)));
        bytes.remove_prefix(end == std::string_view::npos ? 0 : end + 1);
    }
    lines.resize(std::max(lines.size(), least));
    return lines;
}

inline std::wstring Lower(std::wstring text) {
    std::ranges::transform(text, text.begin(), AsciiLower);
    return text;
}

}  // namespace support
