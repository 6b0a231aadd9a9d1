#include <gtest/gtest.h>

#include "VstToolCommands.h"

namespace {

using Texts = std::vector<std::wstring>;

constexpr wchar_t kScanner[] = L"C:\\Tools Dir\\scan.exe";
constexpr wchar_t kId[] = L"{00000001-1111-2222-3333-444444444444}";

std::wstring Default(const VstToolAction& action) {
    return kScanner + ArgumentsOf(action, kId, {.path = L"Software\\Corvane VST"});
}

TEST(VstToolCommands, TheScannerIsToldOfTheKey) {
    EXPECT_EQ(Default(kScanPlugins), L"C:\\Tools Dir\\scan.exe VSTRegKey:\"Software\\Corvane VST\"");
    EXPECT_EQ(Default(kScannerOptions),
              L"C:\\Tools Dir\\scan.exe /ScanPropsVSTRegKey:\"Software\\Corvane VST\"");
    EXPECT_EQ(Default(kVstProperties), L"C:\\Tools Dir\\scan.exe /VstProps:" + std::wstring(kId) +
                                           L"VSTRegKey:\"Software\\Corvane VST\"");
    const VstKey given{.path = L"Software\\A B", .given = true};
    EXPECT_EQ(ArgumentsOf(kScanPlugins, kId, given), L" /VSTRegPerUser/VSTRegKey:\"Software\\A B\"");
    EXPECT_EQ(ArgumentsOf(kScannerOptions, kId, given),
              L" /ScanProps/VSTRegPerUser/VSTRegKey:\"Software\\A B\"");
}

TEST(VstToolCommands, TheAdapterProgramIsNot) {
    EXPECT_EQ(Default(kAdapterWizard), L"C:\\Tools Dir\\scan.exe /NoWelcome");
    EXPECT_EQ(Default(kAdapterProperties),
              L"C:\\Tools Dir\\scan.exe /NoWelcome /SilentScan /VstProps:" + std::wstring(kId));
}

TEST(VstToolCommands, OtherProgramsOnTheWayOfAnUnquotedPath) {
    EXPECT_EQ(ProgramsOnTheWay(kScanner), (Texts{L"C:\\Tools", L"C:\\Tools.exe"}));
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
