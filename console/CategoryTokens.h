// What the categories are called on the command line and in what it prints, whatever the language.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "PluginCategory.h"

/// In the order of the category codes.
inline constexpr std::array<std::wstring_view, kCategories.size()> kCategoryTokens = {
    L"dx",      L"vst",         L"dxi",          L"vsti", L"qtz",   L"dmo",
    L"surface", L"wrapped-vst", L"wrapped-vsti", L"vst3", L"vst3i",
};

constexpr std::wstring_view TokenOf(Category category) {
    return kCategoryTokens[static_cast<std::size_t>(category)];
}
