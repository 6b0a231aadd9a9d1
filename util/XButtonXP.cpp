#include "XButtonXP.h"

#include "MemDC.h"

namespace {

constexpr int kButtonPart = 1;  // the same in both theme classes

// States of that part.
constexpr int kNormal = 1;
constexpr int kHot = 2;
constexpr int kPressed = 3;
constexpr int kDisabled = 4;
constexpr int kFocused = 5;

constexpr Rect Moved(const Rect& place, int by) {
    return {place.left + by, place.top + by, place.right + by, place.bottom + by};
}

void Fill(HDC dc, const Rect& place, int colour) {
    const RECT rect = ToSystem(place);
    ::FillRect(dc, &rect, ::GetSysColorBrush(colour));
}

void DrawPlainText(HDC dc, const std::wstring& text, UINT format, const Rect& place, int colour) {
    RECT rect = ToSystem(place);
    ::SetTextColor(dc, ::GetSysColor(colour));
    ::DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &rect, format);
}

UniqueBitmap GreyCopyOf(HBITMAP image) {
    UniqueBitmap copy(static_cast<HBITMAP>(::CopyImage(image, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    for (RGBQUAD& pixel : PixelsOf(copy.Get())) {
        const int grey = (pixel.rgbRed * 30 + pixel.rgbGreen * 59 + pixel.rgbBlue * 11) / 100;
        pixel.rgbRed = pixel.rgbGreen = pixel.rgbBlue = static_cast<BYTE>(grey);
    }
    return copy;
}

}  // namespace

void CXButtonXP::SetImage(UniqueBitmap image, ImagePlacement placement) {
    m_image = std::move(image);
    m_placement = placement;
    Redraw();
}

void CXButtonXP::SetToolbarStyle(bool toolbar) {
    m_toolbarStyle = toolbar;
    m_reopenTheme = true;
}

Answer CXButtonXP::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_THEMECHANGED) return COddButton::OnMessage(message, wParam, lParam);
    m_themes.Close(std::exchange(m_theme, nullptr));
    m_reopenTheme = true;
    Redraw();
    return std::nullopt;
}

void CXButtonXP::ReopenTheme() {
    if (!m_reopenTheme || !m_themes.IsAvailable()) return;
    m_themes.Close(m_theme);
    m_theme = m_themes.Open(m_hwnd, m_toolbarStyle ? L"Toolbar" : L"Button");
    m_reopenTheme = false;
}

void CXButtonXP::Draw(const DRAWITEMSTRUCT& item) {
    ReopenTheme();
    const CWMemDC surface(item.hDC);
    const HDC dc = surface.Handle();
    const CSelectedObject font(dc, CWindow(::GetParent(m_hwnd)).Font());
    ::SetBkMode(dc, TRANSPARENT);

    Look look{FromSystem(item.rcItem), IsPressed((item.itemState & ODS_SELECTED) != 0),
              (item.itemState & ODS_FOCUS) != 0, (item.itemState & ODS_DISABLED) != 0};
    // A style may leave the corners out, and all of a flat button.
    Fill(dc, look.place, COLOR_BTNFACE);
    if (IsThemed()) {
        m_themes.DrawBackground(m_theme, dc, kButtonPart, ThemeState(look), look.place);
    } else {
        DrawClassicFrame(dc, look);
    }
    DrawFace(dc, look);
}

int CXButtonXP::ThemeState(const Look& look) const {
    if (look.pressed) return kPressed;
    if (IsHot()) return kHot;
    return look.focused ? kFocused : kNormal;
}

void CXButtonXP::DrawClassicFrame(HDC dc, Look& look) const {
    RECT rect = ToSystem(look.place);
    if (look.focused && !(IsToggleButton() && look.pressed)) {
        // Black, unless the user's colours are light on dark.
        ::FrameRect(dc, &rect, ::GetSysColorBrush(COLOR_BTNTEXT));
        ::InflateRect(&rect, -1, -1);
        look.place = FromSystem(rect);
    }
    if (IsToggleButton()) {
        ::DrawEdge(dc, &rect, look.pressed ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT);
    } else if (look.pressed) {
        ::FrameRect(dc, &rect, ::GetSysColorBrush(COLOR_BTNSHADOW));
    } else {
        ::DrawFrameControl(dc, &rect, DFC_BUTTON, DFCS_BUTTONPUSH | (IsHot() ? DFCS_HOT : 0U));
    }
}

void CXButtonXP::DrawFace(HDC dc, const Look& look) const {
    const std::wstring text = m_showsText ? Text() : std::wstring();
    ButtonParts parts = PlaceButtonParts(look.place, ImageSize(), !text.empty(), m_placement);
    if (look.pressed && !IsThemed()) parts = {Moved(parts.image, 1), Moved(parts.text, 1)};
    if (m_image) DrawImage(dc, parts.image, look.disabled);
    if (!text.empty()) DrawCaption(dc, look, text, parts.text);
}

Size CXButtonXP::ImageSize() const {
    BITMAP picture{};
    if (!m_image || !::GetObjectW(m_image.Get(), sizeof(picture), &picture)) return {};
    return {picture.bmWidth, picture.bmHeight};
}

void CXButtonXP::DrawImage(HDC dc, const Rect& place, bool disabled) const {
    constexpr BYTE kSolid = 255;
    constexpr BYTE kFaint = 120;
    const UniqueBitmap grey = disabled ? GreyCopyOf(m_image.Get()) : UniqueBitmap();
    const UniqueDc source(::CreateCompatibleDC(dc));
    // Ends before the bitmap: one that is still selected somewhere can't be deleted.
    const CSelectedObject selected(source.Get(), grey ? grey.Get() : m_image.Get());
    const BLENDFUNCTION blend{AC_SRC_OVER, 0, disabled ? kFaint : kSolid, AC_SRC_ALPHA};
    ::GdiAlphaBlend(dc, place.left, place.top, place.Width(), place.Height(), source.Get(), 0, 0,
                    place.Width(), place.Height(), blend);
}

void CXButtonXP::DrawCaption(HDC dc, const Look& look, const std::wstring& text, const Rect& place) const {
    const UINT format = DT_SINGLELINE | DT_VCENTER | (m_image ? 0U : DT_CENTER);
    if (IsThemed()) {
        const int state = look.disabled ? kDisabled : ThemeState(look);
        const Rect content = m_themes.ContentRect(m_theme, dc, kButtonPart, state, look.place);
        const Rect inside{place.left, content.top, place.right, content.bottom};
        m_themes.DrawLabel(m_theme, dc, kButtonPart, state, text, format, inside);
    } else if (look.disabled) {
        DrawPlainText(dc, text, format, Moved(place, 1), COLOR_BTNHIGHLIGHT);
        DrawPlainText(dc, text, format, place, COLOR_BTNSHADOW);
    } else {
        DrawPlainText(dc, text, format, place, COLOR_BTNTEXT);
    }
}
