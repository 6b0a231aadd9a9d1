// Whether the controls of a dialog have room: for one another, and for their texts on any system.
#pragma once

#include <optional>
#include <regex>
#include <string>
#include <vector>

#include "Handles.h"
#include "Window.h"
#include "support/WindowActions.h"

namespace res_test {

inline constexpr Size kTemplateUnits{4, 8};  // of an average character, in which a template measures

/// The same in pixels.
inline Size UnitsOf(const CWindow& dialog) {
    RECT unit{0, 0, kTemplateUnits.width, kTemplateUnits.height};
    ::MapDialogRect(dialog.Handle(), &unit);
    return {static_cast<int>(unit.right), static_cast<int>(unit.bottom)};
}

struct DialogControl {
    int number = 0;  // in the order of the dialog
    int id = 0;
    std::wstring className;
    DWORD style = 0;
    Rect place;  // in the template's units
    std::wstring text;

    bool Is(const wchar_t* name) const { return _wcsicmp(className.c_str(), name) == 0; }
    bool IsShown() const { return (style & WS_VISIBLE) != 0; }
    bool IsGroupBox() const { return Is(L"Button") && (style & BS_TYPEMASK) == BS_GROUPBOX; }
};

inline std::vector<DialogControl> ControlsOf(const CWindow& dialog) {
    std::vector<DialogControl> controls;
    for (HWND child = ::GetWindow(dialog.Handle(), GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT))
        controls.push_back({static_cast<int>(controls.size()), ::GetDlgCtrlID(child), support::ClassOf(child),
                            static_cast<DWORD>(::GetWindowLongPtrW(child, GWL_STYLE)),
                            Scaled(CWindow(child).RectIn(dialog.Handle()), UnitsOf(dialog), kTemplateUnits),
                            support::TextOf(child)});
    return controls;
}

/// A group box may be around the other control, but for its caption, which is as high as a line.
inline bool IsOver(const DialogControl& box, const DialogControl& other) {
    RECT inside = ToSystem(box.place), place = ToSystem(other.place), common{};
    if (!::IntersectRect(&common, &inside, &place)) return false;
    inside.top += kTemplateUnits.height;
    ::IntersectRect(&common, &inside, &place);
    return !box.IsGroupBox() || !::EqualRect(&common, &place);
}

/// Shown controls that lie on one another or leave the dialog, in words.
inline std::string PlacementFaults(const CWindow& dialog, const std::vector<DialogControl>& controls) {
    const Rect client = Scaled(dialog.ClientRect(), UnitsOf(dialog), kTemplateUnits);
    std::string faults;
    for (const DialogControl& first : controls) {
        const Rect& place = first.place;
        if (std::min(place.left, place.top) < 0 || place.right > client.right || place.bottom > client.bottom)
            faults += std::to_string(first.id) + " leaves the dialog\n";
        for (const DialogControl& second : controls) {
            if (&second > &first && first.IsShown() && second.IsShown() && IsOver(first, second) &&
                IsOver(second, first))
                faults += std::to_string(first.id) + " and " + std::to_string(second.id) + " overlap\n";
        }
    }
    return faults;
}

/// Room that a control keeps for itself, in pixels at 96 dpi. Nothing for pictures, owner-drawn buttons and
/// what gets its content from the user.
inline std::optional<Size> EdgesOf(const DialogControl& control) {
    constexpr Size kPushButton{12, 6};   // frame and focus on both sides
    constexpr Size kGlyphButton{19, 0};  // box or dot, the gap behind it, focus
    constexpr Size kGroupBox{18, 0};     // the frame goes on at both sides of the caption
    constexpr Size kListBox{8, 0};       // frame and indent; so few rows bring no scroll bar
    constexpr Size kEdit{8, 4};
    if (control.Is(L"ListBox")) return kListBox;
    if (control.Is(L"Edit")) return kEdit;
    if (control.Is(L"SysLink")) return Size{};
    if (control.Is(L"Static") && (control.style & SS_TYPEMASK) != SS_ICON) return Size{};
    if (control.IsGroupBox()) return kGroupBox;
    const DWORD type = control.style & BS_TYPEMASK;
    if (!control.Is(L"Button") || type == BS_OWNERDRAW) return std::nullopt;
    return type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON ? kPushButton : kGlyphButton;
}

/// The font that a system makes its dialogs with, and measures them in. Points stand for the scale as well:
/// 8 points at 150 % are 12.
class CDialogFont {
  public:
    CDialogFont(const std::wstring& face, int points)
        : m_font(::CreateFontW(-::MulDiv(points, USER_DEFAULT_SCREEN_DPI, 72), 0, 0, 0, FW_NORMAL, 0, 0, 0,
                               DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                               DEFAULT_PITCH, face.c_str())),
          m_points(points) {
        // As the system computes it when it makes a dialog.
        const std::wstring letters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
        ::SelectObject(m_dc.Get(), m_font.Get());
        TEXTMETRICW metrics{};
        ::GetTextMetricsW(m_dc.Get(), &metrics);
        m_units = {(TextExtent(m_dc.Get(), letters).width / 26 + 1) / 2, static_cast<int>(metrics.tmHeight)};
    }

    /// Every kind of control has room to lose at its edges: frame, glyph, scroll bar.
    bool CutsOff(const DialogControl& control) const {
        const auto edges = EdgesOf(control);
        if (!edges || control.text.empty()) return false;
        const Rect place = Scaled(control.place, kTemplateUnits, m_units);
        const int width = place.Width() - ::MulDiv(edges->width, m_points, 8);
        const int height = place.Height() - ::MulDiv(edges->height, m_points, 8);
        const bool breaks = control.Is(L"Static") || control.Is(L"SysLink");
        const bool prefix =
            control.Is(L"Button") || (control.Is(L"Static") && (control.style & SS_NOPREFIX) == 0);
        static const std::wregex kLinkTags(L"</?a>");
        const std::wstring text = std::regex_replace(control.text, kLinkTags, L"");
        RECT needed{0, 0, width, 0};
        ::DrawTextW(m_dc.Get(), text.c_str(), -1, &needed,
                    DT_CALCRECT | (breaks ? DT_WORDBREAK : DT_SINGLELINE) | (prefix ? 0U : DT_NOPREFIX));
        return needed.right > width || needed.bottom > height;
    }

  private:
    UniqueFont m_font;
    UniqueDc m_dc{::CreateCompatibleDC(nullptr)};
    int m_points;
    Size m_units;
};

}  // namespace res_test
