// The list of the layouts, each with the file that it stands for.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "Controls.h"

class CLayoutList : public CComboBox {
  public:
    using CComboBox::CComboBox;

    void Clear();
    /// Gives the row; nothing when it could not be added.
    std::optional<int> AddLayout(const std::wstring& name, const std::wstring& path);
    std::vector<std::wstring> Names() const;
    /// Empty when the row, if any, stands for no file.
    std::wstring PathOf(std::optional<int> row) const;
    std::optional<int> RowOf(const std::wstring& path) const;
    /// The first row stands for no file.
    bool HasPlaceholder() const { return Count() > 0 && Data(0) == -1; }
    /// The closed list would turn the wheel into picks of one layout after the other.
    bool IsWheelOver(const MSG& message) const;

  private:
    std::vector<std::wstring> m_paths;  // a row's data is an index into them; -1 for a row without a file
};
