#include <algorithm>
#include <set>

#include "ClsidText.h"
#include "Commands.h"
#include "FileStream.h"
#include "IdList.h"
#include "Messages.h"
#include "NumberText.h"
#include "PresetReview.h"
#include "PresetTransfer.h"
#include "PresetsToSave.h"
#include "SystemErrorText.h"

namespace {

bool GoOn() { return true; }

/// The plug-ins that the ids stand for: each by its own ids.
class CChosen {
  public:
    /// Names the ids that are unknown here.
    CmdExit Take(std::span<const std::wstring> ids, const CCmdStudio& studio);
    bool Has(const PresetPlugin& plugin) const { return m_all || m_ids.contains(plugin.clsid); }
    bool Has(const std::wstring& name) const { return m_all || m_names.contains(name); }

  private:
    bool m_all = false;
    std::set<Guid, GuidByteOrder> m_ids;
    std::set<std::wstring> m_names;
};

CmdExit CChosen::Take(std::span<const std::wstring> ids, const CCmdStudio& studio) {
    m_all = ids.empty();
    CmdExit result = CmdExit::Done;
    for (const std::wstring& text : ids) {
        const Guid id = ParseIdText(text).value();
        const auto is = [&id](const StudioPlugin& plugin) {
            return plugin.item.clsid == id || plugin.item.md5Clsid == id;
        };
        const auto plugin = std::ranges::find_if(studio.Plugins(), is);
        if (id.IsNull() || plugin == studio.Plugins().end()) {
            Say(IDS_CMD_UNKNOWN, ClsidText(id));
            result = CmdExit::Findings;
            continue;
        }
        m_ids.insert({plugin->item.clsid, plugin->item.md5Clsid});
        m_names.insert(plugin->name);
    }
    return result;
}

/// What a preset file has for the plug-ins of this computer, where it differs from theirs.
struct Import {
    std::vector<CPresetListMgr> plugins;
    std::vector<PresetDifference> differences;  // one a plug-in
    bool hasStrangers = false;                  // plug-ins that are not here

    std::size_t Count() const {
        std::size_t count = 0;
        for (const PresetDifference& difference : differences) count += difference.added + difference.changed;
        return count;
    }
};

/// Leaves out the plug-ins that have all presets as the file does. False for a file that is damaged.
bool Compare(const std::wstring& path, Import& import) {
    auto file = CFileSource::Open(path);
    std::vector<PresetDifference> differences;
    const int result = file ? ComparePresets(*file, import.plugins, &GoOn, differences) : kPresetIoFailure;
    if (result < 0 && result != kNothingForPlugin) return false;
    std::vector<CPresetListMgr> plugins;
    import.differences.clear();
    for (std::size_t i = 0; i < differences.size(); ++i) {
        if (differences[i].added + differences[i].changed == 0) continue;
        plugins.push_back(import.plugins[i]);
        import.differences.push_back(differences[i]);
    }
    import.plugins = std::move(plugins);
    return true;
}

/// Names the plug-ins that are not here. False, after a word on why, for a file that can't be imported.
bool Plan(const std::wstring& path, const CPluginInventory& inventory, Import& import) {
    auto file = CFileSource::Open(path);
    if (!file) {
        SayFileError(path, ::GetLastError());
        return false;
    }
    const auto find = [&inventory](const Guid& clsid, const Guid& category) {
        return inventory.FindForPresets(clsid, category);
    };
    PluginsInFile found;
    const bool read = ReadPluginsInFile(*file, find, &GoOn, found) == 0;
    for (const PluginInFile& plugin : found.plugins) {
        if (plugin.installed) import.plugins.emplace_back(plugin.plugin);
        if (plugin.installed || !read) continue;
        Say(IDS_CMD_NOT_HERE, path, plugin.plugin.name);
        import.hasStrangers = true;
    }
    if (read && Compare(path, import)) return true;
    Say(IDS_CMD_MALFORMED, path);
    return false;
}

/// All of it, or nothing where what is not written can be taken back.
CmdExit Perform(const std::wstring& path, const Import& import, CBackups& backups) {
    const std::wstring whose = import.plugins.size() == 1 ? import.plugins.front().DisplayName()
                                                          : LoadText(IDS_MULTIPLE_PLUGINS_SELECTED);
    BackupStep step{.kind = BackupKind::Presets,
                    .name = FormatText(LoadText(IDS_STEP_IMPORT_PRESETS), whose),
                    .keys = {},
                    .files = {}};
    step.stays = true;
    auto file = CFileSource::Open(path);
    if (!file) {
        SayFileError(path, ::GetLastError());
        return CmdExit::Failed;
    }
    NameImportIn(step, *file, import.plugins, nullptr);
    CBackup backup = backups.Make(step);
    if (backup.Error() != ERROR_SUCCESS) {
        Say(IDS_CMD_NO_BACKUP, SystemErrorText(backup.Error()));
        return CmdExit::Failed;
    }
    file->Seek(0);
    const int result = ImportPresetsOfPlugins(*file, import.plugins);
    Import left = import;
    // The registry does not tell what it has refused.
    if (result > 0 && Compare(path, left) && left.plugins.empty()) return CmdExit::Done;
    if (backup.TakeBack(CWindow()) != ERROR_SUCCESS) {
        Say(IDS_CMD_PARTLY, path);
        return CmdExit::Findings;
    }
    for (const CPresetListMgr& plugin : left.plugins) Say(IDS_CMD_NOT_WRITTEN, plugin.DisplayName());
    return CmdExit::Failed;
}

}  // namespace

