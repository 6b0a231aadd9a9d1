// The main dialog with a layout in its tree, worked by its buttons, keys and the mouse.
#pragma once

#include <array>
#include <tuple>

#include "support/LayoutText.h"
#include "support/MainDialog.h"
#include "support/TestPlugins.h"

namespace support {

class LayoutTreeDialog : public MainDialog {
  protected:
    /// Cases, a row each.
    template <typename... TColumns>
    using Table = std::initializer_list<std::tuple<TColumns...>>;
    using Line = const wchar_t*;

    CLayoutTreeView& View() { return m_dialog->View<CLayoutTreeView>(); }
    CTreeCtrlWrapper& Layout() { return View().Layout(); }
    CTreeCtrlEx& Tree() { return Layout().Tree(); }
    HWND Window() { return Tree().Handle(); }

    void Build(const std::wstring& text) {
        BuildLayout(Layout(), text);
        View().ForgetSteps();
        View().UpdateButtons();
    }
    std::wstring Shape() { return LayoutText(Layout()); }
    /// Items, order and what is open, without selection and caret.
    static std::wstring Unmarked(std::wstring shape) {
        std::erase_if(shape, [](wchar_t c) { return c == L'*' || c == L'^' || c == L'+'; });
        return shape;
    }
    HTREEITEM Node(const std::wstring& name) { return ItemNamed(Layout(), name); }
    template <typename TChar>
    static std::basic_string<TChar> Times(int count, const TChar* text) {
        std::basic_string<TChar> all;
        for (int i = 0; i < count; ++i) all += text;
        return all;
    }
    /// The buttons that can be pressed, by a letter each.
    std::wstring Buttons() {
        constexpr int kIds[] = {IDC_EXPAND_ALL, IDC_COLLAPSE_ALL, IDC_SORT_ALL, IDC_REMOVE,
                                IDC_MOVE_UP,    IDC_MOVE_DOWN,    IDC_PROMOTE};
        std::wstring letters;
        for (std::size_t i = 0; i < std::size(kIds); ++i) {
            if (IsEnabled(kIds[i])) letters += L"ECSRUDP"[i];
        }
        return letters;
    }

    /// A key of the tree, while another one is held.
    void Type(WORD key, BYTE held = 0) {
        BYTE keys[256]{};
        keys[held] = 0x80;
        if (held == VK_RMENU) keys[VK_CONTROL] = keys[VK_MENU] = 0x80;  // AltGr
        ::SetKeyboardState(keys);
        Tree().Send(held == VK_MENU || key == VK_F10 ? WM_SYSKEYDOWN : WM_KEYDOWN, key);
        ::SetKeyboardState(std::array<BYTE, 256>{}.data());
    }
    /// The middle of the item's label; without a name, a place below all items.
    POINT PlaceOf(Line name) {
        RECT label{};
        if (!*name) return {20, Tree().ClientRect().bottom - 5};
        EXPECT_TRUE(Tree().LabelOf(Node(name), label)) << Utf8(name);
        return {(label.left + label.right) / 2, (label.top + label.bottom) / 2};
    }
    void PostMouse(UINT message, POINT at, WPARAM keys = 0) {
        ::PostMessageW(Window(), message, keys, MAKELPARAM(at.x, at.y));
    }
    /// Presses there and moves the pointer so far.
    void Pull(POINT start, POINT by) {
        PostMouse(WM_LBUTTONDOWN, start, MK_LBUTTON);
        PostMouse(WM_MOUSEMOVE, {start.x + by.x, start.y + by.y}, MK_LBUTTON);
        PostMouse(WM_LBUTTONUP, start);  // ends what is no drag
        Pump();
    }
    /// What is being dragged; gives the place as messages tell it.
    LPARAM DragTo(POINT place) {
        ::MapWindowPoints(Window(), m_dialog->Handle(), &place, 1);
        const LPARAM at = MAKELPARAM(place.x, place.y);
        m_dialog->Send(WM_MOUSEMOVE, MK_LBUTTON, at);
        return at;
    }
    void ClickOn(Line name, WPARAM keys = 0) { Click(Window(), PlaceOf(name), keys); }
    /// Brings that place of the tree under the pointer. The pointer stays where it is, because a display
    /// tells late of its moves.
    void PutUnderPointer(POINT place) {
        POINT pointer{};
        ::GetCursorPos(&pointer);
        ::ScreenToClient(Window(), &pointer);
        const Rect window = m_dialog->WindowRect();
        ::SetWindowPos(m_dialog->Handle(), nullptr, window.left + pointer.x - place.x,
                       window.top + pointer.y - place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    /// How the item is drawn, and what the tree is told of it.
    std::pair<NMTVCUSTOMDRAW, LRESULT> Drawn(Line name, UINT state = 0) {
        NMTVCUSTOMDRAW draw{};
        draw.nmcd.uItemState = state;
        draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
        draw.nmcd.dwItemSpec = reinterpret_cast<DWORD_PTR>(Node(name));
        const LRESULT answer = View().OnCustomDraw(draw);
        return {draw, answer};
    }
};

}  // namespace support
