// The scanner and the adapter's program, played by the sample studio's, started by the real program.

#include "resource.h"
#include "support/FileSandbox.h"
#include "support/RegistrySandbox.h"
#include "support/StandInHost.h"
#include "support/WindowDriver.h"

namespace {

using namespace support;

constexpr wchar_t kStudioKey[] = L"Software\\Corvane Music Software\\Corvane VST";
constexpr wchar_t kKey[] = L"Software\\Tools test";
constexpr wchar_t kGivenKey[] = L"/VSTInventoryRegKey \"Software\\Tools test\"";
constexpr wchar_t kVst[] = L"VST Audio Effects (VST)";
constexpr wchar_t kLegacy[] = L"Legacy Wrapped VST Audio Effects (VST) ";

class VstTools : public ProgramTest {
  protected:
    void Begin() override {
        std::filesystem::remove(m_log);
        DeleteTree(HKEY_CURRENT_USER, kKey);
        ::RegCopyTreeW(HKEY_CURRENT_USER, kStudioKey, CRegKey::Create(HKEY_CURRENT_USER, kKey)->Handle());
        LetToolDo(L"nothing");
    }
    void TearDown() override { LetToolDo(L"nothing"); }  // also one that waits still
    static void LetToolDo(const wchar_t* what) {
        SetText(HKEY_CURRENT_USER, L"Software\\Corvane Sample Studio\\Tool", L"Do", what);
    }
    /// What the tools were told after their paths, which not every system leaves without quotes.
    std::vector<std::string> Commands() const {
        std::vector<std::string> commands;
        std::ifstream file(m_log);
        for (std::string line; std::getline(file, line);) {
            line.erase(0, line.find(".exe") + 4);
            commands.push_back(line.starts_with('"') ? line.substr(1) : line);
        }
        return commands;
    }
    static void Choose(const WindowDriver& program, const wchar_t* category, int row) {
        program.Select(IDC_CATEGORIES, {category});
        SelectRows(program.Control(IDC_PLUGINS), {row});
    }
    static bool IsLocked(const WindowDriver& program) { return !::IsWindowEnabled(program.Window()); }
    void PressScan(const WindowDriver& program) const {
        const std::size_t launches = Commands().size() + 1;
        LetToolDo(L"wait");
        Press(program.Control(IDC_VST_SCAN));
        ASSERT_TRUE(WaitFor([&] { return Commands().size() == launches && IsLocked(program); }));
    }
    /// What the tool was told that the button starts; the dialog has done all that follows.
    std::string Run(const WindowDriver& program, int button, const wchar_t* what) const {
        LetToolDo(what);
        EXPECT_TRUE(::IsWindowEnabled(program.Control(button)));
        Send(program.Control(button), BM_CLICK);
        EXPECT_FALSE(IsLocked(program));
        const auto commands = Commands();
        return commands.empty() ? "" : commands.back();
    }

