// One opened registry key.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Handles.h"

/// Sizes of the buffers that the registry texts of this product are read into; a longer text is not there.
inline constexpr std::size_t kPathBytes = 520;
inline constexpr std::size_t kNameBytes = 2048;

/// A value of any type, as it is stored.
struct RegValue {
    DWORD type = REG_NONE;
    std::vector<std::byte> data;
};

/// Failure contract: an opening or a read gives nothing for what is not there or not usable, a write or a
/// deletion gives false. Nothing is reported or thrown, and nothing is left half-filled.
///
/// A text is usable when its type is REG_SZ or REG_EXPAND_SZ, its size is even and within the given limit,
/// and it ends with a zero or is empty. It is cut at its first zero. Variables in it are filled in
/// only by the reads that say so.
class CRegKey {
  public:
    /// `status` gets the system's error, for those to whom a key that is not there is another matter than one
    /// that they may not read.
    static std::optional<CRegKey> Open(HKEY root, const std::wstring& path, REGSAM access = KEY_READ,
                                       LSTATUS* status = nullptr);
    /// Opens the key, or creates it with all keys on the way. `existed` tells which of the two it was.
    static std::optional<CRegKey> Create(HKEY root, const std::wstring& path,
                                         REGSAM access = KEY_READ | KEY_WRITE, bool* existed = nullptr);
    std::optional<CRegKey> OpenSubkey(const std::wstring& name, REGSAM access = KEY_READ) const;

    std::optional<std::wstring> ReadString(const wchar_t* name, std::size_t maxBytes) const;
    /// As ReadString, with the variables of a REG_EXPAND_SZ filled in.
    std::optional<std::wstring> ReadPath(const wchar_t* name, std::size_t maxBytes = kPathBytes) const;
    /// As ReadPath, but takes a text without its terminator, too: what a zeroed buffer of that size would
    /// hold.
    std::optional<std::wstring> ReadUnterminated(const wchar_t* name, std::size_t maxBytes) const;
    /// Only a REG_DWORD counts.
    std::optional<DWORD> ReadDword(const wchar_t* name) const;
    /// A value of exactly eight bytes, whatever its type.
    std::optional<std::uint64_t> ReadTime(const wchar_t* name) const;
    /// The value is there and not zero.
    bool IsSet(const wchar_t* name) const { return ReadDword(name).value_or(0) != 0; }

    std::optional<RegValue> ReadValue(const wchar_t* name) const;
    bool HasValue(const wchar_t* name) const;
    bool WriteValue(const wchar_t* name, DWORD type, std::span<const std::byte> data) const;

    /// Writes a REG_SZ with its terminator counted. A null name means the default value.
    bool WriteString(const wchar_t* name, const std::wstring& text) const;
    bool WriteDword(const wchar_t* name, DWORD value) const;
    bool DeleteValue(const wchar_t* name) const;

    /// In the registry's order; ends at the first error.
    std::vector<std::wstring> SubkeyNames() const;

    HKEY Handle() const { return m_key.Get(); }

    /// Removes a key with everything below it. A path that is empty or ends with a backslash is refused.
    static bool DeleteTree(HKEY root, const std::wstring& path);

  private:
    explicit CRegKey(HKEY key) : m_key(key) {}
    struct Text {
        DWORD type = REG_NONE;
        std::wstring characters;  // as stored, with terminators
    };
    static std::wstring ExpandedByType(const Text& text);
    std::optional<Text> ReadText(const wchar_t* name, std::size_t maxBytes) const;

    UniqueKey m_key;
};
