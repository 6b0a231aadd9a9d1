// What a computer has of what a studio set can hold, read from the registry and the layouts folder.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Files.h"
#include "FriendlyNames.h"
#include "PluginInventory.h"
#include "StudioSet.h"

/// Without the permanent ones. A key there that is no class id is passed over.
std::vector<StudioSet::Exclusion> ReadExclusions();
/// Of each VST and VST3 that has one.
std::vector<StudioSet::PluginName> ReadPluginNames(const CPluginInventory& inventory);
/// Nothing for a file that the list of layouts does not show.
std::optional<std::wstring> ReadLayoutXml(const std::wstring& path, CPatience& patience);

struct NamedPlugin {
    PluginListItem item;
    bool isExact = false;  // the same file, as far as its id tells
    std::wstring name;
};
/// The plug-in that a name of a set is for: of copies in several folders the one of the same id, else that
/// which stands for all.
std::optional<NamedPlugin> FindNamed(const CPluginInventory& inventory, const StudioSet::PluginName& name);

/// A VST3 that the set excludes is excluded under all of its ids: of those that the set does not know, it
/// gets an entry for each.
void AddOwnIds(StudioSet& set, const CPluginInventory& inventory);

/// For DiffOf; good as long as its arguments.
StudioPresent ReadPresent(const CPluginInventory& inventory, const std::wstring& layoutFolder);
/// With the backslash at its end.
std::wstring FolderPrefix(const std::wstring& folder);
