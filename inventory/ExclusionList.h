// The plug-ins that the user hides from the host, in a key that the host reads, too.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_set>

#include "Guid.h"

class CExclusionList {
  public:
    /// Reads the key anew. A subkey that is no class id ends the list there; it never holds more than 4,096.
    void Load();
    bool Contains(const Guid& clsid) const { return m_clsids.contains(clsid); }
    std::size_t Count() const { return m_clsids.size(); }

    // These write to the registry only; Load shows the change. A failure gives false, and leaves the plug-in
    // as it was.
    static bool Exclude(const Guid& clsid, const std::wstring& name);
    static bool Enable(const Guid& clsid);

  private:
    std::unordered_set<Guid, GuidHash> m_clsids;
};
