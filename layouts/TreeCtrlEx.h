// A tree view with multiple selection, click-to-rename, and a grey look for some of its items.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <vector>

#include "Controls.h"

/// Selected items carry TVIS_SELECTED; the caret item is the one with the focus, and may be none.
class CTreeCtrlEx : public CTreeView {
  public:
    /// What the tree asks of and tells its owner.
    struct Hooks {
        std::function<bool(HTREEITEM)> isGrey;  // draws the item's text in grey
        std::function<void(bool)>
            onInput;  // true: the left button went down, false: mouse or key are dealt with
    };

    CTreeCtrlEx() = default;
    ~CTreeCtrlEx() { Detach(); }
    CTreeCtrlEx(const CTreeCtrlEx&) = delete;
    CTreeCtrlEx& operator=(const CTreeCtrlEx&) = delete;

    /// Takes over the window, which must have no extensions yet.
    void Attach(HWND tree, Hooks hooks);
    void Detach();

    bool IsSelected(HTREEITEM item) const { return (State(item) & TVIS_SELECTED) != 0; }
    bool IsExpanded(HTREEITEM item) const { return (State(item) & TVIS_EXPANDED) != 0; }
    void SetSelected(HTREEITEM item, bool selected) const;
    /// In display order, items in closed folders included.
    std::vector<HTREEITEM> SelectedItems() const;
    void ClearSelection() const;
    void SelectAll() const;
    /// Leaves exactly this item selected, as the caret item; null selects nothing.
    void SelectOnly(HTREEITEM item) const;
    /// Moves the caret; all items keep their selected state.
    void MoveCaret(HTREEITEM item) const;
    /// The next item in display order, into folders whether they are open or not; null behind the last.
    HTREEITEM NextInOrder(HTREEITEM item) const;
    /// The same, but not into the item.
    HTREEITEM NextBehind(HTREEITEM item) const;

    HTREEITEM HitTest(POINT client, UINT* flags = nullptr) const;
    /// The row of a visible item in client coordinates; false, and an empty row, for an item without one.
    bool RowOf(HTREEITEM item, RECT& row) const;

    /// The owner passes on the tree's NM_CUSTOMDRAW.
    LRESULT OnCustomDraw(const NMTVCUSTOMDRAW& draw, COLORREF& text) const;

  private:
    static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    LRESULT Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) const {
        return ::CallWindowProcW(m_original, m_hwnd, message, wParam, lParam);
    }
    /// True when the control's own handling is not to follow.
    bool OnLeftDown(POINT client, bool shift, bool control);
    bool OnRightDown(POINT client);
    bool OnKeyDown(UINT key);
    void PressOnSelected(HTREEITEM item, POINT client);
    void ExtendTo(HTREEITEM item);
    void Toggle(HTREEITEM item);
    void SelectRange(HTREEITEM from, HTREEITEM to) const;
    bool IsBefore(HTREEITEM a, HTREEITEM b) const;
    UINT State(HTREEITEM item) const;
    void NotifyKey(WORD key) const;
    void NotifyParent(NMHDR& header, UINT code) const;

    Hooks m_hooks;
    WNDPROC m_original = nullptr;
    HTREEITEM m_anchor = nullptr;  // of a selection with Shift; null after any plain click
};
