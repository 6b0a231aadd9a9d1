#include "DialogScale.h"

#include "Window.h"

namespace {

constexpr int kPointsPerInch = 72;

/// Before Windows 10 version 1703, which brought the function, no system scaled a dialog.
void KeepSystemFromScaling(HWND dialog) {
    decltype(&::SetDialogDpiChangeBehavior) set = nullptr;
    if (FindFunction(::GetModuleHandleW(L"user32.dll"), "SetDialogDpiChangeBehavior", set))
        set(dialog, DDC_DISABLE_ALL, DDC_DISABLE_ALL);
}

}  // namespace

void CDialogScale::Attach(HWND dialog) {
    m_dialog = dialog;
    m_dpi = ::GetDpiForWindow(dialog);
    const HFONT font = CWindow(dialog).Font();
    ::GetObjectW(font, sizeof(m_face), &m_face);
    m_points = ::MulDiv(-m_face.lfHeight, kPointsPerInch, static_cast<int>(m_dpi));
    m_units = UnitsOf(font);
    KeepSystemFromScaling(dialog);
}

UniqueFont CDialogScale::FontAt(UINT dpi) const {
    LOGFONTW face = m_face;
    face.lfHeight = -::MulDiv(m_points, static_cast<int>(dpi), kPointsPerInch);
    return UniqueFont(::CreateFontIndirectW(&face));
}

/// As the system computes it when it makes a dialog.
Size CDialogScale::UnitsOf(HFONT font) const {
    const std::wstring letters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const CClientDC dc{CWindow(m_dialog)};
    const CSelectedObject selected(dc.Get(), font);
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(dc.Get(), &metrics);
    const int half = static_cast<int>(letters.size()) / 2;
    return {(TextExtent(dc.Get(), letters).width / half + 1) / 2, metrics.tmHeight};
}

Size FrameSize(HWND window, UINT dpi) {
    const auto style = static_cast<DWORD>(::GetWindowLongPtrW(window, GWL_STYLE));
    const auto extended = static_cast<DWORD>(::GetWindowLongPtrW(window, GWL_EXSTYLE));
    RECT frame{};
    ::AdjustWindowRectExForDpi(&frame, style, FALSE, extended, dpi);
    return {frame.right - frame.left, frame.bottom - frame.top};
}

Size CDialogScale::UnitsAt(UINT dpi) const { return dpi == m_dpi ? m_units : UnitsOf(FontAt(dpi).Get()); }

void CDialogScale::ChangeTo(UINT dpi) {
    if (dpi == m_dpi) return;
    UniqueFont font = FontAt(dpi);
    const Size units = UnitsOf(font.Get());
    for (HWND child = ::GetWindow(m_dialog, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        const Rect place = Scaled(CWindow(child).RectIn(m_dialog), m_units, units);
        ::SetWindowPos(child, nullptr, place.left, place.top, place.Width(), place.Height(),
                       SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW);
        CWindow(child).Send(WM_SETFONT, font.Get(), FALSE);
    }
    m_font = std::move(font);  // now that no control draws with the old one
    m_units = units;
    m_dpi = dpi;
    ::InvalidateRect(m_dialog, nullptr, TRUE);
}
