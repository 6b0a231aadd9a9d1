#include "PresetView.h"

#include "ExportPresetsDlg.h"
#include "FileStream.h"
#include "ImportPresetsDlg.h"
#include "ManagePresetsDlg.h"
#include "MessageCaption.h"
#include "PresetTransfer.h"
#include "Resources.h"
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

/// Lets the windows paint from time to time during work that would otherwise leave them blank. No input gets
/// through, so that nothing else can begin meanwhile.
std::function<void()> KeepPainting() {
    return [next = ::GetTickCount64()]() mutable {
        constexpr ULONGLONG kInterval = 100;  // ms
        constexpr int kMostPaints = 100;      // a window may ask to be painted again and again
        if (::GetTickCount64() < next) return;
        MSG message;
        for (int i = 0; i < kMostPaints && ::PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE);
             ++i) {
            if (EndsLoop(message)) break;  // it comes through every filter
            ::DispatchMessageW(&message);
        }
        next = ::GetTickCount64() + kInterval;
    };
}

int ExportTo(IByteSink& file, const std::vector<CPresetListMgr>& plugins, const PresetSelection* selection,
             const PresetTransferEvents& events) {
    const CWaitCursor wait;
    return plugins.size() == 1 ? ExportPresets(file, plugins.front(), selection, events)
                               : ExportPresetsOfPlugins(file, plugins, events);
}

int ImportFrom(const std::wstring& path, const std::vector<CPresetListMgr>& plugins,
               const PresetSelection* selection) {
    const CWaitCursor wait;
    auto file = CFileSource::Open(path);
    if (!file) return kPresetIoFailure;
    const PresetTransferEvents events{.invalidPreset = {}, .progress = KeepPainting()};
    return plugins.size() == 1 ? ImportPresets(*file, plugins.front(), selection, events)
                               : ImportPresetsOfPlugins(*file, plugins, events);
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
    const std::wstring fileName = path->substr(path->find_last_of(L"\\/") + 1);
    const BackupStep step{.kind = BackupKind::Presets,
                          .name = FormatText(LoadText(IDS_STEP_REPLACE), fileName),
                          .keys = {},
                          .files = {*path}};
    const auto backup = BackUpOrAsk(m_backups, step, m_dialog.Handle());
    if (!backup) return;
    auto file = CFileSink::Create(*path);
    const PresetTransferEvents events{
        .invalidPreset =
            [this](const std::wstring& name) { Report(FormatText(LoadText(IDS_PRESET_INVALID), name)); },
        .progress = KeepPainting()};
    const int result = file ? ExportTo(*file, plugins, dialog.Selection(), events) : kPresetIoFailure;
    if (result > 0) return;
    Report(FormatText(LoadText(IDS_PRESET_SAVE_ERROR), kFailureNumber));
    // A file that could not be opened is not ours to delete.
    if (!file) return;
    file.reset();
    CPatience patience;
    DeleteHeldFile(*path, patience);
}

std::optional<CBackup> CPresetView::BackUpImport(const std::wstring& path,
                                                 const std::vector<CPresetListMgr>& plugins,
                                                 const PresetSelection* selection) {
    const CWaitCursor wait;
    const bool one = plugins.size() == 1;
    const std::wstring whose = one ? plugins.front().DisplayName() : LoadText(IDS_MULTIPLE_PLUGINS_SELECTED);
    BackupStep step{.kind = BackupKind::Presets,
                    .name = FormatText(LoadText(IDS_STEP_IMPORT_PRESETS), whose),
                    .keys = {},
                    .files = {}};
    if (auto file = CFileSource::Open(path)) NameImportIn(step, *file, plugins, selection);
    return BackUpOrAsk(m_backups, step, m_dialog.Handle());
}

void CPresetView::Import(const std::vector<PresetPlugin>& chosen) {
    const std::vector<CPresetListMgr> plugins = ManagersOf(chosen);
    if (plugins.empty()) return;
    CImportPresetsDlg dialog(plugins, m_folder);
    const auto path = dialog.RunOpen(m_dialog.Handle());
    if (!path) return;
    m_folder = FolderOf(*path);
    const auto backup = BackUpImport(*path, plugins, dialog.Selection());
    if (!backup) return;
    const int result = ImportFrom(*path, plugins, dialog.Selection());
    if (result > 0) return;
    const bool nothingThere = result == kNotAPresetFile || result == kNothingForPlugin;
    Report(nothingThere ? LoadText(IDS_NO_PRESETS_FOR_PLUGIN)
                        : FormatText(LoadText(IDS_PRESET_LOAD_ERROR), kFailureNumber));
}

void CPresetView::Manage(const PresetPlugin& plugin) {
    const CPresetListMgr presets(plugin);
    CManagePresetsDlg(presets, m_backups).RunModal(m_dialog.Handle());
}
