#include "BackupRules.h"

#include <algorithm>
#include <array>
#include <optional>

#include "AsciiCase.h"
#include "CorvaneKeys.h"

using std::wstring_view;

namespace {

constexpr std::array<wstring_view, 4> kKindWords = {L"Registry", L"Presets", L"Layouts", L"Studio"};

// Together with the profile's folder they leave room for what a copy is called.
constexpr std::size_t kLongestStep = 60;
constexpr std::size_t kLongestCopy = 60;
constexpr wstring_view kNotInNames = L"\\/:*?\"<>|";
constexpr wstring_view kNotAtTheEnd = L". ";
constexpr wstring_view kSeparators = L"\\/";

constexpr bool IsLowSurrogate(wchar_t c) { return c >= 0xDC00 && c < 0xE000; }

constexpr bool IsNameCharacter(wchar_t c) { return c >= L' ' && kNotInNames.find(c) == wstring_view::npos; }

wstring_view WithoutEnd(wstring_view name) { return name.substr(0, name.find_last_not_of(kNotAtTheEnd) + 1); }

/// The system would take another name for one with a dot or a blank at its end, "." and ".." among them.
bool IsPlainName(wstring_view name) {
    return !name.empty() && WithoutEnd(name) == name && std::ranges::all_of(name, IsNameCharacter);
}

bool IsLetter(wchar_t c) { return AsciiLower(c) >= L'a' && AsciiLower(c) <= L'z'; }

constexpr wchar_t kClassesOfUser[] = L"HKEY_CURRENT_USER\\Software\\Classes\\";
constexpr wchar_t kClassesOfMachine[] = L"HKEY_LOCAL_MACHINE\\Software\\Classes\\";
constexpr wstring_view kUser = L"HKEY_CURRENT_USER\\";

/// Below the classes; "*" stands for a class id without its braces. Where a value is named, the rest of the
/// key is not the program's: it tells the system which library to load.
struct Registration {
    wstring_view key;
    wstring_view onlyValue;
};
constexpr std::array<Registration, 7> kRegistrations = {{
    {L"CLSID\\{*}", L"Merit"},
    {L"CLSID\\{*}\\Pins", {}},
    {L"CLSID\\{083863F1-70DE-11D0-BD40-00A0C911CE86}\\Instance\\{*}", {}},
    {L"Filter\\{*}", {}},
    {L"DirectShow\\MediaObjects\\*", {}},
    {L"DirectShow\\MediaObjects\\Categories\\F3602B3F-0592-48DF-A4CD-674721E7EBEB\\*", {}},
    {L"QtzSoftSynths\\{*}", {}},
}};
constexpr std::array<wstring_view, 3> kPresetKeys = {kAudioPresetsKey, kMidiPresetsKey, kSurfacePresetsKey};

bool IsClassId(wstring_view text) {
    constexpr wstring_view kForm = L"00000000-0000-0000-0000-000000000000";
    return std::ranges::equal(text, kForm, [](wchar_t c, wchar_t form) {
        const wchar_t lower = AsciiLower(c);
        return form == L'-' ? c == form : (c >= L'0' && c <= L'9') || (lower >= L'a' && lower <= L'f');
    });
}

bool Matches(wstring_view text, wstring_view pattern) {
    const std::size_t star = pattern.find(L'*');
    const wstring_view behind = pattern.substr(star + 1);
    if (text.size() < star + behind.size()) return false;
    return EqualsIgnoringCase(text.substr(0, star), pattern.substr(0, star)) &&
           EqualsIgnoringCase(text.substr(text.size() - behind.size()), behind) &&
           IsClassId(text.substr(star, text.size() - star - behind.size()));
}

/// An entry of a VST inventory, whose place the host chooses.
bool IsVstEntry(wstring_view path) {
    const std::size_t entry = std::min(path.find_last_of(L'\\'), path.size());
    constexpr wstring_view kInventory = L"\\Inventory";
    return entry > kInventory.size() && entry + 1 < path.size() &&
           EqualsIgnoringCase(path.substr(entry - kInventory.size(), kInventory.size()), kInventory);
}

bool SkipIgnoringCase(wstring_view& text, wstring_view prefix) {
    if (!EqualsIgnoringCase(text.substr(0, prefix.size()), prefix)) return false;
    text.remove_prefix(prefix.size());
    return true;
}

/// Nothing for a key that the program does not name.
std::optional<Registration> FindKnown(wstring_view path) {
    if (SkipIgnoringCase(path, kClassesOfUser) || SkipIgnoringCase(path, kClassesOfMachine)) {
        for (const Registration& known : kRegistrations) {
            if (Matches(path, known.key)) return known;
        }
        return std::nullopt;
    }
    if (!SkipIgnoringCase(path, kUser)) return std::nullopt;
    if (IsVstEntry(path)) return Registration{{}, L"FullName"};
    const bool isWhole =
        EqualsIgnoringCase(path, kExclusionKey) || std::ranges::any_of(kPresetKeys, [path](auto key) {
            return Matches(path, std::wstring(key) + L"\\{*}");
        });
    return isWhole ? std::optional(Registration{}) : std::nullopt;
}

}  // namespace

