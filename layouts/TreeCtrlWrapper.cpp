#include "TreeCtrlWrapper.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "LayoutImageList.h"
#include "NameOrder.h"

const LayoutItem* CTreeCtrlWrapper::Find(HTREEITEM item) const {
    const Entry* entry = EntryOf(item);
    return entry ? entry->record.get() : nullptr;
}

SharedLayoutItem CTreeCtrlWrapper::Share(HTREEITEM item) const {
    const Entry* entry = EntryOf(item);
    return entry ? entry->record : nullptr;
}

const CTreeCtrlWrapper::Entry* CTreeCtrlWrapper::EntryOf(HTREEITEM item) const {
    const auto found = m_records.find(static_cast<LayoutItemId>(m_tree.Data(item)));
    return found == m_records.end() ? nullptr : &found->second;
}

void CTreeCtrlWrapper::NoteChange() {
    ++m_changes;
    SetModified(true);
}

HTREEITEM CTreeCtrlWrapper::HandleOf(LayoutItemId id) const {
    const auto found = m_records.find(id);
    return found == m_records.end() ? nullptr : found->second.item;
}

std::vector<LayoutItemId> CTreeCtrlWrapper::SelectedIds() const {
    std::vector<LayoutItemId> ids;
    for (const HTREEITEM item : m_tree.SelectedItems()) {
        if (const LayoutItem* record = Find(item)) ids.push_back(record->id);
    }
    return ids;
}

std::unordered_set<Guid, GuidHash> CTreeCtrlWrapper::Plugins() const {
    std::unordered_set<Guid, GuidHash> ids;
    for (const auto& [id, entry] : m_records) ids.insert(entry.record->clsid);
    ids.erase(Guid{});
    return ids;
}

void CTreeCtrlWrapper::Change(HTREEITEM item, const std::function<void(LayoutItem&)>& change) {
    Entry* entry = EntryOf(item);
    if (!entry) return;
    LayoutItem changed = *entry->record;
    change(changed);
    m_tree.SetItemText(item, changed.name);
    entry->record = std::make_shared<const LayoutItem>(std::move(changed));
    NoteChange();
}

void CTreeCtrlWrapper::NoteOriginalName(HTREEITEM item, const std::wstring& name) {
    Entry* entry = EntryOf(item);
    if (!entry || entry->record->originalName == name) return;
    LayoutItem noted = *entry->record;
    noted.originalName = name;
    entry->record = std::make_shared<const LayoutItem>(std::move(noted));
}

void CTreeCtrlWrapper::Mark(const std::function<void(LayoutItem&)>& mark) {
    for (auto& [id, entry] : m_records) {
        if (entry.record->kind != LayoutKind::Plugin) continue;
        // Only what marking goes by: most marks stay as they are, and names need not be copied for that.
        LayoutItem marks;
        marks.kind = entry.record->kind;
        marks.clsid = entry.record->clsid;
        marks.category = entry.record->category;
        mark(marks);
        if (marks.installed == entry.record->installed && marks.inventoryFlag == entry.record->inventoryFlag)
            continue;
        LayoutItem marked = *entry.record;
        marked.installed = marks.installed;
        marked.inventoryFlag = marks.inventoryFlag;
        const LayoutImages images = ImagesOf(marked);
        m_tree.SetItemImages(entry.item, images.normal, images.selected);
        entry.record = std::make_shared<const LayoutItem>(std::move(marked));
    }
    ::InvalidateRect(m_tree.Handle(), nullptr, FALSE);
}

HTREEITEM CTreeCtrlWrapper::InsertItem(HTREEITEM parent, HTREEITEM after, const SharedLayoutItem& record) {
    if (record->id == kInvalidItemId) return nullptr;
    // Not before there is an item: the window would wait for 25 icons to show an empty tree.
    if (!m_images) LoadImages(::GetDpiForWindow(m_tree.Handle()));
    const LayoutImages images = ImagesOf(*record);
    const HTREEITEM item = m_tree.Insert(parent, after, record->name, images.normal, images.selected,
                                         static_cast<LPARAM>(record->id));
    if (!item) return nullptr;
    NoteChange();
    m_records.try_emplace(record->id, Entry{record, item}).first->second.item = item;
    return item;
}

