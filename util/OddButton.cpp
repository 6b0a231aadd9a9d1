#include "OddButton.h"

#include <windowsx.h>

bool COddButton::OnDrawItem(const DRAWITEMSTRUCT& item) {
    if (!m_hwnd || item.hwndItem != m_hwnd) return false;
    Draw(item);
    return true;
}

bool COddButton::IsPressed(bool selected) const {
    if (!m_toggles) return selected;
    // Released outside, the press does not count: the button already shows the state it will have then.
    return m_mousePressed && !m_hot ? !m_toggled : m_toggled;
}

Answer COddButton::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_MOUSEMOVE:
            TrackCursor(lParam);
            return std::nullopt;
        case WM_MOUSELEAVE:
            SetHot(false);
            return std::nullopt;
        case WM_MOUSEHOVER:
            return 0;  // nothing changes, but the button class would repaint
        case WM_LBUTTONDOWN:
            TrackCursor(lParam);
            OnLeftDown();
            return std::nullopt;
        case WM_LBUTTONUP:
            TrackCursor(lParam);
            OnPressEnded();
            return std::nullopt;
        case WM_CAPTURECHANGED:
            OnPressEnded();
            return std::nullopt;
        case WM_LBUTTONDBLCLK:
            if (m_toggles) Send(BM_SETSTATE, m_toggled);
            return 0;
        case WM_KEYDOWN:
            // The dialog leaves Enter to a control that wants all keys, and a push button takes only the
            // space bar.
            if (wParam != VK_RETURN) return std::nullopt;
            Default(WM_KEYDOWN, VK_SPACE);
            Default(WM_KEYUP, VK_SPACE);
            return 0;
        case WM_ENABLE:
            SetHot(false);  // a disabled button gets no more mouse messages
            return std::nullopt;
        case WM_GETDLGCODE: {
            const auto* key = reinterpret_cast<const MSG*>(lParam);
            const bool tab = key && key->message == WM_KEYDOWN && key->wParam == VK_TAB;
            const LRESULT code = Default(message, wParam, lParam);
            return tab ? code : code | DLGC_WANTALLKEYS;
        }
        default:
            return std::nullopt;
    }
}

void COddButton::TrackCursor(LPARAM lParam) {
    POINT cursor{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    ::ClientToScreen(m_hwnd, &cursor);
    const RECT window = ToSystem(WindowRect());
    SetHot(::PtInRect(&window, cursor) != FALSE);
    if (!m_hot) return;
    // Only this brings a message when the mouse leaves.
    TRACKMOUSEEVENT leave{sizeof(leave), TME_LEAVE, m_hwnd, 0};
    ::TrackMouseEvent(&leave);
}

void COddButton::SetHot(bool hot) {
    if (hot == m_hot) return;
    m_hot = hot;
    Redraw();
}

void COddButton::OnLeftDown() {
    m_mousePressed = true;
    if (m_toggles) m_toggled = !m_toggled;
}

void COddButton::OnPressEnded() {
    if (!m_mousePressed) return;
    if (m_toggles && !m_hot) m_toggled = !m_toggled;
    m_mousePressed = false;
    Redraw();
}
