// The plug-in panes on a hidden dialog, over a registry of the test's own.
#include <algorithm>
#include <gtest/gtest.h>

#include "Dialog.h"
#include "ExclusionView.h"
#include "PluginListView.h"
#include "support/RegistrySandbox.h"
#include "support/TestPlugins.h"
#include "support/WindowActions.h"

namespace {

using support::AddVst;
using support::IdText;
using Rows = std::vector<std::wstring>;

constexpr wchar_t kPermanent[] = L"{52B63860-DC93-11CE-A099-00AA00479A58}";

class CHiddenDialog : public CDialog {
  public:
    CHiddenDialog() : CDialog(IDD_PLUGIN_MANAGER) {}
};

class PluginPanes : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(m_dialog.CreateModeless(nullptr));
        m_list.OnInitDialog();
        m_exclusion.OnInitDialog();
    }
    void Fill() {
        m_exclusions.Load();
        m_list.EnumeratePlugins();
        m_list.Refill();
    }
    void Choose(const wchar_t* category) {
        const auto categories = m_dialog.Control<CListBox>(IDC_CATEGORIES);
        for (int row = 0; row < categories.Count(); ++row) {
            if (categories.RowText(row) == category) categories.SetCurrentRow(row);
        }
        m_list.RefreshPluginList();
    }
    void Select(std::initializer_list<int> rows) {
        for (const int row : rows) m_list.Plugins().Select(row);
        m_list.OnSelectionChanged();
    }
    Rows Listed() const { return support::Rows(m_list.Plugins().Handle()); }
    std::wstring TextOf(int id) const { return m_dialog.Item(id).Text(); }
    bool IsEnabled(int id) const { return m_dialog.Item(id).IsEnabled(); }
    bool IsShown(int id) const {
        return (::GetWindowLongPtrW(m_dialog.Item(id).Handle(), GWL_STYLE) & WS_VISIBLE) != 0;
    }

    support::RegistrySandbox m_sandbox;
    CHiddenDialog m_dialog;
    CPluginDatabase m_noDatabase;
    CPluginInventory m_inventory{kDefaultVstKey, m_noDatabase};
    CExclusionList m_exclusions;
    Visibility m_visibility;
    VstToolPaths m_tools{.scanner = L"C:\\windows\\regedit.exe", .adapterProgram = L""};
    CHostWindow m_noHost{nullptr};
    CPluginListView m_list{m_dialog, m_inventory, m_exclusions, m_visibility, m_tools};
    CExclusionView m_exclusion{m_dialog, m_exclusions, m_inventory, m_list, m_noHost, m_visibility};
};

TEST_F(PluginPanes, CategoriesStandInOrderAndLegacyOnesOnlyWithAnAdapter) {
    Fill();
    const Rows nine = {
        L"DirectX Audio Effects (DX)", L"VST Audio Effects (VST)",     L"VST3 Audio Effects (VST3)",
        L"DirectX Instruments (DXi)",  L"VST Instruments (VSTi)",      L"VST3 Instruments (VST3i)",
        L"MIDI Effects (QTZ)",         L"DirectX Media Objects (DMO)", L"Control Surfaces"};
    const auto categories = m_dialog.Control<CListBox>(IDC_CATEGORIES);
    EXPECT_EQ(support::Rows(categories.Handle()), nine);
    EXPECT_EQ(TextOf(IDC_CATEGORIES_LABEL), L"Plu&g-in Categories (11 found)")
        << "the table's size, not the rows";
    categories.SetCurrentRow(2);
    support::CreateKey(HKEY_LOCAL_MACHINE,
                       L"Software\\Corvane Music Software\\Corvane VST Adapter\\Inventory");
    Fill();
    EXPECT_EQ(categories.Count(), 11);
    EXPECT_EQ(categories.CurrentRow(), 2) << "the selection is kept";
    EXPECT_EQ(m_list.SelectedCategory(), Category::Vst3Effects);
}

