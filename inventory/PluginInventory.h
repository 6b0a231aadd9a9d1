// Everything that was found: the system's plug-ins and the VST inventory.
#pragma once

#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "FriendlyNameRules.h"
#include "PluginDatabase.h"
#include "PresetPlugin.h"
#include "RegistrationIndex.h"
#include "SystemSources.h"
#include "VstInventory.h"

class CPluginInventory {
  public:
    CPluginInventory(const std::wstring& vstKey, const CPluginDatabase& database)
        : m_database(database), m_vst(vstKey) {}

    /// The first step of an enumeration; whether the legacy adapter has an inventory.
    bool ReadAdapterInventory() { return m_index.Adapter().Read(); }

    /// Finds all plug-ins anew. Without `classified` only media objects get a category, and so are listed. A
    /// class id that does not parse ends it there: what was found before stays, and the VST records are those
    /// of the time before. False then.
    bool Enumerate(bool classified);
    /// What that said the last time.
    bool IsComplete() const { return m_complete; }

    const std::vector<PluginEntry>& Entries() const { return m_entries; }
    /// One for each of the first entries.
    const std::vector<MonikerPtr>& Filters() const { return m_filters; }
    SourceCounts Counts() const;
    const CVstInventory& Vst() const { return m_vst; }
    void Clear();

    /// Whether a class id stands in either.
    bool IsInstalled(const Guid& clsid) const { return m_vst.Find(clsid) || m_clsids.contains(clsid); }

    /// The plug-in of that class and category that a list can show, whether it is excluded or not. A null
    /// category stands for any.
    std::optional<PresetPlugin> FindForPresets(const Guid& clsid, const Guid& category) const;

    /// The plug-in's display name from now on; a row whose plug-in was found no more changes nothing.
    void SetName(const PluginListItem& item, const std::wstring& name);
    /// Grows with each name that is set.
    unsigned Renamings() const { return m_renamings; }

    /// File of a plug-in. `category` is the one shown; nothing when no registration names a file.
    std::optional<std::wstring> PathOf(const Guid& clsid, Category category) const;

    /// The same as a path that the system understands; empty when there is none.
    std::wstring FileOf(const Guid& clsid, Category category) const;

    /// The file that the system would load: what is registered for this user alone goes before what is
    /// registered for all.
    std::wstring LoadedFileOf(const Guid& clsid, Category category) const;

    /// Name of a plug-in where the host reads it; nothing when it is registered under none.
    std::optional<std::wstring> RegisteredNameOf(const Guid& clsid, Category category) const;

  private:
    /// False when the source broke off.
    bool Append(FoundPlugins found, const NameMap& names, bool classified);

    const CPluginDatabase& m_database;
    CRegistrationIndex m_index;
    std::vector<MonikerPtr> m_filters;            // one for each of the first entries
    std::vector<PluginEntry> m_entries;           // filters, media objects, MIDI effects, control surfaces
    std::unordered_set<Guid, GuidHash> m_clsids;  // of the entries
    std::size_t m_filtersAndMediaObjects = 0;
    bool m_complete = false;
    CVstInventory m_vst;
    unsigned m_renamings = 0;
};
