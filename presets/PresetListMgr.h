// The presets that the host keeps for one plug-in: a registry key of the current user with one value a
// preset, and a folder for the large ones.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "BackupStep.h"
#include "Controls.h"
#include "Files.h"
#include "PresetPlugin.h"
#include "RegValues.h"

/// The longest preset name that is read back.
inline constexpr DWORD kMaxPresetName = 519;

/// The lists that show the presets of a plug-in.
using CPresetListBox = CListBox;
using CPresetComboBox = CComboBox;

/// Lives for one command. Each operation opens the keys that it needs and closes them again. A plug-in whose
/// category has no preset store has no presets, and every operation on it fails quietly.
class CPresetListMgr {
  public:
    explicit CPresetListMgr(PresetPlugin plugin) : m_plugin(std::move(plugin)) {}
    CPresetListMgr(const Guid& clsid, const Guid& category, std::wstring displayName)
        : m_plugin{clsid, category, std::move(displayName)} {}

    const PresetPlugin& Plugin() const { return m_plugin; }
    const Guid& Clsid() const { return m_plugin.clsid; }
    const std::wstring& DisplayName() const { return m_plugin.name; }

    /// The plug-in's own key, opened for reading and writing.
    std::optional<CRegKey> OpenPluginKey(bool create) const;

    /// 0 when there is no key.
    unsigned CountPresets() const;
    /// Adds the names of all presets, each with its index in the store; gives their number.
    template <typename TList>
    int FillPresetList(const TList& list) const;

    /// Names the presets as they will be changed, and with `withFiles` also the files that they name, for a
    /// backup. No names: all presets, with the key itself.
    void NameIn(BackupStep& step, std::vector<std::wstring> names, bool withFiles) const;

    /// Deletes the file of a preset whose data are in one, too; a file that others hold on to stays.
    bool DeletePreset(const std::wstring& name, CPatience& patience) const;
    /// Removes the plug-in's key with everything in it, and the files. False when there was no key. `goOn` is
    /// asked before each preset; where it says no, those before it are gone, and the others stay.
    bool DeleteAllPresets(const std::function<bool()>& goOn = [] { return true; }) const;
    /// Fails when there is a preset of the new name, or the name is too long to be listed. A preset's file
    /// keeps its name.
    bool RenamePreset(const std::wstring& oldName, const std::wstring& newName) const;

  private:
    PresetPlugin m_plugin;
};

template <typename TList>
int CPresetListMgr::FillPresetList(const TList& list) const {
    const auto key = OpenPluginKey(false);
    if (!key) return 0;
    int added = 0;
    for (CRegValues values(*key, kMaxPresetName, CRegValues::Read::Names); values.Next(); ++added) {
        if (const int row = list.Add(values.Name()); row >= 0) list.SetData(row, values.Index());
    }
    return added;
}
