#include <gtest/gtest.h>

#include "TextFormat.h"

namespace {

TEST(TextFormat, PlaceholdersAreFilledInOrderWhateverTheTextHolds) {
    EXPECT_EQ(FormatText(L"%s (%d %s)", L"Plug-ins", 12, L"found"), L"Plug-ins (12 found)");
    EXPECT_EQ(FormatText(L"100%% of %s", L"%d"), L"100% of %d") << "an argument is no pattern";
    EXPECT_EQ(FormatText(L"%s, %s and %d", L"one"), L"one,  and ") << "too many placeholders";
    EXPECT_EQ(FormatText(L"only %d", 1, L"surplus"), L"only 1") << "too few";
    EXPECT_EQ(FormatText(L"5% or %x %", 7), L"5% or %x %");
}

}  // namespace
