#include "TextFormat.h"

#include <cstddef>

std::wstring FillPlaceholders(std::wstring_view pattern, std::span<const TextArgument> arguments) {
    std::wstring filled;
    std::size_t next = 0;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const wchar_t kind = pattern[i] == L'%' && i + 1 < pattern.size() ? pattern[i + 1] : L'\0';
        if (kind == L's' || kind == L'd') {
            if (next < arguments.size()) filled += arguments[next++].Text();
            ++i;
        } else {
            filled += pattern[i];
            if (kind == L'%') ++i;
        }
    }
    return filled;
}

std::wstring WithoutMnemonic(std::wstring caption) {
    const std::size_t mark = caption.find(L'&');
    if (mark == std::wstring::npos) return caption;
    // Where words have no Latin letters, the key stands behind them: "(&Y)".
    const bool inBrackets = mark > 0 && caption[mark - 1] == L'(' && caption.find(L')', mark) == mark + 2;
    return inBrackets ? caption.erase(mark - 1, 4) : caption.erase(mark, 1);
}
