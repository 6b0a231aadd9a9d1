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
