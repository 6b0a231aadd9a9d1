#include "Docking.h"

#include <string>

#include "DockedPlace.h"
#include "Resources.h"
#include "resource.h"

namespace {

// Commands of the system menu; the system keeps the low four bits.
constexpr UINT kCommandDock = 0x20;
constexpr UINT kCommandFloat = 0x30;

LONG_PTR StyleOf(const CWindow& window) { return ::GetWindowLongPtrW(window.Handle(), GWL_STYLE); }

void SetStyle(const CWindow& window, LONG_PTR style) {
    ::SetWindowLongPtrW(window.Handle(), GWL_STYLE, style);
}

bool IsOnPrimaryMonitor(HWND window) {
    return ::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST) ==
           ::MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY);
}

}  // namespace

void CDocking::OnInitDialog() const {
    if (!m_host.IsLive()) return;
    const HMENU menu = ::GetSystemMenu(m_dialog.Handle(), FALSE);
    for (const int command : {SC_MAXIMIZE, SC_MINIMIZE, SC_RESTORE})
        ::DeleteMenu(menu, static_cast<UINT>(command), MF_BYCOMMAND);
    SetStyle(m_dialog, StyleOf(m_dialog) & ~LONG_PTR{WS_MAXIMIZEBOX | WS_MINIMIZEBOX});
    ::SetWindowPos(m_dialog.Handle(), nullptr, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    if (m_floating) return;
    ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    ::AppendMenuW(menu, MF_STRING, kCommandFloat, LoadText(IDS_ENABLE_FLOATING).c_str());
}

void CDocking::Start() const {
    if (!m_floating && m_host.IsLive()) Dock();
}

bool CDocking::OnSysCommand(UINT command) {
    if (command != kCommandFloat && command != kCommandDock) return false;
    // A dialog that becomes the host's child is no longer active itself: the host is, and takes the focus.
    const CFocusKeeper focus;
    OfferFloating(command == kCommandDock);
    if (command == kCommandFloat) {
        Float();
    } else if (m_host.IsLive()) {
        Dock();
    }
    return true;
}

bool CDocking::OnSysChar(wchar_t character) const {
    if (character != L' ' || !IsDocked()) return false;
    POINT corner{};
    ::ClientToScreen(m_dialog.Handle(), &corner);
    ShowSystemMenu(corner);
    return true;
}

bool CDocking::OnKey(const MSG& message) const {
    const bool released = message.message == WM_KEYUP || message.message == WM_SYSKEYUP;
    const bool opensMenu = message.wParam == VK_MENU || message.wParam == VK_F10;
    if (!released || !opensMenu || !IsDocked()) return false;
    ::TranslateMessage(&message);  // Alt ends a letter that is typed by its number
    return true;
}

bool CDocking::OnContextMenu(HWND /*window*/, POINT screen) const {
    if (!IsDocked()) return false;
    const LRESULT part = m_dialog.Send(WM_NCHITTEST, 0, MAKELPARAM(screen.x, screen.y));
    if (part == HTCAPTION || part == HTSYSMENU) ShowSystemMenu(screen);
    return true;
}

void CDocking::ShowSystemMenu(POINT screen) const {
    if (!m_dialog.IsEnabled()) return;
    const auto command = static_cast<UINT>(::TrackPopupMenu(::GetSystemMenu(m_dialog.Handle(), FALSE),
                                                            TPM_RETURNCMD | TPM_RIGHTBUTTON, screen.x,
                                                            screen.y, 0, m_dialog.Handle(), nullptr));
    if (command != 0) ::PostMessageW(m_dialog.Handle(), WM_SYSCOMMAND, command, 0);
}

void CDocking::OfferFloating(bool enable) const {
    const HMENU menu = ::GetSystemMenu(m_dialog.Handle(), FALSE);
    const UINT offered = enable ? kCommandFloat : kCommandDock;
    const UINT shown = enable ? kCommandDock : kCommandFloat;
    const std::wstring text = LoadText(enable ? IDS_ENABLE_FLOATING : IDS_DISABLE_FLOATING);
    ::ModifyMenuW(menu, shown, MF_BYCOMMAND | MF_STRING, offered, text.c_str());
}

void CDocking::Dock() const {
    const Rect place = m_dialog.WindowRect();
    const LONG_PTR style = StyleOf(m_dialog);
    // It becomes a child window before it gets its parent: a popup would have no place there.
    SetStyle(m_dialog, (style & ~LONG_PTR{WS_POPUP}) | WS_CHILD);
    if (!::SetParent(m_dialog.Handle(), m_host.Handle())) {
        SetStyle(m_dialog, style);
        OfferFloating(false);
        return;
    }
    TakeOverCues();
    m_dialog.Send(WM_DPICHANGED_AFTERPARENT);
    PlaceInHost(place);
}

/// A window passes such a change on only where it is one for itself, so that two windows that differ would go
/// on differing.
void CDocking::TakeOverCues() const {
    constexpr WORD kCues = UISF_HIDEFOCUS | UISF_HIDEACCEL;
    const auto hidden = static_cast<WORD>(CWindow(m_host.Handle()).Send(WM_QUERYUISTATE) & kCues);
    m_dialog.Send(WM_UPDATEUISTATE, MAKEWPARAM(UIS_SET, hidden));
    m_dialog.Send(WM_UPDATEUISTATE, MAKEWPARAM(UIS_CLEAR, kCues & ~hidden));
}

void CDocking::PlaceInHost(const Rect& onScreen) const {
    const HWND host = m_host.Handle();
    Rect place;  // the corner, unless the host is on the primary monitor
    if (IsOnPrimaryMonitor(host)) {
        POINT corner{onScreen.left, onScreen.top};
        ::ScreenToClient(host, &corner);
        const Rect client = CWindow(host).ClientRect();
        // Measured again: the host's scale may have changed it.
        const Rect window = m_dialog.WindowRect();
        place = PlaceWithin({client.Width(), client.Height()}, corner.x, corner.y,
                            {window.Width(), window.Height()});
    }
    ::SetWindowPos(m_dialog.Handle(), nullptr, place.left, place.top, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

void CDocking::Float() const {
    const Rect place = m_dialog.WindowRect();
    ::SetParent(m_dialog.Handle(), nullptr);
    SetStyle(m_dialog, (StyleOf(m_dialog) & ~LONG_PTR{WS_CHILD}) | WS_POPUP);
    // The old coordinates count from the new parent's corner; this keeps the dialog where it was on the
    // screen.
    ::SetWindowPos(m_dialog.Handle(), HWND_TOP, place.left, place.top, 0, 0, SWP_NOSIZE | SWP_FRAMECHANGED);
    m_dialog.Send(WM_DPICHANGED_AFTERPARENT);
}
