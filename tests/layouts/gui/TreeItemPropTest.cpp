// The presets that the properties of a plug-in in a layout offer.
#include <gtest/gtest.h>

#include "TreeItemPropDlg.h"
#include "resource.h"
#include "support/TestPlugins.h"
#include "support/WindowActions.h"

namespace {

using support::IdText;
using Texts = std::vector<std::wstring>;

class TreeItemProp : public testing::Test {
  protected:
    void SetUp() override {
        support::AddVst(1, L"Echo");
        for (const wchar_t* preset : {L"Hall", L"Room"}) StorePreset(1, preset);
        StorePreset(2, L"<None>");
        StorePreset(0, L"Nobody's");
        m_inventory.Enumerate(true);
    }
    static void StorePreset(unsigned plugin, const wchar_t* name) {
        const std::wstring id = plugin == 0 ? ClsidText({}) : IdText(plugin);
        support::SetRaw(HKEY_CURRENT_USER, L"SOFTWARE\\Corvane Music Software\\ActiveMovie\\Presets\\" + id,
                        name, REG_BINARY, {1});
    }
    /// What the list shows for a plug-in with that preset, and the preset after OK.
    Texts Offered(const std::wstring& clsid, const std::wstring& preset, int chosen = -1) {
        LayoutItem plugin = NewPlugin();
        plugin.clsid = ParseClsid(clsid).value_or(Guid{});
        plugin.category = static_cast<int>(Category::VstEffects);
        plugin.defaultPreset = preset;
        CTreeItemPropDlg dialog(m_inventory, plugin);
        EXPECT_TRUE(dialog.CreateModeless(nullptr));
        const HWND list = dialog.Item(IDC_PROP_PRESET).Handle();
        Texts rows = support::Rows(list);
        if (chosen >= 0) support::SelectRows(list, {chosen});
        for (const int row : support::SelectedRows(list))
            rows.push_back(L"shows " + rows[static_cast<std::size_t>(row)]);
        dialog.Send(WM_COMMAND, IDOK);
        rows.push_back(L"gives " + dialog.DefaultPreset());
        return rows;
    }

    support::RegistrySandbox m_sandbox;
    CPluginDatabase m_database;
    CPluginInventory m_inventory{kDefaultVstKey, m_database};
};

TEST_F(TreeItemProp, PresetsAreThoseOfTheClassIdHoweverTheItemIsNamed) {
    for (const unsigned id : {1U, 101U})
        EXPECT_EQ(Offered(IdText(id), L"room"),
                  (Texts{L"<None>", L"Hall", L"Room", L"shows Room", L"gives room"}));
    EXPECT_EQ(Offered(L"", L""), (Texts{L"<None>", L"Nobody's", L"shows <None>", L"gives "}));
}

TEST_F(TreeItemProp, NoneIsAChoiceAndAPresetOfAnotherComputerIsKept) {
    EXPECT_EQ(Offered(IdText(1), L""), (Texts{L"<None>", L"Hall", L"Room", L"shows <None>", L"gives "}));
    EXPECT_EQ(Offered(IdText(1), L"Away"),
              (Texts{L"<None>", L"Hall", L"Room", L"Away", L"shows Away", L"gives Away"}));
    EXPECT_EQ(Offered(IdText(1), L"Hall", 0).back(), L"gives ");
    EXPECT_EQ(Offered(IdText(1), L"Hall", 2).back(), L"gives Room");
    EXPECT_EQ(Offered(IdText(2), L"<None>"), (Texts{L"<None>", L"<None>", L"shows <None>", L"gives <None>"}));
    EXPECT_EQ(Offered(IdText(2), L"", 1).back(), L"gives <None>");
}

}  // namespace
