#pragma once

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
            // The system takes a zero behind the end of a text along.
            std::vector<std::byte> data = value.data;
            data.insert(data.end(), sizeof(wchar_t), std::byte{0xFF});
            value.removed
                ? key->DeleteValue(value.name.c_str())
                : key->WriteValue(value.name.c_str(), value.type, std::span(data).first(value.data.size()));
        }
    }
    return ERROR_SUCCESS;
}

}  // namespace support
