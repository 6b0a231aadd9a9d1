#include "DialogSize.h"

#include <utility>

#include "ControlPlacement.h"
#include "ResizeLayout.h"

CDialogSize::CDialogSize(CDialog& dialog, std::function<void(UINT)> loadImages)
    : m_dialog(dialog), m_loadImages(std::move(loadImages)) {}

void CDialogSize::OnInitDialog() {
    m_scale.Attach(m_dialog.Handle());
    m_minimum = WindowSize();
    RecordPlacement(m_dialog, m_scale.Units());
    ApplyPlacement(m_dialog, m_scale.Units());
}

Size CDialogSize::WindowSize() const {
    const Rect window = m_dialog.WindowRect();
    return {window.Width(), window.Height()};
}

void CDialogSize::OnSize(Size /*client*/) const {
    const HWND dialog = m_dialog.Handle();
    if (!::IsIconic(dialog) && ::GetWindow(dialog, GW_CHILD)) ApplyPlacement(m_dialog, m_scale.Units());
}

void CDialogSize::OnSizing(UINT edge, RECT& proposed) const {
    proposed = ToSystem(HoldMinimumSize(static_cast<SizingEdge>(edge), FromSystem(proposed), m_minimum));
}

void CDialogSize::OnScaledSize(UINT dpi, SIZE& window) const {
    const Size size = m_scale.SizeAt(dpi, WindowSize());
    window = {size.width, size.height};
}

void CDialogSize::OnDpiChanged(UINT dpi, const RECT& place) {
    ScaleTo(dpi);
    const Rect window = FromSystem(place);
    ::SetWindowPos(m_dialog.Handle(), nullptr, window.left, window.top, window.Width(), window.Height(),
                   SWP_NOZORDER | SWP_NOACTIVATE);
}

/// A child window is not told a place, and one that gets another parent takes on its scale without a message.
void CDialogSize::OnParentScaled() {
    const UINT dpi = ::GetDpiForWindow(m_dialog.Handle());
    if (dpi == m_scale.Dpi()) return;
    const Size size = m_scale.SizeAt(dpi, WindowSize());
    ScaleTo(dpi);
    ::SetWindowPos(m_dialog.Handle(), nullptr, 0, 0, size.width, size.height,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void CDialogSize::ScaleTo(UINT dpi) {
    m_minimum = m_scale.SizeAt(dpi, m_minimum);
    m_scale.ChangeTo(dpi);
    m_loadImages(dpi);
}
