#include <gtest/gtest.h>

#include "InstanceSearch.h"
#include "ManagerSettings.h"
#include "ProgramPath.h"
#include "support/RegistrySandbox.h"
#include "support/StandInHost.h"

namespace {

constexpr wchar_t kManager[] = L"Software\\Corvane Music Software\\Corvane Plugin Manager";
constexpr wchar_t kEntry[] = L"SOFTWARE\\Corvane Music Software\\Tools Menu\\Plugin Manager";
constexpr wchar_t kOldEntry[] = L"SOFTWARE\\Corvane Music Software\\Tools Menu\\Ostrel Plugin Manager\\More";

class Settings : public testing::Test {
  protected:
    static auto User(const wchar_t* name) { return support::Text(HKEY_CURRENT_USER, kManager, name); }
    static void SetUser(const wchar_t* name, const std::wstring& text) {
        support::SetText(HKEY_CURRENT_USER, kManager, name, text);
    }
    support::RegistrySandbox m_sandbox;
};

TEST_F(Settings, AStartNotesTheProgramForTheUserOnlyAndALiveHost) {
    SetUser(L"MenuLayoutsPath", L"C:\\Layouts");
    const auto settings = LoadManagerSettings(false, reinterpret_cast<HWND>(0xDEAD0));
    EXPECT_TRUE(settings.succeeded);
    EXPECT_EQ(settings.layoutFolder, L"C:\\Layouts");
    EXPECT_EQ(User(L"ExePath"), ProgramPath());
    EXPECT_FALSE(User(L"ParentWindow"));
    EXPECT_EQ(support::Subkeys(HKEY_LOCAL_MACHINE, L"Software"), std::vector<std::wstring>{L"Classes"});
    SetUser(L"MenuLayoutsPath", std::wstring(260, L'x'));
    const support::StandInHost host;
    EXPECT_EQ(LoadManagerSettings(false, host.Window()).layoutFolder, L"") << "too long";
    EXPECT_EQ(User(L"ParentWindow"), host.HandleText());
    ForgetParentWindow();
    EXPECT_FALSE(User(L"ParentWindow"));
}

TEST_F(Settings, ARegistrationWritesTheWholeEntryButThatOfTheSameFileKeepsItsTexts) {
    std::wstring upper = ProgramPath();
    ::CharUpperW(upper.data());
    const wchar_t* const names[] = {L"ExePath", L"MenuText", L"StatusBarText", L"Type", L"CmdArgs"};
    const std::wstring arguments = L"/ParentWnd$ /VSTInventoryRegKey$";
    const std::vector<std::wstring> whole = {ProgramPath(), L"Corvane Plug-in &Manager",
                                             L"Run Corvane Plug-in Manager", L"Generic", arguments};
    const std::vector<std::wstring> kept = {upper, L"old", L"old", L"old", arguments};
    const std::wstring entries[] = {L"", L"C:\\Elsewhere\\PluginManager.exe", upper};
    for (const std::wstring& path : entries) {
        support::DeleteTree(HKEY_LOCAL_MACHINE, kEntry);
        support::CreateKey(HKEY_LOCAL_MACHINE, kOldEntry);
        if (!path.empty()) {
            for (const wchar_t* name : names) support::SetText(HKEY_LOCAL_MACHINE, kEntry, name, L"old");
            support::SetText(HKEY_LOCAL_MACHINE, kEntry, L"ExePath", path);
            support::SetDword(HKEY_LOCAL_MACHINE, kEntry, L"Modal", 1);
        }
        EXPECT_EQ(LoadManagerSettings(true, nullptr).succeeded, path != upper);
        std::vector<std::wstring> texts;
        for (const wchar_t* name : names)
            texts.push_back(support::Text(HKEY_LOCAL_MACHINE, kEntry, name).value_or(L"none"));
        EXPECT_EQ(texts, path == upper ? kept : whole);
        EXPECT_EQ(support::Dword(HKEY_LOCAL_MACHINE, kEntry, L"Modal"), 0U);
        EXPECT_FALSE(support::Exists(HKEY_LOCAL_MACHINE, kOldEntry));
        EXPECT_EQ(support::Text(HKEY_LOCAL_MACHINE, kManager, L"ExePath"), ProgramPath());
    }
}

TEST_F(Settings, ARunningCopyIsFoundByItsBareTitleInsideAHost) {
    const support::StandInHost host;
    EXPECT_FALSE(BringRunningCopyForward(host.Window()));
    // A copy of the program inside a host, as far as a search can tell.
    const HWND copy = ::CreateWindowExW(0, L"STATIC", L"Corvane Plug-in Manager x64", WS_CHILD, 0, 0, 10, 10,
                                        host.Window(), nullptr, nullptr, nullptr);
    EXPECT_FALSE(BringRunningCopyForward(host.Window())) << "the suffix makes it another title";
    ::SetWindowTextW(copy, L"Corvane Plug-in Manager");
    EXPECT_TRUE(BringRunningCopyForward(host.Window())) << "the window of the command line";
    EXPECT_FALSE(BringRunningCopyForward(nullptr)) << "no window is stored";
    SetUser(L"ParentWindow", host.HandleText());
    EXPECT_TRUE(BringRunningCopyForward(nullptr)) << "the stored window";
    SetUser(L"ParentWindow", L"DEAD0");
    EXPECT_FALSE(BringRunningCopyForward(nullptr));
    ::DestroyWindow(copy);
}

}  // namespace
