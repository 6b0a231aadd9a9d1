// The order of a layout's items: how a folder is sorted, and where dragged items land.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "LayoutItem.h"

/// What sorting needs to know of one child.
struct SortItem {
    LayoutKind kind = LayoutKind::Folder;
    std::wstring_view name;
};

/// Negative, zero or positive, as the first name stands before, with or behind the second.
using CompareNames = std::function<int(std::wstring_view, std::wstring_view)>;

/// The children's indexes in their new order: folders before plug-ins, each by name. A separator stays behind
/// the item that it followed; one that followed none goes where its name puts it.
std::vector<std::size_t> SortedOrder(std::span<const SortItem> children, const CompareNames& compare);

/// Where the pointer let go of the dragged items.
struct DropFacts {
    bool onItem = false;
    bool lowerHalf = false;  // of the item's row
    bool onFolder = false;
    bool hasPrevious = false;   // the item has a sibling before it
    bool belowDragged = false;  // without an item: the pointer was below the dragged one
};

enum class DropPlace { AfterPrevious, FirstOfParent, LastInside, AfterItem, TopLevelFirst, TopLevelLast };

constexpr DropPlace PlaceOfDrop(const DropFacts& facts) {
    if (!facts.onItem) return facts.belowDragged ? DropPlace::TopLevelLast : DropPlace::TopLevelFirst;
    if (facts.lowerHalf) return facts.onFolder ? DropPlace::LastInside : DropPlace::AfterItem;
    return facts.hasPrevious ? DropPlace::AfterPrevious : DropPlace::FirstOfParent;
}