    std::filesystem::path m_log = std::filesystem::temp_directory_path() / L"stand-in-tool.log";
};

TEST_F(VstTools, OnlyAScanThatChangedTheInventoryIsReadAgain) {
    const StandInHost host;
    const WindowDriver program(kGivenKey + (L" /Float /ParentWnd " + host.HandleText()));
    Choose(program, kVst, 0);
    const auto before = program.Rows(IDC_PLUGINS);
    const std::string key = R"(/VSTRegPerUser/VSTRegKey:"Software\Tools test")";
    const auto id = Text(HKEY_CURRENT_USER, std::wstring(kKey) + L"\\Inventory\\TwBc-x64", L"clsidPlug");
    EXPECT_EQ(Run(program, IDC_VST_PROPERTIES, L"add"), " /VstProps:" + Utf8(id.value()) + key);
    EXPECT_EQ(Run(program, IDC_VST_OPTIONS, L"nothing"), " /ScanProps" + key);
    EXPECT_EQ(Run(program, IDC_VST_SCAN, L"crash"), " " + key);
    EXPECT_EQ(program.Rows(IDC_PLUGINS), before)
        << "what was found meanwhile waits for a scan that finds more";
    EXPECT_EQ(host.MessageCount(kPluginsChanged), 0U);
    Run(program, IDC_VST_SCAN, L"add");
    EXPECT_EQ(program.Rows(IDC_PLUGINS).size(), before.size() + 2);
    Run(program, IDC_VST_SCAN, L"forget");
    EXPECT_EQ(program.Rows(IDC_PLUGINS).size(), before.size() + 2) << "there is nothing to read";
    EXPECT_EQ(SelectedRows(program.Control(IDC_PLUGINS)), std::vector<int>{0});
    Choose(program, kLegacy, 1);
    const std::string clsid = Utf8(program.TextOf(IDC_CLSID));
    EXPECT_EQ(Run(program, IDC_ADAPTER_WIZARD, L"nothing"), " /NoWelcome");
    EXPECT_EQ(Run(program, IDC_ADAPTER_PROPERTIES, L"nothing"), " /NoWelcome /SilentScan /VstProps:" + clsid);
    EXPECT_EQ(program.Close(), 0U);
    EXPECT_EQ(std::ranges::count(host.Messages(), StandInHost::Message{kPluginsChanged, 0, 0}), 1 + 2)
        << "of the scan that found more, and of the adapter's program each time";
}

TEST_F(VstTools, TheDialogWaitsAliveUntilTheToolEndsOrTheHostTakesItAway) {
    std::optional<StandInHost> host(std::in_place);
    const WindowDriver program(kGivenKey + (L" /ParentWnd " + host->HandleText()), host->Window());
    Choose(program, kVst, 0);
    const auto rows = program.Rows(IDC_PLUGINS).size();
    PressScan(program);
    EXPECT_EQ(program.TextOf(IDC_VST_GROUP), L"VST Configuration (program running)");
    Press(program.Control(IDC_VST_OPTIONS));
    ::PostMessageW(program.Window(), WM_COMMAND, MAKEWPARAM(IDC_PLUGINS, LBN_DBLCLK), 0);
    ::PostMessageW(program.Window(), WM_CLOSE, 0, 0);
    EXPECT_FALSE(program.WaitForExit(500ms));
    EXPECT_TRUE(IsLocked(program));
    EXPECT_EQ(program.Rows(IDC_PLUGINS).size(), rows) << "it answers";
    LetToolDo(L"add");
    EXPECT_TRUE(WaitFor([&] { return program.Rows(IDC_PLUGINS).size() == rows + 1; }));
    EXPECT_EQ(Commands().size(), 1U);
    EXPECT_FALSE(IsLocked(program));
    EXPECT_EQ(program.TextOf(IDC_VST_GROUP), L"VST Configuration");

    PressScan(program);
    EXPECT_EQ(Text(HKEY_CURRENT_USER, kManager, L"ParentWindow"), host->HandleText());
    host.reset();
    EXPECT_EQ(program.WaitForExit(), 0U);
    EXPECT_FALSE(Text(HKEY_CURRENT_USER, kManager, L"ParentWindow"));
}

TEST_F(VstTools, NothingElseIsStartedInPlaceOfTheScanner) {
    const FileSandbox files;
    const std::filesystem::path scanner = files.Path(L"my scanner.exe");
    for (const auto& path : {scanner, std::filesystem::path(files.Path(L"my.exe"))})
        std::filesystem::copy_file(Text(HKEY_CURRENT_USER, kStudioKey, L"VSTScanPath").value(), path);
    SetText(HKEY_CURRENT_USER, kKey, L"VSTScanPath", scanner.wstring());
    const WindowDriver program(kGivenKey);
    Choose(program, kVst, 0);
    const auto launches = [&] {
        Run(program, IDC_VST_SCAN, L"nothing");
        return Commands().size();
    };
    EXPECT_EQ(launches(), 0U);
    std::filesystem::remove(files.Path(L"my.exe"));
    EXPECT_EQ(launches(), 1U);
    files.Write(scanner.filename(), "no program");
    EXPECT_EQ(launches(), 1U);
}

}  // namespace
