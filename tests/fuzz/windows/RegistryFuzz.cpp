// Registry values: a line with the value's name, then one of its type, then its bytes.
#include "ClsidText.h"
#include "fuzz/FuzzInput.h"
#include "support/RegistrySandbox.h"
#include "support/SandboxImporter.h"

using support::Require;

namespace {

const BackupKey kKey{BackupHive::User, L"Fuzz", {}};

void TryReaders(const CRegKey& key, const wchar_t* name, const RegValue& value) {
    for (const std::size_t most : {std::size_t{0}, std::size_t{80}, kPathBytes, kNameBytes}) {
        const auto strict = key.ReadString(name, most), loose = key.ReadUnterminated(name, most);
        Require(!strict || strict->size() * sizeof(wchar_t) <= std::min(most, value.data.size()));
        Require(!strict || strict->find(L'\0') == std::wstring::npos);
        if (value.type != REG_EXPAND_SZ)
            Require((!strict || strict == loose) && key.ReadPath(name, most) == strict);
    }
    Require(key.ReadDword(name).has_value() ==
            (value.type == REG_DWORD && value.data.size() == sizeof(DWORD)));
    Require(key.ReadTime(name).has_value() == (value.data.size() == sizeof(std::uint64_t)));
    Require(key.HasValue(name));
}

void TryClassId(const std::wstring& text) {
    if (!text.starts_with(L'{')) return;  // the system would look for it elsewhere
    const auto id = ParseClsid(text);
    if (!id) return;
    Require(support::Lower(ClsidText(*id)) == support::Lower(text.c_str()) &&
            ParseClsid(ClsidText(*id)) == id);
}

/// As a backup takes it and a restore brings it back.
void TrySnapshot(const std::wstring& name, const RegValue& value) {
    std::wstring text(RegFileHeader());
    const DWORD error = CRegSnapshot().Take(kKey, text);
    if (!IsRegFileName(name)) return Require(error != ERROR_SUCCESS);
    Require(error == ERROR_SUCCESS);
    CRegKey::DeleteTree(HKEY_CURRENT_USER, kKey.path);
    Require(support::ImportIntoSandbox(CWindow(), kKey.hive, text) == ERROR_SUCCESS);
    const auto key = CRegKey::Open(HKEY_CURRENT_USER, kKey.path);
    const auto back = key ? key->ReadValue(name.c_str()) : std::nullopt;
    Require(back && back->type == value.type && back->data == value.data);
}

}  // namespace

void TryInput(std::string_view bytes) {
    static const support::RegistrySandbox s_registry;
    const auto lines = support::LinesOf(bytes, 3);
    const std::wstring name = lines[0].substr(0, 200).c_str();
    const std::size_t type = bytes.find('\n') + 1;
    const std::size_t start = std::min(bytes.find('\n', type), bytes.size() - 1) + 1;
    const auto data = std::as_bytes(std::span(bytes)).subspan(std::min(start, bytes.size()));
    CRegKey::DeleteTree(HKEY_CURRENT_USER, kKey.path);
    const auto key = CRegKey::Create(HKEY_CURRENT_USER, kKey.path);
    Require(key && key->WriteValue(name.c_str(), lines[1].empty() ? 0 : lines[1][0] % 16U, data));
    const auto value = key->ReadValue(name.c_str());
    Require(value.has_value());
    TryReaders(*key, name.c_str(), *value);
    TryClassId(lines[2]);
    TrySnapshot(name, *value);
}
