// What a backup tells of itself: the file "backup.xml" in its folder.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "BackupRules.h"

struct BackupRecord {
    struct File {
        std::wstring path;  // where it belongs
        std::wstring copy;  // its name in the backup's folder; empty when there was no such file
    };
    BackupKind kind = BackupKind::Registry;
    std::wstring step;
    std::wstring time;               // UTC, in a form that sorts
    std::wstring version;            // of the program
    std::vector<std::wstring> keys;  // as the registry file names them
    std::vector<File> files;
    std::wstring layout;  // name of the copy of one that was left unsaved; empty in all other backups
};

/// A backup that is there.
struct BackupEntry {
    std::wstring folder;  // full path
    BackupRecord record;
    std::uint64_t size = 0;
};

// What lies beside the copies of files.
inline constexpr wchar_t kBackupRecordFile[] = L"\\backup.xml";
inline constexpr wchar_t kBackupKeysFile[] = L"\\before.reg";
/// In bytes; what is read back has to fit into memory.
inline constexpr std::uint64_t kLargestKeysFile = 1ULL << 30;

/// In UTC; nothing when somebody has changed it to none.
std::optional<SYSTEMTIME> TimeOfBackup(const BackupRecord& record);

/// Gives the system's error. ERROR_INVALID_NAME for a name that XML can't hold.
DWORD WriteBackupRecord(const std::wstring& path, const BackupRecord& record);
/// Nothing unless the whole record is as the program writes it; the copies' names lead to files in the
/// folder, and the paths are plain ones.
std::optional<BackupRecord> ReadBackupRecord(const std::wstring& path);
