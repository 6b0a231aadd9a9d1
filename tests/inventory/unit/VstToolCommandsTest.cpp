#include <gtest/gtest.h>

#include "VstToolCommands.h"

namespace {

using Texts = std::vector<std::wstring>;

TEST(VstToolCommands, OnlyTheScannerIsToldOfTheKey) {
    const VstKey standard{.path = L"A B"}, given{.path = L"A B", .given = true};
    EXPECT_EQ(ArgumentsOf(kScanPlugins, L"{1}", standard), L" VSTRegKey:\"A B\"");
    EXPECT_EQ(ArgumentsOf(kScanPlugins, L"{1}", given), L" /VSTRegPerUser/VSTRegKey:\"A B\"");
    EXPECT_EQ(ArgumentsOf(kVstProperties, L"{1}", given), L" /VstProps:{1}/VSTRegPerUser/VSTRegKey:\"A B\"");
    EXPECT_EQ(ArgumentsOf(kScannerOptions, L"{1}", standard), L" /ScanPropsVSTRegKey:\"A B\"");
    EXPECT_EQ(ArgumentsOf(kAdapterWizard, L"{1}", given), L" /NoWelcome");
    EXPECT_EQ(ArgumentsOf(kAdapterProperties, L"{1}", given), L" /NoWelcome /SilentScan /VstProps:{1}");
}

TEST(VstToolCommands, OtherProgramsOnTheWayOfAnUnquotedPath) {
    EXPECT_EQ(ProgramsOnTheWay(L"C:\\Tools Dir\\scan.exe"), (Texts{L"C:\\Tools", L"C:\\Tools.exe"}));
    EXPECT_EQ(
        ProgramsOnTheWay(L"C:\\a.b c\\d e\tf.exe"),
        (Texts{L"C:\\a.b", L"C:\\a.b c\\d", L"C:\\a.b c\\d.exe", L"C:\\a.b c\\d e", L"C:\\a.b c\\d e.exe"}));
    EXPECT_EQ(ProgramsOnTheWay(L"C:\\v1.0\\scan me.exe"), (Texts{L"C:\\v1.0\\scan", L"C:\\v1.0\\scan.exe"}))
        << "the dot belongs to a folder";
    for (const wchar_t* alone :
         {L"C:\\Tools\\scan.exe", L"", L" ", L"\"C:\\Tools Dir\\scan.exe\"", L"C:\\scan.exe  "})
        EXPECT_EQ(ProgramsOnTheWay(alone), Texts()) << testing::PrintToString(std::wstring(alone));
}

}  // namespace
