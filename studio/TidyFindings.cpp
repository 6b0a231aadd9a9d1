#include "TidyFindings.h"

#include <optional>
#include <unordered_set>

namespace {

using enum TidyAction;
using Guids = std::unordered_set<Guid, GuidHash>;

constexpr TidyFinding FindingOf(const Duplicate& duplicate) {
    switch (duplicate.kind) {
        case DuplicateKind::AlsoVst3:
            return {TidyReason::AlsoVst3, Exclude, true, duplicate.plugin};
        case DuplicateKind::SameTwice:
            return {TidyReason::SameTwice, Exclude, true, duplicate.plugin};
        case DuplicateKind::MayBothBeRight:
            break;
    }
    return {TidyReason::MayBothBeRight, None, false, duplicate.plugin};
}

/// Nothing when there is nothing left to do about a missing file: an excluded VST waits for the next scan.
std::optional<TidyFinding> FindingOf(const StudioPlugin& plugin, FileState state, std::size_t index) {
    const Category category = plugin.item.category;
    if (state == FileState::There || plugin.file.empty() || plugin.permanent) return std::nullopt;
    if (IsVstCategory(category) && plugin.excluded) return std::nullopt;
    const TidyAction action = !IsExcludable(category) ? None : IsVstCategory(category) ? Exclude : Remove;
    const bool gone = state == FileState::Gone;
    return TidyFinding{gone ? TidyReason::FileGone : TidyReason::FileOutOfReach, action,
                       gone && action != None, index};
}

}  // namespace

std::vector<TidyFinding> FindUntidy(std::span<const StudioPlugin> plugins, std::span<const FileState> states,
                                    std::span<const SharedLayoutItem> layout, const TextFolds& fold) {
    std::vector<std::optional<TidyFinding>> found(plugins.size());
    const auto isThere = [&](std::size_t i) {
        return states[i] == FileState::There || plugins[i].file.empty();
    };
    for (const Duplicate& duplicate : FindDuplicates(plugins, isThere, fold)) {
        if (!IsExcludable(plugins[duplicate.plugin].item.category)) continue;
        found[duplicate.plugin] = FindingOf(duplicate);
        // To be compared with.
        if (duplicate.kind == DuplicateKind::MayBothBeRight && !found[duplicate.original])
            found[duplicate.original] = {TidyReason::MayBothBeRight, None, false, duplicate.original};
    }
    Guids gone;
    Guids present;
    std::vector<TidyFinding> findings;
    for (std::size_t i = 0; i < plugins.size(); ++i) {
        if (!isThere(i)) found[i] = FindingOf(plugins[i], states[i], i);
        if (found[i]) findings.push_back(*found[i]);
        for (const Guid& id : {plugins[i].item.clsid, plugins[i].item.md5Clsid})
            (!isThere(i) && states[i] == FileState::Gone ? gone : present).insert(id);
    }
    const auto isGone = [&](const Guid& id) { return gone.contains(id) && !present.contains(id); };
    for (std::size_t i = 0; i < layout.size(); ++i) {
        const LayoutItem& item = *layout[i];
        if (item.kind == LayoutKind::Plugin && (!item.installed || isGone(item.clsid)))
            findings.push_back({TidyReason::MissingInLayout, TakeOut, true, i});
    }
    return findings;
}

std::vector<IdToExclude> ExclusionsOf(std::span<const StudioPlugin> plugins,
                                      const std::vector<std::size_t>& chosen) {
    std::vector<bool> goes(plugins.size());
    for (const std::size_t i : chosen) goes[i] = true;
    Guids kept;
    for (std::size_t i = 0; i < plugins.size(); ++i) {
        if (goes[i] || plugins[i].excluded) continue;
        for (const Guid& id : ExclusionIdsOf(plugins[i])) kept.insert(id);
    }
    std::vector<IdToExclude> exclusions;
    for (const std::size_t i : chosen) {
        for (const Guid& id : ExclusionIdsOf(plugins[i])) {
            if (!kept.contains(id)) exclusions.push_back({i, id});
        }
    }
    return exclusions;
}
