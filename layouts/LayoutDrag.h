// Dragging the selected items of the layout tree to another place in it.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <vector>

#include "Dialog.h"
#include "Handles.h"
#include "LayoutItem.h"
#include "TreeCtrlWrapper.h"

class CLayoutDrag {
  public:
    CLayoutDrag(CDialog& dialog, CTreeCtrlWrapper& layout) : m_dialog(dialog), m_layout(layout) {}

    bool IsDragging() const { return m_dragging; }
    /// Takes the mouse for the dialog. `client` is a place in the tree.
    void Begin(HTREEITEM item, POINT client);
    /// `client` is a place in the dialog.
    void OnMouseMove(POINT client);
    /// Moves the items to where the mouse is; on one of them, or without an image, it only ends the drag.
    void Drop();
    /// Ends without moving anything.
    void Cancel();

  private:
    UniqueImageList DrawImage() const;
    void Highlight(POINT inTree);
    void ScrollBeyond(POINT inTree);
    bool IsDragged(HTREEITEM item) const;
    /// The item, or a folder around it, is one of the dragged.
    bool GoesAlong(HTREEITEM item) const;
    void End();
    DropFacts FactsOf(HTREEITEM target) const;
    HTREEITEM MoveFirst(HTREEITEM item, HTREEITEM target);
    CTreeCtrlEx& Tree() const { return m_layout.Tree(); }

    CDialog& m_dialog;
    CTreeCtrlWrapper& m_layout;
    UniqueImageList m_image;
    std::vector<LayoutItemId> m_items;  // in display order
    LayoutItemId m_dragged = kInvalidItemId;
    bool m_dragging = false;
    bool m_lowerHalf = false;  // of the row that the pointer was over last
    bool m_onItself = false;   // the pointer is over a dragged item
    bool m_belowDragged = false;
};
