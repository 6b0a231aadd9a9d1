#include <gtest/gtest.h>

#include "VstEntryRules.h"

namespace {

constexpr wchar_t kClsid[] = L"{01234567-89AB-CDEF-0123-000000000064}";
constexpr wchar_t kTwin[] = L"{01234567-89ab-cdef-9999-000000000032}";  // the same first twenty characters

VstEntry Usable() {
    VstEntry entry;
    entry.kind.isVst = true;
    entry.clsidPlug = kClsid;
    entry.fullPath = L"C:\\VST\\a.dll";
    return entry;
}

TEST(VstEntryRules, EachRuleDropsAnEntry) {
    EXPECT_TRUE(IsUsable(Usable()));
    VstEntry entry = Usable();
    entry.kind.isVst = false;
    EXPECT_FALSE(IsUsable(entry)) << "neither VST nor VST3";
    entry.kind.isVst3 = true;
    EXPECT_TRUE(IsUsable(entry));
    entry = Usable();
    entry.isShell = true;
    EXPECT_TRUE(IsUsable(entry)) << "a shell's member";
    entry.isShellRoot = true;
    EXPECT_FALSE(IsUsable(entry)) << "the shell itself";
    entry = Usable();
    entry.isBad = true;
    EXPECT_FALSE(IsUsable(entry));
    entry = Usable();
    entry.clsidPlug.reset();
    EXPECT_FALSE(IsUsable(entry)) << "no class id";
    entry.clsidPlugMd5 = L"";
    EXPECT_TRUE(IsUsable(entry)) << "one that is there counts, also when it is empty";
    entry = Usable();
    entry.fullPath.reset();
    EXPECT_FALSE(IsUsable(entry));
}

TEST(VstEntryRules, A32BitEntryYieldsToItsTwin) {
    CTwinIndex twins;
    VstEntry x64 = Usable();
    x64.isX64 = true;
    x64.isBad = true;
    VstEntry x86 = Usable();
    x86.clsidPlug = kTwin;
    EXPECT_FALSE(twins.Hides(x86));
    twins.Add(x86);
    EXPECT_FALSE(twins.Hides(x86)) << "it is no twin of itself";
    twins.Add(x64);
    EXPECT_TRUE(twins.Hides(x86)) << "a twin that is not usable counts, and case does not";
    EXPECT_FALSE(twins.Hides(x64));
    x86.clsidPlug = L"{01234567-89AB-CDEE-0123-000000000032}";
    EXPECT_FALSE(twins.Hides(x86)) << "the twentieth character is the last that counts";
}

TEST(VstEntryRules, ShortIdsHaveNoTwin) {
    CTwinIndex twins;
    VstEntry entry = Usable();
    entry.isX64 = true;
    entry.clsidPlug = L"{01234567-89AB-CDEF";
    twins.Add(entry);
    entry.isX64 = false;
    EXPECT_FALSE(twins.Hides(entry));
    entry.clsidPlug.reset();
    EXPECT_FALSE(twins.Hides(entry));
}

TEST(VstEntryRules, A32BitVst3IsAlwaysHidden) {
    VstEntry entry = Usable();
    entry.kind.isVst3 = true;
    EXPECT_TRUE(CTwinIndex().Hides(entry));
    entry.isX64 = true;
    EXPECT_FALSE(CTwinIndex().Hides(entry));
}

}  // namespace
