#pragma once

#include <set>
#include <string>

#include "Files.h"
#include "RegValues.h"

namespace support {

/// "name:type:data" of each preset in the key of a plug-in; of one in a file, the file's data.
inline std::set<std::wstring> StoredPresets(const std::wstring& keyPath) {
    std::set<std::wstring> presets;
    const auto key = CRegKey::Open(HKEY_CURRENT_USER, keyPath);
    if (!key) return presets;
    CPatience patience;
    for (CRegValues values(*key, 519); values.Next();) {
        const auto stored = values.Data();
        std::string data(reinterpret_cast<const char*>(stored.data()), stored.size());
        if (values.Type() == REG_SZ) ReadWholeFile(TextOf(stored), 1 << 20, data, patience);
        std::wstring line = values.Name() + (L":" + std::to_wstring(values.Type())) + L":";
        for (const char c : data) line += static_cast<unsigned char>(c);
        presets.insert(line);
    }
    return presets;
}

}  // namespace support
