// The texts of the program with values in them: two texts, then a value and a caption.
#include "TextFormat.h"
#include "fuzz/FuzzInput.h"

using support::Require;

void TryInput(std::string_view bytes) {
    const auto lines = support::LinesOf(bytes, 4);
    const std::wstring &value = lines[2], &caption = lines[3];
    // What a value holds is not looked at again.
    Require(FormatText(L"%s, %d%s", value, -7) == value + L", -7");
    // A translation may have anything; nothing is made up.
    for (const std::wstring& pattern : lines) {
        const std::wstring filled = FormatText(pattern, value, value);
        Require(filled.size() <= pattern.size() + 2 * value.size());
        if (pattern.find(L'%') == std::wstring::npos) Require(filled == pattern);
    }
    const std::wstring plain = WithoutMnemonic(caption);
    const auto keys = std::ranges::count(caption, L'&');
    Require(keys == 0 ? plain == caption : std::ranges::count(plain, L'&') < keys);
    Require(plain.size() + 4 >= caption.size());
}
