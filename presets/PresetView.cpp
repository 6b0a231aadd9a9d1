#include "PresetView.h"

#include <algorithm>

#include "ExportPresetsDlg.h"
#include "Files.h"
#include "ImportPresetsDlg.h"
#include "LongWork.h"
#include "ManagePresetsDlg.h"
#include "MessageCaption.h"
#include "NumberText.h"
#include "PluginCategory.h"
#include "PresetTransfer.h"
#include "Resources.h"
#include "ReviewDlg.h"
#include "SystemErrorText.h"
#include "TextFormat.h"

namespace {

/// Kept: the failure texts give this number, whatever failed.
constexpr int kFailureNumber = 1;

std::vector<CPresetListMgr> ManagersOf(const std::vector<PresetPlugin>& chosen) {
    return {chosen.begin(), chosen.end()};
}

/// Without the backslash at its end, which only the root of a drive needs.
std::wstring FolderOf(const std::wstring& path) {
    const std::size_t end = path.find_last_of(L"\\/");
    return path.substr(0, end != std::wstring::npos && end > 2 ? end : end + 1);
}

std::size_t CountChosen(const std::vector<CPresetListMgr>& plugins, const PresetSelection* selection) {
    if (selection && plugins.size() == 1)
        return selection->size() - static_cast<std::size_t>(std::ranges::count(*selection, 0U));
    std::size_t presets = 0;
    for (const CPresetListMgr& plugin : plugins) presets += plugin.CountPresets();
    return presets;
}

std::wstring CategoryText(const Guid& category) {
    const auto* const row = std::ranges::find(kCategories, category, &PluginCategory::guid);
    return row == kCategories.end() ? std::wstring() : LoadText(row->captionId);
}

ReviewCell CountCell(std::size_t count) { return {NumberText(count), static_cast<std::int64_t>(count)}; }

ReviewRow ReviewRowOf(const PluginInFile& found) {
    const std::wstring& name = found.plugin.name;
    const bool canBeChecked = found.installed && found.presets > 0;
    return {.cells = {{found.installed ? name : FormatText(LoadText(IDS_NOT_INSTALLED), name)},
                      {CategoryText(found.plugin.category)},
                      CountCell(found.presets),
                      CountCell(found.replaced)},
            .checked = canBeChecked,
            .canBeChecked = canBeChecked};
}

std::vector<ReviewRow> RowsOf(const PluginsInFile& found) {
    std::vector<ReviewRow> rows;
    for (const PluginInFile& plugin : found.plugins) rows.push_back(ReviewRowOf(plugin));
    if (found.goesOn)
        rows.push_back({.cells = {{LoadText(IDS_PREVIEW_GOES_ON)}, {}, {}, {}}, .canBeChecked = false});
    return rows;
}

}  // namespace

void CPresetView::Report(const std::wstring& text) const {
    // While windows paint, a host may close and take the docked dialog along.
    if (!m_dialog.IsLive()) return;
    ShowMessage(m_dialog.Handle(), text, kMessageCaption, MB_OK | MB_ICONEXCLAMATION);
}

void CPresetView::Export(const std::vector<PresetPlugin>& chosen) {
    const std::vector<CPresetListMgr> plugins = ManagersOf(chosen);
    if (plugins.empty()) return;
    CExportPresetsDlg dialog(plugins, m_folder);
    const auto path = dialog.RunSave(m_dialog.Handle());
    if (!path) return;
    m_folder = FolderOf(*path);
    const BackupStep step{.kind = BackupKind::Presets,
                          .name = FormatText(LoadText(IDS_STEP_REPLACE), FileNameOf(*path)),
                          .keys = {},
                          .files = {*path}};
    auto backup = BackUpOrAsk(m_backups, step, m_dialog.Handle());
    if (!backup) return;
    auto file = CFileSink::Create(*path);
    const int result = file ? ExportTo(*file, plugins, dialog.Selection()) : kPresetIoFailure;
    if (result > 0) return;
    if (result != kPresetEnded) Report(FormatText(LoadText(IDS_PRESET_SAVE_ERROR), kFailureNumber));
    // A file that could not be opened is not ours to delete.
    if (!file) return;
    file.reset();
    const DWORD error = result == kPresetEnded ? backup->PutFilesBack() : ERROR_FILE_NOT_FOUND;
    if (error == ERROR_SUCCESS) return;
    if (error != ERROR_FILE_NOT_FOUND)
        return Report(FormatText(LoadText(IDS_BACKUP_NOT_RESTORED), step.name, SystemErrorText(error)));
    CPatience patience;
    DeleteHeldFile(*path, patience);
}

int CPresetView::ExportTo(CFileSink& file, const std::vector<CPresetListMgr>& plugins,
                          const PresetSelection* selection) const {
    const CWaitCursor wait;
    CLongWork work(m_dialog, IDC_PRESETS_GROUP, IDS_EXPORTING, CountChosen(plugins, selection));
    const PresetTransferEvents events{
        .invalidPreset =
            [this](const std::wstring& name) { Report(FormatText(LoadText(IDS_PRESET_INVALID), name)); },
        .progress = [&work] { return work.Next(); }};
    if (plugins.size() == 1) return ExportPresets(file, plugins.front(), selection, events);
    std::vector<PluginToExport> all;
    all.reserve(plugins.size());
    for (const CPresetListMgr& plugin : plugins) all.push_back({.plugin = plugin});
    return ExportPresetsOfPlugins(file, all, events);
}

