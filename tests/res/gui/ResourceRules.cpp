#include "ResourceRules.h"

#include <windows.h>

#include <algorithm>
#include <map>

namespace res_test {

namespace {

/// Placeholders and line breaks in their order.
std::wstring Skeleton(std::wstring_view text) {
    std::wstring found;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'\r') found += L"\\r";
        if (text[i] == L'\n') found += L"\\n";
        if (text[i] == L'%' && i + 1 < text.size()) found += {L'%', text[++i]};
    }
    return found;
}

std::size_t BlanksBefore(std::wstring_view text) {
    return std::min(text.find_first_not_of(L' '), text.size());
}
std::size_t BlanksBehind(std::wstring_view text) { return text.size() - text.find_last_not_of(L' ') - 1; }

bool IsGroupBox(const DialogControl& control) {
    return _wcsicmp(control.className.c_str(), L"Button") == 0 &&
           (control.style & BS_TYPEMASK) == BS_GROUPBOX;
}

bool Contains(const RECT& outer, const RECT& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

/// Within the frame of the group box and below its caption, which is as high as a line.
bool IsGroupedBy(const DialogControl& box, const DialogControl& control) {
    RECT inside = box.place;
    constexpr long kLine = 13;
    inside.top += kLine;
    return IsGroupBox(box) && Contains(inside, control.place);
}

bool ShownTogether(int first, int second, std::span<const Alternative> alternatives) {
    return std::ranges::none_of(alternatives, [=](const Alternative& pair) {
        return (pair.shown == first && pair.instead == second) ||
               (pair.shown == second && pair.instead == first);
    });
}

}  // namespace

wchar_t MnemonicOf(std::wstring_view text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != L'&') continue;
        if (text[i + 1] != L'&') {
            return static_cast<wchar_t>(
                reinterpret_cast<UINT_PTR>(::CharUpperW(reinterpret_cast<wchar_t*>(UINT_PTR{text[i + 1]}))));
        }
        ++i;
    }
    return L'\0';
}

Faults SharedMnemonics(std::span<const Caption> captions) {
    Faults faults;
    std::map<wchar_t, const Caption*> owners;
    for (const Caption& caption : captions) {
        const wchar_t letter = MnemonicOf(caption.text);
        if (letter == L'\0') continue;
        const auto [first, isNew] = owners.try_emplace(letter, &caption);
        if (isNew || first->second->owner == caption.owner) continue;
        faults.push_back(std::wstring(1, letter) + L" works \"" + first->second->text + L"\" and \"" +
                         caption.text + L"\"");
    }
    return faults;
}

Faults TextFaults(std::wstring_view english, std::wstring_view translated) {
    Faults faults;
    const std::wstring quoted = L"\"" + std::wstring(translated) + L"\"";
    if (Skeleton(english) != Skeleton(translated)) {
        faults.push_back(quoted + L" has placeholders and line breaks " + Skeleton(translated) +
                         L" instead of " + Skeleton(english));
    }
    if (BlanksBefore(english) != BlanksBefore(translated) ||
        BlanksBehind(english) != BlanksBehind(translated)) {
        faults.push_back(quoted + L" has other blanks at its ends than the English text");
    }
    const auto marks = std::ranges::count(translated, L'&');
    if (marks > 1 || (marks == 1 && ::IsCharAlphaNumericW(MnemonicOf(translated)) == FALSE)) {
        faults.push_back(quoted + L" has a & too many or without a letter");
    }
    return faults;
}

Faults PlacementFaults(SIZE client, std::span<const DialogControl> controls,
                       std::span<const Alternative> alternatives) {
    Faults faults;
    const RECT dialog{0, 0, client.cx, client.cy};
    for (const DialogControl& first : controls) {
        if (!Contains(dialog, first.place)) {
            faults.push_back(std::to_wstring(first.id) + L" leaves the dialog");
        }
        for (const DialogControl& second : controls) {
            RECT common{};
            if (&second <= &first || !::IntersectRect(&common, &first.place, &second.place)) continue;
            if (IsGroupedBy(first, second) || IsGroupedBy(second, first)) continue;
            if (!ShownTogether(first.id, second.id, alternatives)) continue;
            faults.push_back(std::to_wstring(first.id) + L" and " + std::to_wstring(second.id) + L" overlap");
        }
    }
    return faults;
}

}  // namespace res_test
