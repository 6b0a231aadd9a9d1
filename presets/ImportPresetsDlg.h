#pragma once

#include "PresetFileDlg.h"

/// Asks for the preset file to read, shows what is in it, and asks which presets of a single plug-in to take.
class CImportPresetsDlg : public CPresetFileDlg {
  public:
    CImportPresetsDlg(std::span<const CPresetListMgr> plugins, std::wstring& folder);

  private:
    void OnInitDone() override;
    void OnSelectionChange() override;
    bool OnFileOk() override;
    void ShowPreview(const std::wstring& path);
    int FillPreview(IByteSource& file) const;

    std::wstring m_chosen;     // as the dialog named it when it was looked at
    std::wstring m_previewed;  // the file that it is; empty: no file's content is shown
};
