#include "PluginDetails.h"

#include "ClsidText.h"
#include "Resources.h"
#include "resource.h"

void CPluginDetails::Clear() const {
    SetText(IDC_FILENAME, LoadText(IDS_NO_PLUGIN_SELECTED));
    for (const int id : {IDC_CLSID, IDC_VST_ID, IDC_VENDOR}) SetText(id, L"");
}

void CPluginDetails::ShowLabelOf(Category category) const {
    SetText(IDC_CLSID_LABEL, LoadText(IsVstCategory(category) ? IDS_VENDOR_LABEL : IDS_CLSID_LABEL));
}

void CPluginDetails::ShowFieldsOf(Category category) const {
    ShowLabelOf(category);
    const bool vst = IsVstCategory(category);
    const auto showAndEnable = [this](int id, bool shown) {
        const CWindow field = m_dialog.Item(id);
        field.Show(shown);
        field.Enable(shown);
    };
    showAndEnable(IDC_CLSID, !vst);
    for (const int id : {IDC_VST_ID_LABEL, IDC_VST_ID, IDC_VENDOR}) showAndEnable(id, vst);
}

void CPluginDetails::ShowPlugin(const CPluginInventory& inventory, const Guid& clsid,
                                Category category) const {
    ShowLabelOf(category);
    SetText(IDC_FILENAME, inventory.PathOf(clsid, category).value_or(L""));
    if (!IsVstCategory(category)) {
        SetText(IDC_CLSID, ClsidText(clsid));
        return;
    }
    const VstInventoryRecord* record = inventory.Vst().Find(clsid);
    SetText(IDC_VST_ID, record ? std::to_wstring(record->uniqueId) : L"");
    SetText(IDC_VENDOR, record ? record->vendor : L"");
}

void CPluginDetails::ShowSeveral(Category category) const {
    ShowLabelOf(category);
    SetText(IDC_FILENAME, LoadText(IDS_MULTIPLE_PLUGINS_SELECTED));
    for (const int id : {IDC_CLSID, IDC_VST_ID, IDC_VENDOR}) SetText(id, L"");
}
