// A plug-in of this computer, of whatever category, as the commands for the whole studio take it.
#pragma once

#include <string>
#include <vector>

#include "PluginRecords.h"

/// Gone is said only of a file whose drive or share is there: what is merely not connected may come back.
enum class FileState { There, Gone, OutOfReach };

struct StudioPlugin {
    PluginListItem item;  // as a list has it; of a VST3, which has two rows, the one under its plug-in id
    std::wstring name;
    std::wstring vendor;  // empty but for VST and VST3
    int uniqueId = 0;     // the same
    std::wstring file;    // a path that the system understands; empty when no registration names one
    bool excluded = false;
    bool permanent = false;
};

/// The class ids that exclude it: the list has a row for each.
inline std::vector<Guid> ExclusionIdsOf(const StudioPlugin& plugin) {
    std::vector<Guid> ids;
    if (!plugin.item.clsid.IsNull()) ids.push_back(plugin.item.clsid);
    if (IsVst3(plugin.item.category) && !plugin.item.md5Clsid.IsNull() &&
        plugin.item.md5Clsid != plugin.item.clsid)
        ids.push_back(plugin.item.md5Clsid);
    return ids;
}
