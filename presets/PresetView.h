// The preset commands: import, export and managing, for plug-ins that the caller has chosen.
#pragma once

#include <string>
#include <vector>

#include "BackupQuestion.h"
#include "Dialog.h"
#include "PresetListMgr.h"
#include "PresetPlugin.h"
#include "PresetWalk.h"

class CPresetView {
  public:
    CPresetView(CDialog& dialog, CBackups& backups) : m_dialog(dialog), m_backups(backups) {}

    /// Nothing happens without a plug-in.
    void Import(const std::vector<PresetPlugin>& chosen);
    void Export(const std::vector<PresetPlugin>& chosen);
    void Manage(const PresetPlugin& plugin);

  private:
    void Report(const std::wstring& text) const;

    /// Nothing when the import must not be done.
    std::optional<CBackup> BackUpImport(const std::wstring& path, const std::vector<CPresetListMgr>& plugins,
                                        const PresetSelection* selection);

    CDialog& m_dialog;
    CBackups& m_backups;
    std::wstring m_folder;  // that the preset file dialogs visited last
};
