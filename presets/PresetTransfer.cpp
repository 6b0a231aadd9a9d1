#include "PresetTransfer.h"

#include <limits>
#include <set>
#include <utility>
#include <vector>

#include "AnsiText.h"
#include "PresetWriter.h"

namespace {

constexpr std::uint64_t kLongestPreset = std::numeric_limits<std::int32_t>::max();

void GoOn(const PresetTransferEvents& events) {
    if (events.progress && !events.progress()) throw PresetWorkEnded();
}

/// Whether the preset counts as stored.
bool Store(CPresetWriter& writer, const ImportedPreset& preset, const PresetTransferEvents& events) {
    GoOn(events);
    const bool stored = writer.StoreImportedPreset(preset);
    if (writer.HasRefused() && events.invalidPreset) events.invalidPreset(preset.name);
    return stored;
}

enum class Written { Yes, Nothing, Failed };

/// Kept: a preset of another type, or whose file is empty or reads short, writes nothing and is still among
/// the announced ones.
Written WriteStoredPreset(CPresetFileWriter& writer, const CRegValues& preset, std::string& file) {
    std::span<const std::byte> data = preset.Data();
    if (preset.Type() == REG_SZ) {
        const std::wstring path = TextOf(data);
        if (path.empty()) return Written::Nothing;
        CPatience patience;
        const FileRead read = ReadWholeFile(path, kLongestPreset, file, patience);
        if (read == FileRead::NotOpened) return Written::Failed;
        if (read == FileRead::Short || file.empty()) return Written::Nothing;
        data = std::as_bytes(std::span(file));
    } else if (preset.Type() != REG_BINARY) {
        return Written::Nothing;
    }
    writer.WritePreset(static_cast<std::int32_t>(preset.Type()), preset.Name(), data);
    return Written::Yes;
}

/// Whether the preset was written. One that fails is reported, and ends the export.
bool WriteOrReport(CPresetFileWriter& writer, const CRegValues& preset, std::string& file,
                   const PresetTransferEvents& events) {
    GoOn(events);
    Written result = Written::Failed;
    ResultOf([&] {
        result = WriteStoredPreset(writer, preset, file);
        return 0;
    });
    if (result == Written::Failed) {
        if (events.invalidPreset) events.invalidPreset(preset.Name());
        throw StreamError();
    }
    return result == Written::Yes;
}

struct ExportedRecord {
    std::int32_t announced = 0;  // the count that stands in the record; 0: there is no record
    int written = 0;
};

ExportedRecord ExportRecord(CPresetFileWriter& writer, const CPresetListMgr& plugin,
                            const PresetSelection* selection, bool withHeader,
                            const PresetTransferEvents& events) {
    ExportedRecord record;
    const auto key = plugin.OpenPluginKey(false);
    if (!key) return record;
    std::uint64_t countPlace = 0;
    std::string file;
    // The count stands before the presets; it is written afterwards, so that the store is read only once.
    CRegValues values(*key, kMaxPresetName);
    while (values.Next()) {
        if (!IsChosen(selection, values.Index())) continue;
        if (record.announced++ == 0) {
            if (withHeader) writer.WriteHeader(1);
            const PresetPlugin& head = plugin.Plugin();
            countPlace = writer.WritePlugin(head.clsid, head.category, 0, head.name);
        }
        if (WriteOrReport(writer, values, file, events)) ++record.written;
    }
    if (values.HasFailed()) throw StreamError();
    if (record.announced != 0) writer.PatchCount(countPlace, record.announced);
    return record;
}

ExportedRecord CopyRecord(IByteSink& file, const PresetsInMemory& read, const PresetTransferEvents& events) {
    GoOn(events);
    file.Write(std::as_bytes(std::span(read.record)));
    return {read.presets, read.presets};
}

}  // namespace

