// The real program with the sample studio, worked through its window by another process.
#include <windows.h>

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "resource.h"
#include "support/RegistrySandbox.h"
#include "support/StandInHost.h"
#include "support/WindowDriver.h"

namespace {

using namespace support;

constexpr wchar_t kExcluded[] = L"Software\\Corvane Music Software\\ExcludedPlugIns";
constexpr wchar_t kManager[] = L"Software\\Corvane Music Software\\Corvane Plugin Manager";
constexpr wchar_t kCompany[] = L"Software\\Corvane Music Software";

/// These tests write to the real registry: they run only where the sample studio was loaded for them.
class Program : public testing::Test {
  protected:
    void SetUp() override {
        if (!std::getenv("STUDIO")) GTEST_SKIP() << "needs a prefix of its own with the sample studio";
        DeleteTree(HKEY_CURRENT_USER, kExcluded);
    }
    static bool WaitForFill(const WindowDriver& program) {
        return program.WaitForWindow() && WaitFor([&] { return !program.Rows(IDC_PLUGINS).empty(); });
    }
    static bool WaitForRow(const WindowDriver& program, const std::wstring& text, bool there) {
        return WaitFor([&] {
            const auto rows = program.Rows(IDC_PLUGINS);
            return (std::find(rows.begin(), rows.end(), text) != rows.end()) == there;
        });
    }
    static HWND ParentOf(HWND window) { return ::GetAncestor(window, GA_PARENT); }
    static void Command(HWND window, UINT command) { ::PostMessageW(window, WM_SYSCOMMAND, command, 0); }
};

TEST_F(Program, FillsItselfAndShowsWhatIsSelected) {
    const WindowDriver program;
    ASSERT_TRUE(WaitForFill(program)) << program.OnScreen();
    EXPECT_EQ(TextOf(program.Window()), L"Corvane Plug-in Manager x64");
    EXPECT_EQ(program.Rows(IDC_CATEGORIES).size(), 11U);
    EXPECT_EQ(program.SelectedRows(IDC_CATEGORIES), std::vector<int>{0});
    EXPECT_EQ(program.TextOf(IDC_FILENAME), L"<No plug-in selected>");
    for (const std::wstring& category : program.Rows(IDC_CATEGORIES)) {
        program.Select(IDC_CATEGORIES, {category});
        const auto rows = program.Rows(IDC_PLUGINS);
        ASSERT_GE(rows.size(), 2U) << Utf8(category);
        program.Select(IDC_PLUGINS, {rows[0]});
        EXPECT_NE(program.TextOf(IDC_FILENAME), L"<No plug-in selected>") << Utf8(category);
        program.Select(IDC_PLUGINS, {rows[0], rows[1]});
        EXPECT_EQ(program.TextOf(IDC_FILENAME), L"<Multiple plug-ins selected>");
        const bool legacy = category.starts_with(L"Legacy");
        EXPECT_EQ(program.IsVisible(IDC_ADAPTER_WIZARD), legacy);
        EXPECT_EQ(program.IsVisible(IDC_VST_SCAN), !legacy);
    }
    EXPECT_EQ(program.Close(), 0U);
}

TEST_F(Program, DocksFloatsAndDocksAgain) {
    const StandInHost host;
    const WindowDriver program(L"/ParentWnd " + host.HandleText() +
                               L" /VSTInventoryRegKey \"Software\\No such key\"");
    ASSERT_TRUE(WaitForFill(program)) << program.OnScreen();
    const HWND dialog = program.Window();
    EXPECT_EQ(ParentOf(dialog), host.Window());
    EXPECT_EQ(Text(HKEY_CURRENT_USER, kManager, L"ParentWindow"), host.HandleText());
    Command(dialog, 0x30);
    ASSERT_TRUE(WaitFor([&] { return ParentOf(dialog) == ::GetDesktopWindow(); }));
    Command(dialog, 0x20);
    ASSERT_TRUE(WaitFor([&] { return ParentOf(dialog) == host.Window(); }));
    program.Select(IDC_CATEGORIES, {L"VST Audio Effects (VST)"});
    EXPECT_EQ(program.Rows(IDC_PLUGINS), std::vector<std::wstring>{L"<< No entries >>"})
        << "the given key counts";
    EXPECT_EQ(program.Close(), 0U);
    EXPECT_FALSE(Text(HKEY_CURRENT_USER, kManager, L"ParentWindow"));
}

TEST_F(Program, EndsWhenItsHostTakesTheWindowAway) {
    auto host = std::make_unique<StandInHost>();
    const WindowDriver program(L"/ParentWnd " + host->HandleText());
    ASSERT_TRUE(WaitForFill(program)) << program.OnScreen();
    host.reset();
    EXPECT_EQ(program.WaitForExit(), 0U);
}

TEST_F(Program, EndsWithTheCodeThatItsThreadIsAskedToQuitWith) {
    const WindowDriver program;
    ASSERT_TRUE(WaitForFill(program)) << program.OnScreen();
    ::PostThreadMessageW(::GetWindowThreadProcessId(program.Window(), nullptr), WM_QUIT, 5, 0);
    EXPECT_EQ(program.WaitForExit(), 5U);
}

TEST_F(Program, SpeaksTheLanguageOfItsSetting) {
    SetText(HKEY_LOCAL_MACHINE, kCompany, L"Language", L"gERMAN");
    const WindowDriver program;
    const bool filled = WaitForFill(program);
    SetText(HKEY_LOCAL_MACHINE, kCompany, L"Language", L"");
    ASSERT_TRUE(filled) << program.OnScreen();
    EXPECT_EQ(program.TextOf(IDC_CLOSE), L"Schließen");
    EXPECT_NE(program.TextOf(IDC_EXCLUDE), L"Exclude Plug-in");
    EXPECT_EQ(TextOf(program.Window()), L"Corvane Plug-in Manager x64");
}

TEST_F(Program, BringsARunningCopyForwardInsteadOfStarting) {
    const HWND copy =
        ::CreateWindowExW(0, L"STATIC", L"Corvane Plug-in Manager", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                          200, 100, nullptr, nullptr, nullptr, nullptr);
    ::ShowWindow(copy, SW_MINIMIZE);
    const WindowDriver second;
    EXPECT_TRUE(WaitFor([&] { return second.WaitForExit(0ms) == 0U; }));
    EXPECT_FALSE(::IsIconic(copy));
    ::DestroyWindow(copy);
}

TEST_F(Program, AnyNonsenseOnTheCommandLineIsPutUpWith) {
    for (const wchar_t* nonsense :
         {L"/ParentWnd", L"/w FFFFFFFFFFFFFFFFFFFFFFFF", L"-w 1 /VSTInventoryRegKey",
          L"\"/w\" \"\" / - /? \"C:\\no such file.pgl\"", L"/ParentWnd 10010 /UseDatabase",
          L"/VSTInventoryRegKey \\\\\\ /UseDatabase"}) {
        const WindowDriver program(nonsense);
        EXPECT_TRUE(WaitForFill(program)) << Utf8(nonsense) << program.OnScreen();
        if (std::wstring(nonsense).find(L".pgl") != std::wstring::npos) {
            const HWND complaint = program.WaitForPopup(L"Plug-in Manager");
            ASSERT_TRUE(complaint) << program.OnScreen();
            Press(::GetDlgItem(complaint, IDOK));
            ASSERT_TRUE(WaitFor([&] { return !::IsWindow(complaint); }));
        }
        EXPECT_EQ(program.Close(), 0U) << Utf8(nonsense);
    }
}

/// The program in a folder of its own, with a database library beside it.
class ProgramWithDatabase : public Program {
  protected:
    void SetUp() override {
        Program::SetUp();
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder / L"Database");
        std::filesystem::copy_file(BesideTest(L"PluginManager.exe"), m_folder / L"PluginManager.exe");
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }
    void Install(const std::wstring& library) {
        std::filesystem::copy_file(BesideTest(library), m_folder / L"Database\\VrnDatabase.dll",
                                   std::filesystem::copy_options::overwrite_existing);
    }
    std::string Calls() const {
        const std::ifstream file(m_folder / L"Database\\calls.txt");
        std::ostringstream text;
        if (file) text << file.rdbuf();
        return text.str();
    }

    std::filesystem::path m_folder = std::filesystem::temp_directory_path() / L"Plug-in Manager test";
};

TEST_F(ProgramWithDatabase, NamesComeFromTheDatabase) {
    Install(L"stand-ins\\VrnDatabase.dll");
    std::wstring id;
    {
        const WindowDriver program(L"", m_folder / L"PluginManager.exe");
        ASSERT_TRUE(WaitForFill(program)) << program.OnScreen();
        program.Select(IDC_PLUGINS, {program.Rows(IDC_PLUGINS).front()});
        id = program.TextOf(IDC_CLSID);
        program.Close();
    }
    EXPECT_EQ(Calls(), "") << "no switch, no database";
    std::ofstream(m_folder / L"Database\\names.txt") << Utf8(id) << "\tFrom the database\n";
    const WindowDriver program(L"/UseDatabase", m_folder / L"PluginManager.exe");
    ASSERT_TRUE(WaitForFill(program)) << program.OnScreen();
    EXPECT_TRUE(WaitForRow(program, L"From the database", true)) << program.OnScreen();
    EXPECT_EQ(program.Close(), 0U);
    EXPECT_EQ(Calls(), "fill\ndestroy\n");
}

}  // namespace
