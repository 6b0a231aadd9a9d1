// Loading a studio set: what is chosen of it is written.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "StudioSets.h"

/// Goes up to the first failure. What backups hold is put back from there.
class CSetLoading {
  public:
    /// `presets` is null when none are chosen.
    CSetLoading(const CPluginInventory& inventory, CFriendlyNames& names, const std::wstring& layoutFolder,
                const SetToLoad& load, CFileSource* presets, const SetEvents& events)
        : m_inventory(inventory),
          m_names(names),
          m_layoutFolder(layoutFolder),
          m_load(load),
          m_presets(presets),
          m_events(events) {}

    /// Gives the system's error, ERROR_CANCELLED when the user has ended it.
    DWORD Run();
    /// For the host, when the layouts stay: no backup has its mark.
    void MarkLayouts() const;
    /// Also in a database, which no backup holds.
    void TakeNamesBack();

  private:
    DWORD Write(const SetEntry& entry);
    bool WriteExclusion(const SetEntry& entry) const;
    DWORD WriteName(const StudioSet::PluginName& name);
    DWORD WriteLayout(const SetEntry& entry) const;
    DWORD ImportPresets() const;

    const CPluginInventory& m_inventory;
    CFriendlyNames& m_names;
    const std::wstring& m_layoutFolder;
    const SetToLoad& m_load;
    CFileSource* m_presets;
    const SetEvents& m_events;
    std::vector<std::pair<PluginListItem, std::wstring>> m_renamed;  // with the names from before
};
