// The standard controls, as typed views of a window handle.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <optional>
#include <string>
#include <vector>

#include "Window.h"

class CButton : public CWindow {
  public:
    using CWindow::CWindow;
    bool IsChecked() const { return SendInt(BM_GETCHECK) == BST_CHECKED; }
    void Check(bool checked = true) const { Send(BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED); }
};

class CStatic : public CWindow {
  public:
    using CWindow::CWindow;
    void SetIcon(HICON icon) const { Send(STM_SETICON, icon); }
};

/// Rows are counted from 0. An item's data is a number or a pointer that somebody else owns.
class CListBox : public CWindow {
  public:
    using CWindow::CWindow;

    int Count() const { return SendInt(LB_GETCOUNT); }
    void Clear() const { Send(LB_RESETCONTENT); }
    /// Makes room for further rows of about that many characters each.
    void Reserve(int rows, int charactersPerRow) const;
    /// Adds where the box's style puts it: in order when it sorts, else last. Gives the row, negative on
    /// failure.
    int Add(const std::wstring& text) const { return SendText(LB_ADDSTRING, 0, text); }
    std::wstring RowText(int row) const;
    /// The row with this whole text, case ignored; nothing when there is none.
    std::optional<int> FindExact(const std::wstring& text) const;

    LPARAM Data(int row) const { return Send(LB_GETITEMDATA, row); }
    void SetData(int row, LPARAM data) const { Send(LB_SETITEMDATA, row, data); }
    /// The pointer that was set for the row; null for none, or for a row that is not there.
    template <typename T>
    const T* ItemOf(int row) const {
        const LPARAM data = Data(row);
        return data == LB_ERR ? nullptr : reinterpret_cast<const T*>(data);
    }

    /// The selected row; where several can be selected, the only one, else the one with the caret. Nothing
    /// when there is none.
    std::optional<int> CurrentRow() const;
    /// No notification is sent. False when there is no such row; then nothing is selected.
    bool SetCurrentRow(int row) const { return SendInt(LB_SETCURSEL, row) >= 0; }

    bool IsSelected(int row) const { return SendInt(LB_GETSEL, row) > 0; }
    void Select(int row, bool selected = true) const { Send(LB_SETSEL, selected, row); }
    void SelectAll(bool selected = true) const { Select(-1, selected); }
    int SelectedCount() const { return SendInt(LB_GETSELCOUNT); }
    std::vector<int> SelectedRows() const;

    // For a box in which several rows can be selected.
    std::optional<int> CaretRow() const;
    /// Arrow keys go on from there; the row is scrolled into view, and not selected.
    void SetCaretRow(int row) const;

    /// In client coordinates; empty when there is no such row.
    RECT PlaceOf(int row) const;
    std::optional<int> RowAt(POINT client) const;

    int TopRow() const { return SendInt(LB_GETTOPINDEX); }
    void SetTopRow(int row) const { Send(LB_SETTOPINDEX, row); }

    /// Lets a box with a scroll bar for it move sideways as far as its longest row.
    void FitScrollWidth() const;
};

class CComboBox : public CWindow {
  public:
    using CWindow::CWindow;

    int Count() const { return SendInt(CB_GETCOUNT); }
    void Clear() const { Send(CB_RESETCONTENT); }
    int Add(const std::wstring& text) const { return SendText(CB_ADDSTRING, 0, text); }
    void Remove(int row) const { Send(CB_DELETESTRING, row); }
    std::wstring RowText(int row) const;
    std::optional<int> FindExact(const std::wstring& text) const;
    LPARAM Data(int row) const { return Send(CB_GETITEMDATA, row); }
    void SetData(int row, LPARAM data) const { Send(CB_SETITEMDATA, row, data); }
    std::optional<int> CurrentRow() const;
    bool IsDropped() const { return Send(CB_GETDROPPEDSTATE) != FALSE; }
    void SetCurrentRow(std::optional<int> row) const { Send(CB_SETCURSEL, row.value_or(-1)); }
    /// As Escape does: what was selected before the list was dropped down stays.
    void CloseList() const { Send(CB_SHOWDROPDOWN, FALSE); }
};

