#include "XmlText.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr bool IsHighSurrogate(wchar_t c) { return c >= 0xD800 && c < 0xDC00; }
constexpr bool IsLowSurrogate(wchar_t c) { return c >= 0xDC00 && c < 0xE000; }

/// How many characters the one at the start of the text consists of; 0 when XML can't hold it.
std::size_t XmlLength(std::wstring_view text) {
    const wchar_t c = text.front();
    if (IsHighSurrogate(c)) return text.size() > 1 && IsLowSurrogate(text[1]) ? 2 : 0;
    const bool isControl = c < L' ' && c != L'\t' && c != L'\n' && c != L'\r';
    return IsLowSurrogate(c) || c >= 0xFFFE || isControl ? 0 : 1;
}

struct Marked {
    wchar_t character;
    std::wstring_view written;
};
/// Between quotes. A reader takes blanks of other kinds for plain ones.
constexpr Marked kMarked[] = {{L'&', L"&amp;"}, {L'<', L"&lt;"},   {L'>', L"&gt;"},  {L'"', L"&quot;"},
                              {L'\t', L"&#9;"}, {L'\n', L"&#10;"}, {L'\r', L"&#13;"}};

}  // namespace

bool IsXmlText(std::wstring_view text) {
    while (!text.empty()) {
        const std::size_t length = XmlLength(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

std::wstring XmlTextOf(std::wstring_view text) {
    constexpr wchar_t kUnknown = 0xFFFD;
    std::wstring writable;
    while (!text.empty()) {
        const std::size_t length = XmlLength(text);
        writable += length == 0 ? std::wstring_view(&kUnknown, 1) : text.substr(0, length);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return writable;
}

void AppendXmlAttribute(std::wstring& text, std::wstring_view name, std::wstring_view value) {
    text += L' ';
    text += name;
    text += L"=\"";
    for (const wchar_t c : XmlTextOf(value)) {
        const auto marked = std::ranges::find(kMarked, c, &Marked::character);
        text += marked == std::end(kMarked) ? std::wstring_view(&c, 1) : marked->written;
    }
    text += L'"';
}
