#include "LayoutList.h"

#include "LayoutPath.h"

void CLayoutList::Clear() {
    CComboBox::Clear();
    m_paths.clear();
}

std::optional<int> CLayoutList::AddLayout(const std::wstring& name, const std::wstring& path) {
    const int row = Add(name);
    if (row < 0) return std::nullopt;
    SetData(row, static_cast<LPARAM>(m_paths.size()));
    m_paths.push_back(path);
    return row;
}

std::vector<std::wstring> CLayoutList::Names() const {
    std::vector<std::wstring> names;
    names.reserve(m_paths.size());
    for (int row = 0; row < Count(); ++row) names.push_back(RowText(row));
    return names;
}

std::wstring CLayoutList::PathOf(std::optional<int> row) const {
    const LPARAM index = row ? Data(*row) : -1;
    const bool known = index >= 0 && static_cast<std::size_t>(index) < m_paths.size();
    return known ? m_paths[static_cast<std::size_t>(index)] : std::wstring();
}

std::optional<int> CLayoutList::RowOf(const std::wstring& path) const {
    for (int row = 0; row < Count(); ++row) {
        if (SamePath(PathOf(row), path)) return row;
    }
    return std::nullopt;
}

bool CLayoutList::IsWheelOver(const MSG& message) const {
    return message.message == WM_MOUSEWHEEL && !IsDropped() &&
           (message.hwnd == m_hwnd || ::IsChild(m_hwnd, message.hwnd));
}
