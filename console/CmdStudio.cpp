#include "CmdStudio.h"

#include "CorvaneKeys.h"
#include "DataFolder.h"
#include "PluginOverview.h"
#include "Version.h"

CCmdStudio::CCmdStudio(const std::wstring& vstKey)
    : m_inventory(vstKey.empty() ? kDefaultVstKey : vstKey, m_database),
      m_backups(BackupFolder(DataFolder()), kProductVersion) {
    m_exclusions.Load();
    m_inventory.ReadAdapterInventory();
    m_inventory.Enumerate(true);
    m_plugins = ListAllPlugins(m_inventory, m_exclusions);
}

void CCmdStudio::TellHost(UINT message) {
    if (const auto key = CRegKey::Open(HKEY_CURRENT_USER, kManagerKey))
        CHostWindow(ReadHostWindow(*key)).Tell(message);
}
