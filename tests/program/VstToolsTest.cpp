// The scanner and the adapter's program, played by the sample studio's, started by the real program.
#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>

#include "resource.h"
#include "support/RegistrySandbox.h"
#include "support/StandInHost.h"
#include "support/WindowDriver.h"

namespace {

using namespace support;

using Texts = std::vector<std::string>;

constexpr wchar_t kStudioKey[] = L"Software\\Corvane Music Software\\Corvane VST";
constexpr wchar_t kKey[] = L"Software\\Tools test";
constexpr wchar_t kTool[] = L"Software\\Corvane Sample Studio\\Tool";
constexpr wchar_t kVst[] = L"VST Audio Effects (VST)";
constexpr wchar_t kLegacy[] = L"Legacy Wrapped VST Audio Effects (VST) ";
constexpr char kAnvil[] = "{0000000A-0000-0000-0000-000000000000}";
constexpr wchar_t kFound[] = L"Quill Vibrato";  // what the stand-in finds first

class VstTools : public testing::Test {
  protected:
    void SetUp() override {
        if (!std::getenv("STUDIO")) GTEST_SKIP() << "needs a prefix of its own with the sample studio";
        std::filesystem::remove(m_log);
        DeleteTree(HKEY_CURRENT_USER, kKey);
        RegisterScanner(Text(HKEY_CURRENT_USER, kStudioKey, L"VSTScanPath").value());
        AddVst(L"Anvil", L"{0000000A-0000-0000-0000-000000000000}");
        AddVst(L"Reed", L"{0000000B-0000-0000-0000-000000000000}");
    }
    void TearDown() override {
        DeleteTree(HKEY_CURRENT_USER, kKey);
        LetToolDo(L"nothing");  // also one that waits still
    }
    static void RegisterScanner(const std::filesystem::path& path) {
        SetText(HKEY_CURRENT_USER, kKey, L"VSTScanPath", path.wstring());
    }
    static void AddVst(const std::wstring& name, const std::wstring& id) {
        const std::wstring path = std::wstring(kKey) + L"\\Inventory\\" + name;
        SetDword(HKEY_CURRENT_USER, path, L"isVst", 1);
        SetDword(HKEY_CURRENT_USER, path, L"isX64", 1);
        SetText(HKEY_CURRENT_USER, path, L"clsidPlug", id);
        SetText(HKEY_CURRENT_USER, path, L"FullPath", L"C:\\" + name);
        SetText(HKEY_CURRENT_USER, path, L"FullName", name);
    }
    static void LetToolDo(const wchar_t* what) { SetText(HKEY_CURRENT_USER, kTool, L"Do", what); }
    /// What the tools were told after their paths, which not every system leaves without quotes.
    Texts Commands() const {
        Texts commands;
        std::ifstream file(m_log);
        for (std::string line; std::getline(file, line);) {
            line.erase(0, line.find(".exe") + 4);
            commands.push_back(line.starts_with('"') ? line.substr(1) : line);
        }
        return commands;
    }
    static std::wstring GivenKey() { return L"/VSTInventoryRegKey \"" + std::wstring(kKey) + L"\""; }
    static bool Open(const WindowDriver& program, const wchar_t* category, int row = 0) {
        if (!program.WaitForWindow() || !WaitFor([&] { return program.Rows(IDC_PLUGINS).size() > 1; }))
            return false;
        program.Select(IDC_CATEGORIES, {category});
        SelectRows(program.Control(IDC_PLUGINS), {row});
        return true;
    }
    static HWND FocusOf(const WindowDriver& program) {
        GUITHREADINFO state{};
        state.cbSize = sizeof(state);
        ::GetGUIThreadInfo(::GetWindowThreadProcessId(program.Window(), nullptr), &state);
        return state.hwndFocus;
    }
    static bool IsLocked(const WindowDriver& program) { return !::IsWindowEnabled(program.Window()); }
    bool WaitForTools(const WindowDriver& program, std::size_t launches) const {
        return WaitFor([&] { return Commands().size() == launches && !IsLocked(program); });
    }
    static bool Lists(const WindowDriver& program, const std::wstring& row) {
        const auto rows = program.Rows(IDC_PLUGINS);
        return std::ranges::find(rows, row) != rows.end();
    }

