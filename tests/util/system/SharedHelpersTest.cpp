#include <gtest/gtest.h>

#include "AppDataRoot.h"
#include "ClsidText.h"
#include "FoldedText.h"
#include "Resources.h"
#include "StringRing.h"
#include "resource.h"

namespace {

TEST(AppDataRoot, AnUnsetVariableIsAskedForAgainAndASetOneIsKept) {
    const auto rootAfter = [](const wchar_t* value) {
        ::SetEnvironmentVariableW(L"CorvaneAppDataRoot", value);
        return AppDataRoot();
    };
    EXPECT_EQ(rootAfter(nullptr), L"");
    EXPECT_EQ(rootAfter(std::wstring(300, L'x').c_str()), L"") << "longer than the buffer";
    EXPECT_EQ(rootAfter(L"C:\\Users\\me\\Corvane"), L"C:\\Users\\me\\Corvane");
    EXPECT_EQ(rootAfter(L"D:\\other"), L"C:\\Users\\me\\Corvane");
}

TEST(FoldedText, CaseAccentsAndWidthMakeNoDifferenceAndNothingElseIsLost) {
    const struct {
        const wchar_t* text;
        const wchar_t* folded;
    } cases[] = {
        {L"Ab{1}\"*?", L"AB{1}\"*?"},
        {L"\x00C9t\x00E9 e\x0301", L"ETE E"},
        {L"\xFF26\xFF41\xFF54", L"FAT"},
        {L"\xFF76\xFF9E", L"\x30AB\x3099"},
        {L"\x30AC", L"\x30AB\x3099"},
        {L"\x0451\x0416", L"\x0415\x0416"},
        {L"\xD83C\xDFB9x", L"\xD83C\xDFB9X"},
        {L"\xD83Cx", L"\xD83CX"},
        {L"x\xDFB9", L"X\xDFB9"},
        {L"a\x3000z", L"A Z"},
        {L"", L""},
    };
    for (const auto& [text, folded] : cases) EXPECT_EQ(FoldedText(text), folded) << text;
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
