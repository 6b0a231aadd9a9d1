#include <gtest/gtest.h>

#include "Classification.h"
#include "RegisteredFile.h"
#include "VstEntryRules.h"

namespace {

TEST(Classification, InventoryEntriesGoByTheirFlags) {
    EXPECT_EQ(ClassifyPluginCategory({.isVst = true}), Category::VstEffects);
    EXPECT_EQ(ClassifyPluginCategory({.isVst = true, .registerAsSynth = true}), Category::VstInstruments);
    EXPECT_EQ(ClassifyPluginCategory({.isVst3 = true}), Category::Vst3Effects);
    EXPECT_EQ(ClassifyPluginCategory({.isVst3 = true, .registerAsSynth = true}), Category::Vst3Instruments);
    EXPECT_EQ(ClassifyPluginCategory({.isVst = true, .isVst3 = true}), Category::VstEffects);
}

TEST(RegisteredFile, QuotesGoAndBareNamesAreToldApart) {
    for (const auto& [path, file] : {std::pair(LR"(C:\a b\fx.dll)", LR"(C:\a b\fx.dll)"),
                                     {LR"("C:\a b\fx.dll)", LR"(C:\a b\fx.dll)"},
                                     {LR"("C:\a b\fx.dll" /x)", LR"(C:\a b\fx.dll)"},
                                     {LR"("fx.dll")", L"fx.dll"},
                                     {L"\"", L""},
                                     {L"", L""}})
        EXPECT_EQ(UnquotedPath(path), file);
    for (const wchar_t* path : {L"fx.dll", L"fx"}) EXPECT_TRUE(IsBareName(path));
    for (const wchar_t* path : {L"C:fx.dll", LR"(sub\fx.dll)", L"sub/fx.dll", L""})
        EXPECT_FALSE(IsBareName(path));
}

constexpr wchar_t kClsid[] = L"{01234567-89AB-CDEF-0123-000000000064}";
constexpr wchar_t kTwin[] = L"{01234567-89ab-cdef-9999-000000000032}";  // the same first twenty characters

VstEntry Vst(bool x64, const wchar_t* clsid) {
    VstEntry entry;
    entry.kind.isVst = true;
    entry.isX64 = x64;
    entry.clsidPlug = clsid;
    return entry;
}

TEST(VstEntryRules, A32BitEntryYieldsToItsTwin) {
    CTwinIndex twins;
    twins.Add(Vst(false, kTwin));
    EXPECT_FALSE(twins.Hides(Vst(false, kTwin))) << "it is no twin of itself";
    VstEntry x64 = Vst(true, kClsid);
    x64.isBad = true;
    twins.Add(x64);
    EXPECT_TRUE(twins.Hides(Vst(false, kTwin))) << "one that is not usable counts, and case does not";
    EXPECT_FALSE(twins.Hides(x64));
    EXPECT_FALSE(twins.Hides(Vst(false, L"{01234567-89AB-CDEE-0123-000000000032}")))
        << "the twentieth character is the last that counts";
    constexpr wchar_t kShort[] = L"{01234567-89AB-CDEF";
    twins.Add(Vst(true, kShort));
    EXPECT_FALSE(twins.Hides(Vst(false, kShort)));
    VstEntry vst3 = Vst(false, L"{}");
    vst3.kind.isVst3 = true;
    EXPECT_TRUE(twins.Hides(vst3)) << "with a twin or without";
}

}  // namespace
