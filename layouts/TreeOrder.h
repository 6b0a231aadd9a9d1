// The order of a tree view's items, kept beside the control by the messages that change it.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <memory_resource>
#include <unordered_map>
#include <utility>

/// The control takes a message for each question about an item, and some systems look for the item among all
/// of theirs then: too slow for a walk of a large tree. A null item means the top level.
class CTreeOrder {
  public:
    HTREEITEM Child(HTREEITEM item) const { return Beside(item, &Node::first); }
    HTREEITEM Parent(HTREEITEM item) const { return Beside(item, &Node::parent); }
    HTREEITEM Previous(HTREEITEM item) const { return Beside(item, &Node::previous); }
    HTREEITEM Next(HTREEITEM item) const { return Beside(item, &Node::next); }
    /// 0 for an item that is not there.
    LPARAM Data(HTREEITEM item) const;
    /// Was told to be selected, and not told otherwise since. Whatever else is selected is the caret item.
    bool MayBeSelected(HTREEITEM item) const;

    void OnInserted(HTREEITEM item, const TVINSERTSTRUCTW& as);
    /// Before the control deletes it: what hears of that does not find it any more.
    void OnDelete(HTREEITEM item);
    void OnSort(const TVSORTCB& sort);
    void OnSet(const TVITEMW& item);
    void Clear();

  private:
    struct Node {
        HTREEITEM item = nullptr;
        LPARAM data = 0;
        bool mayBeSelected = false;
        Node* parent = nullptr;
        Node* previous = nullptr;
        Node* next = nullptr;
        Node* first = nullptr;
        Node* last = nullptr;
    };
    const Node* Find(HTREEITEM item) const;
    Node* Find(HTREEITEM item) { return const_cast<Node*>(std::as_const(*this).Find(item)); }
    HTREEITEM Beside(HTREEITEM item, Node* Node::*which) const;
    static void Link(Node& node, Node& parent, Node* previous);
    static void Unlink(Node& node);
    void Erase(const Node& node);

    Node m_top;  // its children are the top level
    std::pmr::unsynchronized_pool_resource m_pool;
    std::pmr::unordered_map<HTREEITEM, Node> m_nodes{&m_pool};
};
