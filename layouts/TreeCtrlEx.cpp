#include "TreeCtrlEx.h"

#include <windowsx.h>

#include <string_view>
#include <utility>

#include "SelectionColours.h"

namespace {

SystemColours ColoursInUse() {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    const bool known = ::SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) != FALSE;
    return {.window = ::GetSysColor(COLOR_WINDOW),
            .windowText = ::GetSysColor(COLOR_WINDOWTEXT),
            .highlight = ::GetSysColor(COLOR_HIGHLIGHT),
            .highlightText = ::GetSysColor(COLOR_HIGHLIGHTTEXT),
            .greyText = ::GetSysColor(COLOR_GRAYTEXT),
            .contrastTheme = known && (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0};
}

/// The characters that Ctrl with A, C, V, X, Y and Z is translated to.
constexpr std::wstring_view kCommandCharacters = L"\x01\x03\x16\x18\x19\x1A";

/// Whether the mouse moves away while the button is held. DragDetect takes the point in screen coordinates on
/// Windows, and in client coordinates under Wine.
bool MovesAway(HWND window, POINT client) {
    const int x = ::GetSystemMetrics(SM_CXDRAG);
    const int y = ::GetSystemMetrics(SM_CYDRAG);
    const RECT still{client.x - x, client.y - y, client.x + x + 1, client.y + y + 1};
    bool away = false;
    ::SetCapture(window);
    while (!away && ::GetCapture() == window) {
        MSG message;
        if (!::PeekMessageW(&message, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE)) {
            ::WaitMessage();
            continue;
        }
        // A request to quit comes through every filter.
        if (EndsLoop(message) || message.message == WM_LBUTTONUP) break;
        const POINT at{GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
        away = message.message == WM_MOUSEMOVE && !::PtInRect(&still, at);
    }
    if (::GetCapture() == window) ::ReleaseCapture();
    return away;
}

/// The control has timers of its own, of small numbers.
constexpr UINT_PTR kTimer = 0x1000;

bool IsDown(int virtualKey) { return (::GetKeyState(virtualKey) & 0x8000) != 0; }

/// Keys that move the caret.
bool MovesCaret(UINT key) {
    return key == VK_UP || key == VK_DOWN || key == VK_HOME || key == VK_END || key == VK_PRIOR ||
           key == VK_NEXT || key == VK_LEFT || key == VK_RIGHT;
}

}  // namespace

void CTreeCtrlEx::Attach(HWND tree, Hooks hooks) {
    Detach();
    m_hwnd = tree;
    m_hooks = std::move(hooks);
    m_anchor = nullptr;
    // Not SetWindowSubclass: it looks itself up in a window property with each message, and filling, saving
    // and sorting a large tree is nothing but messages.
    ::SetWindowLongPtrW(m_hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    m_original = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(m_hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CTreeCtrlEx::Procedure)));
}

void CTreeCtrlEx::Detach() {
    if (m_hwnd) ::SetWindowLongPtrW(m_hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_original));
    m_hwnd = nullptr;
    m_order.Clear();
}

void CTreeCtrlEx::SetInsertMark(HTREEITEM item, bool behind, HTREEITEM sibling) {
    m_markLevel = sibling;
    if (item == m_marked && behind == m_behindMarked) return;
    for (const HTREEITEM changed : {std::exchange(m_marked, item), item}) {
        RECT row{};
        if (RowOf(changed, row)) ::InvalidateRect(m_hwnd, &row, TRUE);
    }
    m_behindMarked = behind;
}

void CTreeCtrlEx::StartTimer(UINT milliseconds) const { ::SetTimer(m_hwnd, kTimer, milliseconds, nullptr); }

void CTreeCtrlEx::StopTimer() const { ::KillTimer(m_hwnd, kTimer); }

LRESULT CTreeCtrlEx::OnCustomDraw(NMTVCUSTOMDRAW& draw) const {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    const auto item = reinterpret_cast<HTREEITEM>(draw.nmcd.dwItemSpec);
    if (draw.nmcd.dwDrawStage == CDDS_ITEMPOSTPAINT && item == m_marked) DrawInsertMark(draw.nmcd.hdc);
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
    const bool selected = (draw.nmcd.uItemState & CDIS_SELECTED) != 0;
    const bool missing = m_hooks.isGrey(item);
    if (item == m_marked || selected || missing) PickColours(draw, selected, missing);
    return item == m_marked ? CDRF_NOTIFYPOSTPAINT : CDRF_DODEFAULT;
}

