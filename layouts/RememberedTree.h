// What is open, selected and in view in a tree, over its being filled anew.
#pragma once

#include <vector>

#include "TreeCtrlEx.h"

class CRememberedTree {
  public:
    /// Notes it.
    explicit CRememberedTree(const CTreeCtrlEx& tree);
    /// Restores it in a tree that was filled anew with the same items; a tree with others is left alone.
    void Restore(const CTreeCtrlEx& tree) const;

  private:
    struct Row {
        bool expanded;
        bool selected;
        bool caret;
        bool first;  // of the visible ones
    };
    std::vector<Row> m_rows;  // of all items in order
};
