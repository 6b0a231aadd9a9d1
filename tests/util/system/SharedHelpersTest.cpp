#include <gtest/gtest.h>
#include <string>

#include "AppDataRoot.h"
#include "ClsidText.h"
#include "DebugLog.h"
#include "Resources.h"
#include "StringRing.h"
#include "resource.h"

namespace {

TEST(AppDataRoot, AnUnsetVariableIsAskedForAgainAndASetOneIsKept) {
    ::SetEnvironmentVariableW(L"CorvaneAppDataRoot", nullptr);
    EXPECT_EQ(AppDataRoot(), L"");
    ::SetEnvironmentVariableW(L"CorvaneAppDataRoot", std::wstring(300, L'x').c_str());
    EXPECT_EQ(AppDataRoot(), L"") << "longer than the buffer";
    ::SetEnvironmentVariableW(L"CorvaneAppDataRoot", L"C:\\Users\\me\\Corvane");
    EXPECT_EQ(AppDataRoot(), L"C:\\Users\\me\\Corvane");
    ::SetEnvironmentVariableW(L"CorvaneAppDataRoot", L"D:\\other");
    EXPECT_EQ(AppDataRoot(), L"C:\\Users\\me\\Corvane");
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
    SetResourceLanguage(1031);
    const std::wstring german = LoadText(IDS_DISABLE_FLOATING);
    SetResourceLanguage(1054);  // Thai, which there is none of
    EXPECT_EQ(LoadText(IDS_DISABLE_FLOATING), L"Disable floating");
    EXPECT_TRUE(LoadDialogTemplate(IDD_PLUGIN_MANAGER));
    SetResourceLanguage(1033);
    EXPECT_NE(german, LoadText(IDS_DISABLE_FLOATING));
    EXPECT_NE(german, L"");
    EXPECT_EQ(LoadText(9999), L"");
    EXPECT_FALSE(LoadDialogTemplate(9999));
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

TEST(DebugLog, IsInertAndAnswersForItsTwoInterfaces) {
    CDebugLog log;
    EXPECT_EQ(log.Open(L"PluginManager"), 0);
    EXPECT_EQ(log.Service(), nullptr);
    void* object = nullptr;
    EXPECT_EQ(log.QueryInterface(kLogClientAdviseId, &object), S_OK);
    EXPECT_EQ(object, &log);
    EXPECT_EQ(log.QueryInterface(IID_IUnknown, &object), S_OK);
    EXPECT_EQ(log.Release(), 1U) << "each answer took a reference";
    EXPECT_EQ(log.QueryInterface(IID_IPersist, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(log.Advise(), S_OK);
    EXPECT_EQ(log.Close(), 1);
}

}  // namespace
