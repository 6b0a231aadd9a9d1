#pragma once

#include <set>
#include <string>
#include <vector>

#include "FileStream.h"
#include "RegValues.h"

namespace support {

/// "name:type:data" of each preset in the key of a plug-in; of one in a file, the file's data.
inline std::set<std::wstring> StoredPresets(const std::wstring& keyPath) {
    std::set<std::wstring> presets;
    const auto key = CRegKey::Open(HKEY_CURRENT_USER, keyPath);
    if (!key) return presets;
    for (CRegValues values(*key, 519); values.Next();) {
        std::vector<std::byte> data(values.Data().begin(), values.Data().end());
        if (values.Type() == REG_SZ) ReadWholeFile(TextOf(values.Data()), 1 << 20, data);
        std::wstring line = values.Name() + (L":" + std::to_wstring(values.Type())) + L":";
        for (const std::byte b : data) line += std::to_integer<wchar_t>(b);
        presets.insert(line);
    }
    return presets;
}

}  // namespace support