HTREEITEM CTreeCtrlWrapper::Insert(HTREEITEM target, IntoFolder into, const LayoutItem& record) {
    const bool inside = GoesInside(target, into);
    const HTREEITEM item = InsertItem(inside ? target : m_tree.Parent(target), inside ? TVI_LAST : target,
                                      std::make_shared<const LayoutItem>(record));
    if (item) m_scroll.Show(item);
    return item;
}

/// At a null target the item goes inside the top level.
bool CTreeCtrlWrapper::GoesInside(HTREEITEM target, IntoFolder into) const {
    if (!target) return true;
    const LayoutItem* record = Find(target);
    return into == IntoFolder::Yes && record && record->kind == LayoutKind::Folder;
}

void CTreeCtrlWrapper::Clear(const CRedrawLock& /*noRedraw*/) {
    m_tree.Select(nullptr);
    if (!m_records.empty()) NoteChange();
    // Before the items, of which the tree tells one by one.
    m_records.clear();
    m_tree.Delete(TVI_ROOT);
    m_modified = false;
}

void CTreeCtrlWrapper::LoadImages(UINT dpi) {
    UniqueImageList images = BuildLayoutImageList(dpi);
    m_tree.SetImages(images.Get());
    m_images = std::move(images);  // the old list goes when the tree has the new one
    int width = 0;
    int height = 0;
    // Without room between them the icons of a folder become one column.
    if (::ImageList_GetIconSize(m_images.Get(), &width, &height)) m_tree.SetRowHeight(height + height / 4);
}

std::vector<HTREEITEM> CTreeCtrlWrapper::Children(HTREEITEM parent) const {
    std::vector<HTREEITEM> children;
    for (HTREEITEM item = m_tree.Child(parent); item; item = m_tree.NextSibling(item))
        children.push_back(item);
    return children;
}

HTREEITEM CTreeCtrlWrapper::CopySubtree(HTREEITEM item, HTREEITEM parent, HTREEITEM after,
                                        MovedSelection selection) {
    const SharedLayoutItem record = Share(item);
    const HTREEITEM copy = record ? InsertItem(parent, after, record) : nullptr;
    if (!copy) return nullptr;
    // From the last to the first: to add behind others, the control would walk all of them each time.
    const std::vector<HTREEITEM> children = Children(item);
    for (std::size_t left = children.size(); left > 0; --left) {
        if (CopySubtree(children[left - 1], copy, TVI_FIRST, selection)) continue;
        Reclaim(item);
        m_tree.Delete(copy);
        return nullptr;
    }
    if (m_tree.IsExpanded(item)) m_tree.Expand(copy, true);
    if (selection == MovedSelection::Kept && m_tree.IsSelected(item)) m_tree.SetSelected(copy, true);
    return copy;
}

void CTreeCtrlWrapper::Reclaim(HTREEITEM item) {
    if (Entry* entry = EntryOf(item)) entry->item = item;
    for (const HTREEITEM child : Children(item)) Reclaim(child);
}

void CTreeCtrlWrapper::Delete(HTREEITEM item, HTREEITEM replacement) {
    m_scroll.BeforeDelete(item, replacement);
    m_tree.Delete(item);
}

HTREEITEM CTreeCtrlWrapper::Move(HTREEITEM item, HTREEITEM parent, HTREEITEM after,
                                 MovedSelection selection) {
    if (item == after || m_tree.IsWithin(parent, item)) return item;
    const CTreeHold hold(m_scroll);
    const HTREEITEM caret = m_tree.Caret();
    const HTREEITEM moved = CopySubtree(item, parent, after, selection);
    if (!moved) return item;
    // Before the deletion, at which the control would select another item in the place of its caret item.
    if (selection == MovedSelection::Kept && m_tree.IsSelected(item)) {
        m_tree.AddToSelection(!parent || m_tree.IsExpanded(parent) ? moved : parent);
    } else if (m_tree.IsWithin(caret, item)) {
        m_tree.MoveCaret(m_tree.Shown(HandleOf(static_cast<LayoutItemId>(m_tree.Data(caret)))));
    }
    Delete(item, moved);
    m_scroll.Show(moved);
    return moved;
}

HTREEITEM CTreeCtrlWrapper::MoveTo(HTREEITEM item, HTREEITEM target, IntoFolder into) {
    return GoesInside(target, into) ? Move(item, target, TVI_LAST) : MoveAfter(item, target);
}

