#include "BackupChanges.h"

#include <algorithm>

#include "AsciiCase.h"
#include "BackupRules.h"
#include "Files.h"
#include "RegFileText.h"
#include "RegSnapshot.h"

namespace {

std::optional<std::wstring> ReadText(const std::wstring& path) {
    std::string bytes;
    CPatience patience;
    if (ReadWholeFile(path, kLargestKeysFile, bytes, patience) != FileRead::Whole || bytes.size() % 2 != 0)
        return std::nullopt;
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    std::ranges::copy(std::as_bytes(std::span(bytes)), std::as_writable_bytes(std::span(text)).begin());
    return text;
}

BackupHive HiveOf(std::wstring_view path) {
    constexpr std::wstring_view kMachine = L"HKEY_LOCAL_MACHINE\\";
    return EqualsIgnoringCase(path.substr(0, kMachine.size()), kMachine) ? BackupHive::Machine
                                                                         : BackupHive::User;
}

/// What the backup holds of one named key: the key itself comes first.
BackupKey NamedKey(std::span<const RegFileKey> parts) {
    const std::wstring& path = parts.front().path;
    BackupKey key{HiveOf(path), path.substr(path.find(L'\\') + 1), {}};
    if (!parts.front().removed) {
        for (const RegFileValue& value : parts.front().values) key.values.push_back(value.name);
    }
    return key;
}

DWORD KeepGathering(std::wstring&) { return ERROR_SUCCESS; }

}  // namespace

std::optional<BackupChanges> FindBackupChanges(const BackupEntry& entry) {
    BackupChanges changes;
    const std::vector<std::wstring>& named = entry.record.keys;
    if (named.empty()) return changes;
    const auto text = ReadText(entry.folder + kBackupKeysFile);
    const auto keys = text ? ParseRegFile(*text) : std::nullopt;
    const auto isOurs = [&](const RegFileKey& key) { return IsRestorable(key, named); };
    if (!keys || !std::ranges::all_of(*keys, isOurs)) return std::nullopt;
    // The parts of a named key follow each other.
    for (std::size_t begin = 0, end = 0; begin < keys->size(); begin = end) {
        const auto isNamed = [&](std::size_t i) {
            return std::ranges::find(named, (*keys)[i].path) != named.end();
        };
        if (!isNamed(begin)) return std::nullopt;
        const std::wstring& path = (*keys)[begin].path;
        for (end = begin + 1; end < keys->size() && ((*keys)[end].path == path || !isNamed(end));) ++end;
        const auto parts = std::span(*keys).subspan(begin, end - begin);
        const BackupKey key = NamedKey(parts);
        std::wstring then;
        for (const RegFileKey& part : parts) AppendRegKey(then, part);
        std::wstring now;
        if (CRegSnapshot().Take(key, now, &KeepGathering) == ERROR_SUCCESS && now == then) continue;
        changes.keys.push_back(key);
        std::wstring& file = key.hive == BackupHive::User ? changes.user : changes.machine;
        if (file.empty()) file = RegFileHeader();
        file += then;
    }
    return changes;
}

/// What may be refused comes first. Files come before the values that name them, and go after these.
DWORD PutBack(const BackupEntry& entry, const BackupChanges& changes, const CWindow& owner,
              const RegImporter& import) {
    if (!changes.machine.empty()) {
        if (const DWORD error = import(owner, BackupHive::Machine, changes.machine)) return error;
    }
    for (const auto& file : entry.record.files) {
        if (file.copy.empty()) continue;
        DWORD error = MakeFolders(file.path.substr(0, file.path.find_last_of(L'\\')));
        if (error == ERROR_SUCCESS) error = ReplaceFileByCopy(file.path, entry.folder + L'\\' + file.copy);
        if (error != ERROR_SUCCESS) return error;
    }
    if (!changes.user.empty()) {
        if (const DWORD error = import(owner, BackupHive::User, changes.user)) return error;
    }
    CPatience patience;
    for (const auto& file : entry.record.files) {
        if (file.copy.empty() && !DeleteHeldFile(file.path, patience)) return ERROR_ACCESS_DENIED;
    }
    return ERROR_SUCCESS;
}
