#include "PresetWalk.h"

#include <algorithm>

namespace {

/// The plug-in that a record is read for, and how many presets the record has.
struct PluginRecord {
    PresetPlugin plugin;
    std::int32_t presets = 0;
};

/// Reads the head of a record. A null class id or category takes the file's, so that a blank record accepts
/// any. Gives 0, or kNothingForPlugin when the record has no presets or is another plug-in's: its presets
/// still follow then.
int ReadHead(CPresetFileReader& reader, std::uint16_t version, PluginRecord& record) {
    PresetPlugin& plugin = record.plugin;
    PluginRecordHead head = reader.ReadPlugin(version);
    const Guid category = head.category.value_or(plugin.category);
    record.presets = head.presets;
    plugin.name = std::move(head.name);
    if (plugin.clsid.IsNull()) plugin.clsid = head.clsid;
    if (plugin.category.IsNull()) plugin.category = category;
    if (head.presets == 0) return kNothingForPlugin;
    return plugin.clsid == head.clsid && plugin.category == category ? 0 : kNothingForPlugin;
}

/// Goes through the presets of a record; a negative count is taken as 0.
template <typename TVisit>
void ForEachPreset(CPresetFileReader& reader, std::int32_t count, TVisit&& visit) {
    for (std::int32_t position = 0; position < count; ++position) visit(reader.ReadPreset(), position);
}

void SkipPresets(CPresetFileReader& reader, std::int32_t count) {
    ForEachPreset(reader, count,
                  [&](const PresetRecordHead& preset, std::int32_t) { reader.SkipData(preset); });
}

int KeepPresets(CPresetFileReader& reader, std::size_t index, std::int32_t count,
                const PresetSelection* selection, const PresetKeeper& keep, std::vector<std::byte>& data) {
    int kept = 0;
    ForEachPreset(reader, count, [&](const PresetRecordHead& preset, std::int32_t position) {
        if (!IsChosen(selection, static_cast<std::size_t>(position))) return reader.SkipData(preset);
        reader.ReadData(preset, data);
        if (!keep(index, {.type = preset.type, .name = preset.name, .data = data})) throw StreamError();
        ++kept;
    });
    return kept;
}

/// Goes through the records; `visit` reads one with its presets and gives false to end the walk.
template <typename TVisit>
int ForEachRecord(CPresetFileReader& reader, TVisit&& visit) {
    const auto header = reader.ReadHeader();
    if (!header) return kNotAPresetFile;
    for (std::int32_t i = 0; i < header->plugins; ++i) {
        if (!visit(header->version)) break;
    }
    return 0;
}

/// Kept: this result ends a preview with a line that says so, though no head is read with it.
bool EndsPreview(int head, const PresetPreview& preview) {
    if (head != kNotAPresetFile) return false;
    preview.add(preview.notAPresetFile, kNoPreset);
    return true;
}

}  // namespace

int ImportFor(CPresetFileReader& reader, const PresetPlugin& plugin, const PresetSelection* selection,
              const PresetKeeper& keep) {
    return ResultOf([&] {
        int kept = 0;
        std::vector<std::byte> data;
        PluginRecord record{.plugin = plugin, .presets = 0};
        const int result = ForEachRecord(reader, [&](std::uint16_t version) {
            if (ReadHead(reader, version, record) == 0) {
                kept += KeepPresets(reader, 0, record.presets, selection, keep, data);
            } else {
                SkipPresets(reader, record.presets);
            }
            return true;
        });
        if (result != 0) return result;
        return kept > 0 ? kept : kNothingForPlugin;
    });
}

int ImportForSeveral(CPresetFileReader& reader, std::span<const PresetPlugin> plugins,
                     const PresetKeeper& keep) {
    return ResultOf([&] {
        int kept = 0;
        bool matched = false;
        std::vector<std::byte> data;
        const int result = ForEachRecord(reader, [&](std::uint16_t version) {
            PluginRecord record;
            ReadHead(reader, version, record);
            const std::uint64_t presets = reader.Position();
            bool taken = false;
            for (std::size_t i = 0; i < plugins.size(); ++i) {
                if (plugins[i].clsid != record.plugin.clsid || plugins[i].category != record.plugin.category)
                    continue;
                reader.Seek(presets);
                kept += KeepPresets(reader, i, record.presets, nullptr, keep, data);
                taken = matched = true;
            }
            if (!taken) SkipPresets(reader, record.presets);
            return true;
        });
        if (result != 0) return result;
        return matched ? kept : kNothingForPlugin;
    });
}

int ListForPlugin(CPresetFileReader& reader, const PresetPlugin& plugin, const PresetPreview& preview) {
    return ResultOf([&] {
        int listed = 0;
        bool matched = false;
        const int result = ForEachRecord(reader, [&](std::uint16_t version) {
            PluginRecord record{.plugin = plugin, .presets = 0};
            const int head = ReadHead(reader, version, record);
            if (EndsPreview(head, preview)) return false;
            ForEachPreset(reader, record.presets, [&](const PresetRecordHead& preset, std::int32_t position) {
                reader.SkipData(preset);
                if (head != 0) return;
                preview.add(preset.name, position);
                ++listed;
            });
            matched |= head == 0;
            return true;
        });
        if (result != 0) return result;
        return matched ? listed : kNothingForPlugin;
    });
}

int ListContents(CPresetFileReader& reader, const PresetPreview& preview) {
    return ResultOf([&] {
        int listed = 0;
        std::int32_t room = kMostContents;
        const int result = ForEachRecord(reader, [&](std::uint16_t version) {
            PluginRecord record;
            if (EndsPreview(ReadHead(reader, version, record), preview)) return false;
            const bool fits = room-- > 0;
            if (fits) preview.add(L"<<" + record.plugin.name + L">>", kNoPreset);
            const std::int32_t shown = fits ? std::min(record.presets, room) : 0;
            ForEachPreset(reader, shown, [&](const PresetRecordHead& preset, std::int32_t position) {
                reader.SkipData(preset);
                preview.add(preset.name, position);
                ++listed;
                --room;
            });
            if (fits && shown >= record.presets) return true;
            preview.add(preview.goesOn, kNoPreset);
            return false;
        });
        return result != 0 ? result : listed;
    });
}
