// The exclusion pane: what the list shows, and the button that excludes or enables.
#pragma once

#include "Backups.h"
#include "Dialog.h"
#include "ExclusionList.h"
#include "HostWindow.h"
#include "PluginInventory.h"
#include "PluginListView.h"
#include "VisibilityRule.h"

class CExclusionView {
  public:
    CExclusionView(CDialog& dialog, CExclusionList& exclusions, const CPluginInventory& inventory,
                   CPluginListView& list, const CHostWindow& host, CBackups& backups, Visibility& visibility);

    void OnInitDialog() const;
    void OnExclude();
    void OnShowEnabled() { SetMode(VisibilityMode::Enabled); }
    void OnShowExcluded() { SetMode(VisibilityMode::Excluded); }
    void OnShowPermanent();

    /// Excludes or enables the selected plug-ins, asking about those whose file is gone. The list stays as it
    /// was; where a registration was removed, all plug-ins are found anew and it is empty. False when the
    /// user has ended it.
    bool TogglePluginExclusion();

  private:
    void SetMode(VisibilityMode mode);
    bool Unregister(const Guid& clsid, const std::wstring& name, Category category);
    enum class Action { Toggle, Unregister, Stop };
    /// What to do with a selected plug-in. When its file is gone, the user is asked.
    Action ActionFor(const Guid& clsid, const std::wstring& name, Category category) const;

    CDialog& m_dialog;
    CExclusionList& m_exclusions;
    const CPluginInventory& m_inventory;
    CPluginListView& m_list;
    const CHostWindow& m_host;
    CBackups& m_backups;
    Visibility& m_visibility;
};
