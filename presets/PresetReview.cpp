#include "PresetReview.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "AnsiText.h"
#include "ClsidText.h"
#include "Files.h"

namespace {

/// The names of the presets that a plug-in has, in capitals.
std::set<std::wstring> StoredNames(const PresetPlugin& plugin) {
    std::set<std::wstring> names;
    if (const auto key = CPresetListMgr(plugin).OpenPluginKey(false)) {
        for (CRegValues values(*key, kMaxPresetName, CRegValues::Read::Names); values.Next();)
            names.insert(InCapitals(values.Name()));
    }
    return names;
}

/// Whether the preset is stored with these data; nothing when it is not stored.
std::optional<bool> IsStoredAs(const std::optional<CRegKey>& key, const ImportedPreset& preset) {
    const auto value = key ? key->ReadValue(preset.name.c_str()) : std::nullopt;
    if (!value) return std::nullopt;
    if (value->type == REG_BINARY) return std::ranges::equal(value->data, preset.data);
    constexpr std::uint64_t kLongestFile = std::numeric_limits<std::int32_t>::max();
    std::string stored;
    CPatience patience;
    return value->type == REG_SZ &&
           ReadWholeFile(TextOf(value->data), kLongestFile, stored, patience) == FileRead::Whole &&
           std::ranges::equal(std::as_bytes(std::span(stored)), preset.data);
}

/// Gathers what the walk through the file tells.
class CGathering {
  public:
    CGathering(const PluginFinder& find, PluginsInFile& found, bool countReplaced)
        : m_find(find), m_found(found), m_countReplaced(countReplaced) {}

    void Begin(const PresetPlugin& plugin, bool anyCategory) {
        const std::wstring id = ClsidText(plugin.clsid) + ClsidText(plugin.category);
        if (const auto known = m_places.find(id); known != m_places.end()) {
            m_current = known->second;
            return;
        }
        m_current.reset();
        // An import takes a null category for any in files of version 0 only.
        const bool namesOne = anyCategory || !plugin.category.IsNull();
        const auto installed = namesOne ? m_find(plugin.clsid, plugin.category) : std::nullopt;
        if (!installed && m_strangers++ >= kMostStrangers) {
            m_found.goesOn = true;
            return;
        }
        m_current = m_found.plugins.size();
        m_places.emplace(id, *m_current);
        m_found.plugins.push_back({installed.value_or(plugin), installed.has_value()});
        m_stored.push_back(installed && m_countReplaced ? StoredNames(*installed) : std::set<std::wstring>());
    }

    void Add(const std::wstring& preset) {
        if (!m_current) return;
        ++m_found.plugins[*m_current].presets;
        // Once: a file may hold a name several times.
        m_found.plugins[*m_current].replaced += m_stored[*m_current].erase(InCapitals(preset));
    }

  private:
    const PluginFinder& m_find;
    PluginsInFile& m_found;
    const bool m_countReplaced;
    std::map<std::wstring, std::size_t> m_places;
    std::vector<std::set<std::wstring>> m_stored;  // not met in the file yet
    std::optional<std::size_t> m_current;
    std::size_t m_strangers = 0;
};

}  // namespace

int ReadPluginsInFile(IByteSource& file, const PluginFinder& find, const std::function<bool()>& goOn,
                      PluginsInFile& found, bool countReplaced) {
    CPresetFileReader reader(file, AnsiText());
    CGathering gathering(find, found, countReplaced);
    const auto check = [&goOn] {
        if (!goOn()) throw PresetWorkEnded();
    };
    return WalkContents(reader, {.plugin =
                                     [&](const PresetPlugin& plugin, bool anyCategory) {
                                         check();  // one may have no presets
                                         gathering.Begin(plugin, anyCategory);
                                     },
                                 .preset =
                                     [&](const std::wstring& name) {
                                         check();
                                         gathering.Add(name);
                                     }});
}

int ComparePresets(IByteSource& file, std::span<const CPresetListMgr> plugins,
                   const std::function<bool()>& goOn, std::vector<PresetDifference>& differences) {
    CPresetFileReader reader(file, AnsiText());
    differences.assign(plugins.size(), {});
    std::vector<PresetPlugin> wanted;
    for (const CPresetListMgr& plugin : plugins) wanted.push_back(plugin.Plugin());
    std::size_t opened = plugins.size();  // the presets of a plug-in follow each other
    std::optional<CRegKey> key;
    // Of a name that the file has several times, the last one stays.
    std::map<std::pair<std::size_t, std::wstring>, std::optional<bool>> last;
    const auto compare = [&](std::size_t index, const ImportedPreset& preset) {
        if (!goOn()) throw PresetWorkEnded();
        if (std::exchange(opened, index) != index) key = plugins[index].OpenPluginKey(false);
        last.insert_or_assign({index, InCapitals(preset.name)}, IsStoredAs(key, preset));
        return true;
    };
    const int result = wanted.size() == 1 ? ImportFor(reader, wanted.front(), nullptr, compare)
                                          : ImportForSeveral(reader, wanted, compare);
    for (const auto& [preset, same] : last) {
        if (!same) ++differences[preset.first].added;
        if (same == false) ++differences[preset.first].changed;
    }
    return result;
}
