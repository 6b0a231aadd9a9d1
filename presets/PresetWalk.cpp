#include "PresetWalk.h"

#include <algorithm>

namespace {

/// Goes through the presets of a record; a count below 0 is none.
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

/// Goes through the records; `visit` reads one with its presets and gives false to end it there.
template <typename TVisit>
int ForEachRecord(CPresetFileReader& reader, TVisit&& visit) {
    const auto header = reader.ReadHeader();
    if (!header) return kNotAPresetFile;
    for (std::int32_t i = 0; i < header->plugins; ++i) {
        if (!visit(header->version)) break;
    }
    return 0;
}

}  // namespace

int ReadPluginInto(CPresetFileReader& reader, std::uint16_t version, PluginInFile& plugin) {
    PresetPlugin& known = plugin.plugin;
    PluginRecordHead head = reader.ReadPlugin(version);
    const Guid category = head.category.value_or(known.category);
    plugin.presets = head.presets;
    known.name = std::move(head.name);
    if (known.clsid.IsNull()) known.clsid = head.clsid;
    if (known.category.IsNull()) known.category = category;
    if (head.presets == 0) return kNothingForPlugin;
    return known.clsid == head.clsid && known.category == category ? 0 : kNothingForPlugin;
}

int ImportFor(CPresetFileReader& reader, PluginInFile& plugin, const PresetSelection* selection,
              const PresetKeeper& keep) {
    return ResultOf([&] {
        int kept = 0;
        std::vector<std::byte> data;
        const int result = ForEachRecord(reader, [&](std::uint16_t version) {
            if (ReadPluginInto(reader, version, plugin) == 0) {
                kept += KeepPresets(reader, 0, plugin.presets, selection, keep, data);
            } else {
                SkipPresets(reader, plugin.presets);
            }
            return true;
        });
        if (result != 0) return result;
        return kept > 0 ? kept : kNothingForPlugin;
    });
}

int ImportForSeveral(CPresetFileReader& reader, std::span<PluginInFile* const> plugins,
                     const PresetKeeper& keep) {
    return ResultOf([&] {
        int kept = 0;
        bool matched = false;
        std::vector<std::byte> data;
        const int result = ForEachRecord(reader, [&](std::uint16_t version) {
            const std::uint64_t start = reader.Position();
            PluginInFile any;
            ReadPluginInto(reader, version, any);
            bool taken = false;
            for (std::size_t i = 0; i < plugins.size(); ++i) {
                const PresetPlugin& wanted = plugins[i]->plugin;
                if (wanted.clsid != any.plugin.clsid || wanted.category != any.plugin.category) continue;
                reader.Seek(start);
                ReadPluginInto(reader, version, *plugins[i]);
                kept += KeepPresets(reader, i, plugins[i]->presets, nullptr, keep, data);
                taken = matched = true;
            }
            if (!taken) SkipPresets(reader, any.presets);
            return true;
        });
        if (result != 0) return result;
        return matched ? kept : kNothingForPlugin;
    });
}

int ListForPlugin(CPresetFileReader& reader, const PresetPlugin& plugin, const PreviewList& list,
                  const std::wstring& notAPresetFile) {
    return ResultOf([&] {
        int listed = 0;
        bool matched = false;
        const int result = ForEachRecord(reader, [&](std::uint16_t version) {
            PluginInFile read{.plugin = plugin};
            const int head = ReadPluginInto(reader, version, read);
            if (head == kNotAPresetFile) {
                list(notAPresetFile, kNoPreset);
                return false;
            }
            ForEachPreset(reader, read.presets, [&](const PresetRecordHead& preset, std::int32_t position) {
                reader.SkipData(preset);
                if (head != 0) return;
                list(preset.name, position);
                ++listed;
            });
            matched |= head == 0;
            return true;
        });
        if (result != 0) return result;
        return matched ? listed : kNothingForPlugin;
    });
}

int ListContents(CPresetFileReader& reader, const PreviewList& list, const std::wstring& notAPresetFile,
                 const std::wstring& more) {
    return ResultOf([&] {
        int listed = 0;
        std::int32_t room = kMostContents;
        const int result = ForEachRecord(reader, [&](std::uint16_t version) {
            PluginInFile any;
            if (ReadPluginInto(reader, version, any) == kNotAPresetFile) {
                list(notAPresetFile, kNoPreset);
                return false;
            }
            const bool fits = room-- > 0;
            if (fits) list(L"<<" + any.plugin.name + L">>", kNoPreset);
            const std::int32_t shown = fits ? std::min(any.presets, room) : 0;
            ForEachPreset(reader, shown, [&](const PresetRecordHead& preset, std::int32_t position) {
                reader.SkipData(preset);
                list(preset.name, position);
                ++listed;
                --room;
            });
            if (fits && shown >= any.presets) return true;
            list(more, kNoPreset);
            return false;
        });
        return result != 0 ? result : listed;
    });
}
