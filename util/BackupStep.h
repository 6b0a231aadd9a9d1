// What a step of the program will change or remove.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "BackupRules.h"

/// The hive that holds a key; the merged view of the classes is none.
enum class BackupHive { User, Machine };

struct BackupKey {
    BackupHive hive = BackupHive::User;
    std::wstring path;                 // below the hive's root
    std::vector<std::wstring> values;  // of the key; none: the key with all that is below it
};

struct BackupStep {
    BackupKind kind = BackupKind::Registry;
    std::wstring name;  // as the user knows it: "Delete presets of Kammer Reverb"
    std::vector<BackupKey> keys;
    std::vector<std::wstring> files;  // full paths; one that is not there is noted as such
    /// Files that this run has already copied before such a step are not copied again, unless another program
    /// has changed them since.
    bool oncePerRun = false;
    /// The backup is kept also when the step has only added something, so that it can be taken back.
    bool stays = false;
    /// The system's error that has kept something from being named: there is no backup then.
    std::uint32_t error = 0;
};
