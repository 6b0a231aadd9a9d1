// Keeps what is open, selected and in view while a tree is filled again.
#pragma once

#include <vector>

#include "TreeCtrlEx.h"

class CRememberedTree {
  public:
    explicit CRememberedTree(const CTreeCtrlEx& tree);
    /// For a tree that was filled again with as many items; any other is left alone.
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
