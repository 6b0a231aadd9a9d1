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
constexpr wchar_t kMissing[] = L"Ysterholm Gone Astray";

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
    static void AnswerQuestion(const WindowDriver& program, int button) {
        const HWND question = program.WaitForPopup(L"Plug-in Manager");
        ASSERT_TRUE(question) << program.OnScreen();
        EXPECT_NE(LabelsOf(question).find(kMissing), std::wstring::npos);
        Press(::GetDlgItem(question, button));
        ASSERT_TRUE(WaitFor([&] { return !::IsWindow(question); }));
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

TEST_F(Program, ExcludesTellsTheHostAndEnablesAgain) {
    const StandInHost host;
    const WindowDriver program(L"/Float /ParentWnd " + host.HandleText());
    ASSERT_TRUE(WaitForFill(program)) << program.OnScreen();
    const auto rows = program.Rows(IDC_PLUGINS);
    program.Select(IDC_PLUGINS, {rows[0], rows[1]});
    program.Press(IDC_EXCLUDE);
    ASSERT_TRUE(host.WaitForMessage(kPluginsChanged));
    ASSERT_TRUE(WaitForRow(program, rows[1], false));
    EXPECT_EQ(Subkeys(HKEY_CURRENT_USER, kExcluded).size(), 2U);
    program.Press(IDC_SHOW_EXCLUDED);
    ASSERT_TRUE(WaitForRow(program, rows[1], true));
    program.Select(IDC_PLUGINS, {rows[0], rows[1]});
    program.Press(IDC_EXCLUDE);
    ASSERT_TRUE(WaitForRow(program, rows[1], false));
    EXPECT_TRUE(Subkeys(HKEY_CURRENT_USER, kExcluded).empty());
    ASSERT_TRUE(WaitFor([&] { return host.MessageCount(kPluginsChanged) == 2; }));
    EXPECT_EQ(host.Messages().front(), (StandInHost::Message{kPluginsChanged, 0, 0}));
    EXPECT_EQ(program.Close(), 0U);
    EXPECT_EQ(host.MessageCount(kLayoutsChanged), 0U) << "closing is not OK";
}

TEST_F(Program, AsksAboutAMissingFileAndRemovesItOnYes) {
    const WindowDriver program;
    ASSERT_TRUE(WaitForFill(program)) << program.OnScreen();
    program.Select(IDC_PLUGINS, {kMissing});
    program.Press(IDC_EXCLUDE);
    AnswerQuestion(program, IDNO);
    ASSERT_TRUE(WaitForRow(program, kMissing, false));
    EXPECT_EQ(Subkeys(HKEY_CURRENT_USER, kExcluded).size(), 1U) << "No excludes as usual";
    program.Press(IDC_SHOW_EXCLUDED);
    ASSERT_TRUE(WaitForRow(program, kMissing, true));
    program.Select(IDC_PLUGINS, {kMissing});
    program.Press(IDC_EXCLUDE);
    AnswerQuestion(program, IDYES);
    DeleteTree(HKEY_CURRENT_USER, kExcluded);
    program.Press(IDC_SHOW_ENABLED);
    ASSERT_TRUE(WaitFor([&] { return program.Rows(IDC_PLUGINS).size() > 1; }));
    EXPECT_TRUE(WaitForRow(program, kMissing, false)) << "its registration is gone\n" << program.OnScreen();
}

TEST_F(Program, DocksFloatsAndDocksAgain) {
    const StandInHost host;
    const WindowDriver program(L"/ParentWnd " + host.HandleText() +
                               L" /VSTInventoryRegKey \"Software\\No such key\"");
    ASSERT_TRUE(WaitForFill(program)) << program.OnScreen();
    const HWND dialog = program.Window();
    EXPECT_EQ(ParentOf(dialog), host.Window());
    EXPECT_EQ(Text(HKEY_CURRENT_USER, kManager, L"ParentWindow"), host.HandleText());
    const RECT docked = RectOf(dialog);
    Command(dialog, 0x30);
    ASSERT_TRUE(WaitFor([&] { return ParentOf(dialog) == ::GetDesktopWindow(); }));
    // It gets its new parent first, and its old place after that.
    EXPECT_TRUE(WaitFor([&] {
        const RECT floating = RectOf(dialog);
        return ::EqualRect(&docked, &floating) != FALSE;
    }));
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

TEST_F(Program, EscapeAndEnterKeepItOpenButOnTheCloseButton) {
    const StandInHost host;
    const WindowDriver program(L"/Float /ParentWnd " + host.HandleText());
    ASSERT_TRUE(WaitForFill(program)) << program.OnScreen();
    const auto first = program.Rows(IDC_PLUGINS).front();
    program.Select(IDC_PLUGINS, {first});
    BringToFront(program.Window());
    for (const int id : {IDC_CATEGORIES, IDC_PLUGINS, IDC_CLOSE}) PostKey(program.Control(id), VK_ESCAPE);
    PostKey(program.Control(IDC_CATEGORIES), VK_RETURN);
    // The click is taken after the keys.
    program.Press(IDC_SHOW_EXCLUDED);
    ASSERT_TRUE(WaitFor([&] { return program.IsEnabled(IDC_SHOW_PERMANENT); })) << program.OnScreen();
    program.Press(IDC_SHOW_ENABLED);
    ASSERT_TRUE(WaitForRow(program, first, true));
    program.Select(IDC_PLUGINS, {first});
    EXPECT_FALSE(Exists(HKEY_CURRENT_USER, kExcluded));
    const auto closeIsNext = [&] {
        GUITHREADINFO info{};
        info.cbSize = sizeof(info);
        ::SendMessageW(program.Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(program.Control(IDC_CLOSE)),
                       TRUE);
        return ::GetGUIThreadInfo(::GetWindowThreadProcessId(program.Window(), nullptr), &info) &&
               info.hwndFocus == program.Control(IDC_CLOSE);
    };
    ASSERT_TRUE(WaitFor(closeIsNext));
    PostKey(program.Control(IDC_CLOSE), VK_RETURN);
    EXPECT_EQ(program.WaitForExit(), 0U);
    EXPECT_EQ(host.MessageCount(kLayoutsChanged), 1U);
    EXPECT_EQ(Subkeys(HKEY_CURRENT_USER, kExcluded).size(), 1U) << "OK does what the Exclude button would do";
    EXPECT_EQ(host.MessageCount(kPluginsChanged), 0U) << "but without its message";
}

TEST_F(Program, RegistersItselfWithoutAWindow) {
    const WindowDriver program(L"/Register");
    EXPECT_EQ(program.WaitForExit(), 0U);
    constexpr wchar_t kEntry[] = L"SOFTWARE\\Corvane Music Software\\Tools Menu\\Plugin Manager";
    const auto path = Text(HKEY_LOCAL_MACHINE, kEntry, L"ExePath");
    ASSERT_TRUE(path);
    EXPECT_TRUE(std::filesystem::equivalent(*path, BesideTest(L"PluginManager.exe")));
    EXPECT_EQ(Text(HKEY_LOCAL_MACHINE, kEntry, L"CmdArgs"), L"/ParentWnd$ /VSTInventoryRegKey$");
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

TEST_F(ProgramWithDatabase, ANewNameGoesToTheDatabaseAlone) {
    Install(L"stand-ins\\VrnDatabase.dll");
    const WindowDriver program(L"/UseDatabase", m_folder / L"PluginManager.exe");
    ASSERT_TRUE(WaitForFill(program)) << program.OnScreen();
    std::string calls = "fill\n";
    for (const auto& [category, key, kind, name] :
         {std::tuple(L"DirectX Instruments (DXi)", L"", "2", L"~ of the database"),
          std::tuple(L"DirectX Audio Effects (DX)", L"", "0", L"~ refused"),
          std::tuple(L"VST Audio Effects (VST)", L"{54774263-4D44-3500-8A01-5A3C1E90B764}", "0",
                     L"~ refused, too")}) {
        program.Select(IDC_CATEGORIES, {category});
        SelectRows(program.Control(IDC_PLUGINS), {0});
        const std::wstring id = *key ? key : program.TextOf(IDC_CLSID);
        PostNotification(program.Control(IDC_PLUGINS), LBN_DBLCLK);
        const HWND prompt = program.WaitForPopup(L"Set Plug-in Friendly Name");
        ASSERT_TRUE(prompt) << program.OnScreen();
        EnterText(::GetDlgItem(prompt, IDC_PROMPT_VALUE), name);
        Press(::GetDlgItem(prompt, IDOK));
        ASSERT_TRUE(WaitForRow(program, name, true)) << program.OnScreen();
        calls += "set\t" + Utf8(id) + "\t" + kind + "\t" + Utf8(name) + "\n";
        EXPECT_NE(Text(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID\\" + id, nullptr), name);
    }
    EXPECT_EQ(Calls(), calls);
    EXPECT_EQ(Text(HKEY_CURRENT_USER, L"Software\\Corvane Music Software\\Corvane VST\\Inventory\\TwBc-x64",
                   L"FullName"),
              L"Bellows Compressor");
}

TEST_F(ProgramWithDatabase, ALibraryThatIsNoDatabaseLeavesRegistryMode) {
    const auto runs = [this] {
        const WindowDriver program(L"/UseDatabase", m_folder / L"PluginManager.exe");
        return WaitForFill(program) && program.Close() == 0U;
    };
    EXPECT_TRUE(runs()) << "missing";
    Install(L"stand-ins\\no-export\\VrnDatabase.dll");
    EXPECT_TRUE(runs()) << "without the export";
    Install(L"stand-ins\\null\\VrnDatabase.dll");
    EXPECT_TRUE(runs()) << "without an object";
    std::ofstream(m_folder / L"Database\\VrnDatabase.dll") << "not a library";
    EXPECT_TRUE(runs()) << "not a library";
}

}  // namespace
