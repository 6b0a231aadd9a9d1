// Writes imported presets into a plug-in's store.
#pragma once

#include <optional>
#include <string>

#include "PresetListMgr.h"

/// Keeps the plug-in's key and the folder of its files at hand for the presets of one command.
class CPresetWriter {
  public:
    explicit CPresetWriter(const CPresetListMgr& plugin) : m_plugin(plugin) {}

    /// Overwrites a preset of the same name. False when there are no data, or when key, folder or file can't
    /// be written; then nothing was stored.
    bool Store(const ImportedPreset& preset);

  private:
    bool StoreInFile(const ImportedPreset& preset);
    bool FindFolder();

    const CPresetListMgr& m_plugin;
    std::optional<CRegKey> m_key;
    std::wstring m_folder;  // empty until it is needed
};
