// Keeps a tree where it is while single items of it change.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "TreeSelection.h"

/// While it is held the tree does not paint, and scrolls as it likes. Afterwards the same item is the first
/// in view, or the next one if it was deleted; then the tree scrolls as far as it takes to show what is to be
/// in view.
class CTreeScroll {
  public:
    explicit CTreeScroll(const CTreeSelection& tree) : m_tree(tree) {}

    /// Holds may be nested; the outermost counts.
    void Hold();
    void Release();

    /// To be in view at the end, or else the closed folder that it lies in. Of several it is the first and
    /// the last, so that as many as possible are seen.
    void Show(HTREEITEM item);
    /// To be called before an item is deleted with all that is in it. `replacement` is shown in its place.
    void BeforeDelete(HTREEITEM item, HTREEITEM replacement = nullptr);
    /// An item was deleted.
    void Forget(HTREEITEM item);

  private:
    const CTreeSelection& m_tree;
    int m_holds = 0;
    bool m_atStart = false;       // nothing was scrolled away
    HTREEITEM m_top = nullptr;    // the first in view; null when it was deleted and nothing follows it
    HTREEITEM m_first = nullptr;  // to be shown
    HTREEITEM m_last = nullptr;
};

class CTreeHold {
  public:
    explicit CTreeHold(CTreeScroll& scroll) : m_scroll(scroll) { m_scroll.Hold(); }
    ~CTreeHold() { m_scroll.Release(); }
    CTreeHold(const CTreeHold&) = delete;
    CTreeHold& operator=(const CTreeHold&) = delete;

  private:
    CTreeScroll& m_scroll;
};
