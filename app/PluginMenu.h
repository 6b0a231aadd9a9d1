// The menu of the plug-in list, and the commands that stand there only.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "CommandMenu.h"
#include "FriendlyNameView.h"
#include "LayoutTreeView.h"
#include "PluginInventory.h"
#include "PluginListView.h"

/// What a button does is done by pressing it; all other commands act on the selected rows, too.
class CPluginMenu {
  public:
    CPluginMenu(CDialog& dialog, CPluginListView& list, const CPluginInventory& inventory,
                const CFriendlyNameView& names, CLayoutTreeView& layout);

    /// Shows the menu when it is asked for in the list: by the mouse, after the row there was selected, or by
    /// the keyboard.
    bool OnContextMenu(HWND window, POINT screen);
    /// The menu as it is now.
    UniqueMenu Menu() const;

    void OnSelectAll();
    /// Selects the plug-ins that the layout does not hold.
    void OnSelectNew();
    /// As a table for other programs.
    void OnCopy() const;
    void OnFileLocation() const;

  private:
    CListBox Plugins() const { return m_list.Plugins(); }
    void SelectAt(POINT client);
    POINT PlaceOfCaret() const;
    void Select(const std::vector<int>& rows);
    bool CanSelect() const { return Plugins().ItemOf<PluginListItem>(0) != nullptr; }
    std::vector<int> RowsNotInLayout() const;
    /// Of the one plug-in that is selected; empty when it is not one, or has none.
    std::wstring SelectedFile() const;
    std::wstring TableLine(const PluginRow& plugin) const;

    CDialog& m_dialog;
    CPluginListView& m_list;
    const CPluginInventory& m_inventory;
    const CFriendlyNameView& m_names;
    CLayoutTreeView& m_layout;
};
