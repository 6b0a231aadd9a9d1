#include "RegKey.h"

#include <shlwapi.h>

#include <algorithm>
#include <array>

namespace {

constexpr DWORD kMaxKeyName = 260;
constexpr DWORD kUsualValue = 512;

bool IsTerminated(const std::wstring& characters) { return characters.empty() || characters.back() == L'\0'; }

std::wstring UpToZero(const std::wstring& characters) { return characters.c_str(); }

std::wstring Expanded(const std::wstring& text) {
    std::wstring expanded(MAX_PATH, L'\0');
    for (int attempt = 0; attempt < 2; ++attempt) {
        const DWORD needed =
            ::ExpandEnvironmentStringsW(text.c_str(), expanded.data(), static_cast<DWORD>(expanded.size()));
        if (needed == 0) return text;
        if (needed <= expanded.size()) return expanded.c_str();
        expanded.resize(needed);
    }
    return text;
}

/// A value of exactly the number's size.
template <typename TNumber>
std::optional<TNumber> ReadNumber(HKEY key, const wchar_t* name, DWORD* type) {
    TNumber value = 0;
    DWORD size = sizeof value;
    const LSTATUS status =
        ::RegQueryValueExW(key, name, nullptr, type, reinterpret_cast<BYTE*>(&value), &size);
    return status == ERROR_SUCCESS && size == sizeof value ? std::optional(value) : std::nullopt;
}

}  // namespace

std::optional<CRegKey> CRegKey::Open(HKEY root, const std::wstring& path, REGSAM access, LSTATUS* status) {
    HKEY key = nullptr;
    const LSTATUS result = ::RegOpenKeyExW(root, path.c_str(), 0, access, &key);
    if (status) *status = result;
    return result == ERROR_SUCCESS ? std::optional(CRegKey(key)) : std::nullopt;
}

std::optional<CRegKey> CRegKey::Create(HKEY root, const std::wstring& path, REGSAM access, bool* existed) {
    HKEY key = nullptr;
    DWORD disposition = 0;
    if (::RegCreateKeyExW(root, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr, &key,
                          &disposition) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    if (existed) *existed = disposition == REG_OPENED_EXISTING_KEY;
    return CRegKey(key);
}

std::optional<CRegKey> CRegKey::OpenSubkey(const std::wstring& name, REGSAM access) const {
    return Open(m_key.Get(), name, access);
}

std::optional<CRegKey::Text> CRegKey::ReadText(const wchar_t* name, std::size_t maxBytes) const {
    Text text;
    LSTATUS status = ERROR_MORE_DATA;
    // One call serves nearly every text; only a long one is asked for again with the room that it needs.
    auto size = static_cast<DWORD>(std::min(maxBytes, kPathBytes));
    while (status == ERROR_MORE_DATA && size <= maxBytes) {
        text.characters.resize((size + 1) / sizeof(wchar_t));
        status = ::RegQueryValueExW(m_key.Get(), name, nullptr, &text.type,
                                    reinterpret_cast<BYTE*>(text.characters.data()), &size);
    }
    const bool isText = text.type == REG_SZ || text.type == REG_EXPAND_SZ;
    if (status != ERROR_SUCCESS || size % sizeof(wchar_t) != 0 || !isText) return std::nullopt;
    text.characters.resize(size / sizeof(wchar_t));
    return text;
}

std::optional<std::wstring> CRegKey::ReadString(const wchar_t* name, std::size_t maxBytes) const {
    const auto text = ReadText(name, maxBytes);
    return text && IsTerminated(text->characters) ? std::optional(UpToZero(text->characters)) : std::nullopt;
}

std::optional<std::wstring> CRegKey::ReadPath(const wchar_t* name, std::size_t maxBytes) const {
    const auto text = ReadText(name, maxBytes);
    return text && IsTerminated(text->characters) ? std::optional(ExpandedByType(*text)) : std::nullopt;
}

std::optional<std::wstring> CRegKey::ReadUnterminated(const wchar_t* name, std::size_t maxBytes) const {
    const auto text = ReadText(name, maxBytes);
    return text ? std::optional(ExpandedByType(*text)) : std::nullopt;
}

std::wstring CRegKey::ExpandedByType(const Text& text) {
    const std::wstring cut = UpToZero(text.characters);
    return text.type == REG_EXPAND_SZ ? Expanded(cut) : cut;
}

std::optional<DWORD> CRegKey::ReadDword(const wchar_t* name) const {
    DWORD type = REG_NONE;
    const auto value = ReadNumber<DWORD>(m_key.Get(), name, &type);
    return type == REG_DWORD ? value : std::nullopt;
}

std::optional<std::uint64_t> CRegKey::ReadTime(const wchar_t* name) const {
    return ReadNumber<std::uint64_t>(m_key.Get(), name, nullptr);
}

std::optional<RegValue> CRegKey::ReadValue(const wchar_t* name) const {
    RegValue value;
    LSTATUS status = ERROR_MORE_DATA;
    // One call serves most values. Somebody else may write a longer one between two calls.
    for (DWORD size = kUsualValue; status == ERROR_MORE_DATA;) {
        value.data.resize(size);
        status = ::RegQueryValueExW(m_key.Get(), name, nullptr, &value.type,
                                    reinterpret_cast<BYTE*>(value.data.data()), &size);
        if (status == ERROR_SUCCESS && size > value.data.size()) status = ERROR_MORE_DATA;
        if (status == ERROR_SUCCESS) value.data.resize(size);
    }
    return status == ERROR_SUCCESS ? std::optional(std::move(value)) : std::nullopt;
}

bool CRegKey::HasValue(const wchar_t* name) const {
    return ::RegQueryValueExW(m_key.Get(), name, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
}

bool CRegKey::WriteValue(const wchar_t* name, DWORD type, std::span<const std::byte> data) const {
    return ::RegSetValueExW(m_key.Get(), name, 0, type, reinterpret_cast<const BYTE*>(data.data()),
                            static_cast<DWORD>(data.size())) == ERROR_SUCCESS;
}

bool CRegKey::WriteString(const wchar_t* name, const std::wstring& text) const {
    return WriteValue(name, REG_SZ, std::as_bytes(std::span(text.c_str(), text.size() + 1)));
}

bool CRegKey::WriteDword(const wchar_t* name, DWORD value) const {
    return WriteValue(name, REG_DWORD, std::as_bytes(std::span(&value, 1)));
}

bool CRegKey::DeleteValue(const wchar_t* name) const {
    return ::RegDeleteValueW(m_key.Get(), name) == ERROR_SUCCESS;
}

std::vector<std::wstring> CRegKey::SubkeyNames() const {
    std::vector<std::wstring> names;
    std::array<wchar_t, kMaxKeyName> name;
    for (DWORD index = 0;; ++index) {
        DWORD length = kMaxKeyName;
        if (::RegEnumKeyExW(m_key.Get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS) {
            return names;
        }
        names.emplace_back(name.data(), length);
    }
}

bool CRegKey::DeleteTree(HKEY root, const std::wstring& path) {
    // Without a name of its own the path would mean the key above, with all that it holds.
    if (path.empty() || path.back() == L'\\') return false;
    // One without keys below it, as most are, goes by one call instead of five.
    return ::RegDeleteKeyW(root, path.c_str()) == ERROR_SUCCESS ||
           ::SHDeleteKeyW(root, path.c_str()) == ERROR_SUCCESS;
}
