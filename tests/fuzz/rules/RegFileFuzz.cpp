// Registry files: lines with the keys that a backup names, and behind them the file's text. Without such a
// text the lines tell of keys and values that are written first: "[path", "[-path", "name=data", "name=-".
#include "BackupRules.h"
#include "fuzz/FuzzInput.h"

using support::Lower;
using support::Require;

namespace {

/// Whatever a backup's files say, nothing comes back outside of these.
constexpr std::wstring_view kHomes[] = {L"hkey_current_user\\software\\classes\\",
                                        L"hkey_local_machine\\software\\classes\\",
                                        L"hkey_current_user\\software\\corvane music software\\"};
constexpr std::wstring_view kClassId = L"{00000000-0000-0000-0000-000000000000}";

void RequireHarmless(const RegFileKey& key, const std::vector<std::wstring>& named) {
    const std::wstring path = Lower(key.path);
    Require(std::ranges::any_of(named, [&](const std::wstring& name) {
        return path == Lower(name) || path.starts_with(Lower(name) + L'\\');
    }));
    const auto holdsOnly = [&key](std::wstring_view name) {
        return !key.removed && std::ranges::all_of(key.values, [name](const RegFileValue& value) {
            return Lower(value.name) == name;
        });
    };
    const auto home = std::ranges::find_if(kHomes, [&](auto start) { return path.starts_with(start); });
    // A host has the inventory of its VSTs where it likes.
    if (home == std::end(kHomes))
        return Require(path.find(L"\\inventory\\") != std::wstring::npos && holdsOnly(L"fullname"));
    const std::wstring rest = path.substr(home->size());
    // A class's own key names the library that other programs load.
    if (!rest.starts_with(L"clsid\\")) return;
    const std::wstring inClass = rest.substr(6 + kClassId.size());
    Require(inClass.starts_with(L"\\pins") || inClass.starts_with(L"\\instance\\{") ||
            (inClass.empty() && holdsOnly(L"merit")));
}

void TryText(std::wstring_view text, const std::vector<std::wstring>& named) {
    const auto keys = ParseRegFile(text);
    if (!keys) return;
    // For a reader that knows nothing but lines, there are no other keys.
    std::size_t starts = 0;
    for (std::size_t i = 1; i < text.size(); ++i)
        starts += text[i] == L'[' && (text[i - 1] == L'\n' || text[i - 1] == L'\r') ? 1 : 0;
    Require(starts == keys->size());
    for (const RegFileKey& key : *keys) {
        if (IsRestorable(key, named)) RequireHarmless(key, named);
    }
}

RegFileValue ValueOf(const std::wstring& line) {
    RegFileValue value{.name = line.substr(0, line.find(L'='))};
    const std::wstring data = line.substr(std::min(value.name.size() + 1, line.size()));
    value.removed = data == L"-";
    if (value.removed || data.empty()) return value;
    value.type = static_cast<std::uint32_t>(data[0] % 32) * (data[0] == 31 ? 0x7FFFFFF : 1);
    for (const wchar_t c : data.substr(1)) {
        value.data.push_back(static_cast<std::byte>(c & 0xFF));
        if (c != 1) value.data.push_back(static_cast<std::byte>((c >> 8) & 0xFF));  // so there are odd sizes
    }
    return value;
}

void TryKeys(const std::vector<std::wstring>& lines) {
    std::vector<RegFileKey> keys;
    for (const std::wstring& line : lines) {
        const bool isKey = line.starts_with(L'[');
        if (!IsRegFileName(isKey ? line : line.substr(0, line.find(L'=')))) return;
        if (isKey) {
            keys.push_back({line.substr(1), false, {}});
            keys.back().removed = keys.back().path.starts_with(L'-');
            if (keys.back().removed) keys.back().path.erase(0, 1);
        } else if (!keys.empty()) {
            keys.back().values.push_back(ValueOf(line));
        }
    }
    std::wstring text(RegFileHeader());
    for (const RegFileKey& key : keys) AppendRegKey(text, key);
    Require(ParseRegFile(text) == keys);
    TryText(text, lines);
}

}  // namespace

void TryInput(std::string_view bytes) {
    const std::wstring text = support::TextOf(bytes);
    const std::size_t start = text.find(RegFileHeader());
    if (start == std::wstring::npos) return TryKeys(support::LinesOf(bytes));
    TryText(std::wstring_view(text).substr(start), support::LinesOf(bytes));
}
