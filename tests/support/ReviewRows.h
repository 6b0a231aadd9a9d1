// What a list to tick shows.
#pragma once

#include <array>

#include "ReviewDlg.h"
#include "resource.h"
#include "support/Popups.h"
#include "support/WindowActions.h"

namespace support {

/// The columns' texts, a line each row, with "[x]", "[ ]" or nothing before them for its box; and the button.
inline std::wstring ReviewText(HWND dialog, const std::vector<int>& columns) {
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

/// Such a dialog, which shows that and is left by the button.
inline Popups& ExpectReview(Popups& popups, std::wstring title, std::initializer_list<int> columns,
                            std::wstring shown, int button) {
    return popups.Expect(std::move(title),
                         [columns = std::vector(columns), shown = std::move(shown), button](HWND dialog) {
                             EXPECT_EQ(ReviewText(dialog, columns), shown);
                             Press(::GetDlgItem(dialog, button));
                         });
}

}  // namespace support
