#include "StudioSets.h"

#include <algorithm>
#include <utility>

#include "CorvaneKeys.h"
#include "ExclusionList.h"
#include "FileStream.h"
#include "LayoutFolder.h"
#include "PluginRecords.h"
#include "PresentStudio.h"
#include "PresetReview.h"
#include "PresetTransfer.h"
#include "PresetsToSave.h"
#include "StudioSetFile.h"
#include "XmlDoc.h"
#include "XmlText.h"

namespace {

constexpr DWORD kRightsErrors[] = {ERROR_ACCESS_DENIED, ERROR_FILE_READ_ONLY, ERROR_WRITE_PROTECT,
                                   ERROR_PRIVILEGE_NOT_HELD};

SetOutcome Refused(DWORD error) {
    const bool rights = std::ranges::find(kRightsErrors, error) != std::end(kRightsErrors);
    return {rights ? SetResult::NoRights : SetResult::InputOutput, error};
}

bool GoesOn(const SetEvents& events) { return !events.goOn || events.goOn(); }

/// Where no backup could be made, nothing is done unless somebody wants it so.
std::optional<SetOutcome> RefusalOf(const CBackup& backup, const SetEvents& events) {
    if (backup.Error() == ERROR_SUCCESS) return std::nullopt;
    if (!events.withoutBackup) return Refused(backup.Error());
    return events.withoutBackup(backup.Error()) ? std::nullopt : std::optional(SetOutcome{SetResult::Ended});
}

/// The system's error; ERROR_CANCELLED when the user has ended it.
DWORD ErrorOf(int presetResult) {
    if (presetResult >= 0) return ERROR_SUCCESS;
    return presetResult == kPresetEnded ? ERROR_CANCELLED : ERROR_WRITE_FAULT;
}

DWORD WriteLayout(const std::wstring& path, const std::wstring& xml) {
    if (IsThere(path)) return ERROR_FILE_EXISTS;  // it was free before
    return CXmlDoc::SaveText(path, xml);
}

std::vector<CPresetListMgr> ChosenForPresets(const SetToLoad& load) {
    std::vector<CPresetListMgr> plugins;
    for (const SetEntry& entry : load.entries) {
        if (entry.part == SetPart::Presets && entry.chosen)
            plugins.emplace_back(load.presetPlugins[entry.index]);
    }
    return plugins;
}

/// Does what is chosen, up to the first failure.
class CLoading {
  public:
    CLoading(const CPluginInventory& inventory, CFriendlyNames& names, const std::wstring& layoutFolder,
             const SetToLoad& load, CFileSource* presets, const SetEvents& events)
        : m_inventory(inventory),
          m_names(names),
          m_layoutFolder(layoutFolder),
          m_load(load),
          m_presets(presets),
          m_events(events) {}

    /// Gives the system's error, ERROR_CANCELLED when the user has ended it.
    DWORD Run() {
        for (const SetEntry& entry : m_load.entries) {
            if (!entry.chosen || entry.part == SetPart::Presets) continue;
            if (!GoesOn(m_events)) return ERROR_CANCELLED;
            if (const DWORD error = Write(entry)) return error;
        }
        return ImportPresets();
    }

    /// For the host, when the layouts stay: no backup has its mark.
    void MarkLayouts() const {
        const bool any = std::ranges::any_of(m_load.entries, [](const SetEntry& entry) {
            return entry.chosen && entry.part == SetPart::Layout;
        });
        const auto key = any ? CRegKey::Create(HKEY_CURRENT_USER, kManagerKey) : std::optional<CRegKey>();
        if (key) key->WriteDword(L"MenuLayoutsDirty", 1);
    }

    /// Also in a database, which no backup holds.
    void TakeNamesBack() {
        for (const auto& [item, name] : m_renamed) m_names.Rename(item, name);
    }

