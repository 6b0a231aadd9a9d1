#include <gtest/gtest.h>

#include "CmdLine.h"

namespace {

CPluginManagerCmdLine Parse(const std::vector<std::wstring>& tokens) {
    return CPluginManagerCmdLine::Parse(tokens);
}

TEST(CmdLine, ReadsWhatTheHostPasses) {
    const auto line = Parse({L"/ParentWnd", L"000000000001A2B4", L"/VSTInventoryRegKey",
                             L"Software\\Studio\\VST", L"C:\\Layouts\\Mixing.pgl"});
    EXPECT_EQ(line.parentWnd, 0x1A2B4U);
    EXPECT_EQ(line.vstInventoryKey, L"Software\\Studio\\VST");
    EXPECT_EQ(line.fileParam, L"C:\\Layouts\\Mixing.pgl");
    EXPECT_FALSE(line.parentWndPending || line.inventoryKeyPending || line.floating || line.registerOnly);
}

TEST(CmdLine, SwitchesAreComparedWholeAndWithoutCase) {
    const auto line = Parse({L"-rEGISTER", L"/float", L"-USEDATABASE"});
    EXPECT_TRUE(line.registerOnly && line.floating && line.useDatabase);
    const auto other = Parse({L"/Registers", L"/Floa", L"//Float", L"/", L"-", L"/Use Database"});
    EXPECT_FALSE(other.registerOnly || other.floating || other.useDatabase);
    EXPECT_EQ(other.fileParam, L"");
}

TEST(CmdLine, TheWindowIsServedBeforeTheKey) {
    const auto line = Parse({L"/VSTInventoryRegKey", L"/w", L"1F", L"Key", L"File"});
    EXPECT_EQ(line.parentWnd, 0x1FU);
    EXPECT_EQ(line.vstInventoryKey, L"Key");
    EXPECT_EQ(line.fileParam, L"File");
}

TEST(CmdLine, AValueThatNeverComesLeavesItsSwitchPending) {
    const auto line = Parse({L"/VSTInventoryRegKey", L"/ParentWnd"});
    EXPECT_TRUE(line.parentWndPending && line.inventoryKeyPending);
    EXPECT_EQ(line.parentWnd, 0U);
    EXPECT_EQ(line.vstInventoryKey, L"");
}

TEST(CmdLine, AHandleThatDoesNotParseIsUsedUp) {
    const auto line = Parse({L"/w", L"1F", L"/w", L"window", L"a", L"b"});
    EXPECT_EQ(line.parentWnd, 0x1FU);
    EXPECT_FALSE(line.parentWndPending);
    EXPECT_EQ(line.fileParam, L"b") << "the last plain parameter counts";
}

TEST(CmdLine, PointersReadAsScanfReadsThem) {
    struct Case {
        const wchar_t* text;
        std::optional<std::uintptr_t> value;
    };
    const Case cases[] = {
        {L"1a2B", 0x1A2B},
        {L"0x1F", 0x1F},
        {L"0XfF rest", 0xFF},
        {L"  7", 7},
        {L"0x", 0},
        {L"0", 0},
        {L"FFFFFFFFFFFFFFFF", ~std::uintptr_t{0}},
        {L"1FFFFFFFFFFFFFFFF", std::nullopt},
        {L"", std::nullopt},
        {L" ", std::nullopt},
        {L"-1", std::nullopt},
        {L"x1", std::nullopt},
    };
    for (const Case& c : cases) EXPECT_EQ(ParsePointer(c.text), c.value) << testing::PrintToString(c.text);
}

}  // namespace
