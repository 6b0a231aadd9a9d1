#include "PresetWalk.h"

#include <algorithm>
#include <map>

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

/// Calls `take` for each preset that is chosen, which reads its data or skips them; gives their number.
template <typename TTake>
int TakePresets(CPresetFileReader& reader, std::int32_t count, const PresetSelection* selection,
                TTake&& take) {
    int taken = 0;
    ForEachPreset(reader, count, [&](const PresetRecordHead& preset, std::int32_t position) {
        if (!IsChosen(selection, static_cast<std::size_t>(position))) return reader.SkipData(preset);
        take(preset);
        ++taken;
    });
    return taken;
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

template <typename TTake>
int TakeFor(CPresetFileReader& reader, const PresetPlugin& plugin, const PresetSelection* selection,
            TTake&& take) {
    return ResultOf([&] {
        int kept = 0;
        PluginRecord record{.plugin = plugin, .presets = 0};
        const int result = ForEachRecord(reader, [&](std::uint16_t version) {
            if (ReadHead(reader, version, record) == 0) {
                kept += TakePresets(reader, record.presets, selection,
                                    [&](const PresetRecordHead& preset) { take(0, preset); });
            } else {
                SkipPresets(reader, record.presets);
            }
            return true;
        });
        if (result != 0) return result;
        return kept > 0 ? kept : kNothingForPlugin;
    });
}

template <typename TTake>
int TakeForSeveral(CPresetFileReader& reader, std::span<const PresetPlugin> plugins, TTake&& take) {
    return ResultOf([&] {
        int kept = 0;
        bool matched = false;
        // Several of one class id stand in their order.
        std::multimap<Guid, std::size_t, GuidByteOrder> places;
        for (std::size_t i = 0; i < plugins.size(); ++i) places.emplace(plugins[i].clsid, i);
        const int result = ForEachRecord(reader, [&](std::uint16_t version) {
            PluginRecord record;
            ReadHead(reader, version, record);
            const std::uint64_t presets = reader.Position();
            bool taken = false;
            const auto [first, last] = places.equal_range(record.plugin.clsid);
            for (auto place = first; place != last; ++place) {
                const std::size_t index = place->second;
                if (plugins[index].category != record.plugin.category) continue;
                reader.Seek(presets);
                kept += TakePresets(reader, record.presets, nullptr,
                                    [&](const PresetRecordHead& preset) { take(index, preset); });
                taken = matched = true;
            }
            if (!taken) SkipPresets(reader, record.presets);
            return true;
        });
        if (result != 0) return result;
        return matched ? kept : kNothingForPlugin;
    });
}

/// Reads the data of each preset, and hands it on.
auto Keeping(CPresetFileReader& reader, const PresetKeeper& keep) {
    return [&, data = std::vector<std::byte>()](std::size_t plugin, const PresetRecordHead& preset) mutable {
        reader.ReadData(preset, data);
        if (!keep(plugin, {.type = preset.type, .name = preset.name, .data = data})) throw StreamError();
    };
}

}  // namespace

int ImportFor(CPresetFileReader& reader, const PresetPlugin& plugin, const PresetSelection* selection,
              const PresetKeeper& keep) {
    return TakeFor(reader, plugin, selection, Keeping(reader, keep));
}

int ImportForSeveral(CPresetFileReader& reader, std::span<const PresetPlugin> plugins,
                     const PresetKeeper& keep) {
    return TakeForSeveral(reader, plugins, Keeping(reader, keep));
}

int NameImport(CPresetFileReader& reader, std::span<const PresetPlugin> plugins,
               const PresetSelection* selection, const PresetNamer& name) {
    const auto take = [&](std::size_t plugin, const PresetRecordHead& preset) {
        reader.SkipData(preset);
        name(plugin, preset);
    };
    return plugins.size() == 1 ? TakeFor(reader, plugins.front(), selection, take)
                               : TakeForSeveral(reader, plugins, take);
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

int WalkContents(CPresetFileReader& reader, const PresetContents& contents) {
    return ResultOf([&] {
        return ForEachRecord(reader, [&](std::uint16_t version) {
            PluginRecord record;
            ReadHead(reader, version, record);
            contents.plugin(record.plugin, version == 0);
            ForEachPreset(reader, record.presets, [&](const PresetRecordHead& preset, std::int32_t) {
                reader.SkipData(preset);
                contents.preset(preset.name);
            });
            return true;
        });
    });
}