  private:
    DWORD Write(const SetEntry& entry) {
        switch (entry.part) {
            case SetPart::Exclusion:
                return WriteExclusion(entry) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
            case SetPart::PluginName:
                return WriteName(m_load.set.names[entry.index]);
            case SetPart::Layout:
                return WriteLayout(FolderPrefix(m_layoutFolder) + entry.target,
                                   m_load.set.layouts[entry.index].xml);
            case SetPart::Presets:
                break;
        }
        return ERROR_SUCCESS;
    }

    bool WriteExclusion(const SetEntry& entry) {
        if (entry.change == SetChange::Surplus)
            return CExclusionList::Enable(m_load.excluded[entry.index].clsid);
        const auto& [clsid, name] = m_load.set.exclusions[entry.index];
        return CExclusionList::Exclude(clsid, name);
    }

    DWORD WriteName(const StudioSet::PluginName& name) {
        const auto plugin = FindNamed(m_inventory, name);
        if (!plugin) return ERROR_FILE_NOT_FOUND;
        m_renamed.emplace_back(plugin->item, plugin->name);
        return m_names.Rename(plugin->item, name.name) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
    }

    DWORD ImportPresets() const {
        if (!m_presets) return ERROR_SUCCESS;
        m_presets->Seek(0);
        bool refused = false;
        const DWORD error =
            ErrorOf(ImportPresetsOfPlugins(*m_presets, ChosenForPresets(m_load),
                                           {.invalidPreset = [&](const std::wstring&) { refused = true; },
                                            .progress = [this] { return GoesOn(m_events); }}));
        return error == ERROR_SUCCESS && refused ? DWORD{ERROR_ACCESS_DENIED} : error;
    }

    const CPluginInventory& m_inventory;
    CFriendlyNames& m_names;
    const std::wstring& m_layoutFolder;
    const SetToLoad& m_load;
    CFileSource* m_presets;  // null when none are chosen
    const SetEvents& m_events;
    std::vector<std::pair<PluginListItem, std::wstring>> m_renamed;  // with the names from before
};

}  // namespace

std::size_t SetToSave::CountPresets() const {
    std::size_t count = 0;
    for (const Presets& of : presets) count += of.count;
    return count;
}

std::size_t SetToLoad::CountChosen() const {
    std::size_t count = 0;
    for (const SetEntry& entry : entries) {
        if (entry.chosen) count += entry.part == SetPart::Presets ? entry.presets : 1;
    }
    return count;
}

bool SetToLoad::IsTooMuch() const {
    const std::size_t after = ExclusionsAfter(entries, excluded.size());
    return after > kMaxEntries && after > excluded.size();
}

void SetToLoad::Choose(SetMode mode) {
    for (SetEntry& entry : entries) entry.chosen = IsChosen(entry, mode);
}

SetOutcome CStudioSets::Gather(SetToSave& save, bool withPresets, const SetEvents& events) const {
    save.set.exclusions = ReadExclusions();
    for (StudioSet::PluginName& name : ReadPluginNames(m_inventory)) {
        if (IsXmlText(name.name)) {
            save.set.names.push_back(std::move(name));
        } else {
            save.leftOut.push_back({name.name, {}, SetTrouble::NameNotInXml});
        }
    }
    CPatience patience;
    for (const std::wstring& path : LayoutPaths(m_layoutFolder, /*all*/ false)) {
        if (!GoesOn(events)) return {SetResult::Ended};
        const std::wstring file = FileNameOf(path);
        const bool fits = IsLayoutFileName(file) && IsXmlText(file);
        auto xml = fits ? ReadLayoutXml(path, patience) : std::nullopt;
        if (xml) {
            save.set.layouts.push_back({file, std::move(*xml)});
        } else {
            save.leftOut.push_back(
                {file, {}, fits ? SetTrouble::LayoutUnreadable : SetTrouble::FileNameUnfit});
        }
    }
    const bool ended = withPresets && !ListPresets(
                                          m_inventory, [&] { return GoesOn(events); }, save);
    return {ended ? SetResult::Ended : SetResult::Done};
}

