#include "PresetsToSave.h"

#include <windows.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <optional>
#include <set>

#include "AnsiText.h"
#include "FileStream.h"
#include "Files.h"
#include "MemorySink.h"
#include "PresetName.h"
#include "PresetTransfer.h"
#include "PresetWriter.h"

namespace {

std::optional<std::uint64_t> SizeOfFile(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (path.empty() || !::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
        return std::nullopt;
    return std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
}

bool IsInCodePage(const std::wstring& text) { return AnsiText().fromAnsi(AnsiText().toAnsi(text)) == text; }

/// Looks at the presets of one plug-in.
class CInspection {
  public:
    std::optional<SetTrouble> Find(const CRegValues& preset) {
        constexpr std::uint64_t kLongest = std::numeric_limits<std::int32_t>::max();
        const bool inFile = preset.Type() == REG_SZ;
        if (!inFile && preset.Type() != REG_BINARY) return SetTrouble::OtherType;
        const auto size = inFile ? SizeOfFile(TextOf(preset.Data())) : std::optional(preset.Data().size());
        if (!size || *size > kLongest) return SetTrouble::FileLost;
        if (*size == 0) return SetTrouble::NoData;
        const std::wstring name = preset.Name();
        if (!IsInCodePage(name)) return SetTrouble::NameNotInCodePage;
        const PresetRecordHead head{static_cast<std::int32_t>(preset.Type()), name,
                                    static_cast<std::uint32_t>(*size)};
        if (!CanBeStored(head)) return SetTrouble::NameNotForFile;
        // "Wide" and "Wide..." would get the same file.
        const auto file = PresetFileName(name);
        const bool isFree = !file || !GoesToFile(head.type, head.length) ||
                            m_files.insert(InCapitals(std::wstring(*file))).second;
        return isFree ? std::nullopt : std::optional(SetTrouble::NameNotForFile);
    }

  private:
    std::set<std::wstring> m_files;  // in capitals
};

/// So much of all presets is kept in memory, so that a save need not read them again.
constexpr std::size_t kMostKept = std::size_t{64} << 20;

/// The record of one plug-in, for as long as its presets lie in the registry.
class CKeptRecord {
  public:
    explicit CKeptRecord(const PresetPlugin& plugin)
        : m_countPlace(m_writer.WritePlugin(plugin.clsid, plugin.category, 0, plugin.name)) {}

    void Add(const CRegValues& preset, std::size_t mostBytes) {
        m_whole = m_whole && preset.Type() == REG_BINARY &&
                  m_sink.Bytes().size() + preset.Data().size() <= mostBytes;
        if (!m_whole) return;
        m_writer.WritePreset(static_cast<std::int32_t>(preset.Type()), preset.Name(), preset.Data());
        ++m_presets;
    }
    std::optional<PresetsInMemory> Take() {
        if (!m_whole) return std::nullopt;
        m_writer.PatchCount(m_countPlace, m_presets);
        return PresetsInMemory{m_sink.Bytes(), m_presets};
    }

  private:
    CMemorySink m_sink;
    CPresetFileWriter m_writer{m_sink, AnsiText()};
    const std::uint64_t m_countPlace;
    int m_presets = 0;
    bool m_whole = true;
};

void ListPresetsOf(const PresetPlugin& plugin, SetToSave& save) {
    const CPresetListMgr presets(plugin);
    const auto key = presets.OpenPluginKey(false);
    if (!key) return;
    CInspection inspection;
    CKeptRecord record(plugin);
    SetToSave::Presets chosen{presets, {}, 0, {}};
    for (CRegValues values(*key, kMaxPresetName); values.Next();) {
        chosen.selection.resize(values.Index() + 1);
        if (const auto trouble = inspection.Find(values)) {
            save.leftOut.push_back({plugin.name, values.Name(), *trouble});
        } else {
            chosen.selection.back() = 1;
            ++chosen.count;
            record.Add(values, kMostKept - save.keptBytes);
        }
    }
    if (chosen.count == 0) return;
    chosen.read = record.Take();
    if (chosen.read) save.keptBytes += chosen.read->record.size();
    save.presets.push_back(std::move(chosen));
}

}  // namespace

bool ListPresets(const CPluginInventory& inventory, const std::function<bool()>& goOn, SetToSave& save) {
    // Copies in several folders share their presets.
    std::set<std::pair<Guid, Category>, decltype([](const auto& a, const auto& b) {
                 if (a.first == b.first) return a.second < b.second;
                 return GuidByteOrder()(a.first, b.first);
             })>
        seen;
    const auto list = [&](const Guid& clsid, Category category, const std::wstring& name) {
        if (!seen.insert({clsid, category}).second) return true;
        if (!goOn()) return false;
        ListPresetsOf({clsid, RowOf(category).guid, name}, save);
        return true;
    };
    for (const PluginEntry& entry : inventory.Entries()) {
        if (HasRow(entry) && !list(entry.clsid, *entry.category, *entry.name)) return false;
    }
    return std::ranges::all_of(inventory.Vst().Records(), [&](const auto& found) {
        const auto& [id, record] = found;
        return !HasRow(id, record) || list(id, *record.category, record.name);
    });
}

DWORD ExportPresetsTo(const std::wstring& path, std::span<const SetToSave::Presets> presets,
                      const std::function<bool()>& goOn) {
    std::vector<PluginToExport> plugins;
    for (const SetToSave::Presets& of : presets)
        plugins.push_back({of.plugin, &of.selection, of.read ? &*of.read : nullptr});
    return ReplaceFileBy(path, [&](const std::wstring& beside) -> DWORD {
        if (IsThere(beside)) return ERROR_FILE_EXISTS;
        auto file = CFileSink::Create(beside);
        if (!file) {
            const DWORD error = ::GetLastError();
            CPatience patience;
            DeleteHeldFile(beside, patience);  // one that was made, but could not be used
            return error;
        }
        const PresetTransferEvents events{.invalidPreset = {}, .progress = goOn};
        const int result = ExportPresetsOfPlugins(*file, plugins, events);
        // Presets that the list has were readable then.
        const auto expected = [](int sum, const SetToSave::Presets& of) {
            return sum + static_cast<int>(of.count);
        };
        if (result == std::accumulate(presets.begin(), presets.end(), 0, expected)) return ERROR_SUCCESS;
        file.reset();
        CPatience patience;
        DeleteHeldFile(beside, patience);
        return result == kPresetEnded ? ERROR_CANCELLED : ERROR_WRITE_FAULT;
    });
}
