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

LONG_PTR StyleOf(HWND window) { return ::GetWindowLongPtrW(window, GWL_STYLE); }

bool MayCutOff(HWND control) {
    if (HasClass(control, WC_EDITW)) return (StyleOf(control) & ES_READONLY) != 0;
    return HasClass(control, WC_STATICW) && (StyleOf(control) & SS_ELLIPSISMASK) != 0;
}

/// What the user does that makes a tip stale.
bool IsAction(UINT message) {
    return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
           (message > WM_MOUSEMOVE && message <= WM_MOUSELAST) || message == WM_MOUSELEAVE;
}

SIZE ExtentOf(HWND control, const std::wstring& text) {
    const CClientDC dc{CWindow(control)};
    const CSelectedFont font(dc.Get(), reinterpret_cast<HFONT>(::SendMessageW(control, WM_GETFONT, 0, 0)));
    SIZE extent{};
    ::GetTextExtentPoint32W(dc.Get(), text.c_str(), static_cast<int>(text.size()), &extent);
    return extent;
}

RECT ScreenAround(HWND control) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoW(::MonitorFromWindow(control, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor.rcWork;
}

TTTOOLINFOW ToolOf(HWND dialog) {
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    // The mouse stays with the control below.
    tool.uFlags = TTF_TRACK | TTF_ABSOLUTE | TTF_TRANSPARENT;
    tool.hwnd = dialog;
    return tool;
}

}  // namespace

void CFullTextTip::Relay(HWND dialog, const MSG& message) {
    if (message.message == WM_MOUSEMOVE) {
        OnMove(dialog, message);
    } else if (message.message == WM_MOUSEHOVER) {
        Show(dialog);
    } else if (IsAction(message.message)) {
        Hide();
    }
}

CFullTextTip::Place CFullTextTip::PlaceAt(HWND dialog, const MSG& move) {
    const POINT client{GET_X_LPARAM(move.lParam), GET_Y_LPARAM(move.lParam)};
    if (HasClass(move.hwnd, WC_LISTBOXW)) {
        const LRESULT row = ::SendMessageW(move.hwnd, LB_ITEMFROMPOINT, 0, move.lParam);
        return HIWORD(row) == 0 ? Place{move.hwnd, LOWORD(row)} : Place{};
    }
    // Labels, and what is disabled, leave the mouse to the dialog.
    const HWND control =
        move.hwnd == dialog ? ::ChildWindowFromPointEx(dialog, client, CWP_SKIPINVISIBLE) : move.hwnd;
    return MayCutOff(control) ? Place{control, 0} : Place{};
}

/// `shown` is where the control shows the text, in its client coordinates.
std::wstring CFullTextTip::TextAt(const Place& place, RECT& shown) {
    const CListBox control(place.control);
    if (HasClass(place.control, WC_LISTBOXW)) {
        control.Send(LB_GETITEMRECT, static_cast<WPARAM>(place.row), reinterpret_cast<LPARAM>(&shown));
        shown.left += kRowMargin;
        return control.RowText(place.row);
    }
    shown = ToSystem(control.ClientRect());
    if (HasClass(place.control, WC_EDITW)) control.Send(EM_GETRECT, 0, reinterpret_cast<LPARAM>(&shown));
    return control.Text();
}

void CFullTextTip::OnMove(HWND dialog, const MSG& move) {
    const Place place = PlaceAt(dialog, move);
    if (place == m_place) return;
    Hide();
    m_place = place;
    if (!place.control) return;
    TRACKMOUSEEVENT rest{sizeof rest, TME_HOVER | TME_LEAVE, move.hwnd, HOVER_DEFAULT};
    ::TrackMouseEvent(&rest);
}

void CFullTextTip::Show(HWND dialog) {
    if (!m_place.control) return;
    RECT shown{};
    std::wstring text = TextAt(m_place, shown);
    const SIZE extent = ExtentOf(m_place.control, text);
    if (extent.cx <= shown.right - shown.left) return;

    if (!::IsWindow(m_tip)) Create(dialog);
    const RECT screen = ScreenAround(m_place.control);
    const CWindow tip(m_tip);
    tip.Send(WM_SETFONT, static_cast<WPARAM>(::SendMessageW(m_place.control, WM_GETFONT, 0, 0)));
    tip.Send(TTM_SETMAXTIPWIDTH, 0, screen.right - screen.left);
    TTTOOLINFOW tool = ToolOf(dialog);
    tool.lpszText = text.data();
    tip.Send(TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));

    ::MapWindowPoints(m_place.control, nullptr, reinterpret_cast<POINT*>(&shown), 2);
    RECT window{shown.left, shown.top, shown.left + extent.cx, shown.top + extent.cy};
    tip.Send(TTM_ADJUSTRECT, TRUE, reinterpret_cast<LPARAM>(&window));
    // Over the text, as far as the screen has room to its right.
    const LONG left = std::max(screen.left, std::min(window.left, window.left + screen.right - window.right));
    tip.Send(TTM_TRACKPOSITION, 0, MAKELPARAM(left, window.top));
    Activate(dialog, true);
}

void CFullTextTip::Hide() {
    if (::IsWindow(m_tip)) Activate(m_dialog, false);
    m_place = {};
}

void CFullTextTip::Create(HWND dialog) {
    m_dialog = dialog;
    m_tip = ::CreateWindowExW(WS_EX_TOPMOST | WS_EX_TRANSPARENT, TOOLTIPS_CLASSW, nullptr,
                              WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                              CW_USEDEFAULT, CW_USEDEFAULT, dialog, nullptr, ::GetModuleHandleW(nullptr),
                              nullptr);
    const TTTOOLINFOW tool = ToolOf(dialog);
    ::SendMessageW(m_tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void CFullTextTip::Activate(HWND dialog, bool shown) const {
    const TTTOOLINFOW tool = ToolOf(dialog);
    ::SendMessageW(m_tip, TTM_TRACKACTIVATE, shown, reinterpret_cast<LPARAM>(&tool));
}
