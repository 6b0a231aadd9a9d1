#include "PluginInventory.h"

#include "ClsidText.h"
#include "RegKey.h"

void CPluginInventory::Clear() {
    m_entries.clear();
    m_clsids.clear();
    m_filters.clear();
}

bool CPluginInventory::Append(FoundPlugins found, const NameMap& names, bool classified) {
    for (FoundPlugin& plugin : found.plugins) {
        PluginEntry& entry = m_entries.emplace_back();
        entry.clsid = plugin.clsid;
        m_clsids.insert(entry.clsid);
        entry.name = std::move(plugin.name);
        if (auto known = names.empty() ? std::nullopt : FindName(names, ClsidText(entry.clsid)))
            entry.name = known;
        const RegistrationFacts facts = m_index.FactsOf(entry.clsid);
        if (classified || facts.answersAsDmo) entry.category = ClassifyPluginCategory(facts);
    }
    return found.complete;
}

void CPluginInventory::Enumerate(bool classified) {
    Clear();
    m_index.Read();
    const NameMap names = m_database.Names();
    const NameMap ownNames;  // media objects and control surfaces are not renamed by the database
    const auto room = [this] { return kMaxEntries - m_entries.size(); };

    m_filters = FindFilterMonikers(room());
    if (!Append(ReadFilters(m_filters), names, classified)) return;
    if (!Append(FindMediaObjects(room()), ownNames, classified)) return;
    if (!Append(ReadMidiEffects(m_index.MidiFilterNames(), names, room()), ownNames, classified)) return;
    if (!Append(ReadControlSurfaces(m_index.ControlSurfaceNames(), room()), ownNames, classified)) return;
    m_vst.Read(names, classified);
}

std::optional<std::wstring> CPluginInventory::PathOf(const Guid& clsid, Category category) const {
    if (const auto* record = m_vst.Find(clsid)) return record->path;
    const std::wstring clsidText = ClsidText(clsid);
    if (IsLegacyWrapped(category)) return m_index.Adapter().PathOf(clsidText);
    if (IsVstCategory(category)) {
        const auto entry = m_vst.OpenEntry(clsidText);
        return entry ? entry->ReadPath(L"FullPath") : std::nullopt;
    }
    const auto server =
        CRegKey::Open(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID\\" + clsidText + L"\\InprocServer32");
    return server ? server->ReadPath(nullptr) : std::nullopt;
}
