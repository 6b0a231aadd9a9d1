#include "FullTextTip.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <array>

#include "Controls.h"

namespace {

/// Between the edge of a list box's row and its text.
constexpr int kRowMargin = 2;

bool HasClass(HWND window, const wchar_t* name) {
    std::array<wchar_t, 32> own{};
    ::GetClassNameW(window, own.data(), static_cast<int>(own.size()));
    return ::lstrcmpiW(own.data(), name) == 0;
}

bool MayCutOff(HWND control) {
    if (HasClass(control, WC_EDITW)) return (CWindow(control).Style() & ES_READONLY) != 0;
    return HasClass(control, WC_STATICW) && (CWindow(control).Style() & SS_ELLIPSISMASK) != 0;
}

/// What the user does next; the tip goes then.
bool IsAction(UINT message) {
    return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
           (message > WM_MOUSEMOVE && message <= WM_MOUSELAST) || message == WM_MOUSELEAVE;
}

Size ExtentOf(const CWindow& control, const std::wstring& text) {
    const CClientDC dc(control);
    const CSelectedObject font(dc.Get(), control.Font());
    return TextExtent(dc.Get(), text);
}

RECT ScreenAround(HWND control) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoW(::MonitorFromWindow(control, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor.rcWork;
}

}  // namespace

void CFullTextTip::Relay(HWND dialog, const MSG& message) {
    m_dialog = dialog;
    if (message.message == WM_MOUSEMOVE) {
        OnMove(message);
    } else if (message.message == WM_MOUSEHOVER) {
        Show();
    } else if (IsAction(message.message)) {
        Hide();
    }
}

CFullTextTip::Place CFullTextTip::PlaceAt(const MSG& move) const {
    const POINT client{GET_X_LPARAM(move.lParam), GET_Y_LPARAM(move.lParam)};
    if (HasClass(move.hwnd, WC_LISTBOXW)) {
        const LRESULT row = ::SendMessageW(move.hwnd, LB_ITEMFROMPOINT, 0, move.lParam);
        return HIWORD(row) == 0 ? Place{move.hwnd, LOWORD(row)} : Place{};
    }
    // Labels, and what is disabled, leave the mouse to the dialog.
    const HWND control =
        move.hwnd == m_dialog ? ::ChildWindowFromPointEx(m_dialog, client, CWP_SKIPINVISIBLE) : move.hwnd;
    return MayCutOff(control) ? Place{control, 0} : Place{};
}

/// `shown` is where the control shows the text, in its client coordinates.
std::wstring CFullTextTip::TextAt(const Place& place, RECT& shown) {
    const CListBox control(place.control);
    if (HasClass(place.control, WC_LISTBOXW)) {
        control.Send(LB_GETITEMRECT, place.row, &shown);
        shown.left += kRowMargin;
        return control.RowText(place.row);
    }
    shown = ToSystem(control.ClientRect());
    if (HasClass(place.control, WC_EDITW)) control.Send(EM_GETRECT, 0, &shown);
    return control.Text();
}

void CFullTextTip::OnMove(const MSG& move) {
    const Place place = PlaceAt(move);
    if (place == m_place) return;
    Hide();
    m_place = place;
    if (!place.control) return;
    TRACKMOUSEEVENT rest{sizeof rest, TME_HOVER | TME_LEAVE, move.hwnd, HOVER_DEFAULT};
    ::TrackMouseEvent(&rest);
}

void CFullTextTip::Show() {
    if (!m_place.control) return;
    const CWindow control(m_place.control);
    RECT shown{};
    std::wstring text = TextAt(m_place, shown);
    const Size extent = ExtentOf(control, text);
    if (extent.width <= shown.right - shown.left) return;

    TTTOOLINFOW tool = Tool();
    if (!m_tip.IsLive()) {
        m_tip = CWindow(CreateToolTip(m_dialog, WS_EX_TRANSPARENT));
        m_tip.Send(TTM_ADDTOOLW, 0, &tool);
    }
    const RECT screen = ScreenAround(control.Handle());
    m_tip.Send(WM_SETFONT, control.Font());
    m_tip.Send(TTM_SETMAXTIPWIDTH, 0, screen.right - screen.left);
    tool.lpszText = text.data();
    m_tip.Send(TTM_UPDATETIPTEXTW, 0, &tool);

    ::MapWindowPoints(control.Handle(), nullptr, reinterpret_cast<POINT*>(&shown), 2);
    RECT window{shown.left, shown.top, shown.left + extent.width, shown.top + extent.height};
    m_tip.Send(TTM_ADJUSTRECT, TRUE, &window);
    // Over the text, as far as the screen has room to its right.
    const LONG left = std::max(screen.left, std::min(window.left, window.left + screen.right - window.right));
    m_tip.Send(TTM_TRACKPOSITION, 0, MAKELPARAM(left, window.top));
    Activate(true);
}

void CFullTextTip::Hide() {
    if (m_tip.IsLive()) Activate(false);
    m_place = {};
}

TTTOOLINFOW CFullTextTip::Tool() const {
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    // The mouse stays with the control below.
    tool.uFlags = TTF_TRACK | TTF_ABSOLUTE | TTF_TRANSPARENT;
    tool.hwnd = m_dialog;
    return tool;
}

void CFullTextTip::Activate(bool shown) const {
    const TTTOOLINFOW tool = Tool();
    m_tip.Send(TTM_TRACKACTIVATE, shown, &tool);
}
