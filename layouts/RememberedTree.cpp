#include "RememberedTree.h"

CRememberedTree::CRememberedTree(const CTreeCtrlEx& tree) {
    const HTREEITEM caret = tree.Caret();
    const HTREEITEM first = tree.FirstVisible();
    for (HTREEITEM item = tree.Root(); item; item = tree.NextInOrder(item))
        m_rows.push_back({tree.IsExpanded(item), tree.IsSelected(item), item == caret, item == first});
}

void CRememberedTree::Restore(const CTreeCtrlEx& tree) const {
    if (static_cast<std::size_t>(tree.Count()) != m_rows.size()) return;
    HTREEITEM caret = nullptr;
    HTREEITEM first = nullptr;
    std::vector<HTREEITEM> selected;
    {
        const CRedrawLock noRedraw(tree);
        HTREEITEM item = tree.Root();
        for (const Row& row : m_rows) {
            if (row.expanded) tree.Expand(item, true);
            if (row.selected) selected.push_back(item);
            if (row.caret) caret = item;
            if (row.first) first = item;
            item = tree.NextInOrder(item);
        }
        tree.SelectOnly(caret);
        if (caret) tree.SetSelected(caret, false);
        for (const HTREEITEM each : selected) tree.SetSelected(each, true);
    }
    if (first) tree.ScrollToTop(first);
}
