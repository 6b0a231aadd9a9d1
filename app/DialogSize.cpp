#include "DialogSize.h"

#include <utility>

#include "ControlPlacement.h"
#include "ResizeLayout.h"
#include "ScreenFit.h"
#include "WindowPlacement.h"

namespace {

Size SizeOf(const Rect& place) { return {place.Width(), place.Height()}; }

Rect AtCornerOf(const Rect& place, Size size) {
    return {place.left, place.top, place.left + size.width, place.top + size.height};
}

/// Of the monitor that shows the most of the place.
Rect WorkAreaAt(const Rect& place) {
    const RECT window = ToSystem(place);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoW(::MonitorFromRect(&window, MONITOR_DEFAULTTONEAREST), &monitor);
    return FromSystem(monitor.rcWork);
}

}  // namespace

CDialogSize::CDialogSize(CDialog& dialog, std::function<void(UINT)> loadImages)
    : m_dialog(dialog), m_loadImages(std::move(loadImages)) {}

void CDialogSize::OnInitDialog() {
    m_scale.Attach(m_dialog.Handle());
    m_screenDpi = m_scale.Dpi();
    RecordPlacement(m_dialog, m_scale.Units());
}

void CDialogSize::FitScreen() {
    const Rect window = m_dialog.WindowRect();
    const Rect area = WorkAreaAt(window);
    FitTo(m_screenDpi, area);
    if (SizeOf(window) != m_minimum) {
        const int left = area.left + (area.Width() - m_minimum.width) / 2;
        const int top = area.top + (area.Height() - m_minimum.height) / 2;
        MoveTo(AtCornerOf({left, top, left, top}, m_minimum));
    }
    ApplyPlacement(m_dialog, m_scale.Units());
}

void CDialogSize::FitTo(UINT dpi, const Rect& area) {
    const Size frame = FrameSize(m_dialog.Handle(), dpi);
    const ScreenFit fit =
        FitToScreen(static_cast<int>(dpi), {area.Width() - frame.width, area.Height() - frame.height},
                    [this](int scale) { return RecordedClient(m_scale.UnitsAt(static_cast<UINT>(scale))); });
    const auto scale = static_cast<UINT>(fit.dpi);
    const bool changes = dpi != m_screenDpi || scale != m_scale.Dpi();
    m_minimum = {fit.client.width + frame.width, fit.client.height + frame.height};
    m_screenDpi = dpi;
    m_scale.ChangeTo(scale);
    if (changes) m_loadImages(scale);
}

void CDialogSize::MoveTo(const Rect& place, UINT flags) const {
    ::SetWindowPos(m_dialog.Handle(), nullptr, place.left, place.top, place.Width(), place.Height(),
                   flags | SWP_NOZORDER | SWP_NOACTIVATE);
}

void CDialogSize::PlaceAsBefore() {
    auto placement = LoadWindowPlacement();
    if (!placement || (m_dialog.Style() & WS_CHILD)) return;
    const bool maximised = IsMaximised(*placement) && (m_dialog.Style() & WS_MAXIMIZEBOX);
    const Rect first = m_dialog.WindowRect();
    const Size size = SizeOf(FromSystem(placement->rcNormalPosition));
    // Only the system knows what these coordinates count from. The window is still hidden; when it comes to a
    // screen of another scale it is told so here, and its size is set afterwards.
    placement->flags = 0;
    placement->showCmd = SW_HIDE;
    ::SetWindowPlacement(m_dialog.Handle(), &*placement);
    const Rect there = AtCornerOf(m_dialog.WindowRect(), size);
    const Rect area = WorkAreaAt(there);
    if (!CanBeGrasped(HoldInArea(there, m_minimum, area), FrameSize(m_dialog.Handle(), m_screenDpi).height,
                      area)) {
        MoveTo(first, SWP_NOSIZE);
        return MoveTo(first);
    }
    FitTo(m_screenDpi, area);
    MoveTo(HoldInArea(there, m_minimum, area));
    if (maximised) ::ShowWindow(m_dialog.Handle(), SW_SHOWMAXIMIZED);
}

void CDialogSize::StorePlace() const { SaveWindowPlacement(m_dialog.Handle()); }

void CDialogSize::OnSize(Size /*client*/) const {
    const HWND dialog = m_dialog.Handle();
    if (!::IsIconic(dialog) && ::GetWindow(dialog, GW_CHILD)) ApplyPlacement(m_dialog, m_scale.Units());
}

void CDialogSize::OnSizing(UINT edge, RECT& proposed) const {
    proposed = ToSystem(HoldMinimumSize(static_cast<SizingEdge>(edge), FromSystem(proposed), m_minimum));
}

Size CDialogSize::Converted(Size window, const Measure& from, const Measure& to) const {
    const Size now = FrameSize(m_dialog.Handle(), from.dpi);
    const Size then = FrameSize(m_dialog.Handle(), to.dpi);
    const Size shown{window.width - now.width, window.height - now.height};
    const Size client = Scaled(shown, from.units, to.units);
    return {client.width + then.width, client.height + then.height};
}

/// Which screen it will be is not known here: OnDpiChanged fits what comes of it.
void CDialogSize::OnScaledSize(UINT dpi, SIZE& window) const {
    const Size size = Converted({window.cx, window.cy}, Now(), At(dpi));
    window = {size.width, size.height};
}

void CDialogSize::OnDpiChanged(UINT dpi, const RECT& place) {
    const Rect proposed = FromSystem(place);
    const Rect area = WorkAreaAt(proposed);
    FitTo(dpi, area);
    const HWND dialog = m_dialog.Handle();
    if (::IsZoomed(dialog) || ::IsIconic(dialog)) return MoveTo(proposed);
    const Size size = Converted(SizeOf(proposed), At(dpi), Now());
    MoveTo(HoldInArea(AtCornerOf(proposed, size), m_minimum, area));
}

/// A child window is not told a place, and one that gets another parent takes on its scale without a message.
void CDialogSize::OnParentScaled() {
    const UINT dpi = ::GetDpiForWindow(m_dialog.Handle());
    if (dpi == m_screenDpi) return;
    const Rect window = m_dialog.WindowRect();
    const Rect area = WorkAreaAt(window);
    const Measure before = Now();
    FitTo(dpi, area);
    const Size size = Converted(SizeOf(window), before, Now());
    MoveTo(HoldInArea(AtCornerOf(window, size), m_minimum, area), SWP_NOMOVE);
}

void CDialogSize::FollowHost() {
    if (m_dialog.Style() & WS_CHILD) OnParentScaled();
}
