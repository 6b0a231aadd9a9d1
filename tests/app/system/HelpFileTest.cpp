#include <gtest/gtest.h>

#include "HelpFile.h"

namespace {

TEST(HelpFile, LiesBesideTheProgramUnlessItsNameSaysWhere) {
    const std::wstring longFolder = L"C:\\" + std::wstring(230, L'x') + L"\\";
    const struct {
        std::wstring program, name, path;
    } cases[] = {
        {L"C:\\Studio\\Manager.exe", L"Help.chm", L"C:\\Studio\\Help.chm"},
        {L"C:\\Studio\\Manager.exe", L"D:\\Help.chm", L"D:\\Help.chm"},
        {L"C:\\Studio\\Manager.exe", L"help/Help.chm", L"help/Help.chm"},
        {longFolder + L"12345678901.exe", L"1234.chm12", longFolder + L"1234.chm12"},
        {longFolder + L"12345678901.exe", L"1234.chm123", longFolder + L"12345678901.exe"},
    };
    for (const auto& c : cases) {
        CHelpFile help;
        help.Prepare(c.program, c.name);
        EXPECT_EQ(help.Path(), c.path);
    }
}

TEST(HelpFile, ShowsNothingBeforeItIsPrepared) {
    const CHelpFile help;
    EXPECT_EQ(help.Request(HelpCommand::Context, 1), E_INVALIDARG);
    EXPECT_EQ(help.ShowTopic(L"presets.htm"), E_INVALIDARG);
}

}  // namespace
