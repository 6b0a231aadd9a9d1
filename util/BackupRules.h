// What backups are called, which of them go when there are too many, and what may be brought back from one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "RegFileText.h"

enum class BackupKind { Registry, Presets, Layouts, Studio };
/// As a backup's record has it: a word that no translation changes.
std::wstring_view BackupKindWord(BackupKind kind);

/// The folder of a backup: the time, in a form that sorts, and the step, with what a file name can't hold
/// replaced, and cut off where paths would become too long. `number` tells apart those of one second.
std::wstring BackupFolderName(std::wstring_view time, std::wstring_view step, int number);
/// Whether a folder's name begins as that of a backup.
bool IsBackupFolderName(std::wstring_view name);
/// The name of a file's copy in that folder: numbered, because several may have one name, and with the end
/// of the old name, so that it opens as the file did.
std::wstring BackupCopyName(std::size_t number, std::wstring_view path);
/// One plain name, as BackupCopyName gives it: nothing that leads out of the folder.
bool IsBackupCopyName(std::wstring_view name);
/// A full path on a drive or a server, without the parts that lead elsewhere, a stream, or a wild card.
bool IsPlainPath(std::wstring_view path);

/// Whether a part of a backup's registry file may be brought back: the backup names the key, or one around
/// it, and the program itself names such keys, of which some by one value only. Whatever else a file says is
/// not ours.
bool IsRestorable(const RegFileKey& key, std::span<const std::wstring> namedKeys);

struct KeptBackup {
    BackupKind kind = BackupKind::Registry;
    std::wstring time;  // in a form that sorts
    std::uint64_t size = 0;
    bool fromThisRun = false;
};
inline constexpr std::size_t kMostBackups = 100;
inline constexpr std::uint64_t kMostBackupBytes = 256ULL << 20;
/// The indexes of those that are too many or too much, of each kind by itself and the oldest first. What this
/// run has made counts, but stays.
std::vector<std::size_t> BackupsToPrune(std::span<const KeptBackup> backups);