CmdExit ExportPresetFile(const CmdArguments& arguments, CCmdStudio& studio) {
    const std::wstring path = FullPathOf(arguments.operands.front());
    CChosen chosen;
    CmdExit result = chosen.Take(std::span(arguments.operands).subspan(1), studio);
    SetToSave all;
    ListPresets(studio.Inventory(), &GoOn, all);
    for (const SetToSave::LeftOut& left : all.leftOut) {
        if (!chosen.Has(left.name)) continue;
        Say(IDS_CMD_LEFT_OUT, left.name, left.preset);
        result = CmdExit::Findings;
    }
    std::erase_if(all.presets, [&](const SetToSave::Presets& of) { return !chosen.Has(of.plugin.Plugin()); });
    if (all.presets.empty()) {
        Say(IDS_CMD_NO_PRESETS, path);
        return result;
    }
    if (arguments.dryRun) {
        Say(IDS_CMD_DRY_RUN);
    } else {
        const auto backup =
            studio.Backups().Make({.kind = BackupKind::Presets,
                                   .name = FormatText(LoadText(IDS_STEP_REPLACE), FileNameOf(path)),
                                   .keys = {},
                                   .files = {path}});
        if (backup.Error() != ERROR_SUCCESS) {
            Say(IDS_CMD_NO_BACKUP, SystemErrorText(backup.Error()));
            return CmdExit::Failed;
        }
        if (const DWORD error = ExportPresetsTo(path, all.presets, &GoOn)) {
            SayFileError(path, error);
            return CmdExit::Failed;
        }
    }
    Say(IDS_CMD_EXPORTED, NumberText(all.CountPresets()));
    return result;
}

CmdExit ImportPresetFile(const CmdArguments& arguments, CCmdStudio& studio) {
    const std::wstring path = FullPathOf(arguments.operands.front());
    Import import;
    if (!Plan(path, studio.Inventory(), import)) return CmdExit::Failed;
    const CmdExit findings = import.hasStrangers ? CmdExit::Findings : CmdExit::Done;
    if (import.plugins.empty()) {
        Say(IDS_CMD_NOTHING_TO_DO);
        return findings;
    }
    if (arguments.dryRun) Say(IDS_CMD_DRY_RUN);
    const CmdExit result = arguments.dryRun ? CmdExit::Done : Perform(path, import, studio.Backups());
    if (result == CmdExit::Done) {
        for (std::size_t i = 0; i < import.plugins.size(); ++i) {
            const auto [added, changed] = import.differences[i];
            Say(IDS_CMD_SET_PRESETS, import.plugins[i].DisplayName(), NumberText(added + changed),
                NumberText(changed));
        }
        Say(IDS_CMD_IMPORTED, NumberText(import.Count()));
    }
    return Worse(result, findings);
}
