// A tree view with multiple selection, click-to-rename, and a grey look for some of its items.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>

#include "MessageCrackers.h"
#include "TreeSelection.h"

class CTreeCtrlEx : public CTreeSelection {
  public:
    /// What the tree asks of and tells its owner.
    struct Hooks {
        std::function<bool(HTREEITEM)> isGrey;   // draws the item's text in grey
        std::function<void()> onInput;           // a mouse button or key has been handled
        std::function<bool(UINT)> onCommandKey;  // a key with Ctrl; true when it has been handled
        std::function<void()> onTimer;
    };

    CTreeCtrlEx() = default;
    ~CTreeCtrlEx() { Detach(); }
    CTreeCtrlEx(const CTreeCtrlEx&) = delete;
    CTreeCtrlEx& operator=(const CTreeCtrlEx&) = delete;

    /// Takes over the window, which must have no extensions and no items yet.
    void Attach(HWND tree, Hooks hooks);
    void Detach();

    /// The left button went down, and what comes of that is not done yet.
    bool IsPressing() const { return m_pressing; }
    /// Draws a line before or behind the item, indented like `sibling`; the item then does not look like one
    /// to drop on.
    void SetInsertMark(HTREEITEM item, bool behind, HTREEITEM sibling);
    void RemoveInsertMark() { SetInsertMark(nullptr, false, nullptr); }
    /// Has onTimer called, once.
    void StartTimer(UINT milliseconds) const;
    void StopTimer() const;

    /// The owner passes on the tree's NM_CUSTOMDRAW.
    LRESULT OnCustomDraw(NMTVCUSTOMDRAW& draw) const;

  private:
    static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    LRESULT Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) const {
        return ::CallWindowProcW(m_original, m_hwnd, message, wParam, lParam);
    }
    /// Of mouse and keys; nothing when the control's own handling is to follow.
    Answer OnInput(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Press(UINT message, WPARAM wParam, LPARAM lParam);
    /// True when the control's own handling is not to follow.
    bool OnLeftDown(POINT client, bool shift, bool control);
    bool OnRightDown(POINT client);
    bool OnKeyDown(UINT key);
    void PressOnSelected(HTREEITEM item, POINT client);
    void ExtendTo(HTREEITEM item);
    void Toggle(HTREEITEM item);
    void DrawInsertMark(HDC dc) const;
    void PickColours(NMTVCUSTOMDRAW& draw, bool selected, bool missing) const;
    /// A click elsewhere confirms the name that is being edited, and works as usual.
    void ConfirmEditedLabel() const;
    void NotifyKey(WORD key) const;
    void NotifyParent(NMHDR& header, UINT code) const;

    Hooks m_hooks;
    WNDPROC m_original = nullptr;
    bool m_pressing = false;
    HTREEITEM m_anchor = nullptr;  // of a selection with Shift; null after any plain click
    HTREEITEM m_marked = nullptr;  // has the insert mark
    HTREEITEM m_markLevel = nullptr;
    bool m_behindMarked = false;
};
