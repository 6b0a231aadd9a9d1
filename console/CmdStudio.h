// What each command works with.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "Backups.h"
#include "CmdArguments.h"
#include "ExclusionList.h"
#include "HostWindow.h"
#include "PluginDatabase.h"
#include "PluginInventory.h"
#include "StudioPlugin.h"

/// The exit codes; of several things that go wrong, the highest counts.
enum class CmdExit { Done = 0, Findings = 1, Usage = 2, Failed = 3 };

constexpr CmdExit Worse(CmdExit a, CmdExit b) { return a > b ? a : b; }

class CCmdStudio {
  public:
    /// Finds all plug-ins. `vstKey` is empty for the usual one.
    explicit CCmdStudio(const std::wstring& vstKey);

    CPluginInventory& Inventory() { return m_inventory; }
    const CPluginInventory& Inventory() const { return m_inventory; }
    const CPluginDatabase& Database() const { return m_database; }
    CExclusionList& Exclusions() { return m_exclusions; }
    const std::vector<StudioPlugin>& Plugins() const { return m_plugins; }
    CBackups& Backups() { return m_backups; }

    /// Tells a host in whose window the manager runs.
    static void TellHost(UINT message);

  private:
    const CPluginDatabase m_database;  // never opened
    CPluginInventory m_inventory;
    CExclusionList m_exclusions;
    CBackups m_backups;
    std::vector<StudioPlugin> m_plugins;
};
