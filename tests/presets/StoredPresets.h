#pragma once

#include <set>
#include <string>

#include "Files.h"
#include "RegValues.h"

namespace support {

/// "name=data" of each preset in the key of a plug-in, "name@file=data" of one in a file. Data of equal bytes
/// are counted: "1024x".
inline std::set<std::wstring> StoredPresets(const std::wstring& keyPath) {
    std::set<std::wstring> presets;
    const auto key = CRegKey::Open(HKEY_CURRENT_USER, keyPath);
    if (!key) return presets;
    CPatience patience;
    for (CRegValues values(*key, 519); values.Next();) {
        std::string data(reinterpret_cast<const char*>(values.Data().data()), values.Data().size());
        std::wstring line = values.Name();
        if (values.Type() == REG_SZ) {
            const std::wstring path = ::TextOf(values.Data());
            line += L"@" + path.substr(path.rfind(L'\\') + 1);
            ReadWholeFile(path, 1 << 20, data, patience);
        }
        if (data.find_first_not_of(data.substr(0, 1)) == std::string::npos)
            data = std::to_string(data.size()) + data.substr(0, 1);
        line += L"=";
        for (const char c : data) line += static_cast<unsigned char>(c);
        presets.insert(line);
    }
    return presets;
}

}  // namespace support