void CTreeCtrlEx::PickColours(NMTVCUSTOMDRAW& draw, bool selected, bool missing) const {
    const SystemColours system = ColoursInUse();
    RowColours row{system.highlightText, system.highlight};
    if (reinterpret_cast<HTREEITEM>(draw.nmcd.dwItemSpec) == m_marked) {
        row = {system.windowText, system.window};
        draw.clrText = row.text;
        draw.clrTextBk = row.background;
    } else if (selected && !HasFocus()) {
        // The system's own colour for it can hardly be told from the window's.
        row = UnfocusedSelection(system);
        draw.clrText = row.text;
        draw.clrTextBk = row.background;
    }
    if (missing) draw.clrText = MissingText(system, selected, row);
}

/// The control's own mark can't be taken away on every system.
void CTreeCtrlEx::DrawInsertMark(HDC dc) const {
    RECT row{};
    RECT label{};
    if (!RowOf(m_marked, row) || !LabelOf(m_markLevel, label)) return;
    const LONG thickness = (row.bottom - row.top) / 8;
    const LONG top = m_behindMarked ? row.bottom - thickness : row.top;
    const RECT line{label.left, top, row.right, top + thickness};
    ::FillRect(dc, &line, ::GetSysColorBrush(COLOR_HIGHLIGHT));
}

LRESULT CALLBACK CTreeCtrlEx::Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* tree = reinterpret_cast<CTreeCtrlEx*>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (message == WM_NCDESTROY) {
        const WNDPROC original = tree->m_original;
        tree->Detach();
        return ::CallWindowProcW(original, hwnd, message, wParam, lParam);
    }
    return Guarded([&] { return tree->Dispatch(message, wParam, lParam); });
}

LRESULT CTreeCtrlEx::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_TIMER:
            if (wParam != kTimer) break;
            StopTimer();
            m_hooks.onTimer();
            return 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            // All selected items show whether the tree has the focus; the control repaints the caret item
            // only.
            ::InvalidateRect(m_hwnd, nullptr, FALSE);
            break;
        case TVM_INSERTITEMW: {
            const LRESULT item = Default(message, wParam, lParam);
            m_order.OnInserted(reinterpret_cast<HTREEITEM>(item),
                               *reinterpret_cast<const TVINSERTSTRUCTW*>(lParam));
            return item;
        }
        case TVM_DELETEITEM:
            m_anchor = m_marked = m_markLevel = nullptr;  // they may be that item, or lie in it
            m_order.OnDelete(reinterpret_cast<HTREEITEM>(lParam));
            break;
        case TVM_SORTCHILDRENCB:
            m_order.OnSort(*reinterpret_cast<const TVSORTCB*>(lParam));
            break;
        case TVM_SETITEMW:
            m_order.OnSet(*reinterpret_cast<const TVITEMW*>(lParam));
            break;
        default:
            if (const Answer answer = OnInput(message, wParam, lParam)) return *answer;
            break;
    }
    return Default(message, wParam, lParam);
}

