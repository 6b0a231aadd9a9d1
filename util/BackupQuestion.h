#pragma once

#include <optional>

#include "Backups.h"

/// Makes the backup before a step, to be kept until its end. When none can be made, the user is asked whether
/// to go on without; nothing when the step must not go on, because the user said no or couldn't be asked.
std::optional<CBackup> BackUpOrAsk(CBackups& backups, const BackupStep& step, HWND owner);

/// The same for one that was made, if it could be. Nothing, without a question, for one that the user ended.
std::optional<CBackup> OrAsk(CBackup backup, HWND owner);

/// The question by itself.
bool GoesOnWithoutBackup(HWND owner, DWORD error);
