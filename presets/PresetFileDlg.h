// The file dialogs for presets, with a list of what will be written or read.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "FileDialog.h"
#include "PresetListMgr.h"
#include "PresetWalk.h"
#include "resource.h"

/// What saving and opening have in common. The dialog starts in `folder` and leaves there the folder that was
/// visited last.
class CPresetFileDlg : public CFileDialog {
  public:
    /// The user's choice among the presets of a single plug-in; null when it is all of them.
    const PresetSelection* Selection() const { return m_selection ? &*m_selection : nullptr; }

  protected:
    CPresetFileDlg(UINT titleId, DWORD flags, std::span<const CPresetListMgr> plugins, std::wstring& folder);

    void OnFolderChange() override { m_folder = CurrentFolder(); }
    void OnCommand(UINT id, UINT code) override;

    bool HasSeveral() const { return m_plugins.size() > 1; }
    const CPresetListMgr& Plugin() const { return m_plugins.front(); }
    const CPresetListBox& List() const { return m_list; }
    void AttachList() { m_list = Window().Control<CPresetListBox>(IDC_PRESET_LIST); }
    CWindow SelectAllButton() const { return Window().Item(IDC_PRESET_SELECT_ALL); }
    void SelectAll() const { m_list.Select(-1); }
    /// For several plug-ins there is nothing to choose.
    void ShowSeveral() const;
    void TakeSelection();

  private:
    std::span<const CPresetListMgr> m_plugins;
    std::wstring& m_folder;
    CPresetListBox m_list;
    std::optional<PresetSelection> m_selection;
};
