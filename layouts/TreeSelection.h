// A tree view of which several items can be selected: walking, selecting, finding places.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <vector>

#include "Controls.h"
#include "TreeOrder.h"

/// Selected items carry TVIS_SELECTED; the caret item is the one with the focus, and may be none.
class CTreeSelection : public CTreeView {
  public:
    // Answered without the control. In a walk of the tree each message would count.
    HTREEITEM Root() const { return m_order.Child(nullptr); }
    HTREEITEM Child(HTREEITEM item) const { return m_order.Child(item); }
    HTREEITEM NextSibling(HTREEITEM item) const { return m_order.Next(item); }
    HTREEITEM PreviousSibling(HTREEITEM item) const { return m_order.Previous(item); }
    HTREEITEM Parent(HTREEITEM item) const { return m_order.Parent(item); }
    LPARAM Data(HTREEITEM item) const { return m_order.Data(item); }

    bool IsSelected(HTREEITEM item) const { return (State(item) & TVIS_SELECTED) != 0; }
    bool IsExpanded(HTREEITEM item) const { return (State(item) & TVIS_EXPANDED) != 0; }
    void SetSelected(HTREEITEM item, bool selected) const;
    /// In display order, items in closed folders included.
    std::vector<HTREEITEM> SelectedItems() const;
    void ClearSelection() const;
    /// Selects what can be seen; what is in closed folders goes along with them.
    void SelectAll() const;
    /// All that is in the folder, at any depth.
    void DeselectWithin(HTREEITEM folder) const;
    /// Makes an item the caret item and selects it; the others stay selected.
    void AddToSelection(HTREEITEM item) const;
    /// Leaves exactly this item selected, as the caret item; null selects nothing.
    void SelectOnly(HTREEITEM item) const;
    /// Leaves exactly the items between the two selected, in either order.
    void SelectRange(HTREEITEM from, HTREEITEM to) const;
    /// Moves the caret; all items keep their selected state.
    void MoveCaret(HTREEITEM item) const;

    /// The next item in display order, into folders whether they are open or not; null behind the last.
    HTREEITEM NextInOrder(HTREEITEM item) const;
    /// The same, but not into the item.
    HTREEITEM NextBehind(HTREEITEM item) const;
    /// The item itself or one somewhere in it.
    bool IsWithin(HTREEITEM inner, HTREEITEM outer) const;
    /// The item, or the outermost closed folder that hides it.
    HTREEITEM Shown(HTREEITEM item) const;

    HTREEITEM HitTest(POINT client, UINT* flags = nullptr) const;
    /// The row of a visible item in client coordinates; false, and an empty row, for an item without one.
    bool RowOf(HTREEITEM item, RECT& row) const { return PlaceOf(item, row, false); }
    bool LabelOf(HTREEITEM item, RECT& label) const { return PlaceOf(item, label, true); }

  protected:
    CTreeOrder m_order;

  private:
    UINT State(HTREEITEM item) const;
    bool IsBefore(HTREEITEM a, HTREEITEM b) const;
    bool PlaceOf(HTREEITEM item, RECT& place, bool labelOnly) const;
};
