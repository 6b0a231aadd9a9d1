#include <objbase.h>

#include <gtest/gtest.h>

#include "AppDataRoot.h"
#include "ClsidText.h"
#include "FoldedText.h"
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

TEST(ClsidText, IsWhatTheSystemWrites) {
    constexpr Guid kId = "{01234567-89AB-CDEF-1032-547698BADCFE}"_guid;
    std::array<wchar_t, 39> text{};
    ASSERT_EQ(::StringFromGUID2(ToSystem(kId), text.data(), 39), 39);
    EXPECT_EQ(ClsidText(kId), text.data());
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

}  // namespace
