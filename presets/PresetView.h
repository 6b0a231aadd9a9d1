// The preset commands: import, export and managing, for plug-ins that the caller has chosen.
#pragma once

#include <string>
#include <vector>

#include "BackupQuestion.h"
#include "Dialog.h"
#include "FileStream.h"
#include "PresetListMgr.h"
#include "PresetPlugin.h"
#include "PresetReview.h"
#include "PresetWalk.h"

class CPresetView {
  public:
    CPresetView(CDialog& dialog, CBackups& backups) : m_dialog(dialog), m_backups(backups) {}

    /// Nothing happens without a plug-in.
    void Import(const std::vector<PresetPlugin>& chosen);
    void Export(const std::vector<PresetPlugin>& chosen);
    void Manage(const PresetPlugin& plugin);
    enum class Dropped { Done, Left, NoPresetFile };
    /// Shows what a file would bring, and imports it for the installed plug-ins that the user ticks.
    Dropped ImportDropped(const std::wstring& path, const PluginFinder& find);

  private:
    int ExportTo(CFileSink& file, const std::vector<CPresetListMgr>& plugins,
                 const PresetSelection* selection) const;
    /// Gives a result code, after a message where one is due.
    int ImportFrom(const std::wstring& path, const std::vector<CPresetListMgr>& plugins,
                   const PresetSelection* selection);
    void Report(const std::wstring& text) const;

    /// Nothing when the import must not be done. `presets` is how many it will bring.
    std::optional<CBackup> BackUpImport(CFileSource& file, const std::vector<CPresetListMgr>& plugins,
                                        const PresetSelection* selection, std::size_t& presets);

    CDialog& m_dialog;
    CBackups& m_backups;
    std::wstring m_folder;  // that the preset file dialogs visited last
};
