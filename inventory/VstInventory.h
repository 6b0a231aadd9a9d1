// The VST plug-ins that the host's scanner recorded in the current user's registry.
#pragma once

#include <optional>
#include <string>

#include "CorvaneKeys.h"
#include "PluginRecords.h"
#include "RegKey.h"

class CVstInventory {
  public:
    /// `vstKey` is kDefaultVstKey or another key below the current user's root; the inventory is its subkey
    /// "Inventory".
    explicit CVstInventory(const std::wstring& vstKey) : m_path(vstKey + L"\\Inventory") {}

    /// Replaces the records by the usable entries of the key. A name in `names` under an entry's MD5 class id
    /// goes before the entry's own. Without `classified` the records get no category.
    void Read(const NameMap& names, bool classified);

    const VstInventoryMap& Records() const { return m_records; }
    /// Under either of its class ids; null when there is none.
    const VstInventoryRecord* Find(const Guid& clsid) const;

    /// The name of the plug-in with this class id, under its other id as well, until the key is read again.
    void SetName(const Guid& clsid, const std::wstring& name);

    /// The entry in the registry with this MD5 or plug-in class id, usable or not; none has the null id.
    std::optional<CRegKey> OpenEntry(const Guid& clsid) const;
    /// Its path below the current user's root, as far as it was read; empty when there is none.
    std::wstring EntryPath(const Guid& clsid) const;

  private:
    std::wstring m_path;
    VstInventoryMap m_records;
    /// The names of the keys by either id, whether they can be used or not. Of several, the first.
    std::map<Guid, std::wstring, GuidByteOrder> m_keys;
};
