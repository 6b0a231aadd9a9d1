#include <gtest/gtest.h>

#include "FriendlyNameRules.h"

namespace {

TEST(FriendlyNameRules, AnExactPrefixIsLeftToTheHost) {
    for (const auto& [name, stored] : {std::pair(L"VST Hall", L"Hall"),
                                       {L"vst Hall", L"vst Hall"},
                                       {L"VSTHall", L"VSTHall"},
                                       {L"VST  \x3000", L"VST  \x3000"},
                                       {L"VST VST Hall", L"VST Hall"}}) {
        EXPECT_EQ(StoredFullName(name, true), stored);
        EXPECT_EQ(StoredFullName(name, false), name);
    }
}

TEST(FriendlyNameRules, ARowNeedsItsSource) {
    constexpr SourceCounts kCounts{.filters = 2, .filtersAndMediaObjects = 3};
    EXPECT_TRUE(CanBeRenamed(Category::DirectXEffects, 1, kCounts));
    EXPECT_TRUE(CanBeRenamed(Category::MediaObjects, 2, kCounts));
    EXPECT_TRUE(CanBeRenamed(Category::MidiEffects, 9, {}) && CanBeRenamed(Category::ControlSurfaces, 9, {}));
    EXPECT_FALSE(CanBeRenamed(Category::LegacyVstEffects, 2, kCounts));
    EXPECT_FALSE(CanBeRenamed(Category::MediaObjects, 3, kCounts));
    EXPECT_FALSE(CanBeRenamed(Category::Vst3Effects, 0, {})) << "no filter at all";
}

TEST(FriendlyNameRules, ACutDoesNotHalveACharacter) {
    const std::wstring name(200, L'x'), piano = {0xD83C, 0xDFB9};
    EXPECT_EQ(ReadableName(name, Category::DirectXEffects), name);
    EXPECT_EQ(ReadableName(name, Category::ControlSurfaces).size(), 127U);
    for (const auto& [before, kept] : {std::pair(79U, 79U), {78U, 78U}, {77U, 79U}})
        EXPECT_EQ(ReadableName(name.substr(0, before) + piano, Category::MediaObjects).size(), kept);
}

}  // namespace
