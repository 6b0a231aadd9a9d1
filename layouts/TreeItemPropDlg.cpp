#include "TreeItemPropDlg.h"

#include "ClsidText.h"
#include "PresetListMgr.h"
#include "Resources.h"
#include "StringRing.h"
#include "resource.h"

namespace {

std::optional<Category> CategoryOf(const LayoutItem& plugin) {
    if (plugin.category < 0 || plugin.category >= static_cast<int>(kCategories.size())) return std::nullopt;
    return static_cast<Category>(plugin.category);
}

}  // namespace

CTreeItemPropDlg::CTreeItemPropDlg(const CPluginInventory& inventory, const LayoutItem& plugin)
    : CDialog(IDD_TREE_ITEM_PROPERTIES),
      m_inventory(inventory),
      m_plugin(plugin),
      m_name(plugin.name),
      m_preset(plugin.defaultPreset),
      m_originalName(plugin.originalName) {}

bool CTreeItemPropDlg::OnInitDialog() {
    const auto category = CategoryOf(m_plugin);
    Item(IDC_PROP_NAME).SetText(m_plugin.name);
    Item(IDC_PROP_ID_LABEL).SetText(LoadRingText(m_plugin.vendor ? IDS_VENDOR_LABEL : IDS_CLSID_LABEL));
    Item(IDC_PROP_ID).SetText(m_plugin.vendor ? *m_plugin.vendor : ClsidText(m_plugin.clsid));
    if (category) {
        m_originalName =
            m_inventory.RegisteredNameOf(m_plugin.clsid, *category).value_or(m_plugin.originalName);
        Item(IDC_PROP_FILE).SetText(m_inventory.PathOf(m_plugin.clsid, *category).value_or(L""));
        Item(IDC_PROP_CATEGORY).SetText(LoadRingText(RowOf(*category).captionId));
    }
    Item(IDC_PROP_FRIENDLY_NAME).SetText(m_originalName);
    m_file.Attach(Item(IDC_PROP_FILE).Handle());
    FillPresets();
    return true;
}

/// The id that the host keeps presets under: a layout may name a VST plug-in by its other one.
Guid CTreeItemPropDlg::PresetClsid() const {
    const VstInventoryRecord* vst =
        m_plugin.clsid.IsNull() ? nullptr : m_inventory.Vst().Find(m_plugin.clsid);
    return vst ? vst->clsid : m_plugin.clsid;
}

void CTreeItemPropDlg::FillPresets() {
    const auto presets = Control<CPresetComboBox>(IDC_PROP_PRESET);
    if (const auto category = CategoryOf(m_plugin)) {
        CPresetListMgr(PresetClsid(), RowOf(*category).guid, m_plugin.name).FillPresetList(presets);
    }
    if (!m_preset.empty()) {
        m_shownRow = presets.FindExact(m_preset);
        if (!m_shownRow) m_shownRow = presets.Add(m_preset);  // of another computer, perhaps
    }
    // Only now, because a preset may have this name, too.
    presets.SendText(CB_INSERTSTRING, 0, LoadText(IDS_NONE));
    m_shownRow = m_shownRow ? *m_shownRow + 1 : 0;
    presets.SetCurrentRow(m_shownRow);
}

void CTreeItemPropDlg::OnOK() {
    m_name = Item(IDC_PROP_NAME).Text();
    const auto presets = Control<CPresetComboBox>(IDC_PROP_PRESET);
    const auto row = presets.CurrentRow();
    if (row && row != m_shownRow) m_preset = *row == 0 ? std::wstring() : presets.RowText(*row);
    End(IDOK);
}
