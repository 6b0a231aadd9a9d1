#include "DialogOnScreen.h"

#include <algorithm>
#include <cstring>

#include "Window.h"
#include "support/WindowActions.h"

namespace res_test {

namespace {

/// Room that a control keeps for itself, in pixels at 96 dpi.
struct Edges {
    int across;
    int down;
};
constexpr Edges kPushButton{12, 6};   // frame and focus on both sides
constexpr Edges kGlyphButton{19, 0};  // box or dot, the gap behind it, focus
constexpr Edges kGroupBox{18, 0};     // the frame goes on at both sides of the caption
constexpr Edges kListBox{8, 0};       // frame and indent; so few rows bring no scroll bar
constexpr Edges kEdit{8, 4};
constexpr Edges kStatic{0, 0};

/// The fixed beginning of an extended template: from version to size.
constexpr std::size_t kHeaderBytes = 26;

bool IsClass(const DialogControl& control, const wchar_t* name) {
    return _wcsicmp(control.className.c_str(), name) == 0;
}

Edges EdgesOf(const DialogControl& control) {
    if (IsClass(control, L"ListBox")) return kListBox;
    if (IsClass(control, L"Edit")) return kEdit;
    if (!IsClass(control, L"Button")) return kStatic;
    switch (control.style & BS_TYPEMASK) {
        case BS_GROUPBOX:
            return kGroupBox;
        case BS_PUSHBUTTON:
        case BS_DEFPUSHBUTTON:
            return kPushButton;
        default:
            return kGlyphButton;
    }
}

/// Pictures, owner-drawn buttons and what gets its content from the user.
bool ShowsNoText(const DialogControl& control) {
    if (IsClass(control, L"Button")) return (control.style & BS_TYPEMASK) == BS_OWNERDRAW;
    if (IsClass(control, L"Static")) return (control.style & SS_TYPEMASK) == SS_ICON;
    return !IsClass(control, L"ListBox") && !IsClass(control, L"Edit") && !IsClass(control, L"SysLink");
}

/// The text without the tags of a link.
std::wstring ShownText(const DialogControl& control) {
    std::wstring text = control.text;
    for (const std::wstring_view tag : {L"<a>", L"</a>"}) {
        const std::size_t at = IsClass(control, L"SysLink") ? text.find(tag) : std::wstring::npos;
        if (at != std::wstring::npos) text.erase(at, tag.size());
    }
    return text;
}

std::size_t EndOfText(std::span<const std::byte> dialog, std::size_t at) {
    wchar_t c = L'\0';
    do {
        std::memcpy(&c, &dialog[at], sizeof c);
        at += sizeof c;
    } while (c != L'\0');
    return at;
}

/// Menu and class may also be a number, which 0xFFFF announces.
std::size_t EndOfName(std::span<const std::byte> dialog, std::size_t at) {
    WORD first = 0;
    std::memcpy(&first, &dialog[at], sizeof first);
    return first == 0xFFFF ? at + 2 * sizeof(WORD) : EndOfText(dialog, at);
}

constexpr std::size_t Aligned(std::size_t at) { return (at + 3) / 4 * 4; }

}  // namespace

std::vector<std::byte> WithFont(std::span<const std::byte> dialog, const DialogFont& font) {
    const std::size_t menuEnd = EndOfName(dialog, kHeaderBytes);
    const std::size_t points = EndOfText(dialog, EndOfName(dialog, menuEnd));
    const std::size_t face = points + 2 * sizeof(WORD) + 2;  // behind weight, slope and character set
    const std::size_t controls = Aligned(EndOfText(dialog, face));

    std::vector<std::byte> copy(dialog.begin(), dialog.begin() + static_cast<std::ptrdiff_t>(controls));
    std::memcpy(&copy[points], &font.points, sizeof font.points);
    if (font.face) {
        const std::size_t bytes = (std::wcslen(font.face) + 1) * sizeof(wchar_t);
        copy.resize(Aligned(face + bytes));
        std::memcpy(&copy[face], font.face, bytes);
    }
    copy.insert(copy.end(), dialog.begin() + static_cast<std::ptrdiff_t>(controls), dialog.end());
    return copy;
}

CDialogOnScreen::CDialogOnScreen(std::span<const std::byte> dialog, const DialogFont& font)
    : m_parent(::CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 1000, 1000, nullptr, nullptr, nullptr,
                                 nullptr)),
      m_points(font.points) {
    if (dialog.empty()) return;
    const auto bytes = WithFont(dialog, font);
    const auto nothing = [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; };
    m_dialog.reset(::CreateDialogIndirectParamW(::GetModuleHandleW(nullptr),
                                                reinterpret_cast<const DLGTEMPLATE*>(bytes.data()),
                                                m_parent.get(), nothing, 0));
}

SIZE CDialogOnScreen::ClientSize() const {
    RECT client{};
    ::GetClientRect(m_dialog.get(), &client);
    return {client.right, client.bottom};
}

std::vector<DialogControl> CDialogOnScreen::Controls() const {
    std::vector<DialogControl> controls;
    for (HWND window = ::GetWindow(m_dialog.get(), GW_CHILD); window;
         window = ::GetWindow(window, GW_HWNDNEXT)) {
        DialogControl control;
        control.id = ::GetDlgCtrlID(window);
        control.style = static_cast<DWORD>(::GetWindowLongPtrW(window, GWL_STYLE));
        control.className = support::ClassOf(window);
        control.text = support::TextOf(window);
        control.place = support::RectOf(window);
        ::MapWindowPoints(nullptr, m_dialog.get(), reinterpret_cast<POINT*>(&control.place), 2);
        controls.push_back(std::move(control));
    }
    return controls;
}

SIZE CDialogOnScreen::TextSize(const std::wstring& text, long width, UINT format) const {
    const CClientDC dc(CWindow(m_dialog.get()));
    const auto font = reinterpret_cast<HFONT>(::SendMessageW(m_dialog.get(), WM_GETFONT, 0, 0));
    const CSelectedObject selected(dc.Get(), font);
    RECT area{0, 0, width, 0};
    ::DrawTextW(dc.Get(), text.c_str(), static_cast<int>(text.size()), &area, DT_CALCRECT | format);
    return {area.right, area.bottom};
}

std::optional<std::wstring> CDialogOnScreen::CutOff(const DialogControl& control) const {
    if (control.text.empty() || ShowsNoText(control)) return std::nullopt;
    const Edges edges = EdgesOf(control);
    const long width = control.place.right - control.place.left - ::MulDiv(edges.across, m_points, 8);
    const long height = control.place.bottom - control.place.top - ::MulDiv(edges.down, m_points, 8);
    const bool breaks = IsClass(control, L"Static") || IsClass(control, L"SysLink");
    const bool prefix =
        IsClass(control, L"Button") || (IsClass(control, L"Static") && (control.style & SS_NOPREFIX) == 0);
    const SIZE text = TextSize(ShownText(control), width,
                               (breaks ? DT_WORDBREAK : DT_SINGLELINE) | (prefix ? 0U : DT_NOPREFIX));
    if (text.cx <= width && text.cy <= height) return std::nullopt;
    return L"\"" + control.text + L"\" needs " + std::to_wstring(text.cx) + L" x " +
           std::to_wstring(text.cy) + L" pixels of " + std::to_wstring(width) + L" x " +
           std::to_wstring(height);
}

}  // namespace res_test
