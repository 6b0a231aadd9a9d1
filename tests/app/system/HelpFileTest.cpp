#include <gtest/gtest.h>

#include "HelpFile.h"

namespace {

TEST(HelpFile, RequestsFailBeforeTheEngineIsReady) {
    const CHelpFile help;
    MSG message{};
    EXPECT_EQ(help.Request(HelpCommand::Context, 1), E_INVALIDARG);
    EXPECT_EQ(help.ShowTopic(L"welcome.htm"), E_INVALIDARG);
    EXPECT_FALSE(help.TakesMessage(message));
}

TEST(HelpFile, ThePathIsBesideTheProgramUnlessItWouldBeTooLong) {
    const std::wstring longProgram = L"C:\\" + std::wstring(MAX_PATH - 11, L'x') + L"\\p.exe";
    const struct {
        std::wstring program, name, path;
    } cases[] = {
        {L"C:\\Audio\\p.exe", L"help.chm", L"C:\\Audio\\help.chm"},
        {L"C:\\Audio\\p.exe", L"D:\\Elsewhere\\help.chm", L"D:\\Elsewhere\\help.chm"},
        {L"C:\\Audio\\p.exe", L"sub/help.chm", L"sub/help.chm"},
        {longProgram, L"help.chm", longProgram},
    };
    for (const auto& c : cases) {
        CHelpFile help;
        help.Prepare(c.program, c.name);
        EXPECT_EQ(help.Path(), c.path);
    }
}

}  // namespace