TEST_F(PluginPanes, ACategoryWithoutPluginsShowsOneRowThatIsNoPlugin) {
    AddVst(1, L"Bellows");
    Fill();
    Choose(L"VST Instruments (VSTi)");
    EXPECT_EQ(Listed(), Rows{L"<< No entries >>"});
    EXPECT_EQ(TextOf(IDC_PLUGINS_LABEL), L"&Registered Plug-ins");
    Select({0});
    EXPECT_FALSE(IsEnabled(IDC_IMPORT) || IsEnabled(IDC_EXCLUDE) || IsEnabled(IDC_ADD_PLUGIN));
    EXPECT_FALSE(m_list.CaretPlugin());
    EXPECT_TRUE(m_exclusion.TogglePluginExclusion()) << "it has nothing to act on";
    m_exclusion.OnShowExcluded();
    Choose(L"VST Audio Effects (VST)");
    EXPECT_EQ(Listed(), Rows{}) << "its plug-in is hidden, not missing";
}

TEST_F(PluginPanes, OnlyTheCaretsPluginHasItsNameCutForThePresets) {
    const std::wstring name(200, L'x');
    AddVst(1, name);
    Fill();
    Choose(L"VST Audio Effects (VST)");
    Select({0});
    ASSERT_EQ(m_list.SelectedPlugins().size(), 1U);
    EXPECT_EQ(m_list.SelectedPlugins().front().name, name);
    ASSERT_TRUE(m_list.CaretPlugin());
    EXPECT_EQ(m_list.CaretPlugin()->name, name.substr(0, 128));
    EXPECT_EQ(m_list.CaretPlugin()->category, RowOf(Category::VstEffects).guid);
}

TEST_F(PluginPanes, NamesAreCorrectedOnlyAfterAWholeEnumeration) {
    constexpr wchar_t kEntry[] = L"Software\\Corvane Music Software\\Corvane VST Adapter\\Inventory\\a";
    constexpr wchar_t kStranger[] = L"CorvaneControlSurfaces\\{nonsense}";
    support::RegisterAudioFilter(IdText(1), L"Old");
    support::SetText(HKEY_CLASSES_ROOT, L"CLSID\\" + IdText(1), nullptr, L"New");
    support::SetText(HKEY_LOCAL_MACHINE, kEntry, L"clsidPlug", IdText(1));
    support::SetDword(HKEY_LOCAL_MACHINE, kEntry, L"isVst", 1);
    support::CreateKey(HKEY_CLASSES_ROOT, kStranger);
    Fill();
    EXPECT_FALSE(support::Text(HKEY_LOCAL_MACHINE, kEntry, L"FullName")) << "broken off";
    support::DeleteTree(HKEY_CLASSES_ROOT, kStranger);
    Fill();
    EXPECT_EQ(support::Text(HKEY_LOCAL_MACHINE, kEntry, L"FullName"), L"New");
    Choose(L"Legacy Wrapped VST Audio Effects (VST) ");
    EXPECT_EQ(Listed(), Rows{L"New"});
}

TEST_F(PluginPanes, AVstIsListedOnceAndAVst3UnderEachOfItsIds) {
    AddVst(1, L"Bellows");
    AddVst(2, L"Alto", true);
    Fill();
    Choose(L"VST Audio Effects (VST)");
    EXPECT_EQ(Listed(), Rows{L"Bellows"});
    EXPECT_EQ(TextOf(IDC_PLUGINS_LABEL), L"&Registered Plug-ins (1 found)");
    Choose(L"VST3 Audio Effects (VST3)");
    EXPECT_EQ(Listed(), (Rows{L"Alto", L"Alto"}));
}

