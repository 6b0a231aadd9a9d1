#include "NumberText.h"

#include <windows.h>

#include <array>

std::wstring NumberText(std::uint64_t number) {
    std::wstring plain = std::to_wstring(number);
    std::array<wchar_t, 80> grouped{};
    const int size = ::GetNumberFormatEx(LOCALE_NAME_USER_DEFAULT, 0, plain.c_str(), nullptr, grouped.data(),
                                         static_cast<int>(grouped.size()));
    if (size == 0) return plain;
    // The settings are for prices as well: a number that is whole shows its decimals, too.
    std::array<wchar_t, 16> point{};
    const int pointSize = ::GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, point.data(),
                                            static_cast<int>(point.size()));
    const std::wstring text = grouped.data();
    return pointSize > 1 ? text.substr(0, text.rfind(point.data())) : text;
}
