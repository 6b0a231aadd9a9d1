// What a translation has to keep, as rules: each gives what is wrong, in words.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "DialogOnScreen.h"

namespace res_test {

using Faults = std::vector<std::wstring>;

/// The letter that works a control or a command, in upper case; 0 when there is none.
wchar_t MnemonicOf(std::wstring_view text);

struct Caption {
    std::wstring owner;  // an owner with several texts shows one of them at a time
    std::wstring text;
};
/// A letter that works two owners.
Faults SharedMnemonics(std::span<const Caption> captions);

/// "%s" and "%d", line breaks, blanks at both ends, marks of mnemonics out of place.
Faults TextFaults(std::wstring_view english, std::wstring_view translated);

/// Controls that lie on one another or leave the dialog. A control may stand where one lies that is never
/// shown together with it: `alternatives` names such pairs.
struct Alternative {
    int shown;
    int instead;
};
Faults PlacementFaults(SIZE client, std::span<const DialogControl> controls,
                       std::span<const Alternative> alternatives);

}  // namespace res_test
