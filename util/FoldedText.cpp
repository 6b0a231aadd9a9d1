#include "FoldedText.h"

#include <windows.h>

#include <algorithm>

namespace {

bool IsAscii(wchar_t c) { return c < 0x80; }

/// Of letters of all scripts; the sound marks of Japanese are none.
bool IsAccent(wchar_t c) { return c >= 0x0300 && c <= 0x036F; }

/// Letters and their accents apart, in Unicode's compatibility form. The text as it is where it has none.
std::wstring Decomposed(const std::wstring& text) {
    // Most texts are of this kind, and have that form already.
    if (std::ranges::all_of(text, IsAscii)) return text;
    constexpr DWORD kForm = MAP_COMPOSITE | MAP_FOLDCZONE;
    const int size = static_cast<int>(text.size());
    const int needed = ::FoldStringW(kForm, text.c_str(), size, nullptr, 0);
    if (needed <= 0) return text;
    std::wstring apart(static_cast<std::size_t>(needed), L'\0');
    const int length = ::FoldStringW(kForm, text.c_str(), size, apart.data(), needed);
    if (length <= 0) return text;
    apart.resize(static_cast<std::size_t>(length));
    return apart;
}

}  // namespace

std::wstring FoldedText(const std::wstring& text) {
    std::wstring folded = Decomposed(text);
    std::erase_if(folded, IsAccent);
    const int size = static_cast<int>(folded.size());
    // In place, which this mapping alone allows.
    ::LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, folded.data(), size, folded.data(), size, nullptr,
                    nullptr, 0);
    return folded;
}
