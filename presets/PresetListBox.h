// The list box and the combo box that show the presets of a plug-in.
#pragma once

#include "Controls.h"

/// Adds a way to find rows that costs nothing for the row just added: preset names differ from each other,
/// and a search from the start for each of many would take as long as their number squared.
template <typename TControl, UINT FindMessage>
class CPresetRows : public TControl {
  public:
    using TControl::TControl;
    // NOLINTNEXTLINE(google-explicit-constructor): a view of the same window
    CPresetRows(const TControl& control) : TControl(control) {}

    void Clear() const {
        m_row = -1;
        TControl::Clear();
    }
    int Add(const std::wstring& text) const {
        m_added = text;
        return m_row = TControl::Add(text);
    }
    /// Whole text, case ignored; nothing when no row has it.
    std::optional<int> FindExact(const std::wstring& text) const {
        if (m_row >= 0 && text == m_added) return m_row;
        const int row =
            this->SendInt(FindMessage, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text.c_str()));
        return row < 0 ? std::nullopt : std::optional(row);
    }

  private:
    mutable std::wstring m_added;
    mutable int m_row = -1;
};

using CPresetListBox = CPresetRows<CListBox, LB_FINDSTRINGEXACT>;
using CPresetComboBox = CPresetRows<CComboBox, CB_FINDSTRINGEXACT>;