void CTreeCtrlWrapper::MoveUp(HTREEITEM item) {
    const HTREEITEM previous = m_tree.PreviousSibling(item);
    if (!previous) return;
    const HTREEITEM beforeThat = m_tree.PreviousSibling(previous);
    Move(item, m_tree.Parent(item), beforeThat ? beforeThat : TVI_FIRST);
}

void CTreeCtrlWrapper::MoveDown(HTREEITEM item) {
    if (const HTREEITEM next = m_tree.NextSibling(item)) MoveAfter(item, next);
}

void CTreeCtrlWrapper::Sort(HTREEITEM parent) {
    const CTreeHold hold(m_scroll);
    const std::vector<HTREEITEM> children = Children(parent);
    std::vector<SortItem> items;
    std::vector<LayoutItemId> ids;
    items.reserve(children.size());
    ids.reserve(children.size());
    for (const HTREEITEM child : children) {
        const LayoutItem* record = Find(child);
        if (!record) continue;
        if (record->kind == LayoutKind::Folder) Sort(child);
        items.push_back({record->kind, record->name});
        ids.push_back(record->id);
    }
    std::unordered_map<LayoutItemId, std::size_t> ranks;
    std::size_t rank = 0;
    for (const std::size_t index : SortedOrder(items, CompareIgnoringCase)) ranks[ids[index]] = rank++;

    const auto compare = [](LPARAM a, LPARAM b, LPARAM table) -> int {
        const auto& order = *reinterpret_cast<const std::unordered_map<LayoutItemId, std::size_t>*>(table);
        const auto rankA = order.find(static_cast<LayoutItemId>(a));
        const auto rankB = order.find(static_cast<LayoutItemId>(b));
        if (rankA == order.end() || rankB == order.end() || rankA->second == rankB->second) return 0;
        return rankA->second < rankB->second ? -1 : 1;
    };
    m_tree.SortChildren(parent, compare, reinterpret_cast<LPARAM>(&ranks));
    NoteChange();
}

void CTreeCtrlWrapper::ExpandAll(bool expand) {
    const CTreeHold hold(m_scroll);
    for (HTREEITEM item = m_tree.Root(); item; item = m_tree.NextInOrder(item)) {
        if (m_tree.Child(item)) m_tree.Expand(item, expand);
    }
    if (expand) return;
    for (const HTREEITEM item : m_tree.SelectedItems()) {
        if (m_tree.Parent(item)) m_tree.SetSelected(item, false);
    }
}

void CTreeCtrlWrapper::Delete(std::span<const LayoutItemId> ids) {
    const CTreeHold hold(m_scroll);
    for (const LayoutItemId id : ids) {
        if (const HTREEITEM item = HandleOf(id)) Delete(item);
    }
}

void CTreeCtrlWrapper::DeleteSelection() {
    const HTREEITEM caret = m_tree.Caret();
    if (!caret) return;
    std::vector<HTREEITEM> outermost;
    for (const HTREEITEM item : m_tree.SelectedItems()) {
        // What is in a folder is deleted with it, and its handles are not valid any more.
        const bool goesAlong = !outermost.empty() && m_tree.IsWithin(item, outermost.back());
        if (item != caret && !goesAlong) outermost.push_back(item);
    }
    const bool caretGoesAlong =
        std::ranges::any_of(outermost, [&](HTREEITEM item) { return m_tree.IsWithin(caret, item); });
    const CTreeHold hold(m_scroll);
    for (const HTREEITEM item : outermost) Delete(item);
    if (!caretGoesAlong) Delete(caret);
    m_scroll.Show(m_tree.Caret());
    NoteChange();
}

bool CTreeCtrlWrapper::WouldDeleteFolder() const {
    const LayoutItem* caret = Find(m_tree.Caret());
    return (caret && caret->kind == LayoutKind::Folder) || std::ranges::any_of(SelectedIds(), IsFolderId);
}

void CTreeCtrlWrapper::OnDeleteItem(HTREEITEM item, LayoutItemId id) {
    m_scroll.Forget(item);
    // After a move the record belongs to the copy.
    if (HandleOf(id) != item) return;
    m_records.erase(id);
    NoteChange();
}
