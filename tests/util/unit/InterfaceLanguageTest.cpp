#include <gtest/gtest.h>

#include "InterfaceLanguage.h"

namespace {

TEST(InterfaceLanguage, IsFoundByItsWholeNameAndServesItsPrimaryLanguage) {
    const struct {
        const wchar_t* name;
        std::uint16_t id, spokenElsewhere;
    } languages[] = {
        {L"English", 0x0409, 0x0809}, {L"JAPANESE", 0x0411, 0x0411}, {L"german", 0x0407, 0x0C07},
        {L"Spanish", 0x0C0A, 0x080A}, {L"Chinese", 0x0804, 0x0404},
    };
    for (const auto& [name, id, spokenElsewhere] : languages) {
        EXPECT_EQ(FindInterfaceLanguage(name), id);
        EXPECT_EQ(NearestInterfaceLanguage(spokenElsewhere), id);
    }
    for (const wchar_t* other : {L"", L"German ", L"Ger", L"Klingon"})
        EXPECT_FALSE(FindInterfaceLanguage(other));
    EXPECT_EQ(NearestInterfaceLanguage(0x007F), 0x0409) << "no language at all";
}

}  // namespace
