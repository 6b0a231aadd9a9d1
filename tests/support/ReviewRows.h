// What a list to tick shows.
#pragma once

#include <array>
#include <initializer_list>
#include <string>

#include "ReviewDlg.h"
#include "resource.h"

namespace support {

/// The columns' texts, a line each row, with "[x]", "[ ]" or nothing before them for its box; and the button.
inline std::wstring ReviewText(HWND dialog, std::initializer_list<int> columns) {
    const CWindow list(::GetDlgItem(dialog, IDC_REVIEW_LIST));
    std::wstring shown;
    for (int row = 0; row < list.SendInt(LVM_GETITEMCOUNT); ++row) {
        const int box = list.SendInt(LVM_GETITEMSTATE, row, LVIS_STATEIMAGEMASK) >> 12;
        shown += box == 0 ? L"" : box == 1 ? L"[ ]" : L"[x]";
        for (const int column : columns) {
            std::array<wchar_t, 128> text{};
            LVITEMW item{};
            item.iSubItem = column;
            item.pszText = text.data();
            item.cchTextMax = static_cast<int>(text.size());
            list.Send(LVM_GETITEMTEXTW, row, &item);
            shown += text.data() + std::wstring(L",");
        }
        shown += L'\n';
    }
    return shown + CWindow(::GetDlgItem(dialog, IDOK)).Text();
}

}  // namespace support
