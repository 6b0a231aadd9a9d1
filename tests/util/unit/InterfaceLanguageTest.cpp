#include <gtest/gtest.h>

#include "InterfaceLanguage.h"

namespace {

TEST(InterfaceLanguage, IsFoundByItsWholeNameAndServesItsPrimaryLanguage) {
    EXPECT_EQ(FindInterfaceLanguage(L"JAPANESE"), 0x0411);
    EXPECT_EQ(NearestInterfaceLanguage(0x0C07), 0x0407) << "German, as in Austria";
    for (const wchar_t* other : {L"", L"German ", L"Ger", L"Klingon"})
        EXPECT_FALSE(FindInterfaceLanguage(other));
    EXPECT_EQ(NearestInterfaceLanguage(0x007F), 0x0409) << "no language at all";
}

}  // namespace
