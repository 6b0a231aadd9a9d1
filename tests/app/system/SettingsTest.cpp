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
    support::RegistrySandbox m_sandbox;
};

TEST_F(Settings, APlainStartNotesTheProgramForTheUserOnly) {
    support::SetText(HKEY_CURRENT_USER, kManager, L"MenuLayoutsPath", L"C:\\Layouts");
    const auto settings = LoadManagerSettings(false, nullptr);
    EXPECT_TRUE(settings.succeeded);
    EXPECT_EQ(settings.layoutFolder, L"C:\\Layouts");
    EXPECT_EQ(support::Text(HKEY_CURRENT_USER, kManager, L"ExePath"), ProgramPath());
    EXPECT_FALSE(support::Text(HKEY_CURRENT_USER, kManager, L"ParentWindow"));
    EXPECT_FALSE(support::Exists(HKEY_LOCAL_MACHINE, kManager));
    EXPECT_FALSE(support::Exists(HKEY_LOCAL_MACHINE, kEntry));
}

TEST_F(Settings, ALayoutFolderThatIsTooLongIsNoFolder) {
    support::SetText(HKEY_CURRENT_USER, kManager, L"MenuLayoutsPath", std::wstring(260, L'x'));
    EXPECT_EQ(LoadManagerSettings(false, nullptr).layoutFolder, L"");
}

TEST_F(Settings, OnlyALiveHostIsNoted) {
    const support::StandInHost host;
    LoadManagerSettings(false, host.Window());
    EXPECT_EQ(support::Text(HKEY_CURRENT_USER, kManager, L"ParentWindow"), host.HandleText());
    ForgetParentWindow();
    EXPECT_FALSE(support::Text(HKEY_CURRENT_USER, kManager, L"ParentWindow"));
    LoadManagerSettings(false, reinterpret_cast<HWND>(0xDEAD0));
    EXPECT_FALSE(support::Text(HKEY_CURRENT_USER, kManager, L"ParentWindow"));
}

TEST_F(Settings, ARegistrationWritesTheWholeEntryAndClearsTheOldOne) {
    support::CreateKey(HKEY_LOCAL_MACHINE, kOldEntry);
    EXPECT_TRUE(LoadManagerSettings(true, nullptr).succeeded);
    EXPECT_EQ(support::Text(HKEY_LOCAL_MACHINE, kManager, L"ExePath"), ProgramPath());
    EXPECT_FALSE(support::Exists(HKEY_LOCAL_MACHINE, kOldEntry));
    EXPECT_EQ(support::Text(HKEY_LOCAL_MACHINE, kEntry, L"ExePath"), ProgramPath());
    EXPECT_EQ(support::Text(HKEY_LOCAL_MACHINE, kEntry, L"MenuText"), L"Corvane Plug-in &Manager");
    EXPECT_EQ(support::Text(HKEY_LOCAL_MACHINE, kEntry, L"StatusBarText"), L"Run Corvane Plug-in Manager");
    EXPECT_EQ(support::Text(HKEY_LOCAL_MACHINE, kEntry, L"Type"), L"Generic");
    EXPECT_EQ(support::Text(HKEY_LOCAL_MACHINE, kEntry, L"CmdArgs"), L"/ParentWnd$ /VSTInventoryRegKey$");
    EXPECT_EQ(support::Dword(HKEY_LOCAL_MACHINE, kEntry, L"Modal"), 0U);
}

TEST_F(Settings, ASecondRegistrationOfTheSameFileLeavesTheTexts) {
    LoadManagerSettings(true, nullptr);
    std::wstring upper = ProgramPath();
    for (wchar_t& c : upper) c = static_cast<wchar_t>(::towupper(c));
    support::SetText(HKEY_LOCAL_MACHINE, kEntry, L"ExePath", upper);
    support::SetText(HKEY_LOCAL_MACHINE, kEntry, L"MenuText", L"&Verwaltung");
    support::SetText(HKEY_LOCAL_MACHINE, kEntry, L"CmdArgs", L"old");
    support::SetDword(HKEY_LOCAL_MACHINE, kEntry, L"Modal", 1);
    EXPECT_FALSE(LoadManagerSettings(true, nullptr).succeeded);
    EXPECT_EQ(support::Text(HKEY_LOCAL_MACHINE, kEntry, L"MenuText"), L"&Verwaltung");
    EXPECT_EQ(support::Text(HKEY_LOCAL_MACHINE, kEntry, L"CmdArgs"), L"/ParentWnd$ /VSTInventoryRegKey$");
    EXPECT_EQ(support::Dword(HKEY_LOCAL_MACHINE, kEntry, L"Modal"), 0U);
}

TEST_F(Settings, AnEntryOfAnotherFileIsWrittenAnew) {
    support::SetText(HKEY_LOCAL_MACHINE, kEntry, L"ExePath", L"C:\\Elsewhere\\PluginManager.exe");
    support::SetText(HKEY_LOCAL_MACHINE, kEntry, L"MenuText", L"&Verwaltung");
    EXPECT_TRUE(LoadManagerSettings(true, nullptr).succeeded);
    EXPECT_EQ(support::Text(HKEY_LOCAL_MACHINE, kEntry, L"ExePath"), ProgramPath());
    EXPECT_EQ(support::Text(HKEY_LOCAL_MACHINE, kEntry, L"MenuText"), L"Corvane Plug-in &Manager");
}

/// A copy of the program inside a host, as far as a search can tell.
HWND AddChildWithTitle(HWND host, const wchar_t* title) {
    return ::CreateWindowExW(0, L"STATIC", title, WS_CHILD, 0, 0, 10, 10, host, nullptr, nullptr, nullptr);
}

TEST_F(Settings, ARunningCopyIsFoundByItsBareTitleInsideAHost) {
    const support::StandInHost host;
    EXPECT_FALSE(BringRunningCopyForward(host.Window()));
    const HWND other = AddChildWithTitle(host.Window(), L"Corvane Plug-in Manager x64");
    EXPECT_FALSE(BringRunningCopyForward(host.Window())) << "the suffix makes it another title";
    const HWND copy = AddChildWithTitle(host.Window(), L"Corvane Plug-in Manager");
    EXPECT_TRUE(BringRunningCopyForward(host.Window())) << "the window of the command line";
    EXPECT_FALSE(BringRunningCopyForward(nullptr)) << "no window is stored";
    support::SetText(HKEY_CURRENT_USER, kManager, L"ParentWindow", host.HandleText());
    EXPECT_TRUE(BringRunningCopyForward(nullptr)) << "the stored window";
    for (const wchar_t* nonsense : {L"", L"window", L"DEAD0", L"FFFFFFFFFFFFFFFFFFFFF"}) {
        support::SetText(HKEY_CURRENT_USER, kManager, L"ParentWindow", nonsense);
        EXPECT_FALSE(BringRunningCopyForward(nullptr)) << testing::PrintToString(nonsense);
    }
    ::DestroyWindow(copy);
    ::DestroyWindow(other);
}

}  // namespace
