#include <gtest/gtest.h>

#include "InterfaceLanguage.h"

namespace {

TEST(InterfaceLanguage, NamesAreFoundWholeAndWithoutCase) {
    EXPECT_EQ(FindInterfaceLanguage(L"spanish"), 3082);
    EXPECT_EQ(FindInterfaceLanguage(L"CHINESE"), 2052);
    for (const wchar_t* other : {L"", L"German ", L"Ger", L"Klingon"})
        EXPECT_FALSE(FindInterfaceLanguage(other));
}

TEST(InterfaceLanguage, ASystemLanguageIsServedByItsPrimaryLanguage) {
    EXPECT_EQ(NearestInterfaceLanguage(0x0C07), 1031) << "Austrian German";
    EXPECT_EQ(NearestInterfaceLanguage(0x0816), 1046) << "Portuguese of Portugal";
    EXPECT_EQ(NearestInterfaceLanguage(0x0415), 1033) << "Polish, which is none of the nine";
}

}  // namespace
