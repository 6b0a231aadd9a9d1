#include "LayoutButtons.h"

#include <algorithm>

#include "resource.h"

void CLayoutButtons::Update() const {
    const CTreeCtrlEx& tree = m_layout.Tree();
    if (m_locks > 0 || tree.IsPressing() || m_drag.IsDragging()) return;
    const auto enable = [this](int id, bool enabled) { m_dialog.EnableItem(id, enabled, IDC_LAYOUT_TREE); };
    for (const int id : {IDC_EXPAND_ALL, IDC_COLLAPSE_ALL, IDC_SORT_ALL}) enable(id, tree.Root() != nullptr);
    const auto selected = tree.SelectedItems();
    const bool allInFolders =
        std::ranges::all_of(selected, [&](HTREEITEM item) { return tree.Parent(item) != nullptr; });
    const HTREEITEM only = selected.size() == 1 ? selected.front() : nullptr;
    enable(IDC_PROMOTE, !selected.empty() && allInFolders);
    enable(IDC_REMOVE, !selected.empty());
    enable(IDC_MOVE_UP, m_layout.CanMoveUp(only));
    enable(IDC_MOVE_DOWN, m_layout.CanMoveDown(only));
}