class CTreeView : public CWindow {
  public:
    using CWindow::CWindow;

    int Count() const { return SendInt(TVM_GETCOUNT); }
    HTREEITEM Root() const { return Next(TVGN_ROOT, nullptr); }
    HTREEITEM Caret() const { return Next(TVGN_CARET, nullptr); }
    HTREEITEM Child(HTREEITEM item) const { return Next(TVGN_CHILD, item); }
    HTREEITEM NextSibling(HTREEITEM item) const { return Next(TVGN_NEXT, item); }
    HTREEITEM PreviousSibling(HTREEITEM item) const { return Next(TVGN_PREVIOUS, item); }
    HTREEITEM Parent(HTREEITEM item) const { return Next(TVGN_PARENT, item); }
    /// Null parent means the top level; `after` is a sibling, TVI_FIRST or TVI_LAST. Null when it fails.
    HTREEITEM Insert(HTREEITEM parent, HTREEITEM after, const std::wstring& text, int image,
                     int selectedImage, LPARAM data) const;
    void Delete(HTREEITEM item) const { Send(TVM_DELETEITEM, 0, item); }
    void Select(HTREEITEM item) const { Send(TVM_SELECTITEM, TVGN_CARET, item); }
    std::wstring ItemText(HTREEITEM item) const;
    void SetItemText(HTREEITEM item, const std::wstring& text) const;
    void SetItemImages(HTREEITEM item, int image, int selectedImage) const;
    LPARAM Data(HTREEITEM item) const;
    /// The list stays the caller's.
    void SetImages(HIMAGELIST images) const { Send(TVM_SETIMAGELIST, TVSIL_NORMAL, images); }
    /// The control makes it even.
    void SetRowHeight(int height) const { Send(TVM_SETITEMHEIGHT, height); }
    void Expand(HTREEITEM item, bool expand) const {
        Send(TVM_EXPAND, expand ? TVE_EXPAND : TVE_COLLAPSE, item);
    }
    HTREEITEM FirstVisible() const { return Next(TVGN_FIRSTVISIBLE, nullptr); }
    /// Of the items that closed ones don't hide, whether they are in view or not.
    HTREEITEM NextVisible(HTREEITEM item) const { return Next(TVGN_NEXTVISIBLE, item); }
    HTREEITEM PreviousVisible(HTREEITEM item) const { return Next(TVGN_PREVIOUSVISIBLE, item); }
    /// Scrolls so that the item is the first visible one, as far as the tree can be scrolled.
    void ScrollToTop(HTREEITEM item) const;
    /// The item that is drawn as the one to drop on.
    HTREEITEM DropTarget() const { return Next(TVGN_DROPHILITE, nullptr); }
    void SetDropTarget(HTREEITEM item) const { Send(TVM_SELECTITEM, TVGN_DROPHILITE, item); }
    void EnsureVisible(HTREEITEM item) const { Send(TVM_ENSUREVISIBLE, 0, item); }
    /// `compare` gets the data of two items and `context`. Null parent sorts the top level.
    void SortChildren(HTREEITEM parent, PFNTVCOMPARE compare, LPARAM context) const;
    HWND EditLabel(HTREEITEM item) const { return reinterpret_cast<HWND>(Send(TVM_EDITLABELW, 0, item)); }
    /// The edit field of a label that is being edited, else a null window.
    CWindow LabelEdit() const { return CWindow(reinterpret_cast<HWND>(Send(TVM_GETEDITCONTROL))); }
    void EndLabelEdit(bool cancel) const { Send(TVM_ENDEDITLABELNOW, cancel); }

  private:
    HTREEITEM Next(UINT which, HTREEITEM item) const {
        return reinterpret_cast<HTREEITEM>(Send(TVM_GETNEXTITEM, which, item));
    }
};

/// A tooltip window, which ends with the dialog that owns it.
HWND CreateToolTip(HWND dialog, DWORD extendedStyle = 0);

/// Tooltips for the controls of one dialog, whose texts are asked for with TTN_NEEDTEXT when they are shown.
class CToolTips {
  public:
    void Create(HWND dialog);
    void Add(HWND control) const;

  private:
    HWND m_dialog = nullptr;
    CWindow m_tip;
};
