#include "WholeRows.h"

#include "Controls.h"

namespace {

/// The part of a row at the end of a client area that is so high.
LONG PartOfRow(const CListBox& list, LONG height) {
    const LONG row = list.SendInt(LB_GETITEMHEIGHT);
    return row > 0 && height > row ? height % row : 0;
}

/// What the system left of `client`, without the part of a row at its end.
void CutToWholeRows(const CListBox& list, RECT& client) {
    client.bottom -= PartOfRow(list, client.bottom - client.top);
}

/// The frame's edges are equally wide on all sides.
void FillBelowRows(const CListBox& list) {
    const Rect client = list.ClientRect();
    const Rect window = list.WindowRect();
    POINT corner{};
    ::ClientToScreen(list.Handle(), &corner);
    const int edge = corner.y - window.top;
    const RECT below{edge, edge + client.Height(), window.Width() - edge, window.Height() - edge};
    const HDC dc = ::GetWindowDC(list.Handle());
    ::FillRect(dc, &below, ::GetSysColorBrush(COLOR_WINDOW));
    ::ReleaseDC(list.Handle(), dc);
}

/// Has the system ask for the client area again.
void ApplyFrame(HWND hwnd) {
    ::SetWindowPos(hwnd, nullptr, 0, 0, 0, 0,
                   SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

/// Not a CSubclassedControl: filling a list is nothing but messages, and the system looks that up with each.
LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const auto original = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    const LRESULT result = ::CallWindowProcW(original, hwnd, message, wParam, lParam);
    const CListBox list(hwnd);
    switch (message) {
        case WM_NCCALCSIZE:
            CutToWholeRows(list, *reinterpret_cast<RECT*>(lParam));  // the first of three, or the only one
            break;
        case WM_NCPAINT:
            FillBelowRows(list);
            break;
        case WM_SETFONT:
            ApplyFrame(hwnd);
            break;
        default:
            break;
    }
    return result;
}

}  // namespace

void ShowWholeRows(HWND listBox) {
    ::SetWindowLongPtrW(listBox, GWLP_USERDATA, ::GetWindowLongPtrW(listBox, GWLP_WNDPROC));
    ::SetWindowLongPtrW(listBox, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
    ApplyFrame(listBox);
}

CQuickFill::CQuickFill(HWND listBox)
    : m_list(::GetWindowLongPtrW(listBox, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(&Procedure) ? listBox
                                                                                                  : nullptr) {
    if (m_list) ::SetWindowLongPtrW(m_list, GWLP_WNDPROC, ::GetWindowLongPtrW(m_list, GWLP_USERDATA));
}

CQuickFill::~CQuickFill() {
    if (!m_list) return;
    ::SetWindowLongPtrW(m_list, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
    // A scroll bar that came or went has made the client area anew.
    const CListBox list(m_list);
    if (PartOfRow(list, list.ClientRect().Height()) != 0) ApplyFrame(m_list);
}
