// The display names that the user gives to plug-ins.
#pragma once

#include <string>

#include "PluginDatabase.h"
#include "PluginInventory.h"

/// Failure contract: each place is written as far as that can be done; nothing is reported.
class CFriendlyNames {
  public:
    CFriendlyNames(CPluginInventory& inventory, const CPluginDatabase& database)
        : m_inventory(inventory), m_database(database) {}

    bool CanRename(const PluginListItem& item) const;
    /// Hands the name to the database, if one is open, else writes it to every place from which the host
    /// reads the names of such plug-ins. The inventory knows it from then on; false when the place refuses it
    /// from which the inventory reads it.
    bool Rename(const PluginListItem& item, const std::wstring& name);
    /// The name as it will be listed after that.
    std::wstring ListedName(const PluginListItem& item, const std::wstring& name) const;
    /// Names are kept in the host's database, and not in the registry.
    bool UseDatabase() const { return m_database.IsOpen(); }

    /// Gives wrapped plug-ins that are listed under another name than their class is registered with that
    /// name in all places; how many were changed. The inventory does not know it before it is enumerated
    /// anew.
    static unsigned CorrectWrapped(const CPluginInventory& inventory);

  private:
    CPluginInventory& m_inventory;
    const CPluginDatabase& m_database;
};