TEST_F(PluginPanes, DetailsFollowTheSelection) {
    for (unsigned n = 1; n <= 2; ++n) AddVst(n, L"Plug-in " + std::to_wstring(n));
    support::SetRaw(HKEY_CURRENT_USER,
                    L"SOFTWARE\\Corvane Music Software\\ActiveMovie\\Presets\\" + IdText(1), L"Warm",
                    REG_BINARY, {1});
    Fill();
    Choose(L"VST Audio Effects (VST)");
    EXPECT_EQ(TextOf(IDC_FILENAME), L"<No plug-in selected>");
    Select({0});
    EXPECT_EQ(TextOf(IDC_FILENAME), L"C:\\windows\\regedit.exe");
    EXPECT_EQ(TextOf(IDC_VST_ID), L"-5");
    EXPECT_EQ(TextOf(IDC_VENDOR), L"Tarnwick");
    EXPECT_EQ(TextOf(IDC_CLSID_LABEL), L"Vendor:");
    EXPECT_EQ(TextOf(IDC_PRESETS_GROUP), L"Corvane Plug-in Presets (1 found)");
    EXPECT_TRUE(IsEnabled(IDC_MANAGE) && IsEnabled(IDC_EXPORT) && IsEnabled(IDC_VST_PROPERTIES));
    EXPECT_TRUE(IsShown(IDC_VENDOR) && IsShown(IDC_VST_ID) && !IsShown(IDC_CLSID));
    Select({0, 1});
    EXPECT_EQ(TextOf(IDC_FILENAME), L"<Multiple plug-ins selected>");
    EXPECT_EQ(TextOf(IDC_VENDOR), L"");
    EXPECT_FALSE(IsEnabled(IDC_MANAGE) || IsEnabled(IDC_VST_PROPERTIES));
    EXPECT_TRUE(IsEnabled(IDC_EXPORT) && IsEnabled(IDC_EXCLUDE));
    Choose(L"Control Surfaces");
    EXPECT_TRUE(IsShown(IDC_CLSID) && !IsShown(IDC_VENDOR) && !IsShown(IDC_VST_ID_LABEL));
    EXPECT_EQ(TextOf(IDC_CLSID_LABEL), L"CLSID:");
    EXPECT_EQ(TextOf(IDC_PRESETS_GROUP), L"Corvane Plug-in Presets");
}

TEST_F(PluginPanes, TheSameCategoryIsNotFilledAgain) {
    AddVst(1, L"Bellows");
    Fill();
    Choose(L"VST Audio Effects (VST)");
    m_list.Plugins().Add(L"a row of the test");
    m_list.RefreshPluginList();
    EXPECT_EQ(Listed().size(), 2U);
    m_list.Refill();
    EXPECT_EQ(Listed().size(), 1U);
}

TEST_F(PluginPanes, ExcludingAndEnablingMovesRowsBetweenTheModes) {
    for (unsigned n = 1; n <= 3; ++n) AddVst(n, L"Plug-in " + std::to_wstring(n));
    Fill();
    Choose(L"VST Audio Effects (VST)");
    Select({0, 2});
    m_exclusion.OnExclude();
    EXPECT_EQ(Listed(), Rows{L"Plug-in 2"});
    const std::wstring key = L"Software\\Corvane Music Software\\ExcludedPlugIns\\";
    EXPECT_EQ(support::Text(HKEY_CURRENT_USER, key + IdText(3), nullptr), L"Plug-in 3");
    m_exclusion.OnShowExcluded();
    EXPECT_EQ(TextOf(IDC_EXCLUDE), L"E&nable Plug-in");
    EXPECT_TRUE(IsEnabled(IDC_SHOW_PERMANENT));
    EXPECT_EQ(Listed(), (Rows{L"Plug-in 1", L"Plug-in 3"}));
    Select({1});
    EXPECT_FALSE(IsEnabled(IDC_ADD_PLUGIN));
    m_exclusion.OnExclude();
    EXPECT_EQ(Listed(), Rows{L"Plug-in 1"});
    EXPECT_FALSE(support::Exists(HKEY_CURRENT_USER, key + IdText(3)));
    m_exclusion.OnShowEnabled();
    EXPECT_EQ(Listed(), (Rows{L"Plug-in 2", L"Plug-in 3"}));
    EXPECT_FALSE(IsEnabled(IDC_SHOW_PERMANENT));
}

TEST_F(PluginPanes, PermanentOnesAreListedOnRequestAndNeverTouched) {
    support::RegisterAudioFilter(kPermanent, L"A system filter");
    Fill();
    const auto shows = [this] { return std::ranges::count(Listed(), L"A system filter") > 0; };
    EXPECT_FALSE(shows());
    m_exclusion.OnShowExcluded();
    EXPECT_FALSE(shows());
    m_dialog.Control<CButton>(IDC_SHOW_PERMANENT).Check();
    m_exclusion.OnShowPermanent();
    ASSERT_TRUE(shows());
    for (int row = 0; row < m_list.Plugins().Count(); ++row) m_list.Plugins().Select(row);
    m_visibility.mode = VisibilityMode::Enabled;  // as if it had been listed there
    EXPECT_TRUE(m_exclusion.TogglePluginExclusion());
    EXPECT_FALSE(
        support::Exists(HKEY_CURRENT_USER,
                        std::wstring(L"Software\\Corvane Music Software\\ExcludedPlugIns\\") + kPermanent));
}

}  // namespace
