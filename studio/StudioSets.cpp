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
#include "SetLoading.h"
#include "StudioSetFile.h"
#include "XmlText.h"

namespace {

constexpr DWORD kRightsErrors[] = {ERROR_ACCESS_DENIED, ERROR_FILE_READ_ONLY, ERROR_WRITE_PROTECT,
                                   ERROR_PRIVILEGE_NOT_HELD};

SetOutcome Refused(DWORD error) {
    const bool rights = std::ranges::find(kRightsErrors, error) != std::end(kRightsErrors);
    return {rights ? SetResult::NoRights : SetResult::InputOutput, error};
}

/// Where no backup could be made, nothing is done unless somebody wants it so.
std::optional<SetOutcome> RefusalOf(const CBackup& backup, const SetEvents& events) {
    if (backup.Error() == ERROR_SUCCESS) return std::nullopt;
    if (!events.withoutBackup) return Refused(backup.Error());
    return events.withoutBackup(backup.Error()) ? std::nullopt : std::optional(SetOutcome{SetResult::Ended});
}

SetEntry PresetEntryOf(const PluginInFile& plugin, const PresetDifference& difference, std::size_t index) {
    const bool isSame = difference.added + difference.changed == 0;
    SetEntry entry;
    entry.part = SetPart::Presets;
    entry.change = !plugin.installed         ? SetChange::NotInstalled
                   : isSame                  ? SetChange::Same
                   : difference.changed != 0 ? SetChange::Differs
                                             : SetChange::New;
    entry.index = index;
    entry.name = plugin.plugin.name;
    entry.installed = plugin.installed;
    entry.presets = plugin.presets;
    entry.replaced = difference.changed;
    entry.chosen = entry.CanBeChosen();
    return entry;
}

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

const Guid& SetToLoad::ClsidOf(const SetEntry& exclusion) const {
    const bool surplus = exclusion.change == SetChange::Surplus;
    return (surplus ? excluded : set.exclusions)[exclusion.index].clsid;
}

std::vector<CPresetListMgr> SetToLoad::ChosenForPresets() const {
    std::vector<CPresetListMgr> plugins;
    for (const SetEntry& entry : entries) {
        if (entry.part == SetPart::Presets && entry.chosen) plugins.emplace_back(presetPlugins[entry.index]);
    }
    return plugins;
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
        if (!events.GoesOn()) return {SetResult::Ended};
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
                                          m_inventory, [&] { return events.GoesOn(); }, save);
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
        const DWORD error = ExportPresetsTo(presets, save.presets, [&] { return events.GoesOn(); });
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
    const auto goOn = [&] { return events.GoesOn(); };
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
        load.entries.push_back(PresetEntryOf(plugin, difference, load.presetPlugins.size()));
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
    if (presets) NameImportIn(step, *presets, load.ChosenForPresets(), nullptr);
    return step;
}

SetOutcome CStudioSets::Load(const SetToLoad& load, const std::wstring& step, const CWindow& owner,
                             const SetEvents& events) {
    if (load.CountChosen() == 0) return {SetResult::NothingToDo};
    std::optional<CFileSource> presets;
    if (!load.ChosenForPresets().empty()) {
        presets = CFileSource::Open(load.presetFile);
        if (!presets) return Refused(::GetLastError());
    }
    CFileSource* const file = presets ? &*presets : nullptr;
    CBackup backup = m_backups.Make(StepFor(load, step, file));
    if (const auto refusal = RefusalOf(backup, events)) return *refusal;
    CSetLoading loading(m_inventory, m_names, m_layoutFolder, load, file, events);
    const DWORD error = loading.Run();
    if (error != ERROR_SUCCESS) {
        loading.TakeNamesBack();
        if (backup.TakeBack(owner) == ERROR_SUCCESS)
            return error == ERROR_CANCELLED ? SetOutcome{SetResult::Ended} : Refused(error);
    }
    loading.MarkLayouts();
    return error == ERROR_SUCCESS ? SetOutcome{SetResult::Done} : SetOutcome{SetResult::Partly, error};
}
