#include "RegSnapshot.h"

#include <algorithm>
#include <string_view>

#include "RegValues.h"

namespace {

/// The longest name that the registry allows.
constexpr DWORD kLongestName = 16383;

bool IsMissing(LSTATUS status) { return status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND; }

std::size_t DigestOf(DWORD type, std::span<const std::byte> data) {
    const std::string_view bytes(reinterpret_cast<const char*>(data.data()), data.size());
    return std::hash<std::string_view>()(bytes) ^ type;
}

struct KeyExtent {
    DWORD subkeys = 0;
    DWORD values = 0;
    DWORD largestData = 0;  // bytes
};

KeyExtent ExtentOf(const CRegKey& key) {
    KeyExtent extent;
    ::RegQueryInfoKeyW(key.Handle(), nullptr, nullptr, nullptr, &extent.subkeys, nullptr, nullptr,
                       &extent.values, nullptr, &extent.largestData, nullptr, nullptr);
    return extent;
}

}  // namespace

HKEY RootOf(BackupHive hive) { return hive == BackupHive::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE; }

std::wstring FullKeyPath(const BackupKey& key) {
    return (key.hive == BackupHive::User ? L"HKEY_CURRENT_USER\\" : L"HKEY_LOCAL_MACHINE\\") + key.path;
}

DWORD CRegSnapshot::Take(const BackupKey& key, std::wstring& text, const RegTextSink& sink) {
    LSTATUS status = ERROR_SUCCESS;
    const auto opened = CRegKey::Open(RootOf(key.hive), key.path, KEY_READ, &status);
    if (!opened && !IsMissing(status)) return static_cast<DWORD>(status);
    if (!opened || key.values.empty()) AppendRegKey(text, FullKeyPath(key), true);
    if (key.values.empty()) return opened ? TakeTree(key, text, sink) : DWORD{ERROR_SUCCESS};
    // Also of a key that is not there: what others put into it meanwhile is not the step's to remove.
    AppendRegKey(text, FullKeyPath(key), false);
    Seen seen{key, {}};
    for (const std::wstring& name : key.values) {
        if (!IsRegFileName(name)) return ERROR_INVALID_NAME;
        const auto value = opened ? opened->ReadValue(name.c_str()) : std::nullopt;
        if (value) {
            if (const DWORD error = AppendRegValue(text, name, value->type, value->data, sink)) return error;
            seen.values.emplace_back(name, DigestOf(value->type, value->data));
        } else if (opened && opened->HasValue(name.c_str())) {
            return ERROR_READ_FAULT;
        } else {
            AppendRemovedRegValue(text, name);
        }
    }
    if (opened) m_seen.push_back(std::move(seen));
    return ERROR_SUCCESS;
}

DWORD CRegSnapshot::TakeTree(const BackupKey& key, std::wstring& text, const RegTextSink& sink) {
    LSTATUS status = ERROR_SUCCESS;
    const auto opened = CRegKey::Open(RootOf(key.hive), key.path, KEY_READ, &status);
    if (!opened) return static_cast<DWORD>(status);
    const std::wstring path = FullKeyPath(key);
    if (!IsRegFileName(path)) return ERROR_INVALID_NAME;
    AppendRegKey(text, path, false);
    const KeyExtent extent = ExtentOf(*opened);
    Seen seen{key, {}};
    CRegValues values(*opened, kLongestName);
    values.Expect(extent.largestData);
    while (values.Next()) {
        if (!IsRegFileName(values.Name())) return ERROR_INVALID_NAME;
        if (const DWORD error = AppendRegValue(text, values.Name(), values.Type(), values.Data(), sink))
            return error;
        seen.values.emplace_back(values.Name(), DigestOf(values.Type(), values.Data()));
    }
    const std::vector<std::wstring> subkeys = opened->SubkeyNames();
    // An enumeration ends quietly where it fails.
    if (seen.values.size() != extent.values || subkeys.size() != extent.subkeys) return ERROR_READ_FAULT;
    m_seen.push_back(std::move(seen));
    for (const std::wstring& name : subkeys) {
        const BackupKey below{key.hive, key.path + L'\\' + name, {}};
        if (const DWORD error = TakeTree(below, text, sink)) return error;
    }
    return ERROR_SUCCESS;
}

bool CRegSnapshot::IsIntact() const {
    return std::ranges::all_of(m_seen, [](const Seen& seen) {
        const auto key = CRegKey::Open(RootOf(seen.key.hive), seen.key.path);
        return key && std::ranges::all_of(seen.values, [&](const auto& value) {
                   const auto now = key->ReadValue(value.first.c_str());
                   return now && DigestOf(now->type, now->data) == value.second;
               });
    });
}
