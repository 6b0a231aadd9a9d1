#include "PointerText.h"

#include "AsciiCase.h"

namespace {

std::optional<unsigned> HexDigit(wchar_t c) {
    const wchar_t lower = AsciiLower(c);
    if (lower >= L'0' && lower <= L'9') return static_cast<unsigned>(lower - L'0');
    if (lower >= L'a' && lower <= L'f') return static_cast<unsigned>(lower - L'a') + 10;
    return std::nullopt;
}

}  // namespace

std::optional<std::uintptr_t> ParsePointer(std::wstring_view text) {
    const auto start = text.find_first_not_of(L" \t");
    if (start == std::wstring_view::npos) return std::nullopt;
    text.remove_prefix(start);
    if (text.size() > 2 && text[0] == L'0' && AsciiLower(text[1]) == L'x' && HexDigit(text[2]))
        text.remove_prefix(2);

    constexpr std::uintptr_t kTopDigit = std::uintptr_t{0xF} << (sizeof(std::uintptr_t) * 8 - 4);
    std::uintptr_t value = 0;
    std::size_t digits = 0;
    for (; digits < text.size(); ++digits) {
        const auto digit = HexDigit(text[digits]);
        if (!digit) break;
        if (value & kTopDigit) return std::nullopt;
        value = value << 4 | *digit;
    }
    return digits == 0 ? std::nullopt : std::optional(value);
}
