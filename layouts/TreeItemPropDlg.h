// The properties of a plug-in in a layout.
#pragma once

#include <optional>
#include <string>

#include "Dialog.h"
#include "LayoutItem.h"
#include "PathField.h"
#include "PluginInventory.h"

class CTreeItemPropDlg : public CDialog {
  public:
    CTreeItemPropDlg(const CPluginInventory& inventory, const LayoutItem& plugin);

    // What the user left in the fields.
    const std::wstring& Name() const { return m_name; }
    const std::wstring& DefaultPreset() const { return m_preset; }
    /// The name that the plug-in is registered under, else the one that its record knows.
    const std::wstring& OriginalName() const { return m_originalName; }

  private:
    bool OnInitDialog() override;
    void OnOK() override;
    void FillPresets();
    Guid PresetClsid() const;

    const CPluginInventory& m_inventory;
    const LayoutItem& m_plugin;
    std::wstring m_name;
    std::wstring m_preset;
    std::optional<int> m_shownRow;  // in the list of presets, when the dialog opens
    std::wstring m_originalName;
    CPathField m_file;
};
