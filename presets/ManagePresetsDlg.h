// The dialog in which the presets of one plug-in are renamed and deleted.
#pragma once

#include "BackupQuestion.h"
#include "Dialog.h"
#include "PresetListMgr.h"

class CManagePresetsDlg : public CDialog {
  public:
    CManagePresetsDlg(const CPresetListMgr& presets, CBackups& backups);

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
    /// Before presets are changed: no names for all of them. Nothing when they must stay as they are.
    std::optional<CBackup> BackUp(UINT stepId, std::vector<std::wstring> names, bool withFiles);

    const CPresetListMgr& m_presets;
    CBackups& m_backups;
    CPresetListBox m_list;
    int m_listed = 0;
};
