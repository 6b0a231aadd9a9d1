// The main dialog with a layout in its tree, worked by its buttons, keys and the mouse.
#pragma once

#include "support/LayoutText.h"
#include "support/MainDialog.h"
#include "support/TestPlugins.h"
#include "support/WaitFor.h"

namespace support {

class LayoutTreeDialog : public MainDialog {
  protected:
    CLayoutTreeView& View() { return m_dialog->View<CLayoutTreeView>(); }
    CTreeCtrlWrapper& Layout() { return View().Layout(); }
    CTreeCtrlEx& Tree() { return Layout().Tree(); }
    HWND Window() { return Tree().Handle(); }
    HTREEITEM Node(std::wstring_view name) { return ItemNamed(Layout(), name); }

    void Build(const std::wstring& text) {
        BuildLayout(Layout(), text);
        View().UpdateButtons();
    }
    std::wstring Shape() { return LayoutText(Layout()); }
    /// The buttons that can be pressed: Expand All, Collapse All, Sort All, Remove, Move Up and Down,
    /// Promote.
    std::wstring Buttons() {
        std::wstring enabled;
        for (const auto& [id, letter] : {std::pair(IDC_EXPAND_ALL, L'E'),
                                         {IDC_COLLAPSE_ALL, L'C'},
                                         {IDC_SORT_ALL, L'S'},
                                         {IDC_REMOVE, L'R'},
                                         {IDC_MOVE_UP, L'U'},
                                         {IDC_MOVE_DOWN, L'D'},
                                         {IDC_PROMOTE, L'P'}})
            if (IsEnabled(id)) enabled += letter;
        return enabled;
    }
    static std::wstring Times(int count, const std::wstring& text) {
        std::wstring all;
        for (int i = 0; i < count; ++i) all += text;
        return all;
    }

    /// A key of the tree, while another one is held.
    void Type(WORD key, BYTE held = 0) {
        BYTE keys[256]{};
        ::GetKeyboardState(keys);
        for (const BYTE state : {BYTE{0x80}, BYTE{0}}) {
            if (held != 0) keys[held] = state;
            ::SetKeyboardState(keys);
            if (state != 0) Tree().Send(held == VK_MENU || key == VK_F10 ? WM_SYSKEYDOWN : WM_KEYDOWN, key);
        }
    }
    /// The middle of the item's label; without a name, a place below all items.
    POINT PlaceOf(const wchar_t* name) {
        RECT label{};
        if (!*name) return {20, Tree().ClientRect().bottom - 5};
        EXPECT_TRUE(Tree().LabelOf(Node(name), label)) << Utf8(name);
        return {(label.left + label.right) / 2, (label.top + label.bottom) / 2};
    }
    void PostMouse(UINT message, POINT at, WPARAM keys = 0) {
        ::PostMessageW(Window(), message, keys, MAKELPARAM(at.x, at.y));
    }
    void ClickOn(const wchar_t* name, WPARAM keys = 0) { Click(Window(), PlaceOf(name), keys); }
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
    /// How the item is drawn; `answer` is what the tree is told.
    NMTVCUSTOMDRAW Drawn(const wchar_t* name, LRESULT* answer = nullptr) {
        NMTVCUSTOMDRAW draw{};
        draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
        draw.nmcd.dwItemSpec = reinterpret_cast<DWORD_PTR>(Node(name));
        const LRESULT given = View().OnCustomDraw(draw);
        if (answer) *answer = given;
        return draw;
    }
};

}  // namespace support
