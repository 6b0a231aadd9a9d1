// The ways through a preset file: importing from it and listing what it holds.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "PresetFile.h"
#include "PresetPlugin.h"
#include "PresetResult.h"

/// One flag a preset, by its position; 0 leaves the preset out. A position beyond the end is left out, too.
using PresetSelection = std::vector<std::uint32_t>;

/// Null means every preset.
constexpr bool IsChosen(const PresetSelection* selection, std::size_t position) {
    return !selection || (position < selection->size() && (*selection)[position] != 0);
}

struct ImportedPreset {
    std::int32_t type = 0;
    const std::wstring& name;
    std::span<const std::byte> data;
};
/// Stores a preset of the plug-in with that index; false ends the import.
using PresetKeeper = std::function<bool(std::size_t plugin, const ImportedPreset& preset)>;

/// Each gives the number of presets kept, or a result code. What was kept before a failure stays kept.
int ImportFor(CPresetFileReader& reader, const PresetPlugin& plugin, const PresetSelection* selection,
              const PresetKeeper& keep);
int ImportForSeveral(CPresetFileReader& reader, std::span<const PresetPlugin> plugins,
                     const PresetKeeper& keep);

using PresetNamer = std::function<void(std::size_t plugin, const PresetRecordHead& preset)>;
/// The presets that an import would bring, for one plug-in or for several, without reading their data.
int NameImport(CPresetFileReader& reader, std::span<const PresetPlugin> plugins,
               const PresetSelection* selection, const PresetNamer& name);

/// What a file holds: each record, and behind it the name of each of its presets.
struct PresetContents {
    /// Files of version 0 name no category: `anyCategory`.
    std::function<void(const PresetPlugin& plugin, bool anyCategory)> plugin;
    std::function<void(const std::wstring& name)> preset;
};
/// Gives 0 or a result code. A file that breaks off was told of up to there.
int WalkContents(CPresetFileReader& reader, const PresetContents& contents);

/// The position of a line that stands for no preset.
inline constexpr std::int32_t kNoPreset = -1;

/// Where the lines of a preview go, and those that no file holds.
struct PresetPreview {
    /// `position` is the preset's in its record, or kNoPreset.
    std::function<void(const std::wstring& line, std::int32_t position)> add;
    std::wstring notAPresetFile;
    std::wstring goesOn;  // the last line of a list that is cut off
};

/// Lists the presets of one plug-in; gives their number or a result code.
int ListForPlugin(CPresetFileReader& reader, const PresetPlugin& plugin, const PresetPreview& preview);

/// A small file can claim millions of presets; a list that nobody can read need not hold them.
inline constexpr std::int32_t kMostContents = 100000;
/// Lists each plug-in as "<<name>>", and its presets below it, in at most kMostContents lines and the one
/// that says that the file goes on. Gives the number of presets listed or a result code.
int ListContents(CPresetFileReader& reader, const PresetPreview& preview);
