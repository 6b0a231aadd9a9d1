#include "AdapterInventory.h"

#include "CorvaneKeys.h"

namespace {

std::optional<CRegKey> OpenInventory() {
    return CRegKey::Open(HKEY_LOCAL_MACHINE, std::wstring(kAdapterKey) + L"\\Inventory");
}

}  // namespace

bool CAdapterInventory::Read() {
    m_synths.clear();
    m_paths.clear();
    const auto inventory = OpenInventory();
    if (!inventory) return false;
    for (const std::wstring& name : inventory->SubkeyNames()) {
        const auto entry = inventory->OpenSubkey(name);
        const auto clsid = entry ? entry->ReadString(L"clsidPlug", kNameBytes) : std::nullopt;
        if (!clsid) continue;
        // The first entry with an id serves; a VST is looked for among the VST entries only.
        m_paths.try_emplace(*clsid, entry->ReadPath(L"FullPath"));
        if (entry->IsSet(L"isVst")) m_synths.try_emplace(*clsid, entry->IsSet(L"registerAsSynth"));
    }
    return true;
}

std::optional<bool> CAdapterInventory::WrapsVstSynth(const std::wstring& clsid) const {
    const auto found = m_synths.find(clsid);
    return found == m_synths.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::wstring> CAdapterInventory::PathOf(const std::wstring& clsid) const {
    const auto found = m_paths.find(clsid);
    return found == m_paths.end() ? std::nullopt : found->second;
}

std::optional<CRegKey> CAdapterInventory::OpenEntry(const std::wstring& clsid) {
    const auto inventory = OpenInventory();
    if (!inventory) return std::nullopt;
    for (const std::wstring& name : inventory->SubkeyNames()) {
        const auto entry = inventory->OpenSubkey(name);
        if (entry && entry->ReadString(L"clsidPlug", kNameBytes) == clsid)
            return inventory->OpenSubkey(name, KEY_READ | KEY_SET_VALUE);
    }
    return std::nullopt;
}
