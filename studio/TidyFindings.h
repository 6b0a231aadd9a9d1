// What tidying up finds in plug-ins and in a layout, and what would be done about it.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "Duplicates.h"
#include "LayoutItem.h"
#include "StudioPlugin.h"

enum class TidyReason { FileGone, FileOutOfReach, AlsoVst3, SameTwice, MayBothBeRight, MissingInLayout };
enum class TidyAction {
    None,     // there to be read
    Remove,   // the registration
    Exclude,  // the rest is up to whoever recorded it
    TakeOut,  // of the layout
};

struct TidyFinding {
    TidyReason reason = TidyReason::FileGone;
    TidyAction action = TidyAction::None;
    bool ticked = false;
    std::size_t index = 0;  // of the plug-in, or of the layout's item when that is to be taken out
};

/// One finding a plug-in at most, in their order, and then those of the layout. `states` has one for each
/// plug-in; a plug-in that no registration names a file of counts as there.
std::vector<TidyFinding> FindUntidy(std::span<const StudioPlugin> plugins, std::span<const FileState> states,
                                    std::span<const SharedLayoutItem> layout, const TextFolds& fold);

struct IdToExclude {
    std::size_t plugin = 0;
    Guid clsid;
};
/// What excludes the chosen plug-ins, and no other: copies of a VST3 in several folders share an id.
std::vector<IdToExclude> ExclusionsOf(std::span<const StudioPlugin> plugins,
                                      const std::vector<std::size_t>& chosen);