std::wstring CStudioSets::PresetsToRemove(const SetToSave& save, const std::wstring& path) {
    const std::wstring presets = PresetFileOf(path);
    // Beside a new set they are somebody's choice.
    return save.presets.empty() && IsThere(path) && IsThere(presets) ? presets : std::wstring();
}

SetOutcome CStudioSets::Save(const SetToSave& save, const std::wstring& path, const std::wstring& step,
                             const SetEvents& events) {
    const std::wstring presets = save.presets.empty() ? std::wstring() : PresetFileOf(path);
    const std::wstring outdated = PresetsToRemove(save, path);
    BackupStep replaced{.kind = BackupKind::Studio, .name = step, .keys = {}, .files = {path}};
    for (const std::wstring& file : {presets, outdated}) {
        if (!file.empty()) replaced.files.push_back(file);
    }
    CBackup backup = m_backups.Make(replaced);
    if (const auto refusal = RefusalOf(backup, events)) return *refusal;
    // A set that is there always has its presets beside it.
    if (!presets.empty()) {
        const DWORD error = ExportPresetsTo(presets, save.presets, [&] { return GoesOn(events); });
        // Nothing was replaced yet.
        if (error != ERROR_SUCCESS)
            return error == ERROR_CANCELLED ? SetOutcome{SetResult::Ended} : Refused(error);
    }
    CPatience patience;
    if (!outdated.empty() && !DeleteHeldFile(outdated, patience)) return Refused(ERROR_ACCESS_DENIED);
    const DWORD error = WriteStudioSet(path, save.set);
    if (error == ERROR_SUCCESS) return {SetResult::Done};
    DWORD back = backup.PutFilesBack();
    if (back == ERROR_FILE_NOT_FOUND && outdated.empty()) {
        // There was nothing to be replaced, or no backup of it. A set's own file comes last, and in one go.
        back = presets.empty() || DeleteHeldFile(presets, patience) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
    }
    return back == ERROR_SUCCESS ? Refused(error) : SetOutcome{SetResult::Partly, error};
}

SetOutcome CStudioSets::Plan(const std::wstring& path, SetMode mode, bool withPresets, SetToLoad& load,
                             const SetEvents& events) const {
    switch (ReadStudioSet(path, load.set)) {
        case SetFileRead::Read:
            break;
        case SetFileRead::NotOpened:
            return Refused(::GetLastError());
        case SetFileRead::Malformed:
            return {SetResult::Malformed};
        case SetFileRead::Newer:
            return {SetResult::Newer};
    }
    for (StudioSet::PluginName& name : load.set.names) {
        // What is stored of it: compared with any other text, the set would never be there already.
        if (const auto plugin = FindNamed(m_inventory, name))
            name.name = m_names.ListedName(plugin->item, name.name);
    }
    AddOwnIds(load.set, m_inventory);
    const StudioPresent present = ReadPresent(m_inventory, m_layoutFolder);
    load.excluded = present.exclusions;
    load.entries = DiffOf(load.set, present, mode);
    return {!withPresets || PlanPresets(PresetFileOf(path), load, events) ? SetResult::Done
                                                                          : SetResult::Ended};
}

