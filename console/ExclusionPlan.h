// What excluding or enabling plug-ins by their class ids comes to.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "StudioPlugin.h"

enum class ExclusionFate {
    Changed,
    Already,
    Unknown,        // no plug-in of this computer
    Permanent,      // excluded always
    NotExcludable,  // of a category that has no exclusions
    NoRoom,         // the list of exclusions is full
};

/// One plug-in, or an id that is none's.
struct ExclusionLine {
    ExclusionFate fate = ExclusionFate::Unknown;
    Guid clsid;
    std::wstring name{};
    std::vector<Guid> changes{};  // the ids to be written or taken away
};

/// What there is.
struct ExclusionState {
    std::span<const StudioPlugin> plugins;
    std::function<bool(const Guid&)> isExcluded;
    std::size_t count = 0;  // of all exclusions
};

/// One line a plug-in, in the order of the ids. Either id of a VST stands for it, and a VST3 is excluded
/// under both.
std::vector<ExclusionLine> PlanExclusions(std::span<const Guid> ids, bool exclude,
                                          const ExclusionState& state);
