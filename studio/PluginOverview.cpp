#include "PluginOverview.h"

#include <windows.h>

#include <shlwapi.h>

#include <algorithm>
#include <unordered_map>

#include "PermanentExclusions.h"

namespace {

StudioPlugin PluginOf(const VstInventoryRecord& record) {
    // Under a null plug-in id nothing can be looked up: its other id stands for it.
    const Guid& clsid = record.clsid.IsNull() ? record.md5Clsid : record.clsid;
    return {.item = {.sourceIndex = 0,
                     .clsid = clsid,
                     .md5Clsid = record.md5Clsid,
                     .fromInventory = true,
                     .isX64 = record.isX64,
                     .category = *record.category,
                     .namesake = 0},
            .name = record.name,
            .vendor = record.vendor,
            .uniqueId = record.uniqueId,
            .file = record.path};
}

/// Copies of a VST3 in several folders share its plug-in id, under which one of them stands.
bool StandsUnderPluginId(const CVstInventory& inventory, const Guid& id, const VstInventoryRecord& record) {
    if (id == record.clsid) return false;
    const VstInventoryRecord* known = record.clsid.IsNull() ? nullptr : inventory.Find(record.clsid);
    return known && known->md5Clsid == record.md5Clsid;
}

}  // namespace

std::vector<StudioPlugin> ListAllPlugins(const CPluginInventory& inventory,
                                         const CExclusionList& exclusions) {
    std::vector<StudioPlugin> plugins;
    const auto& entries = inventory.Entries();
    const auto& records = inventory.Vst().Records();
    plugins.reserve(entries.size() + records.size());
    std::unordered_map<Guid, unsigned, GuidHash> namesakes;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const PluginEntry& entry = entries[i];
        if (!HasRow(entry)) continue;
        plugins.push_back({.item = {.sourceIndex = static_cast<unsigned>(i),
                                    .clsid = entry.clsid,
                                    .md5Clsid = {},
                                    .fromInventory = false,
                                    .isX64 = false,
                                    .category = *entry.category,
                                    .namesake = namesakes[entry.clsid]++},
                           .name = *entry.name,
                           .vendor = {},
                           .file = inventory.LoadedFileOf(entry.clsid, *entry.category)});
    }
    for (const auto& [id, record] : records) {
        if (HasRow(id, record) && !StandsUnderPluginId(inventory.Vst(), id, record))
            plugins.push_back(PluginOf(record));
    }
    for (StudioPlugin& plugin : plugins) {
        const auto ids = ExclusionIdsOf(plugin);
        plugin.excluded = std::ranges::all_of(ids, [&](const Guid& id) { return exclusions.Contains(id); });
        plugin.permanent = std::ranges::any_of(ids, IsPermanentlyExcluded);
    }
    return plugins;
}

FileState CFileStates::Of(const std::wstring& path) {
    std::wstring root = path;
    if (::PathStripToRootW(root.data()))
        root.resize(root.find(L'\0'));
    else
        root.clear();
    const auto known = m_roots.find(root);
    if (known != m_roots.end() && !known->second) return FileState::OutOfReach;
    // In another user's folder nobody can say whether it is there.
    if (::PathFileExistsW(path.c_str()) || ::GetLastError() == ERROR_ACCESS_DENIED) return FileState::There;
    if (root.empty()) return FileState::OutOfReach;
    // A share is asked for by its top folder: without the backslash, systems may deny it.
    const std::wstring folder = root.ends_with(L'\\') ? root : root + L'\\';
    const bool there = known != m_roots.end() || ::PathFileExistsW(folder.c_str());
    m_roots[root] = there;
    return there ? FileState::Gone : FileState::OutOfReach;
}
