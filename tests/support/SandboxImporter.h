#pragma once

#include "RegFileText.h"
#include "RegImport.h"
#include "RegSnapshot.h"

namespace support {

/// Stands in for the system's importer, which knows nothing of the sandbox.
inline DWORD ImportIntoSandbox(const CWindow&, BackupHive hive, std::wstring_view text) {
    const auto keys = ParseRegFile(text);
    if (!keys) return ERROR_INVALID_DATA;
    for (const RegFileKey& part : *keys) {
        const std::wstring path = part.path.substr(part.path.find(L'\\') + 1);
        if (part.removed) {
            CRegKey::DeleteTree(RootOf(hive), path);
            continue;
        }
        const auto key = CRegKey::Create(RootOf(hive), path);
        if (!key) return ERROR_WRITE_FAULT;
        for (const RegFileValue& value : part.values) {
            value.removed ? key->DeleteValue(value.name.c_str())
                          : key->WriteValue(value.name.c_str(), value.type, value.data);
        }
    }
    return ERROR_SUCCESS;
}

}  // namespace support
