// How a layout is filled: which plug-ins it lacks, and the folders that they come into.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <unordered_set>
#include <vector>

#include "Duplicates.h"
#include "LayoutOrder.h"
#include "StudioPlugin.h"

enum class FillOrder { ByVendor, ByCategory, ByCategoryThenVendor };

struct FolderPlan {
    std::wstring name;
    std::vector<FolderPlan> folders;
    std::vector<std::size_t> plugins;  // indexes
};

/// What a plan needs to know of texts.
struct PlanTexts {
    std::function<std::wstring(Category)> captionOf;
    TextFolds fold;
};

/// The folder that stands for the top level, in which there are folders only, all in the order of the
/// plug-ins. Of plug-ins that `inLayout` has under either id, and of those of one file and name, none comes
/// again. Vendors are told apart by their folded names; the commonest spelling names the folder. What has no
/// vendor is put under its category.
FolderPlan PlanLayout(std::span<const StudioPlugin> plugins,
                      const std::unordered_set<Guid, GuidHash>& inLayout, FillOrder order,
                      const PlanTexts& texts);

/// The order of a folder's items after `items[present]` and all behind it came to the others: by name, as
/// sorting has it, unless the others stand in an order of the user's own. Then what came stands behind them.
std::vector<std::size_t> OrderWithAdded(std::span<const SortItem> items, std::size_t present,
                                        const CompareNames& compare);
