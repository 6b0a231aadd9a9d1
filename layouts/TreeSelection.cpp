#include "TreeSelection.h"

#include <cstring>
#include <utility>

UINT CTreeSelection::State(HTREEITEM item) const {
    return static_cast<UINT>(
        Send(TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_SELECTED | TVIS_EXPANDED));
}

void CTreeSelection::SetSelected(HTREEITEM item, bool selected) const {
    TVITEMW change{};
    change.mask = TVIF_STATE;
    change.hItem = item;
    change.stateMask = TVIS_SELECTED;
    change.state = selected ? TVIS_SELECTED : 0;
    Send(TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&change));
}

HTREEITEM CTreeSelection::NextInOrder(HTREEITEM item) const {
    const HTREEITEM child = Child(item);
    return child ? child : NextBehind(item);
}

HTREEITEM CTreeSelection::NextBehind(HTREEITEM item) const {
    for (; item; item = Parent(item)) {
        if (const HTREEITEM sibling = NextSibling(item)) return sibling;
    }
    return nullptr;
}

bool CTreeSelection::IsWithin(HTREEITEM inner, HTREEITEM outer) const {
    for (; inner; inner = Parent(inner)) {
        if (inner == outer) return true;
    }
    return false;
}

HTREEITEM CTreeSelection::Shown(HTREEITEM item) const {
    HTREEITEM shown = item;
    for (HTREEITEM folder = item ? Parent(item) : nullptr; folder; folder = Parent(folder)) {
        if (!IsExpanded(folder)) shown = folder;
    }
    return shown;
}

std::vector<HTREEITEM> CTreeSelection::SelectedItems() const {
    std::vector<HTREEITEM> items;
    const HTREEITEM caret = Caret();
    for (HTREEITEM item = Root(); item; item = NextInOrder(item)) {
        if ((item == caret || m_order.MayBeSelected(item)) && IsSelected(item)) items.push_back(item);
    }
    return items;
}

void CTreeSelection::ClearSelection() const {
    for (const HTREEITEM item : SelectedItems()) SetSelected(item, false);
}

void CTreeSelection::SelectAll() const {
    const CRedrawLock noRedraw(*this);
    for (HTREEITEM item = Root(); item; item = NextVisible(item)) SetSelected(item, true);
}

void CTreeSelection::DeselectWithin(HTREEITEM folder) const {
    for (const HTREEITEM item : SelectedItems()) {
        if (item != folder && IsWithin(item, folder)) SetSelected(item, false);
    }
}

void CTreeSelection::AddToSelection(HTREEITEM item) const {
    MoveCaret(item);
    SetSelected(item, true);
}

void CTreeSelection::SelectOnly(HTREEITEM item) const {
    ClearSelection();
    Select(item);
    // The control does nothing for an item that was the caret before.
    if (item) SetSelected(item, true);
}

void CTreeSelection::MoveCaret(HTREEITEM item) const {
    const HTREEITEM old = Caret();
    if (old == item) return;
    const bool oldSelected = old && IsSelected(old);
    const bool itemSelected = item && IsSelected(item);
    Select(item);
    // The control takes the caret for the one selected item.
    if (old) SetSelected(old, oldSelected);
    if (item) SetSelected(item, itemSelected);
}

bool CTreeSelection::IsBefore(HTREEITEM a, HTREEITEM b) const {
    for (; a; a = NextInOrder(a)) {
        if (a == b) return true;
    }
    return false;
}

void CTreeSelection::SelectRange(HTREEITEM from, HTREEITEM to) const {
    if (!IsBefore(from, to)) std::swap(from, to);
    ClearSelection();
    // What is hidden in a closed folder is not what the user sees between the two.
    for (HTREEITEM item = from; item; item = NextVisible(item)) {
        SetSelected(item, true);
        if (item == to) return;
    }
}

HTREEITEM CTreeSelection::HitTest(POINT client, UINT* flags) const {
    TVHITTESTINFO hit{};
    hit.pt = client;
    const auto item = reinterpret_cast<HTREEITEM>(Send(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
    if (flags) *flags = hit.flags;
    return item;
}

bool CTreeSelection::PlaceOf(HTREEITEM item, RECT& place, bool labelOnly) const {
    // The message reads the item from where it then writes the rectangle.
    const auto handle = reinterpret_cast<UINT_PTR>(item);
    std::memcpy(&place, &handle, sizeof handle);
    if (item && Send(TVM_GETITEMRECT, labelOnly, reinterpret_cast<LPARAM>(&place)) != 0) return true;
    place = {};
    return false;
}
