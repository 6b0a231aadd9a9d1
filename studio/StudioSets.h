// Studio sets against the registry and the layouts folder: what goes into one, and what one changes.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Backups.h"
#include "FileStream.h"
#include "FriendlyNames.h"
#include "PluginInventory.h"
#include "PresetListMgr.h"
#include "PresetTransfer.h"
#include "PresetWalk.h"
#include "StudioSet.h"

/// What a caller is told and asked meanwhile; each may be empty.
struct SetEvents {
    std::function<bool()> goOn;                      // before each item; false ends the work
    std::function<bool(DWORD error)> withoutBackup;  // false when there is nobody to ask

    bool GoesOn() const { return !goOn || goOn(); }
};

enum class SetResult {
    Done,
    NothingToDo,  // everything was there already, or nothing was chosen
    Partly,       // a write failed or the work was ended, and not all could be put back
    Ended,        // by the user; everything is as it was
    NoRights,     // for these and those below nothing has changed
    InputOutput,
    Malformed,
    Newer,  // made by a newer version
};
struct SetOutcome {
    SetResult result = SetResult::Done;
    DWORD error = ERROR_SUCCESS;  // the system's, where it knows one
};

/// Why something can't be saved as it is.
enum class SetTrouble {
    // Of a preset, in a preset file:
    OtherType,  // neither data nor the name of a file
    FileLost,
    NoData,
    NameNotInCodePage,
    NameNotForFile,  // it would have to become the name of a file
    // Of a plug-in:
    NameNotInXml,
    // Of a layout:
    FileNameUnfit,
    LayoutUnreadable,  // damaged, held by another program, or none
};

/// What a set is going to hold; what a caller takes out is not saved.
struct SetToSave {
    StudioSet set;
    struct Presets {
        CPresetListMgr plugin;
        PresetSelection selection;            // without those that are left out
        std::size_t count = 0;                // in it
        std::optional<PresetsInMemory> read;  // they are not read again then
    };
    std::vector<Presets> presets;  // of plug-ins that have some
    struct LeftOut {
        std::wstring name;    // of the plug-in or the layout's file
        std::wstring preset;  // empty when it is not about one
        SetTrouble trouble = SetTrouble::OtherType;
    };
    std::vector<LeftOut> leftOut;
    std::size_t keptBytes = 0;  // of all presets that were read

    std::size_t CountPresets() const;
};

/// What loading a set would do. The caller may change what is chosen.
struct SetToLoad {
    StudioSet set;
    std::vector<StudioSet::Exclusion> excluded;  // now
    std::vector<SetEntry> entries;
    std::wstring presetFile;                  // empty when there is none
    std::vector<PresetPlugin> presetPlugins;  // an entry for presets has the index in these
    bool presetsUnreadable = false;           // there is a file, and it is none of presets

    /// Of presets each one counts.
    std::size_t CountChosen() const;
    /// More exclusions in the end than the host heeds.
    bool IsTooMuch() const;
    /// Chooses what the mode would do, and nothing else.
    void Choose(SetMode mode);
    /// Of an entry that is an exclusion.
    const Guid& ClsidOf(const SetEntry& exclusion) const;
    /// The plug-ins whose presets are chosen.
    std::vector<CPresetListMgr> ChosenForPresets() const;
};

/// Failure contract: nothing is thrown; what was going to be changed is copied to the backups first, and a
/// load that fails or is ended is put back from there.
class CStudioSets {
  public:
    /// `layoutFolder` is empty when none is set.
    CStudioSets(CPluginInventory& inventory, CFriendlyNames& names, CBackups& backups,
                std::wstring layoutFolder)
        : m_inventory(inventory),
          m_names(names),
          m_backups(backups),
          m_layoutFolder(std::move(layoutFolder)) {}

    bool HasLayoutFolder() const { return !m_layoutFolder.empty(); }
    /// Reads what there is, and writes nothing. Done or Ended.
    SetOutcome Gather(SetToSave& save, bool withPresets, const SetEvents& events) const;
    /// Writes the set, and its presets, if any, beside it. `step` names the backup of files that it replaces:
    /// without presets, those of a set that it replaces go, too.
    SetOutcome Save(const SetToSave& save, const std::wstring& path, const std::wstring& step,
                    const SetEvents& events);

    /// Compares the set with what there is, and writes nothing. Done also when nothing differs. Presets that
    /// can't be read are left out.
    SetOutcome Plan(const std::wstring& path, SetMode mode, bool withPresets, SetToLoad& load,
                    const SetEvents& events) const;
    /// Does what is chosen. `step` names the backup. The inventory knows the new names afterwards; the caller
    /// reads the exclusions anew, and tells the host. `owner` may be none.
    SetOutcome Load(const SetToLoad& load, const std::wstring& step, const CWindow& owner,
                    const SetEvents& events);

    /// The presets of the set at that place, which saving without presets would remove; empty when there are
    /// none.
    static std::wstring PresetsToRemove(const SetToSave& save, const std::wstring& path);

  private:
    bool PlanPresets(const std::wstring& path, SetToLoad& load, const SetEvents& events) const;
    BackupStep StepFor(const SetToLoad& load, const std::wstring& name, CFileSource* presets) const;

    CPluginInventory& m_inventory;
    CFriendlyNames& m_names;
    CBackups& m_backups;
    const std::wstring m_layoutFolder;
};
