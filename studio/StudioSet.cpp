#include "StudioSet.h"

#include <algorithm>
#include <unordered_set>

#include "AsciiCase.h"
#include "PermanentExclusions.h"
#include "PresetName.h"

namespace {

constexpr std::wstring_view kExtension = L".pgl";

using Ids = std::unordered_set<Guid, GuidHash>;

class CDifference {
  public:
    CDifference(const StudioSet& set, const StudioPresent& present, SetMode mode)
        : m_set(set), m_present(present), m_mode(mode) {}

    std::vector<SetEntry> Find() {
        AddExclusions();
        AddNames();
        for (std::size_t i = 0; i < m_set.layouts.size(); ++i) AddLayout(i);
        return std::move(m_entries);
    }

  private:
    SetEntry& Add(SetPart part, SetChange change, std::size_t index, const std::wstring& name) {
        SetEntry& entry = m_entries.emplace_back();
        entry.part = part;
        entry.change = change;
        entry.index = index;
        entry.name = name;
        entry.chosen = IsChosen(entry, m_mode);
        return entry;
    }

    void AddExclusions() {
        Ids now;
        Ids then;
        for (const auto& exclusion : m_present.exclusions) now.insert(exclusion.clsid);
        for (std::size_t i = 0; i < m_set.exclusions.size(); ++i) {
            const auto& [clsid, name] = m_set.exclusions[i];
            if (IsPermanentlyExcluded(clsid)) continue;
            then.insert(clsid);
            const SetChange change = now.contains(clsid) ? SetChange::Same : SetChange::New;
            Add(SetPart::Exclusion, change, i, name).installed = m_present.isInstalled(clsid);
        }
        for (std::size_t i = 0; i < m_present.exclusions.size(); ++i) {
            const auto& [clsid, name] = m_present.exclusions[i];
            if (then.contains(clsid) || IsPermanentlyExcluded(clsid)) continue;
            Add(SetPart::Exclusion, SetChange::Surplus, i, name).installed = m_present.isInstalled(clsid);
        }
    }

    void AddNames() {
        Ids named;
        std::vector<std::optional<StudioPresent::Named>> found;
        for (const auto& name : m_set.names) {
            found.push_back(m_present.find(name));
            if (found.back() && found.back()->isExact) named.insert(found.back()->id);
        }
        for (std::size_t i = 0; i < found.size(); ++i) {
            const auto& plugin = found[i];
            const auto& name = m_set.names[i].name;
            // A copy in another folder has the name only where nothing else has one for it.
            const bool has = plugin && (plugin->isExact || named.insert(plugin->id).second);
            const SetChange change = !has                   ? SetChange::NotInstalled
                                     : plugin->name == name ? SetChange::Same
                                                            : SetChange::Differs;
            SetEntry& entry = Add(SetPart::PluginName, change, i, name);
            entry.installed = has;
            if (has) entry.now = plugin->name;
        }
    }

    void AddLayout(std::size_t i) {
        const auto& [file, xml] = m_set.layouts[i];
        if (!m_present.hasLayoutFolder) {
            Add(SetPart::Layout, SetChange::NoFolder, i, file);
            return;
        }
        const std::wstring stem = file.substr(0, file.size() - kExtension.size());
        std::wstring target = file;
        for (int number = 2; IsTaken(target); ++number) {
            if (m_present.layoutOf(target) == xml) {
                Add(SetPart::Layout, SetChange::Same, i, file).target = target;
                return;
            }
            target = stem + L" (" + std::to_wstring(number) + L")" + std::wstring(kExtension);
        }
        m_written.insert(m_present.inCapitals(target));
        const bool isFree = target == file;
        Add(SetPart::Layout, isFree ? SetChange::New : SetChange::Differs, i, file).target = target;
    }
    bool IsTaken(const std::wstring& file) const {
        const std::wstring name = m_present.inCapitals(file);
        return m_present.layoutFiles.contains(name) || m_written.contains(name);
    }

    const StudioSet& m_set;
    const StudioPresent& m_present;
    const SetMode m_mode;
    std::vector<SetEntry> m_entries;
    std::set<std::wstring> m_written;  // files, in capitals
};

}  // namespace

bool IsChosen(const SetEntry& entry, SetMode mode) {
    return entry.CanBeChosen() && (mode == SetMode::Same || entry.change != SetChange::Surplus);
}

std::vector<SetEntry> DiffOf(const StudioSet& set, const StudioPresent& present, SetMode mode) {
    return CDifference(set, present, mode).Find();
}

std::size_t ExclusionsAfter(const std::vector<SetEntry>& entries, std::size_t present) {
    for (const SetEntry& entry : entries) {
        if (entry.part != SetPart::Exclusion || !entry.chosen) continue;
        entry.change == SetChange::Surplus ? --present : ++present;
    }
    return present;
}

bool IsLayoutFileName(const std::wstring& name) {
    const std::size_t stem = name.size() - std::min(name.size(), kExtension.size());
    return stem > 0 && PresetFileName(name) == name && EqualsIgnoringCase(name.substr(stem), kExtension);
}
