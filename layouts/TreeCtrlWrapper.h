// The layout tree's items and the records behind them.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <memory>
#include <memory_resource>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Handles.h"
#include "LayoutItem.h"
#include "LayoutOrder.h"
#include "TreeCtrlEx.h"
#include "TreeScroll.h"

/// Whether an item that is put at a folder goes inside it.
enum class IntoFolder { No, Yes };

/// Whether an item that is moved stays selected, with the caret on it. Where many are moved, that takes
/// longer than the move itself.
enum class MovedSelection { Kept, Lost };

/// Each item's data is its record's id. As an argument for a parent or a target null means the top level, as
/// a result that there is no item.
class CTreeCtrlWrapper {
  public:
    explicit CTreeCtrlWrapper(CTreeCtrlEx& tree) : m_tree(tree) {}

    CTreeCtrlEx& Tree() const { return m_tree; }
    /// To be held while items are moved, sorted, deleted, opened or closed, and around several of these.
    CTreeScroll& Scroll() { return m_scroll; }
    /// Every insertion, move, deletion and change marks the layout modified; clearing it does not.
    bool IsModified() const { return m_modified; }
    void SetModified(bool modified) {
        m_modified = modified;
        if (m_whenModified) m_whenModified(modified);
    }
    /// `told` hears of each change, and of each time that the mark is set or cleared.
    void WhenModified(std::function<void(bool modified)> told) { m_whenModified = std::move(told); }
    /// Grows with each change.
    unsigned Changes() const { return m_changes; }

    /// Null when the item has none. Good until the item is changed or deleted.
    const LayoutItem* Find(HTREEITEM item) const;
    SharedLayoutItem Share(HTREEITEM item) const;
    /// The item with this id. Ids outlive moves, handles don't.
    HTREEITEM HandleOf(LayoutItemId id) const;
    std::vector<LayoutItemId> SelectedIds() const;
    /// The class ids of all plug-ins, but for the null id.
    std::unordered_set<Guid, GuidHash> Plugins() const;
    /// Changes an item's record, its label with it.
    void Change(HTREEITEM item, const std::function<void(LayoutItem&)>& change);
    /// Notes what the plug-in is registered as now. The user changed nothing, so the layout does not become
    /// modified.
    void NoteOriginalName(HTREEITEM item, const std::wstring& name);
    /// Marks each plug-in as installed or not, with the image for that; the layout is not modified by it.
    void Mark(const std::function<void(LayoutItem&)>& mark);

    /// Adds as the last child. Null when it fails.
    HTREEITEM Append(HTREEITEM parent, const LayoutItem& record) {
        return Append(parent, std::make_shared<const LayoutItem>(record));
    }
    HTREEITEM Append(HTREEITEM parent, const SharedLayoutItem& record) {
        return InsertItem(parent, TVI_LAST, record);
    }
    /// Adds as the first child, at a cost that does not grow with the number of children.
    HTREEITEM Prepend(HTREEITEM parent, LayoutItem record) {
        return Prepend(parent, std::make_shared<const LayoutItem>(std::move(record)));
    }
    HTREEITEM Prepend(HTREEITEM parent, const SharedLayoutItem& record) {
        return InsertItem(parent, TVI_FIRST, record);
    }
    /// Adds by the rule for the user's commands; the caller selects it. Null when it fails.
    HTREEITEM Insert(HTREEITEM target, IntoFolder into, const LayoutItem& record);
    /// Removes all items; the layout then is not modified, which nobody is told: what comes next counts.
    void Clear() { Clear(CRedrawLock(m_tree)); }
    /// The same for who fills the tree again before it draws.
    void Clear(const CRedrawLock& noRedraw);
    /// Images for the screen's scale.
    void LoadImages(UINT dpi);

    /// In display order.
    std::vector<HTREEITEM> Children(HTREEITEM parent) const;

    // Moves keep an item's children, its id and whether it is expanded. A move into the item itself or below
    // it is refused. Each gives the item's new handle, or the old one when nothing was moved.
    /// `after` is one of the parent's children, TVI_FIRST or TVI_LAST.
    HTREEITEM Move(HTREEITEM item, HTREEITEM parent, HTREEITEM after,
                   MovedSelection selection = MovedSelection::Kept);
    HTREEITEM MoveAfter(HTREEITEM item, HTREEITEM sibling) {
        return Move(item, m_tree.Parent(sibling), sibling);
    }
    /// By the insertion rule.
    HTREEITEM MoveTo(HTREEITEM item, HTREEITEM target, IntoFolder into);
    void MoveUp(HTREEITEM item);
    void MoveDown(HTREEITEM item);
    bool CanMoveUp(HTREEITEM item) const { return item && m_tree.PreviousSibling(item); }
    bool CanMoveDown(HTREEITEM item) const { return item && m_tree.NextSibling(item); }

    /// Sorts the children of `parent` and of all folders below it.
    void Sort(HTREEITEM parent);
    void ExpandAll(bool expand);
    /// Deletes these, as far as they are there.
    void Delete(std::span<const LayoutItemId> ids);
    /// Deletes every selected item and then the caret item, which is deleted even if it is not selected.
    void DeleteSelection();
    /// Whether the caret item or a selected one is a folder.
    bool WouldDeleteFolder() const;

    /// For the notification that the tree deletes an item.
    void OnDeleteItem(HTREEITEM item, LayoutItemId id);

  private:
    struct Entry {
        SharedLayoutItem record;
        HTREEITEM item;
    };
    /// Null when the item has none.
    const Entry* EntryOf(HTREEITEM item) const;
    Entry* EntryOf(HTREEITEM item) { return const_cast<Entry*>(std::as_const(*this).EntryOf(item)); }
    HTREEITEM InsertItem(HTREEITEM parent, HTREEITEM after, const SharedLayoutItem& record);
    void NoteChange();
    /// The records go over to the copy. Null, and no copy, when not all of it could be copied.
    HTREEITEM CopySubtree(HTREEITEM item, HTREEITEM parent, HTREEITEM after, MovedSelection selection);
    /// Takes the records of the item, and of all that is in it, back from a copy.
    void Reclaim(HTREEITEM item);
    bool GoesInside(HTREEITEM target, IntoFolder into) const;
    void Delete(HTREEITEM item, HTREEITEM replacement = nullptr);

    CTreeCtrlEx& m_tree;
    CTreeScroll m_scroll{m_tree};
    // Undo fills the whole tree again: the heap would take a quarter of that time.
    std::pmr::unsynchronized_pool_resource m_pool;
    std::pmr::unordered_map<LayoutItemId, Entry> m_records{&m_pool};
    UniqueImageList m_images;
    bool m_modified = false;
    std::function<void(bool)> m_whenModified;
    unsigned m_changes = 0;
};
