// What is in the registry and in folders, to be compared with what is there later.
#pragma once

#include <iterator>
#include <map>
#include <set>

#include "RegValues.h"
#include "support/FileSandbox.h"

namespace support {

using Snapshot = std::map<std::wstring, std::string>;

/// The key under that name with its values, and so on below it.
inline void AddKey(Snapshot& snapshot, const CRegKey& key, const std::wstring& name) {
    constexpr DWORD kLongestName = 16383;
    snapshot[name];
    const std::wstring within = name + L'\\';
    for (CRegValues values(key, kLongestName); values.Next();) {
        std::string& data = snapshot[within + values.Name()] = std::to_string(values.Type());
        for (const std::byte byte : values.Data()) data += static_cast<char>(byte);
    }
    for (const std::wstring& below : key.SubkeyNames())
        if (const auto subkey = key.OpenSubkey(below)) AddKey(snapshot, *subkey, within + below);
}
inline void AddKey(Snapshot& snapshot, HKEY root, const std::wstring& path) {
    if (const auto key = CRegKey::Open(root, path)) AddKey(snapshot, *key, path);
}

/// All files in a folder that may not be there, and below it, by their paths.
inline void AddFiles(Snapshot& snapshot, const std::filesystem::path& folder) {
    if (!std::filesystem::exists(folder)) return;
    for (const auto& file : std::filesystem::recursive_directory_iterator(folder))
        if (file.is_regular_file()) snapshot[file.path().wstring()] = BytesOf(file.path());
}

/// The names of what is different.
inline std::set<std::wstring> Differences(const Snapshot& one, const Snapshot& other) {
    std::vector<Snapshot::value_type> different;
    std::ranges::set_symmetric_difference(one, other, std::back_inserter(different));
    std::set<std::wstring> names;
    for (const auto& [name, value] : different) names.insert(name);
    return names;
}

}  // namespace support
