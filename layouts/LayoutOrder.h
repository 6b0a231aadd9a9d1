// The order of a sorted folder.
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
