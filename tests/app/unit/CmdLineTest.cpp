#include <gtest/gtest.h>

#include "CmdLine.h"
#include "PointerText.h"

namespace {

/// A letter for each switch, small while its value is awaited; then the window, the key and the file.
using Understood = std::tuple<std::string, std::uintptr_t, std::wstring, std::wstring>;

Understood Parse(const std::vector<std::wstring>& tokens) {
    const auto line = CPluginManagerCmdLine::Parse(tokens);
    std::string flags;
    for (const auto& [isSet, letter] : {std::pair(line.registerOnly, 'R'),
                                        {line.floating, 'F'},
                                        {line.useDatabase, 'D'},
                                        {line.parentWndPending, 'w'},
                                        {line.inventoryKeyPending, 'k'}})
        if (isSet) flags += letter;
    return {flags, line.parentWnd, line.vstInventoryKey, line.fileParam};
}

TEST(CmdLine, TakesWhatItUnderstands) {
    EXPECT_EQ(Parse({L"/ParentWnd", L"000000000001A2B4", L"/VSTInventoryRegKey", L"Soft\\VST", L"C:\\a.pgl"}),
              Understood("", 0x1A2B4, L"Soft\\VST", L"C:\\a.pgl"));
    EXPECT_EQ(Parse({L"-rEGISTER", L"/float", L"-USEDATABASE"}), Understood("RFD", 0, L"", L""));
    EXPECT_EQ(Parse({L"/Registers", L"/Floa", L"//Float", L"/", L"-", L"/Use Database"}), Understood());
    EXPECT_EQ(Parse({L"/VSTInventoryRegKey", L"/w", L"-x", L"1F", L"/", L"Key", L"File"}),
              Understood("", 0x1F, L"Key", L"File"))
        << "the window is served before the key, whatever unknown switch stands between";
    EXPECT_EQ(Parse({L"/VSTInventoryRegKey", L"/ParentWnd"}), Understood("wk", 0, L"", L""));
    EXPECT_EQ(Parse({L"/w", L"1F", L"/w", L"window", L"a", L"b"}), Understood("", 0x1F, L"", L"b"))
        << "a handle that does not parse is used up; the last plain parameter counts";
    EXPECT_EQ(WithoutProgram(L"\"C:\\a b\\p.exe\"  /w 1F \"a b"), L"/w 1F \"a b");
    for (const wchar_t* alone : {L"p.exe", L"\"p.exe\" ", L"\"p", L""}) EXPECT_EQ(WithoutProgram(alone), L"");
}

TEST(CmdLine, PointersReadAsScanfReadsThem) {
    for (const auto& [text, value] : {std::pair(L"0x1F", std::uintptr_t{0x1F}),
                                      {L" \t0XfF rest", 0xFF},
                                      {L"0x", 0},
                                      {L"FFFFFFFFFFFFFFFF", ~std::uintptr_t{0}}})
        EXPECT_EQ(ParsePointer(text), value) << testing::PrintToString(std::wstring(text));
    for (const wchar_t* text : {L"1FFFFFFFFFFFFFFFF", L"", L"-1"})
        EXPECT_FALSE(ParsePointer(text)) << testing::PrintToString(std::wstring(text));
}

}  // namespace
