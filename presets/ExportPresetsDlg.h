#pragma once

#include "PresetFileDlg.h"

/// Asks for the preset file to write, and which presets of a single plug-in go into it.
class CExportPresetsDlg : public CPresetFileDlg {
  public:
    CExportPresetsDlg(std::span<const CPresetListMgr> plugins, std::wstring& folder);

  private:
    void OnInitDone() override;
    bool OnFileOk() override;
};
