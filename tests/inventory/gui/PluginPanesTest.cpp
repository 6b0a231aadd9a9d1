// The plug-in panes of the main dialog, worked by keys and mouse, over a registry of the test's own.
#include "support/MainDialog.h"
#include "support/StandInHost.h"
#include "support/TestPlugins.h"

namespace {

using namespace support;
using Texts = std::vector<std::wstring>;

constexpr wchar_t kDirectX[] = L"DirectX Audio Effects (DX)";
constexpr wchar_t kSynths[] = L"DirectX Instruments (DXi)";
constexpr wchar_t kVstSynths[] = L"VST Instruments (VSTi)";
constexpr wchar_t kVst3[] = L"VST3 Audio Effects (VST3)";
constexpr wchar_t kMidi[] = L"MIDI Effects (QTZ)";
constexpr wchar_t kObjects[] = L"DirectX Media Objects (DMO)";
constexpr wchar_t kDesks[] = L"Control Surfaces";
constexpr wchar_t kLegacy[] = L"Legacy Wrapped VST Audio Effects (VST) ";

class PluginPanes : public support::MainDialog {
  protected:
    /// The VSTs' first letters are their numbers.
    void OpenWith(const Texts& vsts, const wchar_t* category = kVstEffects, const Texts& arguments = {}) {
        for (const std::wstring& name : vsts) AddVst(name.front(), name);
        Open(arguments);
        Show();
        Choose(category);
        Item(IDC_PLUGINS).Focus();
    }
    static void SetWizard(const wchar_t* path) {
        SetText(HKEY_LOCAL_MACHINE, L"Software\\Corvane Music Software\\Corvane VST Adapter",
                L"VSTConfigWizardPath", path);
    }
    CPluginListView& List() { return m_dialog->View<CPluginListView>(); }
    Texts Find(const std::wstring& text) const {
        Item(IDC_FIND).SetText(text);
        return Listed();
    }
    CListBox Plugins() const { return m_dialog->Control<CListBox>(IDC_PLUGINS); }
    std::wstring CaretText() const { return Plugins().RowText(Plugins().CaretRow().value_or(-1)); }
    /// A letter for each button (import, export, manage, exclude, add; options, scan and properties of the
    /// scanner; wizard and properties of the adapter), "-" where it can't be pressed, and the details' texts.
    std::wstring Panes() const {
        const auto isShown = [this](int id) { return ::IsWindowVisible(Control(id)) != FALSE; };
        constexpr int kButtons[] = {
            IDC_IMPORT,      IDC_EXPORT,   IDC_MANAGE,         IDC_EXCLUDE,        IDC_ADD_PLUGIN,
            IDC_VST_OPTIONS, IDC_VST_SCAN, IDC_VST_PROPERTIES, IDC_ADAPTER_WIZARD, IDC_ADAPTER_PROPERTIES};
        std::wstring shown;
        for (std::size_t i = 0; i < std::size(kButtons); ++i) {
            if (isShown(kButtons[i])) shown += IsEnabled(kButtons[i]) ? L"iemxaOSPWR"[i] : L'-';
        }
        for (const int id :
             {IDC_FILENAME, IDC_CLSID_LABEL, IDC_CLSID, IDC_VENDOR, IDC_VST_ID_LABEL, IDC_VST_ID}) {
            if (isShown(id)) shown += L'|' + Text(id);
        }
        return shown;
    }
    void ExpectName(const std::wstring& name, int button = IDOK) {
        m_popups.ExpectPrompt(L"Set Plug-in Friendly Name", name, button);
    }
};

TEST_F(PluginPanes, CategoriesStandInOrderAndLegacyOnesOnlyWithAnAdapter) {
    Open();
    EXPECT_EQ(Rows(IDC_CATEGORIES), (Texts{kDirectX, kVstEffects, kVst3, kSynths, kVstSynths,
                                           L"VST3 Instruments (VST3i)", kMidi, kObjects, kDesks}));
    EXPECT_EQ(Text(IDC_CATEGORIES_LABEL), L"Plu&g-in Categories (11 found)") << "the table's, not the rows";
    Choose(kVst3);
    CreateKey(HKEY_LOCAL_MACHINE, kAdapterInventory);
    List().EnumeratePlugins();
    EXPECT_EQ(Rows(IDC_CATEGORIES).size(), 11U);
    EXPECT_EQ(List().SelectedCategory(), Category::Vst3Effects);
}

TEST_F(PluginPanes, ButtonsAndDetailsGoByCategoryAndSelection) {
    SetText(HKEY_CURRENT_USER, L"Software\\Corvane Music Software\\Corvane VST", L"VSTScanPath", kSomeFile);
    SetWizard(kSomeFile);
    AddPreset(IdText('A'), L"Warm");
    AddFilter(1, L"Filter", L"C:\\windows\\win.ini");
    for (const unsigned n : {2U, 3U}) Wrap(n, std::to_wstring(n)).Text(L"FullPath", L"C:\\vst.dll");
    AddVst(4, L"Chorus", true);
    AddVst(6, L"Dub", true).Number(L"clsidPlugMD5", 0);
    AddVst(7, L"Nameless").Text(L"FullName", L"");
    AddSurface(5, L"Faders");
    // Its name is read from the real registry: a class that is in each.
    constexpr wchar_t kFilterMapper[] = L"{CDA42200-BD88-11D0-BD4E-00A0C911CE86}";
    CreateKey(HKEY_LOCAL_MACHINE, std::wstring(kMidiFilters) + kFilterMapper);
    CreateKey(HKEY_CURRENT_USER, kExcludedPlugins + IdText('D'));
    OpenWith({L"Anvil", L"Bellows", L"Drum"});
    const auto expect = [this](const wchar_t* category, const std::vector<int>& rows,
                               const std::wstring& panes) {
        Choose(category);
        SelectRows(Control(IDC_PLUGINS), rows);
        EXPECT_EQ(Panes(), panes) << Utf8(category) << rows.size();
    };
    const std::wstring someVst = L"|C:\\windows\\regedit.exe|Vendor:|Tarnwick|VST ID: |-5";
    expect(kVstEffects, {}, L"-----OS-|<No plug-in selected>|Vendor:||VST ID: |");
    EXPECT_EQ(Text(IDC_PLUGINS_LABEL), L"&Registered Plug-ins (2 found)") << "each under one of its ids";
    expect(kVstEffects, {0}, L"iemxaOSP" + someVst);
    EXPECT_EQ(Text(IDC_PRESETS_GROUP), L"Corvane Plug-in Presets (1 found)");
    expect(kVstEffects, {1}, L"i--xaOSP" + someVst);
    expect(kVstEffects, {0, 1}, L"ie-xaOS-|<Multiple plug-ins selected>|Vendor:||VST ID: |");
    expect(kVstSynths, {0}, L"-----OS-|<No plug-in selected>|Vendor:||VST ID: |");
    EXPECT_EQ(Listed(), Texts{L"<< No entries >>"});
    EXPECT_EQ(Text(IDC_PLUGINS_LABEL), L"&Registered Plug-ins");
    EXPECT_EQ(Text(IDC_PRESETS_GROUP), L"Corvane Plug-in Presets");
    Key(IDC_PLUGINS, VK_F2);  // a prompt would fail the test
    expect(kVst3, {0}, L"i--xaOSP" + someVst);
    EXPECT_EQ(Listed(), (Texts{L"Chorus", L"Chorus", L"Dub"})) << "under all of its ids";
    expect(kDirectX, {0}, L"i--xaOS-|C:\\windows\\win.ini|CLSID:|" + IdText(1));
    expect(kMidi, {0}, std::wstring(L"i---aOS-||CLSID:|") + kFilterMapper);
    expect(kDesks, {0}, L"i----OS-||CLSID:|" + IdText(5));
    expect(kLegacy, {}, L"-----W-|<No plug-in selected>|CLSID:|");
    expect(kLegacy, {0}, L"i--x-WR|C:\\vst.dll|CLSID:|" + IdText(2));
    expect(kLegacy, {0, 1}, L"i--x-W-|<Multiple plug-ins selected>|CLSID:|");
    Press(IDC_SHOW_EXCLUDED);
    expect(kVstEffects, {0}, L"i--x-OSP" + someVst);
}

TEST_F(PluginPanes, NamesAreCorrectedOnlyAfterAWholeEnumeration) {
    const std::wstring stranger = support::kSurfaces + std::wstring(L"{no id}");
    Wrap(1, L"Old");
    SetText(HKEY_CLASSES_ROOT, L"CLSID\\" + IdText(1), nullptr, L"New");
    CreateKey(HKEY_CLASSES_ROOT, stranger);
    OpenWith({}, kLegacy);
    EXPECT_EQ(Listed(), Texts{L"Old"}) << "broken off";
    EXPECT_EQ(Panes(), L"-------|<No plug-in selected>|CLSID:|") << "without the adapter's program";
    DeleteTree(HKEY_CLASSES_ROOT, stranger);
    OpenWith({}, kLegacy);
    EXPECT_EQ(Listed(), Texts{L"New"});
}

TEST_F(PluginPanes, ExcludingAndEnablingMovesRowsBetweenTheModesAndTellsTheHost) {
    constexpr wchar_t kLast[] = L"{D42D5FCC-AB16-4318-AA95-EDFEFC514AAF}";
    const StandInHost host;
    const std::wstring reed = kExcludedPlugins + IdText('R');
    // The first and the last of the system's, which are never touched.
    AddVst(1, L"System 1").Text(L"clsidPlug", L"{52B63860-DC93-11CE-A099-00AA00479A58}");
    AddVst(2, L"System 2").Text(L"clsidPlug", kLast);
    CreateKey(HKEY_CURRENT_USER, std::wstring(kExcludedPlugins) + kLast);
    OpenWith({L"Anvil", L"Bellows", L"Reed"}, kVstEffects, {L"/Float", L"/ParentWnd", host.HandleText()});
    SelectPlugins({L"Anvil", L"Reed"});
    Press(IDC_EXCLUDE);
    EXPECT_EQ(Listed(), Texts{L"Bellows"});
    EXPECT_EQ(support::Text(HKEY_CURRENT_USER, reed, nullptr), L"Reed");
    CreateKey(HKEY_CURRENT_USER, reed + L"\\below");
    Press(IDC_SHOW_EXCLUDED);
    EXPECT_EQ(Text(IDC_EXCLUDE), L"E&nable Plug-in");
    EXPECT_EQ(Listed(), (Texts{L"Anvil", L"Reed"}));
    SelectPlugins({L"Reed"});
    Press(IDC_EXCLUDE);
    EXPECT_EQ(Listed(), Texts{L"Anvil"});
    EXPECT_FALSE(Exists(HKEY_CURRENT_USER, reed));
    Press(IDC_SHOW_PERMANENT);
    SelectPlugins({L"System 1", L"System 2"});
    Press(IDC_EXCLUDE);
    EXPECT_EQ(Listed(), (Texts{L"Anvil", L"System 1", L"System 2"}));
    EXPECT_TRUE(Exists(HKEY_CURRENT_USER, std::wstring(kExcludedPlugins) + kLast));
    Press(IDC_SHOW_ENABLED);
    EXPECT_EQ(Text(IDC_EXCLUDE), L"Exclude Plug-in");
    EXPECT_FALSE(IsEnabled(IDC_SHOW_PERMANENT));
    const StandInHost::Message told{support::kPluginsChanged, 0, 0};
    EXPECT_TRUE(WaitFor([&] { return std::ranges::count(host.Messages(), told) == 3; }));
}

TEST_F(PluginPanes, AMissingFileIsAskedAboutAndOnYesItsPluginIsRemoved) {
    AddFilter(1, L"Gone", L"C:\\no such.dll");
    AddFilter(2, L"System", L"\"ole32.dll\"");
    AddFilter(3, L"Synth", L"C:\\no such.dll");
    CreateKey(HKEY_CLASSES_ROOT, kSoftSynths + IdText(3) + L"\\below");
    RegisterAudioDmo(IdText(4), L"Object");
    OpenWith({}, kDirectX);
    SelectPlugins({L"Gone", L"System"});
    m_popups.Expect(L"\"Gone\" has a registry entry pointing to \"C:\\no such.dll\"", IDNO);
    Press(IDC_EXCLUDE);
    Press(IDC_SHOW_EXCLUDED);
    EXPECT_EQ(Listed(), (Texts{L"Gone", L"System"})) << "No excludes as usual";
    SelectPlugins({L"Gone"});
    m_popups.Expect(L"\"Gone\"", IDYES);
    Press(IDC_EXCLUDE);
    EXPECT_EQ(Listed(), Texts{L"System"});
    Press(IDC_SHOW_ENABLED);
    for (const auto& [category, name] : {std::pair(kSynths, L"Synth"), {kObjects, L"Object"}}) {
        Choose(category);
        SelectPlugins({name});
        m_popups.Expect(name, IDYES);
        Press(IDC_EXCLUDE);
        EXPECT_EQ(Listed(), Texts{L"<< No entries >>"});
    }
    EXPECT_FALSE(Exists(HKEY_CLASSES_ROOT, kSoftSynths + IdText(3)));
}

TEST_F(PluginPanes, CommandsServeThePluginThatIsShown) {
    OpenWith({L"Anvil", L"Bellows", L"Kammer", L"Reed"});
    const auto current = [this] { return List().CaretRow()->name; };
    ClickRow(IDC_PLUGINS, 0);
    Key(IDC_PLUGINS, VK_DOWN);
    EXPECT_EQ(current(), L"Bellows");
    ClickRow(IDC_PLUGINS, 3);
    EXPECT_EQ(Selected(), Texts{L"Reed"});
    EXPECT_EQ(current(), L"Reed") << "after a key and a click";
    ClickRow(IDC_PLUGINS, 1, MK_CONTROL);
    SelectRows(Control(IDC_PLUGINS), {3});  // as a second click with Ctrl leaves it
    EXPECT_EQ(current(), L"Reed");
    EXPECT_EQ(CaretText(), L"Reed");
    ClickRow(IDC_PLUGINS, 1);
    Key(IDC_PLUGINS, VK_SPACE);
    EXPECT_EQ(Selected(), Texts{L"Bellows"}) << "no key selects from the top";
    Key(IDC_PLUGINS, VK_F2);  // where there is no filter at all, no VST is renamed
    Key(IDC_PLUGINS, 'K');
    EXPECT_EQ(CaretText(), L"Kammer");
    EXPECT_EQ(Selected().back(), L"Kammer");
    EXPECT_FALSE(Plugins().IsSelected(0));
}

TEST_F(PluginPanes, ARenamedPluginStaysSelected) {
    RegisterAudioFilter(IdText(1), L"Alto");
    RegisterAudioDmo(IdText(1), L"Zither");
    OpenWith({L"Anvil", L"Bellows", L"Reed"});
    SelectPlugins({L"Anvil"});
    ExpectName(L"Zoom");
    m_dialog->Send(WM_COMMAND, MAKEWPARAM(IDC_PLUGINS, LBN_DBLCLK));
    EXPECT_EQ(Listed(), (Texts{L"Bellows", L"Reed", L"Zoom"}));
    EXPECT_EQ(Selected(), Texts{L"Zoom"});
    EXPECT_EQ(Panes(), L"i--xa---|C:\\windows\\regedit.exe|Vendor:|Tarnwick|VST ID: |-5")
        << "without a scanner";

    const std::wstring strange = L"\x1\t\xD83C\xDFB9 " + std::wstring(2000, L'x');
    for (const auto& [name, button] :
         {std::pair(strange, IDOK), {L"", IDOK}, {L" \t\x3000", IDOK}, {L"Cancelled", IDCANCEL}}) {
        ExpectName(name, button);
        Key(IDC_PLUGINS, VK_F2);
        EXPECT_EQ(Selected(), Texts{strange.substr(0, 1023)});
    }
    EXPECT_EQ(List().CaretPlugin()->name, strange.substr(0, 128)) << "cut for the presets";
    SelectPlugins({L"Bellows", L"Reed"});
    Key(IDC_PLUGINS, VK_F2);  // a prompt would fail the test

    Choose(kObjects);
    SelectPlugins({L"Zither"});
    ExpectName(L"Beta");
    Key(IDC_PLUGINS, VK_F2);
    EXPECT_EQ(Listed(), (Texts{L"Alto", L"Beta"}));
    EXPECT_EQ(Selected(), Texts{L"Beta"}) << "not the filter that is the same class";
}

TEST_F(PluginPanes, AToolThatEndsLeavesTheSamePluginsSelected) {
    SetWizard(L"C:\\windows\\system32\\hostname.exe");
    for (const wchar_t* name : {L"Brass", L"Cornet", L"Drum"}) Wrap(*name, name);
    OpenWith({}, kLegacy);
    SelectPlugins({L"Brass", L"Drum"});
    Wrap('A', L"Alto");
    DeleteTree(HKEY_LOCAL_MACHINE, std::wstring(kAdapterInventory) + L"Drum");
    Press(IDC_ADAPTER_WIZARD);
    EXPECT_EQ(Selected(), Texts{L"Brass"}) << "the other one is wrapped no more";
    EXPECT_EQ(Text(IDC_CLSID), IdText('B'));

    DeleteTree(HKEY_LOCAL_MACHINE, kAdapterInventory);
    Press(IDC_ADAPTER_WIZARD);
    EXPECT_EQ(Listed(), (Texts{L"Alto", L"Brass", L"Cornet", L"Drum"})) << "the first category";
    EXPECT_EQ(Selected(), Texts{L"Brass"});
}

TEST_F(PluginPanes, AfterAnExclusionTheListStaysInPlace) {
    RegisterAudioFilter(IdText(1), L"Filter");
    for (unsigned n = 100; n < 160; ++n) AddVst(n, L"Plug-in " + std::to_wstring(n));
    OpenWith({});
    EXPECT_EQ(Plugins().ClientRect().Height() % Plugins().SendInt(LB_GETITEMHEIGHT), 0) << "half a row";
    SelectPlugins({L"Plug-in 112", L"Plug-in 114", L"Plug-in 105"});
    Plugins().SetTopRow(10);
    Press(IDC_EXCLUDE);
    EXPECT_EQ(Selected(), Texts{});
    EXPECT_EQ(CaretText(), L"Plug-in 115");
    EXPECT_EQ(Plugins().SendInt(LB_GETANCHORINDEX), Plugins().SendInt(LB_GETCARETINDEX));
    EXPECT_EQ(Plugins().RowText(Plugins().TopRow()), L"Plug-in 110");
    EXPECT_TRUE(Item(IDC_PLUGINS).HasFocus());
    Key(IDC_PLUGINS, VK_DOWN);
    EXPECT_EQ(Selected(), Texts{L"Plug-in 116"});
    SelectPlugins({L"Plug-in 159"});
    Press(IDC_EXCLUDE);
    EXPECT_EQ(CaretText(), L"Plug-in 158") << "there is none behind";
    SelectPlugins({L"Plug-in 101"});
    Plugins().SetTopRow(0);
    ExpectName(L"Zoom");
    Key(IDC_PLUGINS, VK_F2);
    EXPECT_GT(Plugins().TopRow(), 20) << "where the new name is";
}

TEST_F(PluginPanes, FindShowsThePluginsThatHaveAllWordsInEveryCategory) {
    AddVst('Z', L"Zither", true);
    CreateKey(HKEY_CURRENT_USER, kExcludedPlugins + IdText('E'));
    OpenWith({L"Anvil", L"Bellows", L"C\x00E9nd", L"Reed", L"Ended"});
    for (const auto& [text, found] : {std::pair<std::wstring, Texts>(L"tarn EN", {L"C\x00E9nd"}),
                                      {L"regedit.exe ree", {L"Reed"}},
                                      {L"zit", {L"<< 2 in other categories: Enter >>"}},
                                      {IdText('R'), {L"Reed"}}}) {
        EXPECT_EQ(Find(text), found) << Utf8(text);
    }
    Find(L"");
    SelectPlugins({L"Anvil", L"Reed"});
    Find(L"reed");
    EXPECT_EQ(Selected(), Texts{L"Reed"});
    EXPECT_TRUE(Text(IDC_PLUGINS_LABEL).ends_with(L"(1 found)"));
    EXPECT_EQ(Panes(), L"i--xa---|C:\\windows\\regedit.exe|Vendor:|Tarnwick|VST ID: |-5");
    Press(IDC_EXCLUDE);
    Press(IDC_SHOW_EXCLUDED);
    EXPECT_EQ(Listed(), Texts{L"Reed"});
    Choose(kDesks);
    EXPECT_EQ(Find(L"tarn"), Texts{L"<< 2 in other categories: Enter >>"});
}

TEST_F(PluginPanes, KeysLeadFromTheFieldToWhatIsFound) {
    AddVst('Z', L"Zither", true);
    OpenWith({L"Anvil", L"Bellows", L"Reed"});
    const auto type = [this](const wchar_t* text, WORD key) {
        m_dialog->Send(WM_COMMAND, ID_FIND);
        Find(text);
        Key(IDC_FIND, key);
        return Item(IDC_FIND).HasFocus();
    };
    SelectPlugins({L"Bellows", L"Reed"});
    EXPECT_FALSE(type(L"ree", VK_DOWN));
    EXPECT_EQ(Selected(), Texts{L"Reed"});
    EXPECT_FALSE(type(L"", VK_RETURN));
    EXPECT_EQ(Selected(), Texts{L"Anvil"});
    EXPECT_TRUE(Item(IDC_PLUGINS).HasFocus());
    EXPECT_TRUE(type(L"zither", VK_DOWN)) << "there is no plug-in to go to";
    EXPECT_TRUE(type(L"zither", VK_RETURN));
    EXPECT_EQ(List().SelectedCategory(), Category::Vst3Effects);
    Find(L"reed");
    Item(IDC_PLUGINS).Focus();
    Key(IDC_PLUGINS, VK_RETURN);
    EXPECT_EQ(List().SelectedCategory(), Category::VstEffects) << "round the end, and from the list, too";
    EXPECT_TRUE(type(L"reed", VK_ESCAPE));
    EXPECT_EQ(Listed().size(), 3U);
}

}  // namespace