Answer CTreeCtrlEx::OnInput(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto takenIf = [](bool taken) { return taken ? Answer(0) : std::nullopt; };
    switch (message) {
        case WM_LBUTTONDBLCLK:
            // With Shift or Ctrl a double click is one more click.
            if ((wParam & (MK_SHIFT | MK_CONTROL)) == 0) return std::nullopt;
            [[fallthrough]];
        case WM_LBUTTONDOWN:
            return Press(message, wParam, lParam);
        case WM_RBUTTONDOWN: {
            ConfirmEditedLabel();
            const bool taken = OnRightDown({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
            m_hooks.onInput();
            return takenIf(taken);
        }
        case WM_KEYDOWN: {
            const bool taken = OnKeyDown(static_cast<UINT>(wParam));
            if (taken) m_hooks.onInput();
            return takenIf(taken);
        }
        case WM_CHAR:
            // The control would look for an item of that name, and beep.
            return takenIf(kCommandCharacters.find(static_cast<wchar_t>(wParam)) != std::wstring_view::npos);
        case WM_SYSKEYDOWN: {
            const bool menu = wParam == VK_F10 && IsDown(VK_SHIFT);  // stands for the menu key
            if (menu || wParam == VK_RETURN) NotifyKey(menu ? VK_APPS : VK_RETURN);
            return takenIf(menu || wParam == VK_RETURN);
        }
        case WM_SYSCHAR:
            return takenIf(wParam == VK_RETURN);  // the system would look for a menu of that letter, and beep
        default:
            return std::nullopt;
    }
}

LRESULT CTreeCtrlEx::Press(UINT message, WPARAM wParam, LPARAM lParam) {
    ConfirmEditedLabel();
    m_pressing = true;
    const LRESULT result = Guarded([&] {
        const bool taken = OnLeftDown({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}, (wParam & MK_SHIFT) != 0,
                                      (wParam & MK_CONTROL) != 0);
        // The control waits for the release itself and takes its message: none may come after this.
        return taken ? 0 : Default(message, wParam, lParam);
    });
    m_pressing = false;
    m_hooks.onInput();
    return result;
}

void CTreeCtrlEx::ConfirmEditedLabel() const {
    if (LabelEdit().IsLive()) EndLabelEdit(false);
}

bool CTreeCtrlEx::OnLeftDown(POINT client, bool shift, bool control) {
    UINT flags = 0;
    const HTREEITEM item = HitTest(client, &flags);
    if (!item || (flags & TVHT_ONITEM) == 0) {
        if (!item) {
            m_anchor = nullptr;
            ClearSelection();
        }
        return false;
    }
    // Not passed on to the control, which knows of one selected item only.
    if (shift || control) {
        Focus();
        shift ? ExtendTo(item) : Toggle(item);
        return true;
    }
    if (!IsSelected(item)) {
        m_anchor = nullptr;
        ClearSelection();
        // The control would see no change in an unselected caret item.
        if (item == Caret()) Select(nullptr);
        return false;
    }
    if (item == Caret()) return false;  // the control starts a drag of the selection, or renaming
    Focus();
    PressOnSelected(item, client);
    return true;
}

void CTreeCtrlEx::PressOnSelected(HTREEITEM item, POINT client) {
    MoveCaret(item);
    if (MovesAway(m_hwnd, client)) {
        NMTREEVIEWW drag{};
        drag.itemNew.mask = TVIF_HANDLE | TVIF_PARAM;
        drag.itemNew.hItem = item;
        drag.itemNew.lParam = Data(item);
        drag.ptDrag = client;
        NotifyParent(drag.hdr, TVN_BEGINDRAGW);
        return;
    }
    m_anchor = nullptr;
    UINT flags = 0;
    HitTest(client, &flags);
    if ((flags & TVHT_ONITEMLABEL) == 0) return;
    // A click: the selection shrinks to the item, and its label is edited as after a second click.
    SelectOnly(item);
    NotifyKey(VK_F2);
}

void CTreeCtrlEx::NotifyKey(WORD key) const {
    NMTVKEYDOWN pressed{};
    pressed.wVKey = key;
    NotifyParent(pressed.hdr, TVN_KEYDOWN);
}

void CTreeCtrlEx::NotifyParent(NMHDR& header, UINT code) const {
    header.hwndFrom = m_hwnd;
    header.idFrom = static_cast<UINT_PTR>(::GetDlgCtrlID(m_hwnd));
    header.code = code;
    ::SendMessageW(::GetParent(m_hwnd), WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
}

void CTreeCtrlEx::ExtendTo(HTREEITEM item) {
    if (!m_anchor) m_anchor = Caret() ? Caret() : item;
    MoveCaret(item);
    SelectRange(Shown(m_anchor), item);
}

void CTreeCtrlEx::Toggle(HTREEITEM item) {
    m_anchor = nullptr;
    const bool selected = !IsSelected(item);
    SetSelected(item, selected);
    const HTREEITEM caret = Caret();
    if (!selected && item == caret) {
        const auto left = SelectedItems();
        MoveCaret(left.empty() ? nullptr : left.front());
    } else if (selected || !caret || !IsSelected(caret)) {
        MoveCaret(item);
    }
}

bool CTreeCtrlEx::OnRightDown(POINT client) {
    UINT flags = 0;
    const HTREEITEM item = HitTest(client, &flags);
    m_anchor = nullptr;
    SelectOnly(item);
    return item && (flags & TVHT_ONITEM) == 0;
}

bool CTreeCtrlEx::OnKeyDown(UINT key) {
    // With Alt, too, it is AltGr, which types a letter.
    const bool command = IsDown(VK_CONTROL) && !IsDown(VK_MENU);
    if (command && key == 'A') {
        SelectAll();
        return true;
    }
    if (command && !IsDown(VK_SHIFT) && m_hooks.onCommandKey(key)) return true;
    if (!MovesCaret(key) || IsDown(VK_CONTROL)) return false;
    if (!IsDown(VK_SHIFT)) {
        m_anchor = nullptr;
        const HTREEITEM caret = Caret();
        ClearSelection();
        if (caret) SetSelected(caret, true);
        m_hooks.onInput();  // where the key leads nowhere, the control tells nothing
        return false;
    }
    if (!m_anchor) m_anchor = Caret();
    // The control moves the caret to where the key leads; then the range up to there is selected.
    Default(WM_KEYDOWN, key, 0);
    if (m_anchor && Caret()) SelectRange(Shown(m_anchor), Caret());
    return true;
}
