#include <gtest/gtest.h>

#include "VstEntryRules.h"

namespace {

constexpr wchar_t kClsid[] = L"{01234567-89AB-CDEF-0123-000000000064}";
constexpr wchar_t kTwin[] = L"{01234567-89ab-cdef-9999-000000000032}";  // the same first twenty characters

VstEntry Usable(bool x64 = false, const wchar_t* clsid = kClsid) {
    VstEntry entry;
    entry.kind.isVst = true;
    entry.isX64 = x64;
    entry.clsidPlug = clsid;
    entry.fullPath = L"C:\\VST\\a.dll";
    return entry;
}

TEST(VstEntryRules, EachRuleDropsAnEntry) {
    const auto isUsable = [](auto&& change) {
        VstEntry entry = Usable();
        change(entry);
        return IsUsable(entry);
    };
    EXPECT_TRUE(isUsable([](VstEntry&) {}));
    EXPECT_FALSE(isUsable([](VstEntry& e) { e.kind.isVst = false; }));
    EXPECT_TRUE(isUsable([](VstEntry& e) { e.kind = {.isVst3 = true}; }));
    EXPECT_TRUE(isUsable([](VstEntry& e) { e.isShell = true; })) << "a shell's member";
    EXPECT_FALSE(isUsable([](VstEntry& e) { e.isShell = e.isShellRoot = true; })) << "the shell itself";
    EXPECT_FALSE(isUsable([](VstEntry& e) { e.isBad = true; }));
    EXPECT_FALSE(isUsable([](VstEntry& e) { e.fullPath.reset(); }));
    EXPECT_FALSE(isUsable([](VstEntry& e) { e.clsidPlug.reset(); }));
    EXPECT_TRUE(isUsable([](VstEntry& e) { e.clsidPlug.reset(), e.clsidPlugMd5 = L""; }))
        << "one that is there counts, also when it is empty";
}

TEST(VstEntryRules, A32BitEntryYieldsToItsTwin) {
    CTwinIndex twins;
    twins.Add(Usable(false, kTwin));
    EXPECT_FALSE(twins.Hides(Usable(false, kTwin))) << "it is no twin of itself";
    VstEntry x64 = Usable(true);
    x64.isBad = true;
    twins.Add(x64);
    EXPECT_TRUE(twins.Hides(Usable(false, kTwin))) << "a twin that is not usable counts, and case does not";
    EXPECT_FALSE(twins.Hides(x64));
    EXPECT_FALSE(twins.Hides(Usable(false, L"{01234567-89AB-CDEE-0123-000000000032}")))
        << "the twentieth character is the last that counts";
    constexpr wchar_t kShort[] = L"{01234567-89AB-CDEF";
    twins.Add(Usable(true, kShort));
    EXPECT_FALSE(twins.Hides(Usable(false, kShort)));
    VstEntry vst3 = Usable(false, L"{}");
    vst3.kind.isVst3 = true;
    EXPECT_TRUE(twins.Hides(vst3)) << "with a twin or without";
}

}  // namespace
