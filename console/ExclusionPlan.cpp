#include "ExclusionPlan.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace {

ExclusionFate FateOf(const StudioPlugin& plugin, const ExclusionLine& line, std::size_t room) {
    if (!IsExcludable(plugin.item.category)) return ExclusionFate::NotExcludable;
    if (plugin.permanent) return ExclusionFate::Permanent;
    if (line.changes.empty()) return ExclusionFate::Already;
    return line.changes.size() > room ? ExclusionFate::NoRoom : ExclusionFate::Changed;
}

}  // namespace

std::vector<ExclusionLine> PlanExclusions(std::span<const Guid> ids, bool exclude,
                                          const ExclusionState& state) {
    std::unordered_map<Guid, const StudioPlugin*, GuidHash> known;
    for (const StudioPlugin& plugin : state.plugins) {
        known.try_emplace(plugin.item.clsid, &plugin);
        if (!plugin.item.md5Clsid.IsNull()) known.try_emplace(plugin.item.md5Clsid, &plugin);
    }
    std::vector<ExclusionLine> lines;
    std::unordered_set<Guid, GuidHash> done;
    std::size_t room = kMaxEntries - std::min(state.count, kMaxEntries);
    for (const Guid& id : ids) {
        const auto found = known.find(id);
        const StudioPlugin* plugin = found == known.end() ? nullptr : found->second;
        ExclusionLine line{.clsid = plugin ? plugin->item.clsid : id};
        if (!done.insert(line.clsid).second) continue;
        if (plugin) {
            line.name = plugin->name;
            for (const Guid& own : ExclusionIdsOf(*plugin)) {
                if (state.isExcluded(own) != exclude) line.changes.push_back(own);
            }
            line.fate = FateOf(*plugin, line, exclude ? room : kMaxEntries);
            if (line.fate != ExclusionFate::Changed) line.changes.clear();
            if (exclude) room -= line.changes.size();
        }
        lines.push_back(std::move(line));
    }
    return lines;
}
