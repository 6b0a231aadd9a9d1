#include "PresentStudio.h"

#include <windows.h>

#include <unordered_map>
#include <unordered_set>

#include "ClsidText.h"
#include "CorvaneKeys.h"
#include "Files.h"
#include "LayoutFolder.h"
#include "PermanentExclusions.h"
#include "RegKey.h"
#include "XmlDoc.h"

std::wstring FolderPrefix(const std::wstring& folder) {
    return folder.ends_with(L'\\') ? folder : folder + L'\\';
}

std::vector<StudioSet::Exclusion> ReadExclusions() {
    std::vector<StudioSet::Exclusion> exclusions;
    const auto key = CRegKey::Open(HKEY_CURRENT_USER, kExclusionKey);
    if (!key) return exclusions;
    for (const std::wstring& name : key->SubkeyNames()) {
        const auto clsid = name.starts_with(L'{') ? ParseClsid(name) : std::nullopt;
        if (!clsid || clsid->IsNull() || IsPermanentlyExcluded(*clsid)) continue;
        const auto entry = key->OpenSubkey(name);
        const auto text = entry ? entry->ReadString(nullptr, kNameBytes) : std::nullopt;
        exclusions.push_back({*clsid, text.value_or(L"")});
    }
    return exclusions;
}

std::vector<StudioSet::PluginName> ReadPluginNames(const CPluginInventory& inventory) {
    std::vector<StudioSet::PluginName> names;
    for (const auto& [id, record] : inventory.Vst().Records()) {
        // Each stands under both of its ids.
        const Guid& own = record.md5Clsid.IsNull() ? record.clsid : record.md5Clsid;
        if (id == own && !id.IsNull() && record.category && !record.name.empty())
            names.push_back({record.clsid, record.md5Clsid, record.name});
    }
    return names;
}

std::optional<std::wstring> ReadLayoutXml(const std::wstring& path, CPatience& patience) {
    CXmlDoc document;
    document.KeepBlanks();
    const bool isLayout = document.LoadRoot(path, patience) && document.TagIs(L"<PluginMenuLayout>") &&
                          document.FindAttribute(L"Name") && !document.FoundAttribute()->empty();
    return isLayout ? document.Xml() : std::nullopt;
}

std::optional<NamedPlugin> FindNamed(const CPluginInventory& inventory, const StudioSet::PluginName& name) {
    const CVstInventory& vst = inventory.Vst();
    const auto* record = name.md5Clsid.IsNull() ? nullptr : vst.Find(name.md5Clsid);
    const bool isExact = record && record->md5Clsid == name.md5Clsid;
    if (!isExact) record = name.clsid.IsNull() ? nullptr : vst.Find(name.clsid);
    if (!record || !record->category || record->name.empty()) return std::nullopt;
    const Guid& id = record->md5Clsid.IsNull() ? record->clsid : record->md5Clsid;
    return NamedPlugin{.item = {.sourceIndex = 0,
                                .clsid = id,
                                .md5Clsid = record->md5Clsid,
                                .fromInventory = true,
                                .isX64 = record->isX64,
                                .category = *record->category,
                                .namesake = 0},
                       .isExact = isExact || name.md5Clsid.IsNull(),
                       .name = record->name};
}

void AddOwnIds(StudioSet& set, const CPluginInventory& inventory) {
    std::unordered_map<Guid, std::wstring, GuidHash> excluded;  // with the names of the plug-ins
    std::unordered_set<Guid, GuidHash> known;
    for (const auto& [clsid, name] : set.exclusions) excluded.emplace(clsid, name);
    for (const auto& [clsid, md5Clsid, name] : set.names) {
        known.insert(md5Clsid);
        if (excluded.contains(md5Clsid)) excluded.emplace(clsid, name);
    }
    for (const auto& [id, record] : inventory.Vst().Records()) {
        // The second id comes from the path of the file, which may be another one here.
        if (!record.category || !IsVst3(*record.category) || id == record.clsid || known.contains(id))
            continue;
        const auto plugin = record.clsid.IsNull() ? excluded.end() : excluded.find(record.clsid);
        if (plugin != excluded.end() && !excluded.contains(id))
            set.exclusions.push_back({id, plugin->second});
    }
}

StudioPresent ReadPresent(const CPluginInventory& inventory, const std::wstring& layoutFolder) {
    StudioPresent present{
        .exclusions = ReadExclusions(),
        .isInstalled = [&](const Guid& clsid) { return inventory.IsInstalled(clsid); },
        .find = [&](const StudioSet::PluginName& name) -> std::optional<StudioPresent::Named> {
            const auto plugin = FindNamed(inventory, name);
            if (!plugin) return std::nullopt;
            return StudioPresent::Named{plugin->item.clsid, plugin->isExact, plugin->name};
        },
        .hasLayoutFolder = !layoutFolder.empty(),
        .inCapitals = &InCapitals,
        .layoutFiles = {},
        .layoutOf =
            [&layoutFolder, patience = CPatience()](const std::wstring& file) mutable {
                return ReadLayoutXml(FolderPrefix(layoutFolder) + file, patience);
            }};
    for (const std::wstring& path : LayoutPaths(layoutFolder, /*all*/ true))
        present.layoutFiles.insert(InCapitals(FileNameOf(path)));
    return present;
}
