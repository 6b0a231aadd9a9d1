// The real program with the sample studio, worked through its window by another process.
#include <algorithm>
#include <fstream>
#include <sstream>

#include "resource.h"
#include "support/RegistrySandbox.h"
#include "support/StandInHost.h"
#include "support/WindowDriver.h"

namespace {

using namespace support;

constexpr wchar_t kCompany[] = L"Software\\Corvane Music Software";
constexpr wchar_t kManager[] = L"Software\\Corvane Music Software\\Corvane Plugin Manager";

using Program = ProgramTest;

TEST_F(Program, FillsItselfAndShowsWhatIsSelected) {
    const WindowDriver program(L"/w DEAD0 -? / \"/\" \"\" /VSTInventoryRegKey");
    EXPECT_EQ(program.Rows(IDC_CATEGORIES).size(), 11U);
    EXPECT_EQ(SelectedRows(program.Control(IDC_CATEGORIES)), std::vector<int>{0});
    for (const std::wstring& category : program.Rows(IDC_CATEGORIES)) {
        SCOPED_TRACE(Utf8(category));
        program.Select(IDC_CATEGORIES, {category});
        EXPECT_EQ(program.TextOf(IDC_FILENAME), L"<No plug-in selected>");
        const auto rows = program.Rows(IDC_PLUGINS);
        ASSERT_GE(rows.size(), 2U);
        program.Select(IDC_PLUGINS, {rows[0]});
        EXPECT_NE(program.TextOf(IDC_FILENAME), L"<No plug-in selected>");
    }
    EXPECT_EQ(program.Close(), 0U);
}

TEST_F(Program, DocksAndEndsWithItsHost) {
    std::optional<StandInHost> host(std::in_place);
    const WindowDriver program(
        L"/ParentWnd " + host->HandleText() + L" /VSTInventoryRegKey \"Software\\No such key\"",
        host->Window());
    EXPECT_EQ(Text(HKEY_CURRENT_USER, kManager, L"ParentWindow"), host->HandleText());
    program.Select(IDC_CATEGORIES, {L"VST Audio Effects (VST)"});
    EXPECT_EQ(program.Rows(IDC_PLUGINS), std::vector<std::wstring>{L"<< No entries >>"})
        << "of the given key";
    host.reset();
    EXPECT_EQ(program.WaitForExit(), 0U);
    EXPECT_FALSE(Text(HKEY_CURRENT_USER, kManager, L"ParentWindow"));
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
        HWND question = nullptr;
        EXPECT_TRUE(
            WaitFor([&] { return (question = ::FindWindowW(nullptr, L"Plug-in Manager")) != nullptr; }));
        ::PostMessageW(question, WM_COMMAND, IDNO, 0);
        EXPECT_TRUE(WaitFor([&] { return !::IsWindow(question) && ::IsWindowEnabled(program.Window()); }));
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
    HWND message = nullptr;
    EXPECT_TRUE(WaitFor([&] { return (message = ::FindWindowW(nullptr, L"Plug-in Manager")) != nullptr; }));
    std::filesystem::remove(mark);
    EXPECT_NE(support::TextOf(::GetDlgItem(message, 0xffff)).find(L"Unblock"), std::wstring::npos);
    ::PostMessageW(message, WM_COMMAND, IDOK, 0);
    EXPECT_EQ(program.Close(), 0U);
}

/// The folder of the program's data, empty.
std::filesystem::path EmptyDataFolder() {
    auto folder = std::filesystem::path(_wgetenv(L"LOCALAPPDATA")) / L"Corvane Plug-in Manager";
    std::filesystem::remove_all(folder);
    return folder;
}

TEST_F(Program, KilledWhileALayoutIsChangedItOffersThatAtTheNextStart) {
    const auto copy = EmptyDataFolder() / L"unsaved.pgl";
    {
        const WindowDriver program;
        Press(program.Control(IDC_ADD_SEPARATOR));
        EXPECT_TRUE(WaitFor([&] { return TreeCount(program.Control(IDC_LAYOUT_TREE)) == 1; }));
        ::PostMessageW(program.Window(), WM_TIMER, 2, 0);  // a minute
        EXPECT_TRUE(WaitFor([&] { return std::filesystem::exists(copy); }));
    }
    UniqueProcess again = StartProgram();
    HWND question = nullptr;
    EXPECT_TRUE(WaitFor([&] { return (question = ::FindWindowW(nullptr, L"Plug-in Manager")) != nullptr; }));
    ::PostMessageW(question, WM_COMMAND, IDYES, 0);
    const WindowDriver program(std::move(again));
    EXPECT_TRUE(WaitFor([&] { return TreeCount(program.Control(IDC_LAYOUT_TREE)) == 1; }));
    ::PostMessageW(program.Window(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitFor([&] { return (question = ::FindWindowW(nullptr, L"Plug-in Manager")) != nullptr; }));
    ::PostMessageW(question, WM_COMMAND, IDNO, 0);
    EXPECT_EQ(program.WaitForExit(), 0U);
    EXPECT_FALSE(std::filesystem::exists(copy));
}

TEST_F(Program, ACrashLeavesAMinidumpAndSaysWhere) {
    const auto folder = EmptyDataFolder();
    const UniqueProcess process = StartProgram();
    const WindowDriver program{UniqueProcess()};
    // A thread that begins where no code is.
    const UniqueKernelHandle crash(
        ::CreateRemoteThread(process.Get(), nullptr, 0, nullptr, nullptr, 0, nullptr));
    HWND message = nullptr;
    EXPECT_TRUE(WaitFor([&] { return (message = ::FindWindowW(nullptr, L"Plug-in Manager")) != nullptr; }));
    const std::filesystem::path dump = std::filesystem::directory_iterator(folder)->path();
    EXPECT_NE(support::TextOf(::GetDlgItem(message, 0xffff)).find(dump.wstring()), std::wstring::npos);
    std::string begin(4, ' ');
    std::ifstream(dump, std::ios::binary).read(begin.data(), 4);
    EXPECT_EQ(begin, "MDMP");
    EXPECT_LT(std::filesystem::file_size(dump), 4U << 20) << "without the heap";
    ::PostMessageW(message, WM_COMMAND, IDOK, 0);
    EXPECT_EQ(WaitForExit(process), STATUS_ACCESS_VIOLATION);
}

TEST_F(Program, TakesNamesFromTheDatabaseBesideItOnRequest) {
    const auto names = BesideTest(L"Database\\names.txt");
    const auto calls = BesideTest(L"Database\\calls.txt");
    std::filesystem::remove(calls);
    {
        const WindowDriver program;
        program.Select(IDC_PLUGINS, {program.Rows(IDC_PLUGINS).front()});
        std::ofstream(names) << Utf8(program.TextOf(IDC_CLSID)) << "\tFrom the database\n";
        program.Close();
    }
    EXPECT_FALSE(std::filesystem::exists(calls)) << "not asked to";
    const WindowDriver program(L"/UseDatabase");
    EXPECT_EQ(std::ranges::count(program.Rows(IDC_PLUGINS), L"From the database"), 1);
    EXPECT_EQ(program.Close(), 0U);
    std::stringstream called;
    called << std::ifstream(calls).rdbuf();
    EXPECT_EQ(called.str(), "fill\ndestroy\n");
    std::filesystem::remove(names);
}

}  // namespace
