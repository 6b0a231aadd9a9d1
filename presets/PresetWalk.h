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

/// The plug-in that a record is read for, and what the record says of it.
struct PluginInFile {
    PresetPlugin plugin;
    std::int32_t presets = 0;
};

/// Reads the head of a record. A null class id or category takes the file's, so that a blank one accepts any
/// record. Gives 0, or kNothingForPlugin when the record has no presets or is another plug-in's: its presets
/// still follow then. Throws StreamError.
int ReadPluginInto(CPresetFileReader& reader, std::uint16_t version, PluginInFile& plugin);

struct ImportedPreset {
    std::int32_t type = 0;
    const std::wstring& name;
    std::span<const std::byte> data;
};
/// Stores a preset of the plug-in with that index; false ends the import.
using PresetKeeper = std::function<bool(std::size_t plugin, const ImportedPreset& preset)>;

/// Each gives the number of presets kept, or a result code. What was kept before a failure stays kept.
int ImportFor(CPresetFileReader& reader, PluginInFile& plugin, const PresetSelection* selection,
              const PresetKeeper& keep);
int ImportForSeveral(CPresetFileReader& reader, std::span<PluginInFile* const> plugins,
                     const PresetKeeper& keep);

/// Takes a line of the preview, and the preset's position in its record, or that it is no preset's line.
inline constexpr std::int32_t kNoPreset = -1;
using PreviewList = std::function<void(const std::wstring& line, std::int32_t position)>;

/// Lists the presets of one plug-in; gives their number or a result code.
int ListForPlugin(CPresetFileReader& reader, const PresetPlugin& plugin, const PreviewList& list,
                  const std::wstring& notAPresetFile);
/// A small file can claim millions of presets; a list that nobody can read need not hold them.
inline constexpr std::int32_t kMostContents = 100000;
/// Lists each plug-in as "<<name>>", and its presets below it. A list of kMostContents lines gets `more` as
/// its last one when the file goes on.
int ListContents(CPresetFileReader& reader, const PreviewList& list, const std::wstring& notAPresetFile,
                 const std::wstring& more);