int ExportPresets(IByteSink& file, const CPresetListMgr& plugin, const PresetSelection* selection,
                  const PresetTransferEvents& events) {
    return ResultOf([&] {
        CPresetFileWriter writer(file, AnsiText());
        const ExportedRecord record = ExportRecord(writer, plugin, selection, true, events);
        file.Flush();
        return record.written;
    });
}

int ExportPresetsOfPlugins(IByteSink& file, std::span<const PluginToExport> plugins,
                           const PresetTransferEvents& events) {
    if (plugins.empty()) return 0;
    return ResultOf([&] {
        CPresetFileWriter writer(file, AnsiText());
        const std::uint64_t start = writer.Position();
        const auto announced = static_cast<std::int32_t>(plugins.size());
        writer.WriteHeader(announced);
        std::int32_t records = 0;
        int total = 0;
        for (const auto& [plugin, selection, read] : plugins) {
            const ExportedRecord record = read ? CopyRecord(file, *read, events)
                                               : ExportRecord(writer, plugin, selection, false, events);
            total += record.written;
            if (record.announced != 0) ++records;
        }
        if (records != announced) {
            writer.Seek(start);
            writer.WriteHeader(records);
        }
        file.Flush();
        return total;
    });
}

int ImportPresets(IByteSource& file, const CPresetListMgr& plugin, const PresetSelection* selection,
                  const PresetTransferEvents& events) {
    CPresetFileReader reader(file, AnsiText());
    CPresetWriter writer(plugin);
    return ImportFor(reader, plugin.Plugin(), selection, [&](std::size_t, const ImportedPreset& preset) {
        return Store(writer, preset, events);
    });
}

int ImportPresetsOfPlugins(IByteSource& file, std::span<const CPresetListMgr> plugins,
                           const PresetTransferEvents& events) {
    // Only so is a file read that names no category.
    if (plugins.size() == 1) return ImportPresets(file, plugins.front(), nullptr, events);
    CPresetFileReader reader(file, AnsiText());
    std::vector<PresetPlugin> wanted;
    std::vector<CPresetWriter> writers;
    for (const CPresetListMgr& plugin : plugins) {
        wanted.push_back(plugin.Plugin());
        writers.emplace_back(plugin);
    }
    return ImportForSeveral(reader, wanted, [&](std::size_t index, const ImportedPreset& preset) {
        return Store(writers[index], preset, events);
    });
}

std::optional<std::size_t> NameImportIn(BackupStep& step, IByteSource& file,
                                        std::span<const CPresetListMgr> plugins,
                                        const PresetSelection* selection,
                                        const PresetTransferEvents& events) {
    CPresetFileReader reader(file, AnsiText());
    std::vector<PresetPlugin> wanted;
    for (const CPresetListMgr& plugin : plugins) wanted.push_back(plugin.Plugin());
    std::vector<std::vector<std::wstring>> names(plugins.size());
    std::set<std::pair<std::size_t, std::wstring>> seen;
    std::size_t presets = 0;
    const auto name = [&](std::size_t index, const PresetRecordHead& preset) {
        GoOn(events);
        ++presets;
        // A file may hold a name more than once.
        if (!seen.insert({index, InCapitals(preset.name)}).second) return;
        names[index].push_back(preset.name);
        if (auto path = FileOfImport(wanted[index].clsid, preset)) step.files.push_back(std::move(*path));
    };
    if (NameImport(reader, wanted, selection, name) == kPresetEnded) return std::nullopt;
    for (std::size_t i = 0; i < plugins.size(); ++i) {
        if (!names[i].empty()) plugins[i].NameIn(step, std::move(names[i]), false);
    }
    return presets;
}

int ListFileForPlugin(IByteSource& file, const CPresetListMgr& plugin, const PresetPreview& preview) {
    CPresetFileReader reader(file, AnsiText());
    return ListForPlugin(reader, plugin.Plugin(), preview);
}

int ListFileContents(IByteSource& file, const PresetPreview& preview) {
    CPresetFileReader reader(file, AnsiText());
    return ListContents(reader, preview);
}