/// False when the user has ended it.
bool CStudioSets::PlanPresets(const std::wstring& path, SetToLoad& load, const SetEvents& events) const {
    if (!IsThere(path)) return true;
    const auto goOn = [&] { return GoesOn(events); };
    const auto find = [this](const Guid& clsid, const Guid& category) {
        return m_inventory.FindForPresets(clsid, category);
    };
    PluginsInFile found;
    auto file = CFileSource::Open(path);
    int result = file ? ReadPluginsInFile(*file, find, goOn, found) : kPresetIoFailure;
    std::vector<CPresetListMgr> installed;
    for (const PluginInFile& plugin : found.plugins) {
        if (plugin.installed) installed.emplace_back(plugin.plugin);
    }
    std::vector<PresetDifference> differences;
    if (result == 0 && !installed.empty()) {
        file->Seek(0);
        result = ComparePresets(*file, installed, goOn, differences);
    }
    if (result == kPresetEnded) return false;
    // For none of the installed plug-ins there may be a preset.
    load.presetsUnreadable = result < 0 && result != kNothingForPlugin;
    load.presetFile = path;
    if (load.presetsUnreadable) return true;
    std::size_t next = 0;
    for (const PluginInFile& plugin : found.plugins) {
        const PresetDifference difference = plugin.installed ? differences[next++] : PresetDifference{};
        const bool isSame = difference.added + difference.changed == 0;
        SetEntry& entry = load.entries.emplace_back();
        entry.part = SetPart::Presets;
        entry.change = !plugin.installed         ? SetChange::NotInstalled
                       : isSame                  ? SetChange::Same
                       : difference.changed != 0 ? SetChange::Differs
                                                 : SetChange::New;
        entry.index = load.presetPlugins.size();
        entry.name = plugin.plugin.name;
        entry.installed = plugin.installed;
        entry.presets = plugin.presets;
        entry.replaced = difference.changed;
        entry.chosen = entry.CanBeChosen();
        load.presetPlugins.push_back(plugin.plugin);
    }
    return true;
}

/// What the load will change.
BackupStep CStudioSets::StepFor(const SetToLoad& load, const std::wstring& name, CFileSource* presets) const {
    BackupStep step{.kind = BackupKind::Studio, .name = name, .keys = {}, .files = {}};
    step.stays = true;
    const auto isExclusion = [](const SetEntry& entry) {
        return entry.chosen && entry.part == SetPart::Exclusion;
    };
    if (std::ranges::any_of(load.entries, isExclusion))
        step.keys.push_back({BackupHive::User, kExclusionKey, {}});
    for (const SetEntry& entry : load.entries) {
        if (!entry.chosen) continue;
        if (entry.part == SetPart::Layout) step.files.push_back(FolderPrefix(m_layoutFolder) + entry.target);
        if (entry.part != SetPart::PluginName || m_names.UseDatabase()) continue;
        const auto plugin = FindNamed(m_inventory, load.set.names[entry.index]);
        std::wstring key = plugin ? m_inventory.Vst().EntryPath(plugin->item.clsid) : std::wstring();
        if (!key.empty()) step.keys.push_back({BackupHive::User, std::move(key), {L"FullName"}});
    }
    if (presets) NameImportIn(step, *presets, ChosenForPresets(load), nullptr);
    return step;
}

SetOutcome CStudioSets::Load(const SetToLoad& load, const std::wstring& step, const CWindow& owner,
                             const SetEvents& events) {
    if (load.CountChosen() == 0) return {SetResult::NothingToDo};
    std::optional<CFileSource> presets;
    if (!ChosenForPresets(load).empty()) {
        presets = CFileSource::Open(load.presetFile);
        if (!presets) return Refused(::GetLastError());
    }
    CFileSource* const file = presets ? &*presets : nullptr;
    CBackup backup = m_backups.Make(StepFor(load, step, file));
    if (const auto refusal = RefusalOf(backup, events)) return *refusal;
    CLoading loading(m_inventory, m_names, m_layoutFolder, load, file, events);
    const DWORD error = loading.Run();
    if (error != ERROR_SUCCESS) {
        loading.TakeNamesBack();
        if (backup.TakeBack(owner) == ERROR_SUCCESS)
            return error == ERROR_CANCELLED ? SetOutcome{SetResult::Ended} : Refused(error);
    }
    loading.MarkLayouts();
    return error == ERROR_SUCCESS ? SetOutcome{SetResult::Done} : SetOutcome{SetResult::Partly, error};
}
