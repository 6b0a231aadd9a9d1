// The dialog in which the presets of one plug-in are renamed and deleted.
#pragma once

#include "Dialog.h"
#include "PresetListMgr.h"

class CManagePresetsDlg : public CDialog {
  public:
    explicit CManagePresetsDlg(const CPresetListMgr& presets);

  private:
    std::span<const CRoute> Routes() const override;
    bool OnInitDialog() override;
    void OnSelectAll();
    void OnDelete();
    void OnRename();
    int OnVKeyToItem(UINT key, HWND list);
    void UpdateRename();

    void FillList();
    void SelectOne(int row);
    void Report(UINT textId) const;

    const CPresetListMgr& m_presets;
    CPresetListBox m_list;
    int m_listed = 0;
};
