#include "RegValues.h"

#include <algorithm>

namespace {

/// With room for every name that the registry allows, only data can be too long for a call.
constexpr std::size_t kAnyName = 16384;
constexpr std::size_t kUsualData = 4096;

}  // namespace

std::wstring TextOf(std::span<const std::byte> data) {
    std::wstring text(data.size() / sizeof(wchar_t), L'\0');
    const auto characters = std::as_writable_bytes(std::span(text));
    std::ranges::copy(data.first(characters.size()), characters.begin());
    return text.c_str();
}

CRegValues::CRegValues(const CRegKey& key, DWORD maxNameLength, Read read)
    : m_key(key), m_maxName(maxNameLength), m_withData(read == Read::Data), m_name(kAnyName) {
    if (m_withData) m_data.resize(kUsualData);
}

void CRegValues::Expect(std::size_t largestData) {
    if (m_data.size() < largestData) m_data.resize(largestData);
}

LSTATUS CRegValues::ReadAt(DWORD index) {
    for (;;) {
        m_nameLength = static_cast<DWORD>(m_name.size());
        m_size = static_cast<DWORD>(m_data.size());
        const LSTATUS status = ::RegEnumValueW(
            m_key.Handle(), index, m_name.data(), &m_nameLength, nullptr, &m_type,
            m_withData ? reinterpret_cast<BYTE*>(m_data.data()) : nullptr, m_withData ? &m_size : nullptr);
        if (status != ERROR_MORE_DATA || m_size <= m_data.size()) return status;
        m_data.resize(m_size);
    }
}

bool CRegValues::Next() {
    for (;;) {
        m_index = m_next++;
        const LSTATUS status = ReadAt(m_index);
        if (status == ERROR_SUCCESS && m_nameLength <= m_maxName) return true;
        if (status == ERROR_SUCCESS || status == ERROR_MORE_DATA) continue;
        // Any other error, such as that of a deleted key, would come back for every further index.
        m_failed = status != ERROR_NO_MORE_ITEMS;
        return false;
    }
}
