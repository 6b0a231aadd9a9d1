// Presets between the stores of plug-ins and a preset file.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>

#include "PresetListMgr.h"
#include "PresetWalk.h"

/// What a caller learns of a long transfer.
struct PresetTransferEvents {
    /// This one ends the export. Of an import, the registry has refused this one or one before.
    std::function<void(const std::wstring& name)> invalidPreset;
    std::function<bool()> progress;  // before each preset; false ends the transfer there
};

/// The record of a plug-in as it stands in a preset file.
struct PresetsInMemory {
    std::string record;
    int presets = 0;
};

// Each gives a count or a code of PresetResult.h, and throws nothing. The selection goes by the index in the
// store for an export, and by the position in the file's record for an import; null means all presets.

/// Writes nothing at all when no preset is chosen.
int ExportPresets(IByteSink& file, const CPresetListMgr& plugin, const PresetSelection* selection,
                  const PresetTransferEvents& events = {});
/// A plug-in among those whose presets go into one file.
struct PluginToExport {
    CPresetListMgr plugin;
    const PresetSelection* selection = nullptr;
    /// What goes into the file, when it was read before.
    const PresetsInMemory* read = nullptr;
};
int ExportPresetsOfPlugins(IByteSink& file, std::span<const PluginToExport> plugins,
                           const PresetTransferEvents& events = {});
int ImportPresets(IByteSource& file, const CPresetListMgr& plugin, const PresetSelection* selection,
                  const PresetTransferEvents& events = {});
int ImportPresetsOfPlugins(IByteSource& file, std::span<const CPresetListMgr> plugins,
                           const PresetTransferEvents& events = {});

/// Names in the step what an import of the same arguments will write over: presets, and files that may be
/// other presets'. Gives how many presets it will bring, as far as the file can be read, nothing when that
/// was ended.
std::optional<std::size_t> NameImportIn(BackupStep& step, IByteSource& file,
                                        std::span<const CPresetListMgr> plugins,
                                        const PresetSelection* selection,
                                        const PresetTransferEvents& events = {});

/// The presets of the plug-in in the file, for a preview.
int ListFileForPlugin(IByteSource& file, const CPresetListMgr& plugin, const PresetPreview& preview);
/// The plug-ins in the file with their presets.
int ListFileContents(IByteSource& file, const PresetPreview& preview);
