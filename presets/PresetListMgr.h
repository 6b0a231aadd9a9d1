// The presets that the host keeps for one plug-in in the current user's registry.
#pragma once

#include <optional>
#include <string>

#include "Guid.h"
#include "RegKey.h"

/// Lives for one command. Each operation opens the keys that it needs and closes them again. A plug-in whose
/// category has no preset store has no presets, and every operation on it fails quietly.
class CPresetListMgr {
  public:
    CPresetListMgr(const Guid& clsid, const Guid& category, std::wstring displayName)
        : m_clsid(clsid), m_category(category), m_displayName(std::move(displayName)) {}
    virtual ~CPresetListMgr() = default;

    /// The key of all plug-ins of this category, opened for reading and writing.
    std::optional<CRegKey> OpenStoreRoot(bool create) const;
    /// The plug-in's own key below it.
    std::optional<CRegKey> OpenPluginKey(bool create) const;

    /// Counts the presets in the store, and remembers the count; 0 when there is no key.
    unsigned CountPresets();

  private:
    Guid m_clsid;
    Guid m_category;
    unsigned m_count = 0;
    std::wstring m_displayName;
};
