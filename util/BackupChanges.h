// What a backup holds that is otherwise now, and how it is put back.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "BackupRecord.h"
#include "BackupStep.h"
#include "RegImport.h"

struct BackupChanges {
    std::vector<BackupKey> keys;
    std::wstring user;  // texts of registry files, one a hive; empty when there is nothing to import
    std::wstring machine;
};

/// Nothing when the backup's file of keys is not one that this program has written for this record.
std::optional<BackupChanges> FindBackupChanges(const BackupEntry& entry);

/// The keys that differ, and the files. Gives the system's error.
DWORD PutBack(const BackupEntry& entry, const BackupChanges& changes, const CWindow& owner,
              const RegImporter& import);
