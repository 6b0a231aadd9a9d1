#include "DialogScale.h"

#include "Dpi.h"
#include "Window.h"

namespace {

constexpr int kPointsPerInch = 72;

}  // namespace

void CDialogScale::Attach(HWND dialog) {
    m_dialog = dialog;
    m_dpi = DpiOf(dialog);
    const auto font = reinterpret_cast<HFONT>(::SendMessageW(dialog, WM_GETFONT, 0, 0));
    ::GetObjectW(font, sizeof(m_face), &m_face);
    m_points = ::MulDiv(-m_face.lfHeight, kPointsPerInch, static_cast<int>(m_dpi));
    m_units = UnitsOf(font);
    ScaleByOneself(dialog);
}

UniqueFont CDialogScale::FontAt(UINT dpi) const {
    LOGFONTW face = m_face;
    face.lfHeight = -::MulDiv(m_points, static_cast<int>(dpi), kPointsPerInch);
    return UniqueFont(::CreateFontIndirectW(&face));
}

/// As the system computes it when it makes a dialog.
Size CDialogScale::UnitsOf(HFONT font) const {
    constexpr wchar_t kLetters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    constexpr int kCount = 52;
    const CClientDC dc{CWindow(m_dialog)};
    const CSelectedFont selected(dc.Get(), font);
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(dc.Get(), &metrics);
    SIZE extent{};
    ::GetTextExtentPoint32W(dc.Get(), kLetters, kCount, &extent);
    return {static_cast<int>((extent.cx / (kCount / 2) + 1) / 2), static_cast<int>(metrics.tmHeight)};
}

Size CDialogScale::SizeAt(UINT dpi, Size window) const {
    const Size now = FrameSize(m_dialog, m_dpi);
    const Size then = FrameSize(m_dialog, dpi);
    const Size shown{window.width - now.width, window.height - now.height};
    const Size client = Scaled(shown, m_units, UnitsOf(FontAt(dpi).Get()));
    return {client.width + then.width, client.height + then.height};
}

void CDialogScale::ChangeTo(UINT dpi) {
    if (dpi == m_dpi) return;
    UniqueFont font = FontAt(dpi);
    const Size units = UnitsOf(font.Get());
    for (HWND child = ::GetWindow(m_dialog, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        const Rect place = Scaled(CWindow(child).RectIn(m_dialog), m_units, units);
        ::SetWindowPos(child, nullptr, place.left, place.top, place.Width(), place.Height(),
                       SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW);
        ::SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), FALSE);
    }
    m_font = std::move(font);  // now that no control draws with the old one
    m_units = units;
    m_dpi = dpi;
    ::InvalidateRect(m_dialog, nullptr, TRUE);
}
