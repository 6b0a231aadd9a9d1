#include "WholeRows.h"

#include "Controls.h"

namespace {

/// What the system left of `client`, without the part of a row at its end.
void CutToWholeRows(const CListBox& list, RECT& client) {
    const int row = list.SendInt(LB_GETITEMHEIGHT);
    const LONG height = client.bottom - client.top;
    if (row > 0 && height > row) client.bottom -= height % row;
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
