#include "LayoutTreeView.h"

#include "resource.h"

void CLayoutTreeView::OnInitDialog() {
    const CWindow placeholder = m_dialog.Item(IDC_LAYOUT_TREE);
    const Rect place = placeholder.RectIn(m_dialog.Handle());
    ::DestroyWindow(placeholder.Handle());
    constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | TVS_HASLINES | TVS_LINESATROOT |
                             TVS_EDITLABELS | TVS_SHOWSELALWAYS;
    m_tree = CTreeView(::CreateWindowExW(WS_EX_CLIENTEDGE, WC_TREEVIEWW, L"", kStyle, place.left, place.top,
                                         place.Width(), place.Height(), m_dialog.Handle(),
                                         reinterpret_cast<HMENU>(static_cast<UINT_PTR>(IDC_LAYOUT_TREE)),
                                         ::GetModuleHandleW(nullptr), nullptr));
    ::SetWindowPos(m_tree.Handle(), m_dialog.Item(IDC_LAYOUTS).Handle(), 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    m_tree.Send(WM_SETFONT, static_cast<WPARAM>(m_dialog.Send(WM_GETFONT)));
}

void CLayoutTreeView::UpdateButtons() const {
    const bool hasItems = m_tree.Count() > 0;
    for (const int id : {IDC_EXPAND_ALL, IDC_COLLAPSE_ALL, IDC_SORT_ALL}) m_dialog.Item(id).Enable(hasItems);
    for (const int id : {IDC_REMOVE, IDC_MOVE_UP, IDC_MOVE_DOWN, IDC_PROMOTE})
        m_dialog.Item(id).Enable(false);
}
