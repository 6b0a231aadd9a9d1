// What the registry says of every class id, read once for each enumeration.
#pragma once

#include <windows.h>

#include <string>
#include <unordered_set>
#include <vector>

#include "AdapterInventory.h"
#include "Classification.h"
#include "Guid.h"

/// The subkeys of a key, in their order and as a set of the class ids that they name.
class CClsidSubkeys {
  public:
    void Read(HKEY root, const wchar_t* path);

    const std::vector<std::wstring>& Names() const { return m_names; }
    bool Contains(const Guid& clsid) const { return m_clsids.contains(clsid); }

  private:
    std::vector<std::wstring> m_names;
    std::unordered_set<Guid, GuidHash> m_clsids;
};

/// Answers from what Read found; only the question for a media object goes to the system each time.
class CRegistrationIndex {
  public:
    /// The adapter's inventory is read apart, because the category list depends on it.
    void Read();

    CAdapterInventory& Adapter() { return m_adapter; }
    const CAdapterInventory& Adapter() const { return m_adapter; }
    const std::vector<std::wstring>& MidiFilterNames() const { return m_midiFilters.Names(); }
    const std::vector<std::wstring>& ControlSurfaceNames() const { return m_controlSurfaces.Names(); }

    RegistrationFacts FactsOf(const Guid& clsid) const;

  private:
    CAdapterInventory m_adapter;
    CClsidSubkeys m_softSynths;
    CClsidSubkeys m_midiFilters;
    CClsidSubkeys m_controlSurfaces;
};
