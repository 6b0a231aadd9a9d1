// Writes imported presets into a plug-in's store.
#pragma once

#include <map>
#include <optional>
#include <string>

#include "PresetListMgr.h"
#include "PresetWalk.h"

/// Whether its data are stored in a file, whatever they were in before.
bool GoesToFile(std::int32_t type, std::size_t length);
/// Whether such a preset can be stored at all: some names can't become files.
bool CanBeStored(const PresetRecordHead& preset);
/// The file that an imported preset will be written to; nothing when it stays in the registry or can't be
/// stored.
std::optional<std::wstring> FileOfImport(const Guid& clsid, const PresetRecordHead& preset);

/// Keeps the plug-in's key and the folder of its files at hand for the presets of one command.
class CPresetWriter {
  public:
    explicit CPresetWriter(const CPresetListMgr& plugin) : m_plugin(plugin) {}

    /// Overwrites a preset of the same name. False when there are no data, the name is too long to be listed,
    /// or key, folder or file can't be written; then nothing was stored, and what was there before is there
    /// still.
    bool StoreImportedPreset(const ImportedPreset& preset);
    /// The registry has refused a preset that counts as stored.
    bool HasRefused() const { return m_refused; }

  private:
    bool StoreInFile(const ImportedPreset& preset);
    bool StoreNewFile(const ImportedPreset& preset, const std::wstring& path) const;
    bool StoreOverFile(const ImportedPreset& preset, const std::wstring& path) const;
    bool FindFolder();
    bool IsFileOfAnother(const std::wstring& path, std::wstring_view fileName, const std::wstring& name);

    const CPresetListMgr& m_plugin;
    std::optional<CRegKey> m_key;
    bool m_refused = false;
    std::wstring m_folder;  // empty until it is needed
    /// Which presets name which file, in capitals; nothing until it is needed.
    std::optional<std::multimap<std::wstring, std::wstring>> m_presetsOfFiles;
};
