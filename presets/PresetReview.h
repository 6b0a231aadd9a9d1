// What a preset file would bring to the plug-ins of this computer, before it is imported.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "PresetListMgr.h"
#include "PresetPlugin.h"
#include "PresetWalk.h"

/// A plug-in of this computer as the preset commands know it. A null category stands for any.
using PluginFinder = std::function<std::optional<PresetPlugin>(const Guid& clsid, const Guid& category)>;

struct PluginInFile {
    PresetPlugin plugin;  // as it is installed, else as the file names it
    bool installed = false;
    std::size_t presets = 0;
    std::size_t replaced = 0;  // of the presets that are stored, by those in the file; 0 unless it was asked
};

/// So many plug-ins that are not installed are worth reading about.
inline constexpr std::size_t kMostStrangers = 1000;

struct PluginsInFile {
    std::vector<PluginInFile> plugins;
    bool goesOn = false;  // there are more, which are not installed
};

/// Gives 0 or a result code. `goOn` is asked before each plug-in and preset. One entry a plug-in, however
/// often the file names it.
int ReadPluginsInFile(IByteSource& file, const PluginFinder& find, const std::function<bool()>& goOn,
                      PluginsInFile& found, bool countReplaced = false);

struct PresetDifference {
    std::size_t added = 0;    // not stored so far
    std::size_t changed = 0;  // stored with other data
};
/// What an import would change, one entry a plug-in: reads the data of the file and those that are stored.
/// Gives a count or a result code; `goOn` is asked before each preset.
int ComparePresets(IByteSource& file, std::span<const CPresetListMgr> plugins,
                   const std::function<bool()>& goOn, std::vector<PresetDifference>& differences);
