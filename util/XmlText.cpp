#include "XmlText.h"

#include <cstddef>

namespace {

constexpr bool IsHighSurrogate(wchar_t c) { return c >= 0xD800 && c < 0xDC00; }
constexpr bool IsLowSurrogate(wchar_t c) { return c >= 0xDC00 && c < 0xE000; }

}  // namespace

bool IsXmlText(std::wstring_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (IsHighSurrogate(c)) {
            if (++i == text.size() || !IsLowSurrogate(text[i])) return false;
        } else if (IsLowSurrogate(c) || c >= 0xFFFE || (c < L' ' && c != L'\t' && c != L'\n' && c != L'\r')) {
            return false;
        }
    }
    return true;
}
