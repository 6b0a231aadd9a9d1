#include "LayoutFilesView.h"

#include "Resources.h"
#include "resource.h"

namespace {

struct ToolbarButton {
    int id;
    UINT bitmapId;
};

/// Of the four bitmaps. As icons they are transparent there, and a disabled one can be drawn.
constexpr COLORREF kBackground = RGB(0xF0, 0xF0, 0xF0);

constexpr std::array<ToolbarButton, 4> kToolbar = {{
    {IDC_LAYOUT_NEW, IDB_LAYOUT_NEW},
    {IDC_LAYOUT_OPEN, IDB_LAYOUT_OPEN},
    {IDC_LAYOUT_SAVE, IDB_LAYOUT_SAVE},
    {IDC_LAYOUT_DELETE, IDB_LAYOUT_DELETE},
}};

}  // namespace

void CLayoutFilesView::OnInitDialog() {
    for (std::size_t i = 0; i < kToolbar.size(); ++i) {
        m_icons[i] = LoadBitmapAsIcon(kToolbar[i].bitmapId, kBackground);
        m_dialog.Control<CButton>(kToolbar[i].id).SetIcon(m_icons[i].Get());
    }
    m_dialog.Item(IDC_LAYOUT_DELETE).Enable(false);
    m_dialog.Item(IDC_LAYOUT_FILE).SetText(L"");
}
