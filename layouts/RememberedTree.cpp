#include "RememberedTree.h"

#include <algorithm>
#include <utility>

#include "XmlTreeCtrl.h"

namespace {

/// From so many children of one folder on it costs more to add each behind all others, for which the control
/// walks them, than to add each before them, after which some systems place all others anew.
constexpr std::size_t kManyChildren = 1000;

std::size_t BytesOf(const LayoutItem& record) {
    const std::size_t letters = record.name.capacity() + record.originalName.capacity() +
                                record.defaultPreset.capacity() +
                                (record.vendor ? record.vendor->capacity() : 0);
    return sizeof record + letters * sizeof(wchar_t);
}

}  // namespace

CRememberedTree::CRememberedTree(const CTreeCtrlWrapper& layout, Part part) {
    const CTreeCtrlEx& tree = layout.Tree();
    const HTREEITEM caret = tree.Caret();
    const HTREEITEM top = tree.FirstVisible();
    const std::vector<HTREEITEM> selection = tree.SelectedItems();
    auto nextSelected = selection.begin();
    m_rows.reserve(static_cast<std::size_t>(tree.Count()));
    const auto note = [&](const auto& self, HTREEITEM first, int depth, bool all) -> void {
        for (HTREEITEM item = first; item; item = tree.NextSibling(item)) {
            SharedLayoutItem record = layout.Share(item);
            if (!record) continue;
            const bool folder = record->kind == LayoutKind::Folder;
            const bool selected = nextSelected != selection.end() && item == *nextSelected;
            if (selected) ++nextSelected;
            const bool taken = all || selected;
            if (folder && !taken) self(self, tree.Child(item), depth, false);
            if (!taken) continue;
            if (item == caret) m_caret = m_rows.size();
            if (item == top) m_top = m_rows.size();
            m_rows.push_back({std::move(record), static_cast<std::uint16_t>(depth),
                              folder && tree.IsExpanded(item), selected});
            if (folder) self(self, tree.Child(item), depth + 1, true);
        }
    };
    note(note, tree.Root(), 0, part == Part::All);
    if (part == Part::All) return;
    // The layout's own records are counted by who holds them.
    for (Row& row : m_rows) row.record = std::make_shared<const LayoutItem>(*row.record);
}

void CRememberedTree::Restore(const CTreeCtrlEx& tree) const {
    if (static_cast<std::size_t>(tree.Count()) != m_rows.size()) return;
    Items items;
    items.reserve(m_rows.size());
    {
        const CRedrawLock noRedraw(tree);
        HTREEITEM item = tree.Root();
        for (const Row& row : m_rows) {
            if (row.expanded) tree.Expand(item, true);
            items.push_back(item);
            item = tree.NextInOrder(item);
        }
        tree.ClearSelection();
        Select(tree, items);
    }
    Scroll(tree, items);
}

bool CRememberedTree::Fill(CTreeCtrlWrapper& layout) const {
    const CTreeCtrlEx& tree = layout.Tree();
    Items items(m_rows.size());
    {
        const CRedrawLock noRedraw(tree);
        layout.Clear(noRedraw);
        if (!Insert(layout, nullptr, 0, m_rows.size(), items)) return false;
        Select(tree, items);
    }
    Scroll(tree, items);
    return true;
}

/// The rows from `begin` on are the parent's children, each with what is in it.
bool CRememberedTree::Insert(CTreeCtrlWrapper& layout, HTREEITEM parent, std::size_t begin, std::size_t end,
                             Items& items) const {
    std::vector<std::size_t> children;
    for (std::size_t row = begin; row < end; ++row) {
        if (m_rows[row].depth == m_rows[begin].depth) children.push_back(row);
    }
    children.push_back(end);
    const std::size_t count = children.size() - 1;
    const bool backwards = count >= kManyChildren;
    for (std::size_t done = 0; done < count; ++done) {
        const std::size_t child = backwards ? count - 1 - done : done;
        const std::size_t row = children[child];
        const HTREEITEM item = backwards ? layout.Prepend(parent, m_rows[row].record)
                                         : layout.Append(parent, m_rows[row].record);
        if (!item || !Insert(layout, item, row + 1, children[child + 1], items)) return false;
        // Now, while the folder around it is closed: that costs less than with all of it in view.
        if (m_rows[row].expanded) layout.Tree().Expand(item, true);
        items[row] = item;
    }
    return true;
}

bool CRememberedTree::FitsAt(const CTreeCtrlWrapper& layout, HTREEITEM target) const {
    const LayoutItem* record = layout.Find(target);
    const bool inside = record && record->kind == LayoutKind::Folder;
    int levels = 0;
    for (HTREEITEM folder = inside ? target : layout.Tree().Parent(target); folder;
         folder = layout.Tree().Parent(folder))
        ++levels;
    return std::ranges::all_of(m_rows, [levels](const Row& row) {
        return row.record->kind != LayoutKind::Folder || levels + row.depth < CXMLTreeCtrl::kDeepestNesting;
    });
}

std::size_t CRememberedTree::EndOf(std::size_t row) const {
    const std::size_t depth = m_rows[row].depth;
    do ++row;
    while (row < m_rows.size() && m_rows[row].depth > depth);
    return row;
}

bool CRememberedTree::Paste(CTreeCtrlWrapper& layout, HTREEITEM target) const {
    if (!FitsAt(layout, target)) return false;
    CRememberedTree copy = *this;
    for (Row& row : copy.m_rows) {
        row.record = std::make_shared<const LayoutItem>(WithNewId(*row.record));
        if (row.record->id == kInvalidItemId) return false;
    }
    const CTreeCtrlEx& tree = layout.Tree();
    Items items(copy.m_rows.size());
    auto into = IntoFolder::Yes;
    tree.ClearSelection();
    for (std::size_t begin = 0, end = 0; begin < copy.m_rows.size(); begin = end) {
        end = copy.EndOf(begin);
        target = layout.Insert(target, std::exchange(into, IntoFolder::No), *copy.m_rows[begin].record);
        if (!target || !copy.Insert(layout, target, begin + 1, end, items)) return false;
        if (copy.m_rows[begin].expanded) tree.Expand(target, true);
        tree.SetSelected(target, true);
    }
    tree.MoveCaret(target);
    return true;
}

/// In a tree with nothing selected.
void CRememberedTree::Select(const CTreeCtrlEx& tree, const Items& items) const {
    const HTREEITEM caret = m_caret < items.size() ? items[m_caret] : nullptr;
    tree.Select(caret);
    if (caret) tree.SetSelected(caret, false);
    for (std::size_t row = 0; row < items.size(); ++row) {
        if (m_rows[row].selected) tree.SetSelected(items[row], true);
    }
}

void CRememberedTree::Scroll(const CTreeCtrlEx& tree, const Items& items) const {
    if (m_top < items.size()) tree.ScrollToTop(items[m_top]);
}

std::size_t CRememberedTree::Bytes(long holders) const {
    std::size_t bytes = m_rows.capacity() * sizeof(Row);
    for (const Row& row : m_rows) {
        if (row.record.use_count() == holders) bytes += BytesOf(*row.record);
    }
    return bytes;
}
