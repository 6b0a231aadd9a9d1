#include "FriendlyNames.h"

#include "AdapterInventory.h"
#include "ClsidText.h"
#include "FriendlyNameRules.h"
#include "RegKey.h"
#include "SystemSources.h"

namespace {

void WriteToKey(HKEY root, const NamePlace& place, const std::wstring& clsid, const std::wstring& name) {
    const REGSAM access = place.store == NameStore::LocalMachine ? KEY_ALL_ACCESS : KEY_SET_VALUE;
    if (const auto key = CRegKey::Open(root, KeyPath(place, clsid), access))
        key->WriteString(place.value, name);
}

/// The text that was stored; nothing when there is no entry or it refuses the name.
std::optional<std::wstring> WriteToEntry(const std::optional<CRegKey>& entry, const NamePlace& place,
                                         const std::wstring& name) {
    if (!entry) return std::nullopt;
    const std::wstring stored = StoredFullName(name, entry->IsSet(L"addVstPrefix"));
    return entry->WriteString(place.value, stored) ? std::optional(stored) : std::nullopt;
}

/// Copies of a plug-in in several folders share its plug-in id, and each has an MD5 id of its own.
std::optional<CRegKey> OpenVstEntry(const CVstInventory& inventory, const PluginListItem& item) {
    auto entry = inventory.OpenEntry(item.md5Clsid);
    return entry ? std::move(entry) : inventory.OpenEntry(item.clsid);
}

/// The name as it is stored then; nothing when the VST inventory refuses it, or the property bag of a filter.
std::optional<std::wstring> WriteName(const CPluginInventory& inventory, const PluginListItem& item,
                                      const std::wstring& name) {
    const std::wstring clsidText = ClsidText(item.clsid);
    for (const NamePlace& place : kNamePlaces) {
        if (!IsWrittenFor(place, item.category)) continue;
        switch (place.store) {
            case NameStore::ClassesRoot:
                WriteToKey(HKEY_CLASSES_ROOT, place, clsidText, name);
                break;
            case NameStore::LocalMachine:
                WriteToKey(HKEY_LOCAL_MACHINE, place, clsidText, name);
                break;
            case NameStore::FilterBag:
                if (!WriteProperty(inventory.Filters().at(item.sourceIndex), place.value, name))
                    return std::nullopt;
                break;
            case NameStore::VstEntry:
                return WriteToEntry(OpenVstEntry(inventory.Vst(), item), place, name);
            case NameStore::AdapterEntry:
                WriteToEntry(CAdapterInventory::OpenEntry(clsidText), place, name);
                break;
        }
    }
    return name;
}

}  // namespace

bool CFriendlyNames::CanRename(const PluginListItem& item) const {
    return CanBeRenamed(item.category, item.sourceIndex, m_inventory.Counts());
}

bool CFriendlyNames::Rename(const PluginListItem& item, const std::wstring& name) {
    if (m_database.IsOpen()) {
        const Guid& key = item.fromInventory ? item.md5Clsid : item.clsid;
        m_database.SetName(ClsidText(key), DatabaseKind(item.category), name);
        m_inventory.SetName(item, name);
        return true;
    }
    const std::wstring readable = ReadableName(name, item.category);
    const auto stored = WriteName(m_inventory, item, readable);
    const auto listed = item.fromInventory ? stored : std::optional(readable);
    if (listed) m_inventory.SetName(item, *listed);
    return listed.has_value();
}

std::wstring CFriendlyNames::ListedName(const PluginListItem& item, const std::wstring& name) const {
    if (m_database.IsOpen()) return name;
    std::wstring readable = ReadableName(name, item.category);
    if (!item.fromInventory || StoredFullName(readable, true) == readable) return readable;
    const auto entry = OpenVstEntry(m_inventory.Vst(), item);
    return StoredFullName(readable, entry && entry->IsSet(L"addVstPrefix"));
}

unsigned CFriendlyNames::CorrectWrapped(const CPluginInventory& inventory) {
    unsigned corrected = 0;
    for (std::size_t i = 0; i < inventory.Counts().filters; ++i) {
        const PluginEntry& entry = inventory.Entries()[i];
        if (!entry.name || !entry.category || !IsLegacyWrapped(*entry.category)) continue;
        const auto registered = inventory.RegisteredNameOf(entry.clsid, *entry.category);
        // An empty name would take the plug-in's name away. What the database calls it does not matter here.
        if (!registered || registered->empty() || registered == entry.ownName) continue;
        const PluginListItem item{.sourceIndex = static_cast<unsigned>(i),
                                  .clsid = entry.clsid,
                                  .md5Clsid = {},
                                  .category = *entry.category};
        if (WriteName(inventory, item, *registered)) ++corrected;
    }
    return corrected;
}
