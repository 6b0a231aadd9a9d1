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
    /// Takes the mouse for the dialog, and the keyboard for the tree. `client` is a place in the tree.
    void Begin(HTREEITEM item, POINT client);
    /// `client` is a place in the dialog.
    void OnMouseMove(POINT client);
    /// The pointer has rested for a while: opens the folder below it.
    void OnTimer();
    /// Moves the items to where the mouse is; on one of them, outside the tree, or without an image, it only
    /// ends the drag.
    void Drop();
    /// Ends without moving anything.
    void Cancel();

  private:
    /// Where items go: `after` is one of the parent's children, TVI_FIRST or TVI_LAST.
    struct DropPlace {
        HTREEITEM parent;  // null: the top level
        HTREEITEM after;
    };

    UniqueImageList DrawImage() const;
    /// Shows where the items would land, with the image out of the way.
    void ShowPlace();
    void Highlight();
    void ScrollBeyond() const;
    void MarkPlace() const;
    void AwaitOpening();
    HTREEITEM LastVisible() const;
    /// The items would move if they were dropped now.
    bool CanDrop() const;
    bool IsDragged(HTREEITEM item) const;
    /// The item, or a folder that it lies in, is dragged.
    bool IsWithinDragged(HTREEITEM item) const;
    void End();
    DropPlace PlaceOn(HTREEITEM target) const;
    CTreeCtrlEx& Tree() const { return m_layout.Tree(); }

    CDialog& m_dialog;
    CTreeCtrlWrapper& m_layout;
    UniqueImageList m_image;
    std::vector<LayoutItemId> m_items;  // in display order
    LayoutItemId m_dragged = kInvalidItemId;
    LayoutItemId m_opening = kInvalidItemId;  // the closed folder that the pointer rests on
    POINT m_pointer{};                        // in the tree
    bool m_dragging = false;
    bool m_lowerHalf = false;  // of the row that the pointer was over last
    bool m_onItself = false;   // the pointer is over a dragged item
    bool m_inside = false;     // the pointer is over the tree
    bool m_belowDragged = false;
};
