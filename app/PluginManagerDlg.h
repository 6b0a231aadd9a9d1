// The program's one window: its frame, and the table of who serves what.
#pragma once

#include <windows.h>

#include <string>
#include <tuple>

#include "BackupsView.h"
#include "Closing.h"
#include "CmdLine.h"
#include "Dialog.h"
#include "DialogKeys.h"
#include "DialogSize.h"
#include "Docking.h"
#include "Elevation.h"
#include "ExclusionList.h"
#include "ExclusionView.h"
#include "FileDrop.h"
#include "FindField.h"
#include "FriendlyNameView.h"
#include "Handles.h"
#include "HostWindow.h"
#include "LayoutFilesView.h"
#include "LayoutFill.h"
#include "LayoutToolbar.h"
#include "LayoutTreeView.h"
#include "ManagerSettings.h"
#include "PluginDatabase.h"
#include "PluginInventory.h"
#include "PluginListView.h"
#include "PluginMenu.h"
#include "PresetView.h"
#include "StudioSetView.h"
#include "TasksMenu.h"
#include "TidyUp.h"
#include "VisibilityRule.h"
#include "VstToolPaths.h"
#include "VstToolsView.h"

class CPluginManagerDlg : public CDialog {
  public:
    /// `dataFolder` is where the program keeps what would be lost otherwise.
    CPluginManagerDlg(CPluginManagerCmdLine cmdLine, const std::wstring& dataFolder);
    ~CPluginManagerDlg() override;
    CPluginManagerDlg(const CPluginManagerDlg&) = delete;
    CPluginManagerDlg& operator=(const CPluginManagerDlg&) = delete;

    /// The view that serves rows of the route table.
    template <typename TView>
    TView& View() {
        return std::get<TView&>(m_views);
    }

  private:
    std::span<const CRoute> Routes() const override;
    bool OnInitDialog() override;
    bool PreTranslate(const MSG& message) override;
    void OnOK() override;
    void OnCancel() override;

    bool OnSysCommand(UINT command);
    bool OnPaint();
    HICON OnQueryDragIcon() { return m_icon.Get(); }
    void OnDestroy();
    void OnColoursChanged();
    void OnTimer(UINT_PTR timer);
    void OnHelp() const;
    void OnExclude();
    void OnImportPresets();
    void OnExportPresets();
    void OnManagePresets();
    void OnAnyClick() { m_tree.UpdateButtons(); }

    void AddAboutCommand() const;
    void LoadImages(UINT dpi);
    void SetIcons();
    void SetHelpNumbers() const;
    void FirstFill();

    const CPluginManagerCmdLine m_cmdLine;
    const CHostWindow m_host;
    CDocking m_docking;
    CDialogSize m_size;
    const VstKey m_vstKey;
    const ManagerSettings m_settings;
    UniqueIcon m_icon;
    UniqueIcon m_smallIcon;

    CBackups m_backups;
    CPluginDatabase m_database;
    CPluginInventory m_inventory;
    CExclusionList m_exclusions;
    Visibility m_visibility;
    CFriendlyNames m_friendlyNames{m_inventory, m_database};
    VstToolPaths m_tools;

    CPluginListView m_list;
    CExclusionView m_exclusion;
    CFriendlyNameView m_names;
    CPresetView m_presets{*this, m_backups};
    CVstToolsView m_vstTools;
    CLayoutTreeView m_tree;
    CFindField m_find;
    CLayoutFilesView m_files;
    CClosing m_closing{*this, m_host, m_size, m_tree, m_files};
    CElevation m_elevation{*this, m_closing};
    CDialogKeys m_keys{*this, m_tree, m_find, m_names};
    CLayoutToolbar m_toolbar;
    CTasksMenu m_tasks{*this, m_tree};
    CBackupsView m_backupList{*this, m_backups, {m_exclusions, m_list, m_files, m_host}};
    CLayoutFill m_fill{*this, m_inventory, m_exclusions, m_tree};
    CTidyUp m_tidyUp{*this, {m_inventory, m_exclusions, m_list, m_tree, m_host, m_backups}};
    CStudioSetView m_studioSets;
    CPluginMenu m_pluginMenu{*this, m_list, m_inventory, m_names, m_tree};
    CFileDrop m_fileDrop{*this, {m_inventory, m_list, m_presets, m_tree, m_files, m_studioSets}};
    std::tuple<CDocking&, CElevation&, CDialogSize&, CPluginListView&, CExclusionView&, CFriendlyNameView&,
               CVstToolsView&, CLayoutTreeView&, CLayoutFilesView&, CLayoutToolbar&, CTasksMenu&,
               CBackupsView&, CPluginMenu&, CFindField&, CFileDrop&, CClosing&, CLayoutFill&, CTidyUp&,
               CStudioSetView&, CDialogKeys&>
        m_views{m_docking,  m_elevation, m_size,    m_list,   m_exclusion,  m_names,      m_vstTools,
                m_tree,     m_files,     m_toolbar, m_tasks,  m_backupList, m_pluginMenu, m_find,
                m_fileDrop, m_closing,   m_fill,    m_tidyUp, m_studioSets, m_keys};
};
