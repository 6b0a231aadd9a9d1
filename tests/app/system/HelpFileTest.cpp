#include <gtest/gtest.h>

#include "HelpFile.h"
#include "support/FileSandbox.h"
#include "support/Surroundings.h"

namespace {

TEST(HelpFile, ThePathIsBesideTheProgramUnlessItWouldBeTooLong) {
    const std::wstring longProgram = L"C:\\" + std::wstring(MAX_PATH - 11, L'x') + L"\\p.exe";
    const std::wstring cases[][3] = {
        // the program, the name, the path
        {L"C:\\Audio\\p.exe", L"help.chm", L"C:\\Audio\\help.chm"},
        {L"C:\\Audio\\p.exe", L"D:\\Elsewhere\\help.chm", L"D:\\Elsewhere\\help.chm"},
        {L"C:\\Audio\\p.exe", L"sub/help.chm", L"sub/help.chm"},
        {longProgram, L"help.chm", longProgram},
    };
    for (const auto& [program, name, path] : cases) {
        CHelpFile help;
        EXPECT_EQ(help.ShowTopic(L"welcome.htm"), E_INVALIDARG) << "the engine is not ready";
        help.Prepare(program, name);
        EXPECT_EQ(help.Path(), path);
    }
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

TEST(HelpFile, TheMarkOfTheInternetIsSeen) {
    const support::FileSandbox files;
    CHelpFile help;
    help.Prepare(files.Path(L"p.exe"), L"help.chm");
    files.Write(L"help.chm", "");
    EXPECT_FALSE(help.IsMarked());
    files.Write(L"help.chm:Zone.Identifier", "[ZoneTransfer]\r\nZoneId=3\r\n");
    EXPECT_TRUE(help.IsMarked());
}

}  // namespace
