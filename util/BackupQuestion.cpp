#include "BackupQuestion.h"

#include "MessageCaption.h"
#include "Resources.h"
#include "SystemErrorText.h"
#include "TextFormat.h"
#include "resource.h"

bool GoesOnWithoutBackup(HWND owner, DWORD error) {
    const std::wstring question = FormatText(LoadText(IDS_NO_BACKUP_QUESTION), SystemErrorText(error));
    return ShowMessage(owner, question, kMessageCaption, MB_YESNO | MB_DEFBUTTON2 | MB_ICONWARNING) == IDYES;
}

std::optional<CBackup> BackUpOrAsk(CBackups& backups, const BackupStep& step, HWND owner) {
    return OrAsk(backups.Make(step), owner);
}

std::optional<CBackup> OrAsk(CBackup backup, HWND owner) {
    if (backup.Error() == ERROR_CANCELLED) return std::nullopt;
    if (backup.Error() != ERROR_SUCCESS && !GoesOnWithoutBackup(owner, backup.Error())) return std::nullopt;
    return backup;
}
