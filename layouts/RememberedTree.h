// A layout's items with what is open, selected and in view, for a tree that is filled again or gets them once
// more.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "TreeCtrlWrapper.h"

/// Records are shared with the tree and with each other, so that remembering costs little.
class CRememberedTree {
  public:
    CRememberedTree() = default;
    /// All items, or those that are selected with all that is in them.
    enum class Part { All, Selection };
    explicit CRememberedTree(const CTreeCtrlWrapper& layout, Part part = Part::All);
    bool IsEmpty() const { return m_rows.empty(); }
    /// Only the looks, for a tree that was filled again with as many items; any other is left alone.
    void Restore(const CTreeCtrlEx& tree) const;
    /// The items themselves, under the ids that they had, in the place of the layout's. False when the tree
    /// did not take all of them.
    bool Fill(CTreeCtrlWrapper& layout) const;
    /// Adds the items under ids of their own, the first by the insertion rule and each other behind the one
    /// before it, and selects them. False, mostly with nothing done, when folders would be nested too deep
    /// for a layout file, or the tree takes no more.
    bool Paste(CTreeCtrlWrapper& layout, HTREEITEM target) const;
    /// What the rows take, and the records that have just so many holders.
    std::size_t Bytes(long holders) const;

  private:
    struct Row {
        SharedLayoutItem record;
        std::uint16_t depth;
        bool expanded;
        bool selected;
    };
    static constexpr std::size_t kNone = SIZE_MAX;

    bool FitsAt(const CTreeCtrlWrapper& layout, HTREEITEM target) const;
    /// Behind the row and what is in it.
    std::size_t EndOf(std::size_t row) const;

    using Items = std::vector<HTREEITEM>;  // one a row
    bool Insert(CTreeCtrlWrapper& layout, HTREEITEM parent, std::size_t begin, std::size_t end,
                Items& items) const;
    void Select(const CTreeCtrlEx& tree, const Items& items) const;
    void Scroll(const CTreeCtrlEx& tree, const Items& items) const;

    std::vector<Row> m_rows;  // of all items in order
    std::size_t m_caret = kNone;
    std::size_t m_top = kNone;  // the first in view
};
