#include "ExclusionList.h"

#include <windows.h>

#include "ClsidText.h"
#include "CorvaneKeys.h"
#include "PluginRecords.h"
#include "RegKey.h"

namespace {

std::wstring EntryKey(const Guid& clsid) { return std::wstring(kExclusionKey) + L"\\" + ClsidText(clsid); }

}  // namespace

void CExclusionList::Load() {
    m_clsids.clear();
    const auto key = CRegKey::Open(HKEY_CURRENT_USER, kExclusionKey);
    if (!key) return;
    for (const std::wstring& name : key->SubkeyNames()) {
        const auto clsid = ParseClsid(name);
        if (!clsid || m_clsids.size() == kMaxEntries) return;
        m_clsids.insert(*clsid);
    }
}

bool CExclusionList::Exclude(const Guid& clsid, const std::wstring& name) {
    const auto entry = CRegKey::Create(HKEY_CURRENT_USER, EntryKey(clsid), KEY_ALL_ACCESS);
    // Only the subkey's name counts; the text tells a reader of the registry which plug-in it is.
    return entry && entry->WriteString(nullptr, name);
}

bool CExclusionList::Enable(const Guid& clsid) {
    return CRegKey::DeleteTree(HKEY_CURRENT_USER, EntryKey(clsid));
}
