// Keeps a tree where it is while single items of it change.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "TreeSelection.h"

/// While it is held the tree does not paint, and scrolls as it likes. Afterwards the first item in view is
/// the one that was it before, or what follows that if it went; only what is to be shown makes the tree
/// scroll on.
class CTreeScroll {
  public:
    explicit CTreeScroll(const CTreeSelection& tree) : m_tree(tree) {}

    /// Holds may be nested; the outermost counts.
    void Hold();
    void Release();

    /// To be in view at the end, or else the closed folder that it lies in. Of several it is the first and
    /// the last, so that as many as possible are seen.
    void Show(HTREEITEM item);
    /// To be called before an item goes, with all that is in it. `heir` is shown in its place.
    void Goes(HTREEITEM item, HTREEITEM heir = nullptr);
    /// An item is gone.
    void Forget(HTREEITEM item);

  private:
    const CTreeSelection& m_tree;
    int m_holds = 0;
    bool m_atStart = false;       // nothing was scrolled away
    HTREEITEM m_top = nullptr;    // the first in view; null when it went and nothing follows it
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
