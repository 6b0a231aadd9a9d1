#include <gtest/gtest.h>

#include "HelpFile.h"
#include "support/FileSandbox.h"
#include "support/Surroundings.h"

namespace {

TEST(HelpFile, ThePathIsBesideTheProgramUnlessItWouldBeTooLong) {
    const std::wstring longProgram = L"C:\\" + std::wstring(MAX_PATH - 11, L'x') + L"\\p.exe";
    const auto pathOf = [](const std::wstring& program, const wchar_t* name) {
        CHelpFile help;
        EXPECT_EQ(help.ShowTopic(L"welcome.htm"), E_INVALIDARG) << "the engine is not ready";
        help.Prepare(program, name);
        return help.Path();
    };
    EXPECT_EQ(pathOf(L"C:\\Audio\\p.exe", L"help.chm"), L"C:\\Audio\\help.chm");
    EXPECT_EQ(pathOf(L"C:\\Audio\\p.exe", L"D:\\Elsewhere\\help.chm"), L"D:\\Elsewhere\\help.chm");
    EXPECT_EQ(pathOf(L"C:\\Audio\\p.exe", L"sub/help.chm"), L"sub/help.chm");
    EXPECT_EQ(pathOf(longProgram, L"help.chm"), longProgram);
}

TEST(HelpFile, TheEngineGetsAPathThatItCanRead) {
    const support::FileSandbox files;
    const std::wstring foreign = files.Write(L"помощь.chm", "help");
    EXPECT_EQ(HelpPathForEngine(foreign + L"x"), foreign + L"x") << "there is no such file";
    const std::wstring given = HelpPathForEngine(foreign);
    if (!support::OnWine() && given == foreign)
        GTEST_SKIP() << "the code page has these letters, or the disk no short names";
    EXPECT_TRUE(std::ranges::all_of(given, [](wchar_t c) { return c < 0x80; })) << given.size();
    EXPECT_EQ(files.Read(given.substr(given.rfind(L'\\') + 1)), "help");
}

}  // namespace
