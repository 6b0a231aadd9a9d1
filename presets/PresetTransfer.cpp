// Between the store and preset files: the stream operations of CPresetListMgr.
#include <limits>

#include "AnsiText.h"
#include "PresetListMgr.h"
#include "PresetWriter.h"
#include "Resources.h"
#include "resource.h"

namespace {

constexpr std::uint64_t kLongestPreset = std::numeric_limits<std::int32_t>::max();

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

bool WriteOrTell(CPresetFileWriter& writer, const CRegValues& preset, std::string& file,
                 const PresetTransferEvents& events, int& written) {
    if (events.progress) events.progress();
    Written result = Written::Failed;
    ResultOf([&] {
        result = WriteStoredPreset(writer, preset, file);
        return 0;
    });
    if (result == Written::Yes) ++written;
    if (result != Written::Failed) return true;
    if (events.invalidPreset) events.invalidPreset(preset.Name());
    return false;
}

}  // namespace

/// Writes this plug-in's record; gives the number of presets in it, or a result code.
int CPresetListMgr::ExportRecord(CPresetFileWriter& writer, const PresetSelection* selection, bool withHeader,
                                 const PresetTransferEvents& events) {
    m_inFile.presets = 0;
    const auto key = OpenPluginKey(false);
    if (!key) return 0;
    int written = 0;
    std::uint64_t countPlace = 0;
    std::string file;
    // The count stands before the presets; it is written afterwards, so that the store is read only once.
    for (CRegValues values(*key, kMaxPresetName); values.Next();) {
        if (!IsChosen(selection, values.Index())) continue;
        if (m_inFile.presets++ == 0) {
            if (withHeader) writer.WriteHeader(1);
            countPlace = writer.WritePlugin(Clsid(), m_inFile.plugin.category, 0, DisplayName());
        }
        if (!WriteOrTell(writer, values, file, events, written)) return kPresetIoFailure;
    }
    if (m_inFile.presets != 0) writer.PatchCount(countPlace, m_inFile.presets);
    return written;
}

int CPresetListMgr::ExportPresets(IByteSink& file, const PresetSelection* selection, bool withHeader,
                                  const PresetTransferEvents& events) {
    return ResultOf([&] {
        CPresetFileWriter writer(file, AnsiText());
        const int result = ExportRecord(writer, selection, withHeader, events);
        file.Flush();
        return result;
    });
}

int CPresetListMgr::ExportPresetsOfPlugins(IByteSink& file, std::span<CPresetListMgr> plugins,
                                           const PresetTransferEvents& events) {
    if (plugins.empty()) return 0;
    return ResultOf([&] {
        CPresetFileWriter writer(file, AnsiText());
        const std::uint64_t start = writer.Position();
        const auto announced = static_cast<std::int32_t>(plugins.size());
        writer.WriteHeader(announced);
        std::int32_t records = 0;
        int total = 0;
        for (CPresetListMgr& plugin : plugins) {
            const int written = plugin.ExportRecord(writer, nullptr, false, events);
            if (written < 0) return written;
            total += written;
            if (plugin.m_inFile.presets != 0) ++records;
        }
        if (records != announced) {
            writer.Seek(start);
            writer.WriteHeader(records);
        }
        file.Flush();
        return total;
    });
}

int CPresetListMgr::ImportPresets(IByteSource& file, const PresetSelection* selection,
                                  const PresetTransferEvents& events) {
    CPresetFileReader reader(file, AnsiText());
    CPresetWriter writer(*this);
    return ImportFor(reader, m_inFile, selection, [&](std::size_t, const ImportedPreset& preset) {
        if (events.progress) events.progress();
        return writer.Store(preset);
    });
}

int CPresetListMgr::ImportPresetsOfPlugins(IByteSource& file, std::span<CPresetListMgr> plugins,
                                           const PresetTransferEvents& events) {
    CPresetFileReader reader(file, AnsiText());
    std::vector<PluginInFile*> inFile;
    std::vector<CPresetWriter> writers;
    for (CPresetListMgr& plugin : plugins) {
        inFile.push_back(&plugin.m_inFile);
        writers.emplace_back(plugin);
    }
    return ImportForSeveral(reader, inFile, [&](std::size_t index, const ImportedPreset& preset) {
        if (events.progress) events.progress();
        return writers[index].Store(preset);
    });
}

int CPresetListMgr::ListFileForPlugin(IByteSource& file, const PreviewList& list) const {
    CPresetFileReader reader(file, AnsiText());
    return ListForPlugin(reader, m_inFile.plugin, list, LoadText(IDS_NOT_A_PRESET_FILE));
}

int CPresetListMgr::ListFileContents(IByteSource& file, const PreviewList& list) {
    CPresetFileReader reader(file, AnsiText());
    return ListContents(reader, list, LoadText(IDS_NOT_A_PRESET_FILE), LoadText(IDS_PREVIEW_GOES_ON));
}
