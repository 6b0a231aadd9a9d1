#include <gtest/gtest.h>

#include "AppDataRoot.h"
#include "ClsidText.h"
#include "FoldedText.h"
#include "Resources.h"
#include "StringRing.h"
#include "resource.h"
#include "support/FileSandbox.h"

namespace {

TEST(AppDataRoot, AnUnsetVariableIsAskedForAgainAndASetOneIsKept) {
    const auto rootAfter = [](const wchar_t* value) {
        ::SetEnvironmentVariableW(L"CorvaneAppDataRoot", value);
        return AppDataRoot();
    };
    EXPECT_EQ(rootAfter(nullptr), L"");
    EXPECT_EQ(rootAfter(std::wstring(300, L'x').c_str()), L"") << "longer than the buffer";
    // Kept to the end of the process: it is where other tests have their presets.
    const support::FileSandbox files;
    const std::wstring root = files.Folder().wstring();
    EXPECT_EQ(rootAfter(root.c_str()), root);
    EXPECT_EQ(rootAfter(L"D:\\other"), root);
}

TEST(FoldedText, CaseAccentsAndWidthMakeNoDifferenceAndNothingElseIsLost) {
    EXPECT_EQ(FoldedText(L"Ab{1}\"*? \x00C9t\x00E9 e\x0301 \xFF26\xFF41\xFF54\x3000z"),
              L"AB{1}\"*? ETE E FAT Z");
    EXPECT_EQ(FoldedText(L"\xFF76\xFF9E \x30AC \x0451\x0416"), L"\x30AB\x3099 \x30AB\x3099 \x0415\x0416");
    EXPECT_EQ(FoldedText(L"\xD83C\xDFB9x"), L"\xD83C\xDFB9X");
    EXPECT_EQ(FoldedText(L"\xD83Cx y\xDFB9"), L"\xD83CX Y\xDFB9") << "halves";
}

TEST(StringRing, A33rdLoadTakesTheFirstBufferAgain) {
    const wchar_t* first = LoadRingText(IDS_TITLE);
    EXPECT_STREQ(first, L"Corvane Plug-in Manager");
    for (unsigned load = 1; load < kRingBuffers; ++load) EXPECT_NE(LoadRingText(IDS_FOUND), first);
    EXPECT_EQ(LoadRingText(IDS_FOUND), first);
    EXPECT_STREQ(first, L"found");
    EXPECT_STREQ(LoadRingText(9999), L"") << "a missing id is an empty text";
}

TEST(Resources, TextsComeInTheChosenLanguageAndElseInEnglish) {
    for (const auto& [language, text] :
         {std::pair(1031, L"Am Host andocken"), std::pair(1054, L"Disable floating")}) {
        SetResourceLanguage(static_cast<LANGID>(language));  // German, and Thai, which there is none of
        EXPECT_EQ(LoadText(IDS_DISABLE_FLOATING), text);
    }
    SetResourceLanguage(1033);
}

TEST(ClsidText, IsTheSystemsForm) {
    constexpr Guid guid = "{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}"_guid;
    EXPECT_EQ(ClsidText(guid), L"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}");
    EXPECT_EQ(ParseClsid(L"{0a1b2c3d-4e5f-6071-8293-a4b5c6d7e8f9}"), guid);
    for (const wchar_t* other :
         {L"", L"{", L"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9", L"No such program id",
          L"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8FG}", L"0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9"}) {
        EXPECT_FALSE(ParseClsid(other)) << ::testing::PrintToString(other);
    }
}

}  // namespace
