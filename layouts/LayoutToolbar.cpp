#include "LayoutToolbar.h"

#include <algorithm>

#include "Resources.h"
#include "resource.h"

namespace {

struct ToolbarButton {
    int id;
    UINT tip;
    UINT bitmap;  // at 100 %, and so on
    UINT bitmap150;
    UINT bitmap200;
};

constexpr std::array<ToolbarButton, 4> kButtons = {{
    {IDC_LAYOUT_NEW, IDS_TIP_NEW, IDB_LAYOUT_NEW, IDB_LAYOUT_NEW_150, IDB_LAYOUT_NEW_200},
    {IDC_LAYOUT_OPEN, IDS_TIP_OPEN, IDB_LAYOUT_OPEN, IDB_LAYOUT_OPEN_150, IDB_LAYOUT_OPEN_200},
    {IDC_LAYOUT_SAVE, IDS_TIP_SAVE, IDB_LAYOUT_SAVE, IDB_LAYOUT_SAVE_150, IDB_LAYOUT_SAVE_200},
    {IDC_LAYOUT_DELETE, IDS_TIP_DELETE, IDB_LAYOUT_DELETE, IDB_LAYOUT_DELETE_150, IDB_LAYOUT_DELETE_200},
}};

/// The largest one that fits the screen's scale: a bitmap that is stretched would blur.
UINT BitmapFor(const ToolbarButton& button, UINT dpi) {
    constexpr UINT kOne = USER_DEFAULT_SCREEN_DPI;
    if (dpi >= 2 * kOne) return button.bitmap200;
    return dpi >= kOne * 3 / 2 ? button.bitmap150 : button.bitmap;
}

}  // namespace

void CLayoutToolbar::OnInitDialog() {
    m_tips.Create(m_dialog.Handle());
    for (std::size_t i = 0; i < kButtons.size(); ++i) {
        const HWND control = m_dialog.Item(kButtons[i].id).Handle();
        CXButtonXP& button = m_buttons[i];
        button.ShowText(false);
        button.Attach(control);
        m_tips.Add(control);
    }
    m_label.Attach(m_dialog.Item(IDC_LAYOUT_LABEL).Handle());
    LoadImages(::GetDpiForWindow(m_dialog.Handle()));
}

void CLayoutToolbar::LoadImages(UINT dpi) {
    for (std::size_t i = 0; i < kButtons.size(); ++i) {
        m_buttons[i].SetImage(LoadAlphaBitmap(BitmapFor(kButtons[i], dpi)));
    }
}

bool CLayoutToolbar::OnDrawItem(const DRAWITEMSTRUCT& item) {
    return std::ranges::any_of(m_buttons, [&](CXButtonXP& button) { return button.OnDrawItem(item); });
}

void CLayoutToolbar::OnNeedTipText(NMTTDISPINFOW& tip) const {
    if (!(tip.uFlags & TTF_IDISHWND)) return;
    const int control = ::GetDlgCtrlID(reinterpret_cast<HWND>(tip.hdr.idFrom));
    for (const ToolbarButton& button : kButtons) {
        if (button.id != control) continue;
        const std::wstring text = LoadText(button.tip);
        tip.szText[text.copy(tip.szText, std::size(tip.szText) - 1)] = L'\0';
        tip.lpszText = tip.szText;
    }
}
