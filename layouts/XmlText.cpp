#include "XmlText.h"

#include <cstddef>

namespace {

constexpr bool IsHighSurrogate(wchar_t c) { return c >= 0xD800 && c < 0xDC00; }
constexpr bool IsLowSurrogate(wchar_t c) { return c >= 0xDC00 && c < 0xE000; }

/// How many units at the start of the text make a character that XML can write; 0 when they make none.
std::size_t WritableLength(std::wstring_view text) {
    const wchar_t c = text.front();
    if (IsHighSurrogate(c)) return text.size() > 1 && IsLowSurrogate(text[1]) ? 2 : 0;
    const bool control = c < L' ' && c != L'\t' && c != L'\n' && c != L'\r';
    return control || IsLowSurrogate(c) || c >= 0xFFFE ? 0 : 1;
}

}  // namespace

bool IsXmlText(std::wstring_view text) {
    while (!text.empty()) {
        const std::size_t length = WritableLength(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

std::wstring XmlTextOf(std::wstring_view text) {
    std::wstring written;
    while (!text.empty()) {
        const std::size_t length = WritableLength(text);
        written += length == 0 ? std::wstring_view(L"\uFFFD") : text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return written;
}
