// The values of a registry key, one after the other.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "RegKey.h"

/// The text of a REG_SZ value as it is stored, with or without terminator; cut at its first zero.
std::wstring TextOf(std::span<const std::byte> data);

/// Goes through the values in the registry's order:
///     for (CRegValues values(key, 519); values.Next();) Use(values.Name());
/// A value that can't be read or whose name is longer than the limit is passed over, but counted in the
/// index.
class CRegValues {
  public:
    enum class Read { Names, Data };
    CRegValues(const CRegKey& key, DWORD maxNameLength, Read read = Read::Data);

    /// Makes room for data of so many bytes: a value that finds too little comes twice from the system.
    void Expect(std::size_t largestData);
    /// False at the end.
    bool Next();
    /// The end came by an error, and not behind the last value.
    bool HasFailed() const { return m_failed; }
    DWORD Index() const { return m_index; }
    /// These last until the next call of Next.
    const wchar_t* Name() const { return m_name.data(); }
    DWORD Type() const { return m_type; }
    std::span<const std::byte> Data() const { return std::span(m_data).first(m_size); }

  private:
    LSTATUS ReadAt(DWORD index);

    const CRegKey& m_key;
    DWORD m_maxName;
    bool m_withData;
    bool m_failed = false;
    DWORD m_next = 0;
    DWORD m_index = 0;
    DWORD m_nameLength = 0;
    DWORD m_type = REG_NONE;
    DWORD m_size = 0;
    std::vector<wchar_t> m_name;
    std::vector<std::byte> m_data;
};
