// The inventory of the legacy adapter, which wraps VST plug-ins as DirectX filters.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>

#include "RegKey.h"

/// Read whole, once for each enumeration; look-ups are by the exact class id text of the wrapping filter.
class CAdapterInventory {
  public:
    /// Replaces what was read before. False when the adapter has no inventory.
    bool Read();

    /// Whether the wrapped VST is an instrument; nothing when the adapter wraps no VST under this id.
    std::optional<bool> WrapsVstSynth(const std::wstring& clsid) const;
    /// File of the wrapped plug-in.
    std::optional<std::wstring> PathOf(const std::wstring& clsid) const;

    /// The entry in the registry with this class id, for reading and setting its values.
    static std::optional<CRegKey> OpenEntry(const std::wstring& clsid);

  private:
    std::unordered_map<std::wstring, bool> m_synths;
    std::unordered_map<std::wstring, std::optional<std::wstring>> m_paths;
};
