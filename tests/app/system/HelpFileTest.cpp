#include <gtest/gtest.h>

#include "HelpFile.h"

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

}  // namespace
