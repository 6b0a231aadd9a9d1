#include "VstInventory.h"

#include <vector>

#include "ClsidText.h"
#include "SystemSources.h"
#include "VstEntryRules.h"

namespace {

/// Every value at most once; an absent or malformed one leaves its field empty. Each read costs as much as
/// all that is done with it, so that what cannot matter any more is not asked for.
VstEntry ReadEntry(const CRegKey& key) {
    const bool isVst = key.IsSet(L"isVst");
    const bool isX64 = key.IsSet(L"isX64");
    const bool isShell = key.IsSet(L"isShell");
    return {
        // A 64-bit entry that claims both is listed as a VST, just as without the second claim.
        .kind = {.isVst = isVst,
                 .isVst3 = !(isVst && isX64) && key.IsSet(L"isVst3"),
                 .registerAsSynth = key.IsSet(L"registerAsSynth")},
        .isShell = isShell,
        .isShellRoot = isShell && key.IsSet(L"isShellRoot"),
        .isBad = key.IsSet(L"isBad"),
        .isX64 = isX64,
        .uniqueId = static_cast<int>(key.ReadDword(L"uniqueId").value_or(0)),
        .clsidPlug = key.ReadString(L"clsidPlug", kNameBytes),
        .clsidPlugMd5 = key.ReadString(L"clsidPlugMD5", kNameBytes),
        .fullPath = key.ReadPath(L"FullPath"),
        .fullName = key.ReadString(L"FullName", kNameBytes).value_or(L""),
        .vendor = key.ReadString(L"Vendor", kNameBytes).value_or(L""),
    };
}

/// A text that is no class id gives the null id.
Guid ClsidOrNull(const std::optional<std::wstring>& text) {
    return text ? ParseClsid(*text).value_or(Guid{}) : Guid{};
}

bool IsCopy(const VstInventoryRecord& a, const VstInventoryRecord& b) {
    return a.clsid == b.clsid && a.md5Clsid == b.md5Clsid;
}

VstInventoryRecord RecordOf(const VstEntry& entry, const NameMap& names, bool classified) {
    const auto known = entry.clsidPlugMd5 ? FindName(names, *entry.clsidPlugMd5) : std::nullopt;
    VstInventoryRecord record{
        .path = *entry.fullPath,
        .name = known.value_or(entry.fullName),
        .vendor = entry.vendor,
        .uniqueId = entry.uniqueId,
        .isX64 = entry.isX64,
        .kind = entry.kind,
        .clsid = ClsidOrNull(entry.clsidPlug),
        .md5Clsid = ClsidOrNull(entry.clsidPlugMd5),
        .category = std::nullopt,
    };
    if (classified) record.category = ClassifyPluginCategory(entry.kind);
    return record;
}

}  // namespace

void CVstInventory::Read(const NameMap& names, bool classified) {
    m_records.clear();
    m_keys.clear();
    const auto inventory = CRegKey::Open(HKEY_CURRENT_USER, m_path, KEY_ALL_ACCESS);
    if (!inventory) return;
    std::vector<VstEntry> entries;
    CTwinIndex twins;
    for (const std::wstring& name : inventory->SubkeyNames()) {
        const auto key = inventory->OpenSubkey(name, KEY_ALL_ACCESS);
        if (!key) continue;
        const VstEntry& entry = entries.emplace_back(ReadEntry(*key));
        twins.Add(entry);
        for (const auto& id : {entry.clsidPlugMd5, entry.clsidPlug})
            m_keys.try_emplace(ClsidOrNull(id), name);
    }
    for (const VstEntry& entry : entries) {
        if (!IsUsable(entry) || twins.Hides(entry)) continue;
        const VstInventoryRecord record = RecordOf(entry, names, classified);
        m_records.insert_or_assign(record.md5Clsid, record);
        m_records.insert_or_assign(record.clsid, record);
    }
}

const VstInventoryRecord* CVstInventory::Find(const Guid& clsid) const {
    const auto found = m_records.find(clsid);
    return found == m_records.end() ? nullptr : &found->second;
}

void CVstInventory::SetName(const Guid& clsid, const std::wstring& name) {
    const auto* record = Find(clsid);
    if (!record) return;
    // Under its other id another plug-in's record may stand, which has that id, too.
    for (const Guid& id : {record->clsid, record->md5Clsid}) {
        const auto found = m_records.find(id);
        if (found != m_records.end() && IsCopy(found->second, *record)) found->second.name = name;
    }
}

std::optional<CRegKey> CVstInventory::OpenEntry(const Guid& clsid) const {
    const auto inventory = CRegKey::Open(HKEY_CURRENT_USER, m_path);
    if (!inventory || clsid.IsNull()) return std::nullopt;
    const auto hasId = [&clsid](const CRegKey& entry, const wchar_t* value) {
        return ClsidOrNull(entry.ReadString(value, kNameBytes)) == clsid;
    };
    const auto open = [&](const std::wstring& name) {
        auto entry = inventory->OpenSubkey(name, KEY_ALL_ACCESS);
        const bool fits = entry && (hasId(*entry, L"clsidPlugMD5") || hasId(*entry, L"clsidPlug"));
        return fits ? std::move(entry) : std::nullopt;
    };
    if (const auto known = m_keys.find(clsid); known != m_keys.end()) {
        if (auto entry = open(known->second)) return entry;
    }
    // The scanner may have come by.
    for (const std::wstring& name : inventory->SubkeyNames()) {
        if (auto entry = open(name)) return entry;
    }
    return std::nullopt;
}

std::wstring CVstInventory::EntryPath(const Guid& clsid) const {
    const auto known = m_keys.find(clsid);
    return known == m_keys.end() || clsid.IsNull() ? std::wstring() : m_path + L'\\' + known->second;
}
