#include "BackupChanges.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_set>

#include "AsciiCase.h"
#include "BackupRules.h"
#include "Files.h"
#include "RegFileText.h"
#include "RegKey.h"
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

/// A key that was not there, of which a step names values: its removal comes first, then these.
bool IsOfMissingKey(std::span<const RegFileKey> parts) {
    return parts.size() == 2 && parts[0].removed && parts[1].path == parts[0].path &&
           !parts[1].values.empty() && std::ranges::all_of(parts[1].values, &RegFileValue::removed);
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

/// Without its named values nothing would be left of it.
bool HoldsNothingElse(const BackupKey& key) {
    const auto opened = CRegKey::Open(RootOf(key.hive), key.path);
    DWORD subkeys = 0;
    DWORD values = 0;
    if (!opened || ::RegQueryInfoKeyW(opened->Handle(), nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr,
                                      &values, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
        return false;
    std::set<std::wstring> named;
    for (const std::wstring& name : key.values) {
        if (opened->HasValue(name.c_str())) named.insert(InCapitals(name));
    }
    return subkeys == 0 && values == named.size();
}

/// What the registry has of the key now; nothing when it can't be read.
std::optional<std::vector<RegFileKey>> Present(const BackupKey& key) {
    std::wstring text(RegFileHeader());
    return CRegSnapshot().Take(key, text) == ERROR_SUCCESS ? ParseRegFile(text) : std::nullopt;
}

template <typename TPart>
auto ByName(std::span<const TPart> parts, std::wstring TPart::*name) {
    std::map<std::wstring_view, const TPart*> byName;
    for (const TPart& part : parts) {
        if (!part.removed) byName.emplace(part.*name, &part);
    }
    return byName;
}

/// What makes the values of now those of then. Removals come first: a name may have changed its case only.
std::vector<RegFileValue> ChangedValues(const RegFileKey& then, const RegFileKey& now) {
    const auto valuesThen = ByName(std::span(then.values), &RegFileValue::name);
    const auto valuesNow = ByName(std::span(now.values), &RegFileValue::name);
    std::vector<RegFileValue> changed;
    for (const RegFileValue& value : now.values) {
        if (!value.removed && !valuesThen.contains(value.name)) changed.push_back({value.name, true, 0, {}});
    }
    for (const RegFileValue& value : then.values) {
        if (value.removed) continue;
        const auto same = valuesNow.find(value.name);
        if (same == valuesNow.end() || *same->second != value) changed.push_back(value);
    }
    return changed;
}

/// What makes the keys of now those of then, and nothing more: where an import ends halfway, what was there
/// both times is there still, and keys that stay keep their rights.
std::wstring Difference(std::span<const RegFileKey> then, std::span<const RegFileKey> now) {
    const auto keysThen = ByName(then, &RegFileKey::path);
    const auto keysNow = ByName(now, &RegFileKey::path);
    std::wstring text;
    std::wstring gone = L"\\";  // no key begins so
    for (const RegFileKey& key : now) {
        if (key.removed || keysThen.contains(key.path) || key.path.starts_with(gone)) continue;
        AppendRegKey(text, key.path, /*removed*/ true);
        gone = key.path + L'\\';
    }
    for (const RegFileKey& key : then) {
        if (key.removed) continue;
        const auto present = keysNow.find(key.path);
        if (present == keysNow.end()) {
            AppendRegKey(text, key);
            continue;
        }
        const RegFileKey changed{key.path, false, ChangedValues(key, *present->second)};
        if (!changed.values.empty()) AppendRegKey(text, changed);
    }
    return text;
}

}  // namespace

std::optional<BackupChanges> FindBackupChanges(const BackupEntry& entry) {
    BackupChanges changes;
    const std::vector<std::wstring>& named = entry.record.keys;
    if (named.empty()) return changes;
    const auto text = ReadText(entry.folder + kBackupKeysFile);
    const auto keys = text ? ParseRegFile(*text) : std::nullopt;
    if (!keys) return std::nullopt;
    const std::unordered_set<std::wstring_view> names(named.begin(), named.end());
    // The parts of a named key follow each other.
    for (std::size_t begin = 0, end = 0; begin < keys->size(); begin = end) {
        const auto isNamed = [&](std::size_t i) { return names.contains((*keys)[i].path); };
        const std::wstring& path = (*keys)[begin].path;
        for (end = begin + 1; end < keys->size() && ((*keys)[end].path == path || !isNamed(end));) ++end;
        auto parts = std::span<const RegFileKey>(*keys).subspan(begin, end - begin);
        const bool wasMissing = IsOfMissingKey(parts);
        if (wasMissing) parts = parts.last(1);
        const auto isOurs = [&](const RegFileKey& key) { return IsRestorable(key, std::span(&path, 1)); };
        if (!isNamed(begin) || !std::ranges::all_of(parts, isOurs)) return std::nullopt;
        const BackupKey key = NamedKey(parts);
        // Taken for the whole of a key, of which the record may name one value only.
        if (key.values.empty() && !parts.front().removed) return std::nullopt;
        const auto now = Present(key);
        std::wstring difference;
        if (now) {
            difference = Difference(parts, *now);
            if (difference.empty()) continue;
            if (wasMissing && HoldsNothingElse(key)) {
                difference.clear();
                AppendRegKey(difference, path, /*removed*/ true);
            }
        } else {
            for (const RegFileKey& part : parts) AppendRegKey(difference, part);
        }
        changes.keys.push_back(key);
        std::wstring& file = key.hive == BackupHive::User ? changes.user : changes.machine;
        if (file.empty()) file = RegFileHeader();
        file += difference;
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