std::optional<CBackup> CPresetView::BackUpImport(CFileSource& file,
                                                 const std::vector<CPresetListMgr>& plugins,
                                                 const PresetSelection* selection, std::size_t& presets) {
    const CWaitCursor wait;
    const bool one = plugins.size() == 1;
    const std::wstring whose = one ? plugins.front().DisplayName() : LoadText(IDS_MULTIPLE_PLUGINS_SELECTED);
    BackupStep step{.kind = BackupKind::Presets,
                    .name = FormatText(LoadText(IDS_STEP_IMPORT_PRESETS), whose),
                    .keys = {},
                    .files = {}};
    {
        CLongWork work(m_dialog, IDC_PRESETS_GROUP, 0, 0);
        const auto named = NameImportIn(step, file, plugins, selection,
                                        {.invalidPreset = {}, .progress = [&work] { return work.Next(); }});
        if (!named || !m_dialog.IsLive()) return std::nullopt;
        presets = *named;
    }
    CBackup backup = [&] {
        CLongWork work(m_dialog, IDC_PRESETS_GROUP, IDS_BACKING_UP, step.files.size());
        return m_backups.Make(step, [&work] { return work.Next(); });
    }();
    return m_dialog.IsLive() ? OrAsk(std::move(backup), m_dialog.Handle()) : std::nullopt;
}

void CPresetView::Import(const std::vector<PresetPlugin>& chosen) {
    const std::vector<CPresetListMgr> plugins = ManagersOf(chosen);
    if (plugins.empty()) return;
    CImportPresetsDlg dialog(plugins, m_folder);
    const auto path = dialog.RunOpen(m_dialog.Handle());
    if (!path) return;
    m_folder = FolderOf(*path);
    ImportFrom(*path, plugins, dialog.Selection());
}

int CPresetView::ImportFrom(const std::wstring& path, const std::vector<CPresetListMgr>& plugins,
                            const PresetSelection* selection) {
    // For both: what could not be read for the backup is not imported either.
    auto file = CFileSource::Open(path);
    std::size_t presets = 0;
    const auto backup = file ? BackUpImport(*file, plugins, selection, presets) : std::nullopt;
    if (file && !backup) return kPresetEnded;
    const int result = [&] {
        if (!file) return kPresetIoFailure;
        const CWaitCursor wait;
        file->Seek(0);
        CLongWork work(m_dialog, IDC_PRESETS_GROUP, IDS_IMPORTING, presets);
        const PresetTransferEvents events{.invalidPreset = {}, .progress = [&work] { return work.Next(); }};
        return plugins.size() == 1 ? ImportPresets(*file, plugins.front(), selection, events)
                                   : ImportPresetsOfPlugins(*file, plugins, events);
    }();
    if (result > 0 || result == kPresetEnded) return result;
    const bool nothingThere = result == kNotAPresetFile || result == kNothingForPlugin;
    Report(nothingThere ? LoadText(IDS_NO_PRESETS_FOR_PLUGIN)
                        : FormatText(LoadText(IDS_PRESET_LOAD_ERROR), kFailureNumber));
    return result;
}

CPresetView::Dropped CPresetView::ImportDropped(const std::wstring& path, const PluginFinder& find) {
    PluginsInFile found;
    const int result = [&] {
        const CWaitCursor wait;
        CLongWork work(m_dialog, IDC_PRESETS_GROUP, 0, 0);
        auto file = CFileSource::Open(path);
        return file ? ReadPluginsInFile(
                          *file, find, [&work] { return work.Next(); }, found, /*countReplaced*/ true)
                    : kPresetIoFailure;
    }();
    if (result == kPresetEnded || !m_dialog.IsLive()) return Dropped::Left;
    if (result != 0) return Dropped::NoPresetFile;
    CReviewDlg review({.caption = FormatText(LoadText(IDS_IMPORT_FILE), FileNameOf(path)),
                       .heading = LoadText(IDS_IMPORT_FILE_HEADING),
                       .button = LoadText(IDS_IMPORT_TICKED)},
                      {{LoadText(IDS_FILE_PLUGIN)},
                       {LoadText(IDS_FILE_CATEGORY)},
                       {LoadText(IDS_FILE_PRESETS), ReviewOrder::ByKeyRight},
                       {LoadText(IDS_FILE_REPLACED), ReviewOrder::ByKeyRight}},
                      RowsOf(found));
    if (review.RunModal(m_dialog.Handle()) != IDOK || !m_dialog.IsLive()) return Dropped::Left;
    std::vector<CPresetListMgr> chosen;
    for (const std::size_t row : review.Checked()) chosen.emplace_back(found.plugins[row].plugin);
    return ImportFrom(path, chosen, nullptr) == kPresetEnded ? Dropped::Left : Dropped::Done;
}

void CPresetView::Manage(const PresetPlugin& plugin) {
    const CPresetListMgr presets(plugin);
    CManagePresetsDlg(presets, m_backups).RunModal(m_dialog.Handle());
}
