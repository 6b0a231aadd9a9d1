// The presets that the host keeps for one plug-in: a registry key of the current user with one value a
// preset, and a folder for the large ones.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>

#include "Files.h"
#include "PresetWalk.h"
#include "RegValues.h"

/// The longest preset name that is read back.
inline constexpr DWORD kMaxPresetName = 519;

/// Anything that takes preset names with a number each: the list box and the combo box for presets.
template <typename TList>
concept PresetNameList = requires(const TList& list, const std::wstring& name, int row, LPARAM data) {
    list.Add(name);
    { list.FindExact(name) } -> std::same_as<std::optional<int>>;
    list.SetData(row, data);
};

/// What a caller hears of a long transfer.
struct PresetTransferEvents {
    std::function<void(const std::wstring& name)> invalidPreset;  // this one ends the export
    std::function<void()> progress;                               // before each preset
};

/// Lives for one command. Each operation opens the keys that it needs and closes them again. A plug-in whose
/// category has no preset store has no presets, and every operation on it fails quietly. The operations on
/// streams give a count or a code of PresetResult.h, and throw nothing.
class CPresetListMgr {
  public:
    explicit CPresetListMgr(PresetPlugin plugin) : m_inFile{.plugin = std::move(plugin), .presets = 0} {}
    CPresetListMgr(const Guid& clsid, const Guid& category, std::wstring displayName)
        : CPresetListMgr(PresetPlugin{clsid, category, std::move(displayName)}) {}
    virtual ~CPresetListMgr() = default;
    CPresetListMgr(const CPresetListMgr&) = default;
    CPresetListMgr& operator=(const CPresetListMgr&) = default;
    CPresetListMgr(CPresetListMgr&&) = default;
    CPresetListMgr& operator=(CPresetListMgr&&) = default;

    const Guid& Clsid() const { return m_inFile.plugin.clsid; }
    const std::wstring& DisplayName() const { return m_inFile.plugin.name; }

    /// The key of all plug-ins of this category, opened for reading and writing.
    std::optional<CRegKey> OpenStoreRoot(bool create) const;
    /// The plug-in's own key below it.
    std::optional<CRegKey> OpenPluginKey(bool create) const;

    /// Counts the presets in the store, and remembers the count; 0 when there is no key.
    unsigned CountPresets();
    /// Adds the names of all presets, each with its index in the store; gives their number.
    template <PresetNameList TList>
    int FillPresetList(const TList& list) const;

    /// A preset whose data are in a file loses the file, too. One that others hold is waited for, and left in
    /// the end.
    bool DeletePreset(const std::wstring& name, CPatience& patience) const;
    /// Removes the plug-in's key with everything in it, and the files. False when there was no key.
    bool DeleteAllPresets() const;
    /// Fails when there is a preset of the new name, or the name is too long to be listed. A preset's file
    /// keeps its name.
    bool RenamePreset(const std::wstring& oldName, const std::wstring& newName) const;
    /// Overwrites a preset of the same name. A preset without data, or with a name too long to be listed, is
    /// not stored.
    bool StoreImportedPreset(const ImportedPreset& preset) const;

    // The selection goes by the index in the store for an export, and by the position in the file's record
    // for an import; null means all presets.

    /// Writes nothing at all when no preset is chosen.
    int ExportPresets(IByteSink& file, const PresetSelection* selection, bool withHeader,
                      const PresetTransferEvents& events = {});
    static int ExportPresetsOfPlugins(IByteSink& file, std::span<CPresetListMgr> plugins,
                                      const PresetTransferEvents& events = {});
    int ImportPresets(IByteSource& file, const PresetSelection* selection,
                      const PresetTransferEvents& events = {});
    static int ImportPresetsOfPlugins(IByteSource& file, std::span<CPresetListMgr> plugins,
                                      const PresetTransferEvents& events = {});

    int ListFileForPlugin(IByteSource& file, const PreviewList& list) const;
    static int ListFileContents(IByteSource& file, const PreviewList& list);

  private:
    int ExportRecord(CPresetFileWriter& writer, const PresetSelection* selection, bool withHeader,
                     const PresetTransferEvents& events);

    PluginInFile m_inFile;
};

template <PresetNameList TList>
int CPresetListMgr::FillPresetList(const TList& list) const {
    const auto key = OpenPluginKey(false);
    if (!key) return 0;
    int added = 0;
    for (CRegValues values(*key, kMaxPresetName, CRegValues::Read::Names); values.Next(); ++added) {
        list.Add(values.Name());
        if (const auto row = list.FindExact(values.Name())) list.SetData(*row, values.Index());
    }
    return added;
}
