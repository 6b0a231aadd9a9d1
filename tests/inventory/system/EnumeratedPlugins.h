// The plug-ins of a registry of the test's own, found as the program finds them.
#pragma once

#include <algorithm>
#include <gtest/gtest.h>

#include "PluginInventory.h"
#include "support/TestPlugins.h"

class EnumeratedPlugins : public testing::Test {
  protected:
    /// Whether it got to the end.
    bool Enumerate(bool classified = true) {
        m_inventory.ReadAdapterInventory();
        return m_inventory.Enumerate(classified);
    }
    /// The first entry with that class id; null when there is none.
    const PluginEntry* Find(unsigned number) const {
        const auto found = std::ranges::find(m_inventory.Entries(), support::Id(number), &PluginEntry::clsid);
        return found == m_inventory.Entries().end() ? nullptr : &*found;
    }

    support::RegistrySandbox m_sandbox;
    CPluginDatabase m_database;
    CPluginInventory m_inventory{kDefaultVstKey, m_database};
};
