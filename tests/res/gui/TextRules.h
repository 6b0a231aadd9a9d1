// What a translation has to keep, as rules: each gives what is wrong, in words; nothing when all is well.
#pragma once

#include <windows.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "support/WindowActions.h"

namespace res_test {

/// The letter that works a control or a command, in upper case; 0 when there is none.
inline wchar_t MnemonicOf(const std::wstring& text) {
    const std::size_t mark = text.find(L'&');
    wchar_t letter = mark == std::wstring::npos ? L'\0' : text[mark + 1];
    ::CharUpperBuffW(&letter, 1);
    return letter;
}

struct Caption {
    int owner;  // one with several texts shows one of them at a time
    std::wstring text;
};
/// Letters that work two owners.
inline std::string SharedMnemonics(const std::vector<Caption>& captions) {
    std::string faults;
    std::map<wchar_t, Caption> owners;
    for (const Caption& caption : captions) {
        const auto [first, isNew] = owners.try_emplace(MnemonicOf(caption.text), caption);
        if (first->first != L'\0' && first->second.owner != caption.owner)
            faults += support::Utf8(first->second.text + L" and " + caption.text) + "\n";
    }
    return faults;
}

/// Placeholders and line breaks in their order.
inline std::wstring Skeleton(const std::wstring& text) {
    std::wstring kept;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'\r' || text[i] == L'\n') kept += text[i];
        if (text[i] == L'%') kept += text.substr(i++, 2);
    }
    return kept;
}

inline std::string TextFaults(const std::wstring& english, const std::wstring& text) {
    std::string faults;
    const auto require = [&](bool holds, const char* otherwise) {
        if (!holds) faults += support::Utf8(text) + ": " + otherwise + "\n";
    };
    const auto blanks = [](const std::wstring& of) {
        return std::pair(of.find_first_not_of(L' '), of.size() - of.find_last_not_of(L' '));
    };
    const auto marks = std::ranges::count(text, L'&');
    require(Skeleton(text) == Skeleton(english), "other placeholders or line breaks than in English");
    require(blanks(text) == blanks(english), "other blanks at its ends than in English");
    require(text == english || text.find(L"  ") == std::wstring::npos, "two blanks in a row");
    require(marks == 0 || (marks == 1 && ::IsCharAlphaNumericW(MnemonicOf(text))), "a & too many or lost");
    require(marks > 0 || MnemonicOf(english) == L'\0', "no letter works it any more");
    return faults;
}

}  // namespace res_test
