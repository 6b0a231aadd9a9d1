// What a user does to plug-ins in the main dialog: by keys and mouse, with the questions that come.
#include "support/MainDialog.h"
#include "support/TestPlugins.h"

namespace {

using support::AddVst;
using support::IdText;
using support::SetText;
using Texts = std::vector<std::wstring>;

constexpr wchar_t kExcluded[] = L"Software\\Corvane Music Software\\ExcludedPlugIns";
constexpr wchar_t kVstInventory[] = L"Software\\Corvane Music Software\\Corvane VST\\Inventory\\";
constexpr wchar_t kAdapter[] = L"Software\\Corvane Music Software\\Corvane VST Adapter";
constexpr wchar_t kLegacy[] = L"Legacy Wrapped VST Audio Effects (VST) ";
constexpr wchar_t kPrompt[] = L"Set Plug-in Friendly Name";

class PluginListFlows : public support::MainDialog {
  protected:
    void AddFilter(unsigned number, const std::wstring& name, const std::wstring& server) const {
        support::RegisterAudioFilter(IdText(number), name);
        SetText(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID\\" + IdText(number) + L"\\InprocServer32",
                nullptr, server);
    }
    void Wrap(unsigned number, const std::wstring& name) const {
        support::RegisterAudioFilter(IdText(number), name);
        const std::wstring entry = std::wstring(kAdapter) + L"\\Inventory\\" + name;
        SetText(HKEY_LOCAL_MACHINE, entry, L"clsidPlug", IdText(number));
        support::SetDword(HKEY_LOCAL_MACHINE, entry, L"isVst", 1);
    }
    void OpenAt(const wchar_t* category) {
        Open();
        Show();
        Choose(category);
        Item(IDC_PLUGINS).Focus();
    }
    CListBox Plugins() const { return m_dialog->Control<CListBox>(IDC_PLUGINS); }
    std::wstring CaretText() const { return Plugins().RowText(Plugins().CaretRow().value_or(-1)); }
    void EnterName(const std::wstring& name, int button = IDOK) {
        m_popups.Expect(kPrompt, [name, button](HWND prompt) {
            support::EnterText(::GetDlgItem(prompt, IDC_PROMPT_VALUE), name);
            support::Press(::GetDlgItem(prompt, button));
        });
        Key(IDC_PLUGINS, VK_F2);
        m_popups.ExpectNoMore();
    }
};

TEST_F(PluginListFlows, CommandsServeThePluginThatIsShown) {
    for (unsigned n = 1; n <= 4; ++n) AddVst(n, L"Plug-in " + std::to_wstring(n));
    OpenAt(support::kVstEffects);
    const auto current = [this] { return m_dialog->View<CPluginListView>().CaretRow()->name; };
    ClickRow(IDC_PLUGINS, 0);
    Key(IDC_PLUGINS, VK_DOWN);
    EXPECT_EQ(current(), L"Plug-in 2");
    ClickRow(IDC_PLUGINS, 3);
    EXPECT_EQ(Selected(), Texts{L"Plug-in 4"});
    EXPECT_EQ(current(), L"Plug-in 4") << "after a key and a click";
    ClickRow(IDC_PLUGINS, 1, MK_CONTROL);
    support::SelectRows(Control(IDC_PLUGINS), {3});  // as a second click with Ctrl leaves it
    EXPECT_EQ(current(), L"Plug-in 4");
    EXPECT_EQ(CaretText(), L"Plug-in 4");
}

TEST_F(PluginListFlows, ALetterFindsItsPluginAndNoKeySelectsFromTheTop) {
    for (const wchar_t* name : {L"Anvil", L"Bellows", L"Kammer", L"Reed"}) AddVst(*name, name);
    OpenAt(support::kVstEffects);
    ClickRow(IDC_PLUGINS, 1);
    Key(IDC_PLUGINS, VK_SPACE);
    EXPECT_EQ(Selected(), Texts{L"Bellows"});
    Key(IDC_PLUGINS, 'K');
    EXPECT_EQ(CaretText(), L"Kammer");
    EXPECT_EQ(Selected().back(), L"Kammer");
    EXPECT_FALSE(Plugins().IsSelected(0));
}

TEST_F(PluginListFlows, ARenamedPluginStaysSelected) {
    AddFilter(9, L"Filter", L"");
    for (const wchar_t* name : {L"Anvil", L"Bellows", L"Reed"}) AddVst(*name, name);
    OpenAt(support::kVstEffects);
    SelectPlugins({L"Anvil"});
    EnterName(L"Zither");
    EXPECT_EQ(support::Text(HKEY_CURRENT_USER, std::wstring(kVstInventory) + L"Anvil", L"FullName"),
              L"Zither");
    EXPECT_EQ(Listed(), (Texts{L"Bellows", L"Reed", L"Zither"}));
    EXPECT_EQ(Selected(), Texts{L"Zither"});
    EXPECT_EQ(CaretText(), L"Zither");
    EXPECT_EQ(Text(IDC_VENDOR), L"Tarnwick");
    EXPECT_TRUE(IsEnabled(IDC_EXCLUDE));

    const std::wstring strange = L"\x1\t\xD83C\xDFB9 " + std::wstring(2000, L'x');
    EnterName(strange);
    const Texts kept = {strange.substr(0, 1023)};
    EXPECT_EQ(Selected(), kept);
    for (const auto& [name, button] :
         {std::pair(L"", IDOK), {L" \t\x3000", IDOK}, {L"Cancelled", IDCANCEL}}) {
        EnterName(name, button);
        EXPECT_EQ(Selected(), kept);
    }
    SelectPlugins({L"Bellows", L"Reed"});
    Key(IDC_PLUGINS, VK_F2);  // a prompt would fail the test
}

TEST_F(PluginListFlows, AToolThatEndsLeavesTheSamePluginsSelected) {
    SetText(HKEY_LOCAL_MACHINE, kAdapter, L"VSTConfigWizardPath", L"C:\\windows\\system32\\hostname.exe");
    for (const wchar_t* name : {L"Brass", L"Cornet", L"Drum"}) Wrap(*name, name);
    OpenAt(kLegacy);
    Wrap('A', L"Alto");
    Press(IDC_ADAPTER_WIZARD);
    EXPECT_EQ(Listed(), (Texts{L"Alto", L"Brass", L"Cornet", L"Drum"}));
    EXPECT_EQ(Selected(), Texts{}) << "nothing was";
    SelectPlugins({L"Brass", L"Drum"});
    Wrap('a', L"Aalto");
    support::DeleteTree(HKEY_LOCAL_MACHINE, std::wstring(kAdapter) + L"\\Inventory\\Drum");
    Press(IDC_ADAPTER_WIZARD);
    EXPECT_EQ(Selected(), Texts{L"Brass"}) << "the other one is wrapped no more";
    EXPECT_EQ(CaretText(), L"Brass");
    EXPECT_EQ(Text(IDC_CLSID), IdText('B'));

    support::DeleteTree(HKEY_LOCAL_MACHINE, std::wstring(kAdapter) + L"\\Inventory");
    Press(IDC_ADAPTER_WIZARD);
    EXPECT_EQ(Listed(), (Texts{L"Aalto", L"Alto", L"Brass", L"Cornet", L"Drum"})) << "the first category";
    EXPECT_EQ(Selected(), Texts{L"Brass"});
}

TEST_F(PluginListFlows, AfterAnExclusionTheListStaysInPlace) {
    for (unsigned n = 100; n < 160; ++n) AddVst(n, L"Plug-in " + std::to_wstring(n));
    OpenAt(support::kVstEffects);
    Plugins().SetTopRow(10);
    SelectPlugins({L"Plug-in 105", L"Plug-in 112", L"Plug-in 114"});
    Plugins().SetTopRow(10);
    Press(IDC_EXCLUDE);
    EXPECT_EQ(Selected(), Texts{});
    EXPECT_EQ(CaretText(), L"Plug-in 115");
    EXPECT_EQ(Plugins().RowText(Plugins().TopRow()), L"Plug-in 110");
    EXPECT_TRUE(Item(IDC_PLUGINS).HasFocus());
    Key(IDC_PLUGINS, VK_DOWN);
    EXPECT_EQ(Selected(), Texts{L"Plug-in 116"});
    SelectPlugins({L"Plug-in 159"});
    Press(IDC_EXCLUDE);
    EXPECT_EQ(CaretText(), L"Plug-in 158") << "there is none behind";
}

TEST_F(PluginListFlows, AMissingFileIsAskedAboutAndOnYesItsPluginIsRemoved) {
    AddFilter(1, L"Gone", L"C:\\no such.dll");
    AddFilter(2, L"Quoted", L"\"C:\\windows\\regedit.exe\"");
    AddFilter(3, L"System", L"ole32.dll");
    OpenAt(L"DirectX Audio Effects (DX)");
    SelectPlugins({L"Gone", L"Quoted", L"System"});
    m_popups.Expect(L"\"Gone\" has a registry entry pointing to \"C:\\no such.dll\"", IDNO);
    Press(IDC_EXCLUDE);
    EXPECT_EQ(support::Subkeys(HKEY_CURRENT_USER, kExcluded).size(), 3U) << "No excludes as usual";
    Press(IDC_SHOW_EXCLUDED);
    SelectPlugins({L"Gone"});
    m_popups.Expect(L"\"Gone\"", IDYES);
    Press(IDC_EXCLUDE);
    EXPECT_EQ(Listed(), (Texts{L"Quoted", L"System"}));
    Press(IDC_SHOW_ENABLED);
    EXPECT_EQ(Listed(), Texts{}) << "its registration is gone";
}

TEST_F(PluginListFlows, EscapeClosesTheLayoutListAndNothingElse) {
    m_files.Write(L"a.pgl", "");
    OpenAt(support::kVstEffects);
    const HWND layouts = Control(IDC_LAYOUTS);
    const HWND field = ::GetWindow(layouts, GW_CHILD);
    ::SetFocus(field);
    ::SendMessageW(layouts, CB_SHOWDROPDOWN, TRUE, 0);
    ASSERT_TRUE(::SendMessageW(layouts, CB_GETDROPPEDSTATE, 0, 0));
    Key(field, VK_ESCAPE);
    EXPECT_FALSE(::SendMessageW(layouts, CB_GETDROPPEDSTATE, 0, 0));
    Key(field, VK_ESCAPE);
    EXPECT_TRUE(IsOpen());
}

}  // namespace
