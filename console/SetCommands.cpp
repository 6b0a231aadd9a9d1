#include <algorithm>

#include "Commands.h"
#include "CorvaneKeys.h"
#include "Messages.h"
#include "NumberText.h"
#include "StudioSetFile.h"
#include "StudioSets.h"
#include "SystemErrorText.h"

namespace {

std::wstring LayoutFolder() {
    const auto key = CRegKey::Open(HKEY_CURRENT_USER, kManagerKey);
    return key ? key->ReadPath(L"MenuLayoutsPath").value_or(L"") : L"";
}

/// Nobody can be asked.
SetEvents Events() {
    return {.goOn = {}, .withoutBackup = [](DWORD error) {
                Say(IDS_CMD_NO_BACKUP, SystemErrorText(error));
                return false;
            }};
}

/// What a command makes of an outcome that is not Done.
CmdExit Report(const SetOutcome& outcome, const std::wstring& path) {
    switch (outcome.result) {
        case SetResult::Done:
            return CmdExit::Done;
        case SetResult::NothingToDo:
            Say(IDS_CMD_NOTHING_TO_DO);
            return CmdExit::Done;
        case SetResult::Partly:
            Say(IDS_CMD_PARTLY, SystemErrorText(outcome.error));
            return CmdExit::Findings;
        case SetResult::NoRights:
        case SetResult::InputOutput:
            SayFileError(path, outcome.error);
            return CmdExit::Failed;
        case SetResult::Malformed:
            Say(IDS_CMD_MALFORMED, path);
            return CmdExit::Failed;
        case SetResult::Newer:
            Say(IDS_CMD_NEWER, path);
            return CmdExit::Failed;
        case SetResult::Ended:
            return CmdExit::Failed;
    }
    return CmdExit::Failed;
}

/// Says what has no place here.
CmdExit SayFindings(const SetToLoad& load, const std::wstring& path) {
    CmdExit result = CmdExit::Done;
    for (const SetEntry& entry : load.entries) {
        if (entry.change != SetChange::NotInstalled && entry.change != SetChange::NoFolder) continue;
        if (entry.change == SetChange::NoFolder) {
            Say(IDS_CMD_NO_FOLDER, entry.name);
        } else {
            Say(IDS_CMD_NOT_HERE, path, entry.name);
        }
        result = CmdExit::Findings;
    }
    if (load.set.passedOver == 0) return result;
    Say(IDS_CMD_PASSED_OVER, path, NumberText(load.set.passedOver));
    return CmdExit::Findings;
}

/// Leaves out the last of the exclusions that nobody would heed.
CmdExit LeaveOutTooMany(SetToLoad& load) {
    if (!load.IsTooMuch()) return CmdExit::Done;
    Say(IDS_CMD_TOO_MANY, NumberText(kMaxEntries));
    const std::size_t after = ExclusionsAfter(load.entries, load.excluded.size());
    std::size_t excess = after - std::max(kMaxEntries, load.excluded.size());
    for (auto entry = load.entries.rbegin(); entry != load.entries.rend() && excess > 0; ++entry) {
        if (entry->part != SetPart::Exclusion || entry->change != SetChange::New) continue;
        entry->chosen = false;
        --excess;
    }
    return CmdExit::Findings;
}

void SayChange(const SetEntry& entry, const SetToLoad& load) {
    switch (entry.part) {
        case SetPart::Exclusion: {
            const bool surplus = entry.change == SetChange::Surplus;
            const Guid& id =
                surplus ? load.excluded[entry.index].clsid : load.set.exclusions[entry.index].clsid;
            Say(surplus ? IDS_CMD_ENABLED : IDS_CMD_EXCLUDED, NameWithId(entry.name, id));
            break;
        }
        case SetPart::PluginName:
            Say(IDS_CMD_SET_NAME, entry.now, load.set.names[entry.index].name);
            break;
        case SetPart::Layout:
            Say(IDS_CMD_SET_LAYOUT, entry.target);
            break;
        case SetPart::Presets:
            Say(IDS_CMD_SET_PRESETS, entry.name, NumberText(entry.presets), NumberText(entry.replaced));
            break;
    }
}

void TellHost(const SetToLoad& load) {
    bool layouts = false;
    bool plugins = false;
    for (const SetEntry& entry : load.entries) {
        layouts = layouts || (entry.chosen && entry.part == SetPart::Layout);
        plugins = plugins ||
                  (entry.chosen && (entry.part == SetPart::Exclusion || entry.part == SetPart::PluginName));
    }
    if (plugins) CCmdStudio::TellHost(kPluginsChanged);
    if (layouts) CCmdStudio::TellHost(kLayoutsChanged);
}

}  // namespace

CmdExit SaveSet(const CmdArguments& arguments, CCmdStudio& studio) {
    const std::wstring path = FullPathOf(arguments.operands.front());
    CFriendlyNames names(studio.Inventory(), studio.Database());
    CStudioSets sets(studio.Inventory(), names, studio.Backups(), LayoutFolder());
    SetToSave save;
    sets.Gather(save, arguments.presets, {});
    for (const auto& [name, preset, trouble] : save.leftOut) {
        if (trouble < SetTrouble::NameNotInXml) {
            Say(IDS_CMD_LEFT_OUT, name, preset);
        } else {
            Say(IDS_CMD_NOT_IN_SET, name);
        }
    }
    const std::wstring removed = CStudioSets::PresetsToRemove(save, path);
    const std::wstring step = FormatText(LoadText(IDS_STEP_REPLACE), FileNameOf(path));
    const SetOutcome outcome = sets.Save(save, path, step, Events());
    if (outcome.result != SetResult::Done) return Report(outcome, path);
    Say(IDS_CMD_SAVED, path);
    if (!removed.empty()) Say(IDS_CMD_REMOVED, removed);
    if (!save.presets.empty()) Say(IDS_CMD_EXPORTED, NumberText(save.CountPresets()));
    return save.leftOut.empty() ? CmdExit::Done : CmdExit::Findings;
}

CmdExit LoadSet(const CmdArguments& arguments, CCmdStudio& studio) {
    const std::wstring path = FullPathOf(arguments.operands.front());
    CFriendlyNames names(studio.Inventory(), studio.Database());
    CStudioSets sets(studio.Inventory(), names, studio.Backups(), LayoutFolder());
    const SetMode mode = arguments.same ? SetMode::Same : SetMode::Add;
    SetToLoad load;
    const SetOutcome planned = sets.Plan(path, mode, !arguments.noPresets, load, {});
    if (planned.result != SetResult::Done) return Report(planned, path);
    if (load.presetsUnreadable) {
        Say(IDS_CMD_MALFORMED, PresetFileOf(path));
        return CmdExit::Failed;
    }
    const CmdExit findings = Worse(SayFindings(load, path), LeaveOutTooMany(load));
    if (load.CountChosen() == 0) return Worse(Report({SetResult::NothingToDo}, path), findings);
    if (arguments.dryRun) {
        Say(IDS_CMD_DRY_RUN);
    } else {
        const std::wstring step = FormatText(LoadText(IDS_STEP_LOAD_SET), FileNameOf(path));
        const SetOutcome outcome = sets.Load(load, step, CWindow(), Events());
        if (outcome.result == SetResult::Done || outcome.result == SetResult::Partly) TellHost(load);
        if (outcome.result != SetResult::Done) return Report(outcome, path);
    }
    for (const SetEntry& entry : load.entries) {
        if (entry.chosen) SayChange(entry, load);
    }
    return findings;
}
