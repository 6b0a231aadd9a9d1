#include "TreeOrder.h"

#include <algorithm>
#include <vector>

namespace {

bool IsTop(HTREEITEM item) { return !item || item == TVI_ROOT; }

}  // namespace

const CTreeOrder::Node* CTreeOrder::Find(HTREEITEM item) const {
    if (IsTop(item)) return &m_top;
    const auto found = m_nodes.find(item);
    return found == m_nodes.end() ? nullptr : &found->second;
}

HTREEITEM CTreeOrder::Beside(HTREEITEM item, Node* Node::*which) const {
    const Node* node = Find(item);
    const Node* other = node ? node->*which : nullptr;
    return other ? other->item : nullptr;
}

LPARAM CTreeOrder::Data(HTREEITEM item) const {
    const Node* node = Find(item);
    return node ? node->data : 0;
}

bool CTreeOrder::MayBeSelected(HTREEITEM item) const {
    const Node* node = Find(item);
    return node && node->mayBeSelected;
}

void CTreeOrder::Link(Node& node, Node& parent, Node* previous) {
    node.parent = &parent;
    node.previous = previous;
    node.next = previous ? previous->next : parent.first;
    (previous ? previous->next : parent.first) = &node;
    (node.next ? node.next->previous : parent.last) = &node;
}

void CTreeOrder::Unlink(Node& node) {
    (node.previous ? node.previous->next : node.parent->first) = node.next;
    (node.next ? node.next->previous : node.parent->last) = node.previous;
}

void CTreeOrder::OnInserted(HTREEITEM item, const TVINSERTSTRUCTW& as) {
    Node* parent = Find(as.hParent);
    if (!item || !parent) return;
    Node* after = as.hInsertAfter == TVI_FIRST ? nullptr : parent->last;
    if (Node* sibling = Find(as.hInsertAfter); sibling && sibling->parent == parent) after = sibling;
    Node& node = m_nodes[item];
    node.item = item;
    node.data = as.item.lParam;
    Link(node, *parent, after);
}

void CTreeOrder::OnDelete(HTREEITEM item) {
    if (IsTop(item)) return Clear();
    Node* node = Find(item);
    if (!node) return;
    Unlink(*node);
    Erase(*node);
}

void CTreeOrder::Erase(const Node& node) {
    for (const Node* child = node.first; child;) Erase(*std::exchange(child, child->next));
    m_nodes.erase(HTREEITEM{node.item});
}

void CTreeOrder::OnSort(const TVSORTCB& sort) {
    Node* parent = Find(sort.hParent);
    if (!parent) return;
    std::vector<Node*> children;
    for (Node* child = parent->first; child; child = child->next) children.push_back(child);
    std::ranges::stable_sort(children, [&sort](const Node* a, const Node* b) {
        return sort.lpfnCompare(a->data, b->data, sort.lParam) < 0;
    });
    parent->first = parent->last = nullptr;
    for (Node* child : children) Link(*child, *parent, parent->last);
}

void CTreeOrder::OnSet(const TVITEMW& item) {
    Node* node = Find(item.hItem);
    if (node && (item.mask & TVIF_STATE) && (item.stateMask & TVIS_SELECTED))
        node->mayBeSelected = (item.state & TVIS_SELECTED) != 0;
}

void CTreeOrder::Clear() {
    m_nodes.clear();
    m_top = {};
}
