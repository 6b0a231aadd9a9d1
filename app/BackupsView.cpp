#include "BackupsView.h"

#include <windows.h>

#include <shlwapi.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "BackupQuestion.h"
#include "MessageCaption.h"
#include "Resources.h"
#include "ShellOpen.h"
#include "SystemErrorText.h"
#include "TextFormat.h"
#include "resource.h"

namespace {

/// As the user's settings have it; nothing for a time that is none.
std::wstring ShownTime(const SYSTEMTIME& utc) {
    SYSTEMTIME local{};
    if (!::SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local)) return {};
    std::array<wchar_t, 80> date{};
    std::array<wchar_t, 80> time{};
    ::GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &local, nullptr, date.data(),
                      static_cast<int>(date.size()), nullptr);
    ::GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, &local, nullptr, time.data(),
                      static_cast<int>(time.size()));
    return std::wstring(date.data()) + L' ' + time.data();
}

ReviewCell WhenCell(const BackupRecord& record) {
    const auto time = TimeOfBackup(record);
    FILETIME order{};
    if (!time || !::SystemTimeToFileTime(&*time, &order)) return {record.time};
    return {ShownTime(*time),
            static_cast<std::int64_t>(std::uint64_t{order.dwHighDateTime} << 32 | order.dwLowDateTime)};
}

ReviewCell SizeCell(std::uint64_t size) {
    std::array<wchar_t, 32> text{};
    ::StrFormatByteSizeW(static_cast<LONGLONG>(size), text.data(), static_cast<UINT>(text.size()));
    return {text.data(), static_cast<std::int64_t>(size)};
}

}  // namespace

void CBackupsView::OnBackups() {
    CReviewDlg list(
        {.caption = LoadText(IDS_BACKUPS),
         .heading = LoadText(IDS_BACKUPS_HEADING),
         .button = LoadText(IDS_RESTORE_BACKUPS),
         .close = LoadText(IDS_CLOSE)},
        {{LoadText(IDS_BACKUP_TIME), ReviewOrder::ByKey},
         {LoadText(IDS_BACKUP_STEP)},
         {LoadText(IDS_BACKUP_SIZE), ReviewOrder::ByKeyRight}},
        ReadRows(),
        {{LoadText(IDS_OPEN_BACKUP_FOLDER), [this](CReviewDlg& open) { OpenFolder(open); }, false},
         {LoadText(IDS_DELETE_BACKUPS), [this](CReviewDlg& open) { Delete(open); }}});
    list.SortBy(0, /*descending*/ true);
    if (list.RunModal(m_dialog.Handle()) == IDOK && m_dialog.IsLive()) Restore(list.Checked());
}

std::vector<ReviewRow> CBackupsView::ReadRows() {
    const CWaitCursor wait;
    m_entries = m_backups.List();
    std::vector<ReviewRow> rows;
    rows.reserve(m_entries.size());
    for (const BackupEntry& entry : m_entries)
        rows.push_back({{WhenCell(entry.record), {entry.record.step}, SizeCell(entry.size)}});
    return rows;
}

void CBackupsView::OpenFolder(const CReviewDlg& list) const {
    const auto row = list.Current();
    if (row) OpenInShell(list.Handle(), m_entries[*row].folder.c_str());
}

void CBackupsView::Delete(CReviewDlg& list) {
    const std::vector<std::size_t> rows = list.Checked();
    const std::wstring question =
        FormatText(LoadText(IDS_DELETE_BACKUPS_QUESTION), static_cast<int>(rows.size()));
    constexpr UINT kLook = MB_YESNO | MB_DEFBUTTON2 | MB_ICONWARNING;
    if (ShowMessage(list.Handle(), question, kMessageCaption, kLook) != IDYES || !list.IsLive()) return;
    const auto stays =
        std::ranges::count_if(rows, [this](std::size_t row) { return !m_backups.Delete(m_entries[row]); });
    list.SetRows(ReadRows());
    if (stays > 0)
        ShowMessage(list.Handle(), LoadText(IDS_BACKUP_NOT_DELETED), kMessageCaption, MB_ICONEXCLAMATION);
}

/// The newest first, as the list had them: what several hold is as it was before all of them. Only one layout
/// can be open.
void CBackupsView::Restore(const std::vector<std::size_t>& rows) {
    for (const std::size_t row : rows) m_backups.Spare(m_entries[row]);
    std::wstring layout;
    std::vector<BackupRecord> restored;
    for (const std::size_t row : rows) {
        const BackupEntry& backup = m_entries[row];
        const std::wstring& copy = backup.record.layout;
        if (copy.empty()) {
            restored.push_back(backup.record);
            if (!RestoreOne(backup)) break;
        } else if (layout.empty()) {
            layout = backup.folder + L'\\' + copy;
        }
    }
    if (!restored.empty() && m_dialog.IsLive()) ReadAgain(restored);
    if (!layout.empty() && m_dialog.IsLive()) m_rooms.layouts.OpenBackup(layout);
}

/// False when the user would not have it go on.
bool CBackupsView::RestoreOne(const BackupEntry& backup) {
    const CWaitCursor wait;
    const auto goOn = [this](DWORD error) { return GoesOnWithoutBackup(m_dialog.Handle(), error); };
    const std::wstring step = FormatText(LoadText(IDS_STEP_RESTORE), backup.record.step);
    const DWORD error = m_backups.Restore(backup, step, m_dialog, goOn);
    if (error != ERROR_SUCCESS && error != ERROR_CANCELLED && m_dialog.IsLive()) {
        const std::wstring text =
            FormatText(LoadText(IDS_BACKUP_NOT_RESTORED), backup.record.step, SystemErrorText(error));
        ShowMessage(m_dialog.Handle(), text, kMessageCaption, MB_ICONEXCLAMATION);
    }
    return error != ERROR_CANCELLED && m_dialog.IsLive();
}

void CBackupsView::ReadAllAgain() const {
    BackupRecord everything;
    everything.kind = BackupKind::Studio;
    ReadAgain({&everything, 1});
}

/// What these name may be other than before.
void CBackupsView::ReadAgain(std::span<const BackupRecord> restored) const {
    const CWaitCursor wait;
    const auto has = [restored](BackupKind kind) {
        return std::ranges::any_of(restored, [kind](const BackupRecord& backup) {
            return backup.kind == kind || backup.kind == BackupKind::Studio;
        });
    };
    if (has(BackupKind::Registry)) {
        const auto rows = CRememberedRows::Of(m_rooms.list.Plugins());
        m_rooms.exclusions.Load();
        m_rooms.list.EnumeratePlugins();
        m_rooms.list.Refill(rows);
        m_rooms.host.Tell(kPluginsChanged);
    }
    if (has(BackupKind::Presets)) m_rooms.list.OnSelectionChanged();
    if (has(BackupKind::Layouts)) {
        std::vector<std::wstring> files;
        for (const BackupRecord& backup : restored) {
            for (const auto& file : backup.files) files.push_back(file.path);
        }
        m_rooms.layouts.OnRestored(files);
        m_rooms.host.Tell(kLayoutsChanged);
    }
}