    std::filesystem::path m_log = std::filesystem::temp_directory_path() / L"stand-in-tool.log";
};

TEST_F(VstTools, EachButtonHasItsCommandLine) {
    LetToolDo(L"nothing");
    {
        const WindowDriver program(GivenKey());
        ASSERT_TRUE(Open(program, kVst)) << program.OnScreen();
        std::size_t launches = 0;
        for (const int button : {IDC_VST_SCAN, IDC_VST_OPTIONS, IDC_VST_PROPERTIES}) {
            program.Press(button);
            ASSERT_TRUE(WaitForTools(program, ++launches)) << program.OnScreen();
        }
        program.Close();
    }
    const WindowDriver program;
    ASSERT_TRUE(Open(program, kVst)) << program.OnScreen();
    program.Press(IDC_VST_SCAN);
    ASSERT_TRUE(WaitForTools(program, 4));
    program.Select(IDC_CATEGORIES, {kLegacy});
    SelectRows(program.Control(IDC_PLUGINS), {1});
    const std::string clsid = Utf8(program.TextOf(IDC_CLSID));
    program.Press(IDC_ADAPTER_WIZARD);
    ASSERT_TRUE(WaitForTools(program, 5));
    program.Press(IDC_ADAPTER_PROPERTIES);
    ASSERT_TRUE(WaitForTools(program, 6));
    const std::string given = R"(/VSTRegPerUser/VSTRegKey:"Software\Tools test")";
    EXPECT_EQ(Commands(),
              (Texts{" " + given, " /ScanProps" + given, std::string(" /VstProps:") + kAnvil + given,
                     " VSTRegKey:\"Software\\Corvane Music Software\\Corvane VST\"", " /NoWelcome",
                     " /NoWelcome /SilentScan /VstProps:" + clsid}));
    EXPECT_EQ(program.SelectedRows(IDC_PLUGINS), std::vector<int>{1});
    EXPECT_EQ(Utf8(program.TextOf(IDC_CLSID)), clsid);
    EXPECT_TRUE(WaitFor([&] { return FocusOf(program) == program.Control(IDC_ADAPTER_PROPERTIES); }));
}

TEST_F(VstTools, OnlyAChangedInventoryIsReadAgain) {
    const StandInHost host;
    const WindowDriver program(GivenKey() + L" /Float /ParentWnd " + host.HandleText());
    ASSERT_TRUE(Open(program, kVst)) << program.OnScreen();
    LetToolDo(L"add");
    program.Press(IDC_VST_PROPERTIES);
    ASSERT_TRUE(WaitForTools(program, 1));
    LetToolDo(L"nothing");
    program.Press(IDC_VST_SCAN);
    ASSERT_TRUE(WaitForTools(program, 2));
    EXPECT_FALSE(Lists(program, kFound)) << "found by a program that does not refresh";
    EXPECT_TRUE(host.Messages().empty());

    LetToolDo(L"add");
    program.Press(IDC_VST_SCAN);
    ASSERT_TRUE(host.WaitForMessage(kPluginsChanged)) << program.OnScreen();
    EXPECT_TRUE(Lists(program, kFound)) << program.OnScreen();
    EXPECT_EQ(program.TextOf(IDC_PLUGINS_LABEL), L"&Registered Plug-ins (4 found)");
    EXPECT_EQ(program.SelectedRows(IDC_CATEGORIES), std::vector<int>{1});
    EXPECT_EQ(program.SelectedRows(IDC_PLUGINS), std::vector<int>{0});
    EXPECT_EQ(program.TextOf(IDC_FILENAME), L"C:\\Anvil");
    EXPECT_TRUE(program.IsEnabled(IDC_VST_PROPERTIES));
    EXPECT_EQ(host.Messages(), (std::vector{StandInHost::Message{kPluginsChanged, 0, 0}}));
}

TEST_F(VstTools, TheDialogWaitsAliveAndTakesNoCommand) {
    LetToolDo(L"wait");
    const WindowDriver program(GivenKey());
    ASSERT_TRUE(Open(program, kVst)) << program.OnScreen();
    program.Press(IDC_VST_SCAN);
    ASSERT_TRUE(WaitFor([&] { return IsLocked(program) && Commands().size() == 1; }));
    EXPECT_EQ(program.TextOf(IDC_VST_GROUP), L"VST Configuration (program running)");
    program.Press(IDC_VST_OPTIONS);
    PostNotification(program.Control(IDC_PLUGINS), LBN_DBLCLK);
    ::PostMessageW(program.Window(), WM_CLOSE, 0, 0);
    EXPECT_FALSE(program.WaitForExit(500ms));
    EXPECT_TRUE(IsLocked(program));
    EXPECT_EQ(program.Rows(IDC_PLUGINS).size(), 2U) << "it answers";
    LetToolDo(L"add");
    ASSERT_TRUE(WaitForTools(program, 1)) << program.OnScreen();
    EXPECT_TRUE(WaitFor([&] { return Lists(program, kFound); })) << program.OnScreen();
    EXPECT_FALSE(program.Popup());
    EXPECT_EQ(program.TextOf(IDC_VST_GROUP), L"VST Configuration");
    EXPECT_EQ(FocusOf(program), program.Control(IDC_VST_SCAN)) << "as before the scan";
    EXPECT_EQ(program.Close(), 0U);
}

TEST_F(VstTools, AToolThatGoesWrongLeavesTheListsAsTheyAre) {
    const WindowDriver program(GivenKey());
    ASSERT_TRUE(Open(program, kVst)) << program.OnScreen();
    std::size_t launches = 0;
    for (const wchar_t* what : {L"crash", L"forget"}) {
        LetToolDo(what);
        program.Press(IDC_VST_SCAN);
        ASSERT_TRUE(WaitForTools(program, ++launches)) << program.OnScreen();
        EXPECT_EQ(program.Rows(IDC_PLUGINS).size(), 2U);
    }
    EXPECT_EQ(program.Close(), 0U);
}

TEST_F(VstTools, NothingElseIsStartedInPlaceOfTheScanner) {
    LetToolDo(L"nothing");
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / L"Tools test";
    const auto registered = Text(HKEY_CURRENT_USER, kStudioKey, L"VSTScanPath").value();
    const auto clicked = [&](const std::filesystem::path& scanner) {
        RegisterScanner(scanner);
        const WindowDriver program(GivenKey());
        EXPECT_TRUE(Open(program, kVst)) << program.OnScreen();
        Send(program.Control(IDC_VST_SCAN), BM_CLICK);  // comes back when all is over
        EXPECT_FALSE(IsLocked(program));
        return Commands().size();
    };
    std::filesystem::create_directories(folder);
    std::filesystem::copy_file(registered, folder / L"my scanner.exe");
    std::filesystem::copy_file(registered, folder / L"my.exe");
    EXPECT_EQ(clicked(folder / L"my scanner.exe"), 0U);
    EXPECT_EQ(clicked(folder / L"missing.exe"), 0U);
    std::ofstream(folder / L"text.exe") << "no program";
    EXPECT_EQ(clicked(folder / L"text.exe"), 0U);
    std::filesystem::remove(folder / L"my.exe");
    EXPECT_EQ(clicked(folder / L"my scanner.exe"), 1U);
    std::filesystem::remove_all(folder);
}

TEST_F(VstTools, AHostMayTakeTheWindowAwayMeanwhile) {
    LetToolDo(L"wait");
    auto host = std::make_unique<StandInHost>();
    const WindowDriver program(GivenKey() + L" /ParentWnd " + host->HandleText());
    ASSERT_TRUE(Open(program, kVst)) << program.OnScreen();
    program.Press(IDC_VST_SCAN);
    ASSERT_TRUE(WaitFor([&] { return IsLocked(program) && Commands().size() == 1; }));
    host.reset();
    EXPECT_EQ(program.WaitForExit(), 0U);
}

}  // namespace
