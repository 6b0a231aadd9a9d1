// The plug-in panes of the main dialog, worked by keys and mouse, over a registry of the test's own.
#include <algorithm>

#include "PresetPlugin.h"
#include "support/MainDialog.h"
#include "support/StandInHost.h"
#include "support/TestPlugins.h"

namespace {

using support::AddVst;
using support::IdText;
using support::SetText;
using Texts = std::vector<std::wstring>;

constexpr wchar_t kPermanent[] = L"{52B63860-DC93-11CE-A099-00AA00479A58}";
constexpr wchar_t kExcluded[] = L"Software\\Corvane Music Software\\ExcludedPlugIns";
constexpr wchar_t kVstKey[] = L"Software\\Corvane Music Software\\Corvane VST";
constexpr wchar_t kAdapter[] = L"Software\\Corvane Music Software\\Corvane VST Adapter";
constexpr wchar_t kVst[] = L"VST Audio Effects (VST)";
constexpr wchar_t kLegacy[] = L"Legacy Wrapped VST Audio Effects (VST) ";

class PluginPanes : public support::MainDialog {
  protected:
    static void AddFilter(unsigned number, const std::wstring& name, const std::wstring& server) {
        support::RegisterAudioFilter(IdText(number), name);
        SetText(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID\\" + IdText(number) + L"\\InprocServer32",
                nullptr, server);
    }
    static std::wstring AdapterEntry(const std::wstring& name) {
        return std::wstring(kAdapter) + L"\\Inventory\\" + name;
    }
    static void Wrap(unsigned number, const std::wstring& name) {
        support::RegisterAudioFilter(IdText(number), name);
        SetText(HKEY_LOCAL_MACHINE, AdapterEntry(name), L"clsidPlug", IdText(number));
        support::SetDword(HKEY_LOCAL_MACHINE, AdapterEntry(name), L"isVst", 1);
    }
    static std::size_t ExcludedCount() { return support::Subkeys(HKEY_CURRENT_USER, kExcluded).size(); }
    void OpenAt(const wchar_t* category, const std::vector<std::wstring>& arguments = {}) {
        Open(arguments);
        Show();
        Choose(category);
        Item(IDC_PLUGINS).Focus();
    }
    CPluginListView& List() { return m_dialog->View<CPluginListView>(); }
    CListBox Plugins() const { return m_dialog->Control<CListBox>(IDC_PLUGINS); }
    std::wstring CaretText() const { return Plugins().RowText(Plugins().CaretRow().value_or(-1)); }
    bool IsShown(int id) const { return ::IsWindowVisible(Control(id)) != FALSE; }
    void EnterName(const std::wstring& name, int button = IDOK, bool byKey = true) {
        m_popups.Expect(L"Set Plug-in Friendly Name", [name, button](HWND prompt) {
            support::EnterText(::GetDlgItem(prompt, IDC_PROMPT_VALUE), name);
            support::Press(::GetDlgItem(prompt, button));
        });
        if (!byKey) support::PostNotification(Control(IDC_PLUGINS), LBN_DBLCLK);
        byKey ? Key(IDC_PLUGINS, VK_F2) : Pump();
        m_popups.ExpectNoMore();
    }
};

TEST_F(PluginPanes, CategoriesStandInOrderAndLegacyOnesOnlyWithAnAdapter) {
    Open();
    EXPECT_EQ(Rows(IDC_CATEGORIES),
              (Texts{L"DirectX Audio Effects (DX)", L"VST Audio Effects (VST)", L"VST3 Audio Effects (VST3)",
                     L"DirectX Instruments (DXi)", L"VST Instruments (VSTi)", L"VST3 Instruments (VST3i)",
                     L"MIDI Effects (QTZ)", L"DirectX Media Objects (DMO)", L"Control Surfaces"}));
    EXPECT_EQ(Text(IDC_CATEGORIES_LABEL), L"Plu&g-in Categories (11 found)")
        << "the table's size, not the rows";
    Choose(L"VST3 Audio Effects (VST3)");
    support::CreateKey(HKEY_LOCAL_MACHINE, AdapterEntry(L""));
    List().EnumeratePlugins();
    EXPECT_EQ(Rows(IDC_CATEGORIES).size(), 11U);
    EXPECT_EQ(List().SelectedCategory(), Category::Vst3Effects);
}

TEST_F(PluginPanes, ACategoryWithoutPluginsShowsOneRowThatIsNoPlugin) {
    AddVst(1, L"Bellows");
    OpenAt(L"VST Instruments (VSTi)");
    SelectPlugins({L"<< No entries >>"});
    EXPECT_EQ(Listed().size(), 1U);
    EXPECT_EQ(Text(IDC_PLUGINS_LABEL), L"&Registered Plug-ins");
    EXPECT_FALSE(IsEnabled(IDC_IMPORT) || IsEnabled(IDC_EXCLUDE) || IsEnabled(IDC_ADD_PLUGIN));
    EXPECT_FALSE(List().CaretPlugin());
    EXPECT_TRUE(m_dialog->View<CExclusionView>().TogglePluginExclusion()) << "it has nothing to act on";
    Press(IDC_SHOW_EXCLUDED);
    Choose(kVst);
    EXPECT_EQ(Listed(), Texts{}) << "its plug-in is hidden, not missing";
}

TEST_F(PluginPanes, OnlyTheCaretsPluginHasItsNameCutForThePresets) {
    const std::wstring name(200, L'x');
    AddVst(1, name);
    OpenAt(kVst);
    SelectPlugins({name});
    EXPECT_EQ(List().SelectedPlugins().at(0).name, name);
    EXPECT_EQ(List().CaretPlugin().value().name, name.substr(0, 128));
    EXPECT_EQ(List().CaretPlugin()->category, RowOf(Category::VstEffects).guid);
}

TEST_F(PluginPanes, NamesAreCorrectedOnlyAfterAWholeEnumeration) {
    constexpr wchar_t kStranger[] = L"CorvaneControlSurfaces\\{nonsense}";
    Wrap(1, L"Old");
    SetText(HKEY_CLASSES_ROOT, L"CLSID\\" + IdText(1), nullptr, L"New");
    support::CreateKey(HKEY_CLASSES_ROOT, kStranger);
    Open();
    EXPECT_FALSE(support::Text(HKEY_LOCAL_MACHINE, AdapterEntry(L"Old"), L"FullName")) << "broken off";
    support::DeleteTree(HKEY_CLASSES_ROOT, kStranger);
    OpenAt(kLegacy);
    EXPECT_EQ(support::Text(HKEY_LOCAL_MACHINE, AdapterEntry(L"Old"), L"FullName"), L"New");
    EXPECT_EQ(Listed(), Texts{L"New"});
}

TEST_F(PluginPanes, AVstIsListedOnceAndAVst3UnderEachOfItsIds) {
    AddVst(1, L"Bellows");
    AddVst(2, L"Alto", true);
    OpenAt(kVst);
    EXPECT_EQ(Listed(), Texts{L"Bellows"});
    EXPECT_EQ(Text(IDC_PLUGINS_LABEL), L"&Registered Plug-ins (1 found)");
    Plugins().Add(L"a row of the test");
    Choose(kVst);
    EXPECT_EQ(Listed().size(), 2U) << "the same category is not filled again";
    Choose(L"VST3 Audio Effects (VST3)");
    EXPECT_EQ(Listed(), (Texts{L"Alto", L"Alto"}));
}

TEST_F(PluginPanes, DetailsFollowTheSelection) {
    SetText(HKEY_CURRENT_USER, kVstKey, L"VSTScanPath", L"C:\\windows\\regedit.exe");
    for (const wchar_t* name : {L"Anvil", L"Bellows"}) AddVst(*name, name);
    support::SetRaw(HKEY_CURRENT_USER,
                    L"SOFTWARE\\Corvane Music Software\\ActiveMovie\\Presets\\" + IdText('A'), L"Warm",
                    REG_BINARY, {1});
    OpenAt(kVst);
    EXPECT_EQ(Text(IDC_FILENAME), L"<No plug-in selected>");
    SelectPlugins({L"Anvil"});
    EXPECT_EQ(Text(IDC_FILENAME), L"C:\\windows\\regedit.exe");
    EXPECT_EQ(Text(IDC_VST_ID), L"-5");
    EXPECT_EQ(Text(IDC_VENDOR), L"Tarnwick");
    EXPECT_EQ(Text(IDC_CLSID_LABEL), L"Vendor:");
    EXPECT_EQ(Text(IDC_PRESETS_GROUP), L"Corvane Plug-in Presets (1 found)");
    EXPECT_TRUE(IsEnabled(IDC_MANAGE) && IsEnabled(IDC_EXPORT) && IsEnabled(IDC_VST_PROPERTIES));
    EXPECT_TRUE(IsShown(IDC_VENDOR) && IsShown(IDC_VST_ID) && !IsShown(IDC_CLSID));
    SelectPlugins({L"Anvil", L"Bellows"});
    EXPECT_EQ(Text(IDC_FILENAME), L"<Multiple plug-ins selected>");
    EXPECT_EQ(Text(IDC_VENDOR), L"");
    EXPECT_FALSE(IsEnabled(IDC_MANAGE) || IsEnabled(IDC_VST_PROPERTIES));
    EXPECT_TRUE(IsEnabled(IDC_EXPORT) && IsEnabled(IDC_EXCLUDE));
    Choose(L"Control Surfaces");
    EXPECT_TRUE(IsShown(IDC_CLSID) && !IsShown(IDC_VENDOR) && !IsShown(IDC_VST_ID_LABEL));
    EXPECT_EQ(Text(IDC_CLSID_LABEL), L"CLSID:");
    EXPECT_EQ(Text(IDC_PRESETS_GROUP), L"Corvane Plug-in Presets");
}

TEST_F(PluginPanes, ExcludingAndEnablingMovesRowsBetweenTheModesAndTellsTheHost) {
    const support::StandInHost host;
    for (const wchar_t* name : {L"Anvil", L"Bellows", L"Reed"}) AddVst(*name, name);
    OpenAt(kVst, {L"/Float", L"/ParentWnd", host.HandleText()});
    SelectPlugins({L"Anvil", L"Reed"});
    Press(IDC_EXCLUDE);
    EXPECT_EQ(Listed(), Texts{L"Bellows"});
    const std::wstring reed = std::wstring(kExcluded) + L"\\" + IdText('R');
    EXPECT_EQ(support::Text(HKEY_CURRENT_USER, reed, nullptr), L"Reed");
    Press(IDC_SHOW_EXCLUDED);
    EXPECT_EQ(Text(IDC_EXCLUDE), L"E&nable Plug-in");
    EXPECT_TRUE(IsEnabled(IDC_SHOW_PERMANENT));
    EXPECT_EQ(Listed(), (Texts{L"Anvil", L"Reed"}));
    SelectPlugins({L"Reed"});
    EXPECT_FALSE(IsEnabled(IDC_ADD_PLUGIN));
    Press(IDC_EXCLUDE);
    EXPECT_EQ(Listed(), Texts{L"Anvil"});
    EXPECT_FALSE(support::Exists(HKEY_CURRENT_USER, reed));
    Press(IDC_SHOW_ENABLED);
    EXPECT_EQ(Listed(), (Texts{L"Bellows", L"Reed"}));
    EXPECT_FALSE(IsEnabled(IDC_SHOW_PERMANENT));
    const support::StandInHost::Message told{support::kPluginsChanged, 0, 0};
    EXPECT_TRUE(support::WaitFor([&] { return host.Messages() == std::vector{told, told}; }));
}

TEST_F(PluginPanes, PermanentOnesAreListedOnRequestAndNeverTouched) {
    support::RegisterAudioFilter(kPermanent, L"A system filter");
    Open();
    EXPECT_EQ(Listed(), Texts{});
    Press(IDC_SHOW_EXCLUDED);
    EXPECT_EQ(Listed(), Texts{});
    Press(IDC_SHOW_PERMANENT);
    SelectPlugins({L"A system filter"});
    Press(IDC_EXCLUDE);
    EXPECT_EQ(Listed(), Texts{L"A system filter"});
    Press(IDC_SHOW_ENABLED);
    EXPECT_EQ(ExcludedCount(), 0U);
}

TEST_F(PluginPanes, CommandsServeThePluginThatIsShown) {
    for (unsigned n = 1; n <= 4; ++n) AddVst(n, L"Plug-in " + std::to_wstring(n));
    OpenAt(kVst);
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

TEST_F(PluginPanes, ALetterFindsItsPluginAndNoKeySelectsFromTheTop) {
    for (const wchar_t* name : {L"Anvil", L"Bellows", L"Kammer", L"Reed"}) AddVst(*name, name);
    OpenAt(kVst);
    ClickRow(IDC_PLUGINS, 1);
    Key(IDC_PLUGINS, VK_SPACE);
    EXPECT_EQ(Selected(), Texts{L"Bellows"});
    Key(IDC_PLUGINS, 'K');
    EXPECT_EQ(CaretText(), L"Kammer");
    EXPECT_EQ(Selected().back(), L"Kammer");
    EXPECT_FALSE(Plugins().IsSelected(0));
}

TEST_F(PluginPanes, ARenamedPluginStaysSelected) {
    support::RegisterAudioFilter(IdText(9), L"Filter");
    for (const wchar_t* name : {L"Anvil", L"Bellows", L"Reed"}) AddVst(*name, name);
    OpenAt(kVst);
    SelectPlugins({L"Anvil"});
    EnterName(L"Zither", IDOK, false);
    EXPECT_EQ(support::Text(HKEY_CURRENT_USER, std::wstring(kVstKey) + L"\\Inventory\\Anvil", L"FullName"),
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

TEST_F(PluginPanes, AToolThatEndsLeavesTheSamePluginsSelected) {
    SetText(HKEY_LOCAL_MACHINE, kAdapter, L"VSTConfigWizardPath", L"C:\\windows\\system32\\hostname.exe");
    for (const wchar_t* name : {L"Brass", L"Cornet", L"Drum"}) Wrap(*name, name);
    OpenAt(kLegacy);
    Wrap('A', L"Alto");
    Press(IDC_ADAPTER_WIZARD);
    EXPECT_EQ(Listed(), (Texts{L"Alto", L"Brass", L"Cornet", L"Drum"}));
    EXPECT_EQ(Selected(), Texts{}) << "nothing was";
    SelectPlugins({L"Brass", L"Drum"});
    Wrap('a', L"Aalto");
    support::DeleteTree(HKEY_LOCAL_MACHINE, AdapterEntry(L"Drum"));
    Press(IDC_ADAPTER_WIZARD);
    EXPECT_EQ(Selected(), Texts{L"Brass"}) << "the other one is wrapped no more";
    EXPECT_EQ(CaretText(), L"Brass");
    EXPECT_EQ(Text(IDC_CLSID), IdText('B'));

    support::DeleteTree(HKEY_LOCAL_MACHINE, std::wstring(kAdapter) + L"\\Inventory");
    Press(IDC_ADAPTER_WIZARD);
    EXPECT_EQ(Listed(), (Texts{L"Aalto", L"Alto", L"Brass", L"Cornet", L"Drum"})) << "the first category";
    EXPECT_EQ(Selected(), Texts{L"Brass"});
}

TEST_F(PluginPanes, AfterAnExclusionTheListStaysInPlace) {
    for (unsigned n = 100; n < 160; ++n) AddVst(n, L"Plug-in " + std::to_wstring(n));
    OpenAt(kVst);
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

TEST_F(PluginPanes, AMissingFileIsAskedAboutAndOnYesItsPluginIsRemoved) {
    AddFilter(1, L"Gone", L"C:\\no such.dll");
    AddFilter(2, L"Quoted", L"\"C:\\windows\\regedit.exe\"");
    AddFilter(3, L"System", L"ole32.dll");
    OpenAt(L"DirectX Audio Effects (DX)");
    SelectPlugins({L"Gone", L"Quoted", L"System"});
    m_popups.Expect(L"\"Gone\" has a registry entry pointing to \"C:\\no such.dll\"", IDNO);
    Press(IDC_EXCLUDE);
    EXPECT_EQ(ExcludedCount(), 3U) << "No excludes as usual";
    Press(IDC_SHOW_EXCLUDED);
    SelectPlugins({L"Gone"});
    m_popups.Expect(L"\"Gone\"", IDYES);
    Press(IDC_EXCLUDE);
    EXPECT_EQ(Listed(), (Texts{L"Quoted", L"System"}));
    Press(IDC_SHOW_ENABLED);
    EXPECT_EQ(Listed(), Texts{}) << "its registration is gone";
}

TEST_F(PluginPanes, EscapeClosesTheLayoutListAndNothingElse) {
    m_files.Write(L"a.pgl", "");
    OpenAt(kVst);
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
