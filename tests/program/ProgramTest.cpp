// The real program with the sample studio, worked through its window by another process.

#include "resource.h"
#include "support/FileSandbox.h"
#include "support/RegistrySandbox.h"
#include "support/StandInHost.h"
#include "support/WindowDriver.h"

namespace {

using namespace support;

constexpr wchar_t kCompany[] = L"Software\\Corvane Music Software";

using Program = ProgramTest;

/// The program's message box; null, and the test has failed, when none comes.
HWND Box(std::chrono::seconds limit = 10s) {
    HWND box = nullptr;
    EXPECT_TRUE(
        WaitFor([&] { return (box = ::FindWindowW(nullptr, L"Plug-in Manager")) != nullptr; }, limit));
    return box;
}
void Answer(int button) {
    const HWND box = Box();
    ::PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    EXPECT_TRUE(WaitFor([&] { return !::IsWindow(box); }));
}

TEST_F(Program, SpeaksTheLanguageOfItsSettingAndEndsWithTheCodeItIsGiven) {
    const auto before = Text(HKEY_LOCAL_MACHINE, kCompany, L"Language");
    SetText(HKEY_LOCAL_MACHINE, kCompany, L"Language", L"gERMAN");
    std::optional<WindowDriver> program;
    EXPECT_NO_THROW(program.emplace());
    SetText(HKEY_LOCAL_MACHINE, kCompany, L"Language", before.value_or(L""));
    ASSERT_TRUE(program);
    EXPECT_EQ(program->TextOf(IDC_CLOSE), L"Schließen");
    ::PostThreadMessageW(::GetWindowThreadProcessId(program->Window(), nullptr), WM_QUIT, 5, 0);
    EXPECT_EQ(program->WaitForExit(), 5U);
}

TEST_F(Program, BringsARunningCopyForwardInsteadOfStarting) {
    const HWND copy = ::CreateWindowExW(0, L"STATIC", L"Corvane Plug-in Manager", WS_OVERLAPPEDWINDOW, 0, 0,
                                        200, 100, nullptr, nullptr, nullptr, nullptr);
    ::ShowWindow(copy, SW_MINIMIZE);
    EXPECT_EQ(::WaitForSingleObject(StartProgram().Get(), 10000), WAIT_OBJECT_0) << "though the copy hangs";
    EXPECT_TRUE(WaitFor([&] { return !::IsIconic(copy); }));
    ::DestroyWindow(copy);
}

TEST_F(Program, StartsAnewAsAdministratorOrStaysAsItWas) {
    const StandInHost host;
    const WindowDriver program(
        L"/ParentWnd " + host.HandleText() + L" /VSTInventoryRegKey \"Software\\No such key\"",
        host.Window());
    Press(program.Control(IDC_ADD_SEPARATOR));
    const auto discardAndStartAnew = [&] {
        ::PostMessageW(program.Window(), WM_SYSCOMMAND, 0x40, 0);
        Answer(IDNO);
        EXPECT_TRUE(WaitFor([&] { return ::IsWindowEnabled(program.Window()); }));
    };
    const auto file = BesideTest(L"PluginManager.exe"), elsewhere = BesideTest(L"elsewhere.exe");
    std::filesystem::rename(file, elsewhere);
    discardAndStartAnew();  // can't be started: as good as refused
    EXPECT_EQ(program.TextOf(IDC_CLOSE), L"Close") << "and asks again, because the layout is still unsaved:";
    // Not earlier: the window answers when the attempt to start is over.
    std::filesystem::rename(elsewhere, file);
    discardAndStartAnew();
    EXPECT_EQ(program.WaitForExit(), 0U);
    const WindowDriver anew{UniqueProcess()};
    EXPECT_EQ(::GetAncestor(anew.Window(), GA_PARENT), ::GetDesktopWindow()) << "it floats";
    anew.Select(IDC_CATEGORIES, {L"VST Audio Effects (VST)"});
    EXPECT_EQ(anew.Rows(IDC_PLUGINS), std::vector<std::wstring>{L"<< No entries >>"}) << "of the given key";
    ::PostMessageW(anew.Window(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitFor([&] { return !::IsWindow(anew.Window()); }));
}

TEST_F(Program, HelpThatWindowsWouldShowBlankNamesTheRemedyInstead) {
    const auto mark = BesideTest(L"PluginManager.chm:Zone.Identifier");
    std::ofstream(mark) << "[ZoneTransfer]\r\nZoneId=3\r\n";
    const WindowDriver program;
    Press(program.Control(IDC_HELP_BUTTON));
    EXPECT_NE(support::TextOf(::GetDlgItem(Box(), 0xffff)).find(L"Unblock"), std::wstring::npos);
    std::filesystem::remove(mark);
    Answer(IDOK);
    EXPECT_EQ(program.Close(), 0U);
}

/// The folder of the program's data, empty.
std::filesystem::path EmptyDataFolder() {
    auto folder = std::filesystem::path(_wgetenv(L"LOCALAPPDATA")) / L"Corvane Plug-in Manager";
    std::filesystem::remove_all(folder);
    return folder;
}

/// What is below the key, as the system's own program writes it; empty when it is not there.
std::string Exported(const std::wstring& key) {
    const auto file = std::filesystem::temp_directory_path() / L"exported.reg";
    std::filesystem::remove(file);
    _wsystem((L"reg export \"" + key + L"\" \"" + file.wstring() + L"\" /y >nul").c_str());
    return BytesOf(file);
}

TEST_F(Program, WhatItTookAwayComesBackToTheByte) {
    EmptyDataFolder();
    const WindowDriver program;
    program.Select(IDC_PLUGINS, {L"Ysterholm Gone Astray"});
    const std::wstring filter =
        L"Software\\Classes\\CLSID\\{083863F1-70DE-11D0-BD40-00A0C911CE86}\\Instance\\" +
        program.TextOf(IDC_CLSID);
    ASSERT_TRUE(Exists(HKEY_LOCAL_MACHINE, filter));
    for (DWORD type = REG_NONE; type <= REG_QWORD; ++type) {
        const std::wstring name = L"\x3042 \"\\ " + std::to_wstring(type);
        SetRaw(HKEY_LOCAL_MACHINE, filter, name.c_str(), type, {'a', 0, '\\', 0, '"', 0, 0, 0, 0, 0});
    }
    SetRaw(HKEY_LOCAL_MACHINE, filter, L"large", REG_BINARY, std::vector<BYTE>(5'000'000, 0xAB));
    const std::string before = Exported(L"HKLM\\Software\\Classes");
    Press(program.Control(IDC_EXCLUDE));
    Answer(IDYES);
    EXPECT_TRUE(WaitFor([&] { return !Exists(HKEY_LOCAL_MACHINE, filter); }));
    EXPECT_TRUE(WaitFor([&] { return ::IsWindowEnabled(program.Window()); }));
    ::PostMessageW(program.Window(), WM_COMMAND, ID_BACKUPS, 0);
    HWND list = nullptr;
    EXPECT_TRUE(WaitFor(
        [&] { return (list = ::FindWindowW(nullptr, L"Backups")) != nullptr && ::IsWindowVisible(list); }));
    PostKey(::GetDlgItem(list, IDC_REVIEW_LIST), VK_SPACE);
    EXPECT_TRUE(WaitFor([&] { return ::IsWindowEnabled(::GetDlgItem(list, IDOK)); }));
    Press(::GetDlgItem(list, IDOK));
    EXPECT_TRUE(WaitFor([&] { return Exported(L"HKLM\\Software\\Classes") == before; }, 60s));
    EXPECT_TRUE(WaitFor([&] { return ::IsWindowEnabled(program.Window()); }));
}

TEST_F(Program, ACrashLeavesAMinidumpAndSaysWhere) {
    const auto folder = EmptyDataFolder();
    const UniqueProcess process = StartProgram();
    const WindowDriver program{UniqueProcess()};
    // A thread that begins where no code is.
    const UniqueKernelHandle crash(
        ::CreateRemoteThread(process.Get(), nullptr, 0, nullptr, nullptr, 0, nullptr));
    // It comes in any case, if need be without the file.
    const std::wstring message = support::TextOf(::GetDlgItem(Box(75s), 0xffff));
    const std::filesystem::path dump = std::filesystem::directory_iterator(folder)->path();
    EXPECT_NE(message.find(dump.wstring()), std::wstring::npos);
    EXPECT_TRUE(BytesOf(dump).starts_with("MDMP"));
    EXPECT_LT(std::filesystem::file_size(dump), 4U << 20) << "without the heap";
    Answer(IDOK);
    EXPECT_EQ(WaitForExit(process), STATUS_ACCESS_VIOLATION);
}

TEST_F(Program, TakesNamesFromTheDatabaseBesideItOnRequest) {
    const auto names = BesideTest(L"Database\\names.txt");
    const auto calls = BesideTest(L"Database\\calls.txt");
    std::filesystem::remove(calls);
    {
        const WindowDriver program(L"/w DEAD0 -? / \"/\" \"\" /VSTInventoryRegKey");
        EXPECT_EQ(SelectedRows(program.Control(IDC_CATEGORIES)), std::vector<int>{0});
        program.Select(IDC_PLUGINS, {program.Rows(IDC_PLUGINS).front()});
        std::ofstream(names) << Utf8(program.TextOf(IDC_CLSID)) << "\tFrom the database\n";
        program.Close();
    }
    EXPECT_FALSE(std::filesystem::exists(calls)) << "not asked to";
    const WindowDriver program(L"/UseDatabase");
    EXPECT_EQ(std::ranges::count(program.Rows(IDC_PLUGINS), L"From the database"), 1);
    EXPECT_EQ(program.Close(), 0U);
    EXPECT_EQ(BytesOf(calls), "fill\ndestroy\n");
    std::filesystem::remove(names);
}

}  // namespace