wstring_view BackupKindWord(BackupKind kind) { return kKindWords[static_cast<std::size_t>(kind)]; }

std::wstring BackupFolderName(wstring_view time, wstring_view step, int number) {
    std::wstring cut(step.substr(0, kLongestStep));
    if (step.size() > kLongestStep && IsLowSurrogate(step[kLongestStep])) cut.pop_back();
    std::ranges::replace_if(
        cut, [](wchar_t c) { return !IsNameCharacter(c); }, L'_');
    std::wstring name = std::wstring(time) + L' ' + cut;
    name.resize(WithoutEnd(name).size());
    return number > 1 ? name + L" (" + std::to_wstring(number) + L")" : name;
}

bool IsBackupFolderName(wstring_view name) {
    constexpr wstring_view kForm = L"0000-00-00 00.00.00 ";
    return std::ranges::equal(name.substr(0, kForm.size()), kForm, [](wchar_t c, wchar_t form) {
        return form == L'0' ? c >= L'0' && c <= L'9' : c == form;
    });
}

std::wstring BackupCopyName(std::size_t number, wstring_view path) {
    wstring_view leaf = path.substr(path.find_last_of(kSeparators) + 1);
    if (leaf.size() > kLongestCopy) {
        leaf.remove_prefix(leaf.size() - kLongestCopy);
        if (IsLowSurrogate(leaf.front())) leaf.remove_prefix(1);
    }
    return std::to_wstring(number) + L' ' + std::wstring(leaf);
}

bool IsBackupCopyName(wstring_view name) {
    // With a number before it, it is no device's name either.
    return IsPlainName(name) && name.front() >= L'1' && name.front() <= L'9';
}

bool IsPlainPath(wstring_view path) {
    if (path.starts_with(L"\\\\")) {
        path.remove_prefix(2);
        // The device's and the verbatim prefixes are not there for programs like this one.
        if (path.starts_with(L".") || path.starts_with(L"?")) return false;
    } else {
        if (path.size() < 4 || !IsLetter(path[0]) || path.substr(1, 2) != L":\\") return false;
        path.remove_prefix(3);
    }
    while (!path.empty()) {
        const std::size_t end = std::min(path.find(L'\\'), path.size());
        if (!IsPlainName(path.substr(0, end))) return false;
        if (end == path.size()) return true;
        path.remove_prefix(end + 1);
    }
    return false;
}

bool IsRestorable(const RegFileKey& key, std::span<const std::wstring> namedKeys) {
    const wstring_view path = key.path;
    return std::ranges::any_of(namedKeys, [&](wstring_view named) {
        if (!EqualsIgnoringCase(path.substr(0, named.size()), named)) return false;
        const auto known = FindKnown(named);
        if (!known) return false;
        const bool isBelow = path.size() > named.size();
        if (known->onlyValue.empty()) return !isBelow || path[named.size()] == L'\\';
        return !isBelow && !key.removed && std::ranges::all_of(key.values, [&](const RegFileValue& value) {
            return EqualsIgnoringCase(value.name, known->onlyValue);
        });
    });
}

std::vector<std::size_t> BackupsToPrune(std::span<const KeptBackup> backups) {
    std::vector<std::size_t> newestFirst(backups.size());
    for (std::size_t i = 0; i < backups.size(); ++i) newestFirst[i] = i;
    std::ranges::stable_sort(newestFirst, std::ranges::greater(),
                             [backups](std::size_t i) -> const std::wstring& { return backups[i].time; });
    struct Kept {
        std::size_t count = 0;
        std::uint64_t bytes = 0;
        bool full = false;
    };
    std::array<Kept, kKindWords.size()> kept;
    // This run's first, wherever they stand: their room is taken before others are looked at.
    for (const KeptBackup& backup : backups) {
        if (!backup.fromThisRun) continue;
        Kept& of = kept[static_cast<std::size_t>(backup.kind)];
        ++of.count;
        of.bytes += backup.size;
    }
    std::vector<std::size_t> pruned;
    for (const std::size_t i : newestFirst) {
        const KeptBackup& backup = backups[i];
        if (backup.fromThisRun) continue;
        Kept& of = kept[static_cast<std::size_t>(backup.kind)];
        // An older one that would still fit is not kept: what is left is the latest past, without a gap.
        of.full = of.full || of.count >= kMostBackups || of.bytes > kMostBackupBytes ||
                  backup.size > kMostBackupBytes - of.bytes;
        if (of.full) {
            pruned.push_back(i);
            continue;
        }
        ++of.count;
        of.bytes += backup.size;
    }
    std::ranges::reverse(pruned);
    return pruned;
}
