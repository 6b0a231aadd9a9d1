// The layout tree and the buttons, menus and keys that edit it.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "Dialog.h"
#include "LayoutButtons.h"
#include "LayoutDrag.h"
#include "PluginInventory.h"
#include "PluginListView.h"
#include "TreeCtrlEx.h"
#include "TreeCtrlWrapper.h"

class CLayoutTreeView {
  public:
    CLayoutTreeView(CDialog& dialog, const CPluginInventory& inventory, const CPluginListView& plugins);

    /// Replaces the template's tree; the new one stands directly after the layout list in the tab order.
    void OnInitDialog();
    void OnDestroy();

    CTreeCtrlWrapper& Layout() { return m_layout; }
    const CTreeCtrlEx& Tree() const { return m_tree; }
    /// Images for the screen's scale.
    void LoadImages(UINT dpi) { m_layout.LoadImages(dpi); }
    void UpdateButtons() const { m_buttons.Update(); }
    void CancelDrag();
    bool IsEditingLabel() const { return m_tree.IsLive() && m_tree.LabelEdit().Handle(); }
    void EndLabelEdit(bool cancel);

    void OnAddPlugin();
    void OnNewFolder();
    void OnAddSeparator();
    void OnExpandAll() { ExpandAll(true); }
    void OnCollapseAll() { ExpandAll(false); }
    void OnSortAll();
    /// Deletes the selection; a folder is asked about first.
    void OnRemove();
    void OnMoveUp();
    void OnMoveDown();
    void OnPromote();

    void OnMouseMove(POINT client) { m_drag.OnMouseMove(client); }
    void OnButtonUp(POINT client);
    void OnCaptureChanged();
    BOOL OnRightClick();
    void OnDoubleClick();
    void OnSelectionChanged() const { UpdateButtons(); }
    void OnItemExpanded(const NMTREEVIEWW& item) const;
    BOOL OnBeginLabelEdit(const NMTVDISPINFOW& item) const;
    BOOL OnEndLabelEdit(const NMTVDISPINFOW& item);
    void OnDeleteItem(const NMTREEVIEWW& item) { m_layout.OnDeleteItem(item.itemOld.hItem); }
    void OnKeyDown(const NMTVKEYDOWN& key);
    void OnBeginDrag(const NMTREEVIEWW& item) { m_drag.Begin(item.itemNew.hItem, item.ptDrag); }
    /// The system tells the outermost window only, and the control relies on being told by that.
    void OnColoursChanged() const { m_tree.Send(WM_SYSCOLORCHANGE); }
    LRESULT OnCustomDraw(NMTVCUSTOMDRAW& draw) const { return m_tree.OnCustomDraw(draw); }

    /// A command of the context menus, for the item that it was opened for.
    void Run(UINT command, HTREEITEM target);

  private:
    /// The tree keeps its place meanwhile, and the buttons are set once, at the end.
    struct CCommand {
        explicit CCommand(CLayoutTreeView& view) : lock(view.m_buttons), hold(view.m_layout.Scroll()) {}
        const CLayoutButtons::CLock lock;
        const CTreeHold hold;
    };

    LayoutItem PluginItem(const PluginRow& plugin) const;
    /// The caret item, or null, the end of the top level, when nothing is selected: a click on empty space
    /// does not take the caret away.
    HTREEITEM PlaceForNew() const;
    void InsertFolder(HTREEITEM target, IntoFolder into);
    void Rename(HTREEITEM item) const;
    void ExpandAll(bool expand);
    void SortSelected();
    /// Moves the caret item to the start or the end of its folder: TVI_FIRST or TVI_LAST.
    void MoveCaretTo(HTREEITEM end);
    void ClearLayout();
    void ShowProperties(HTREEITEM item);
    void ShowContextMenu(HTREEITEM item, POINT screen);
    void ShowMenuOfCaret();
    int Ask(UINT textId) const;

    CDialog& m_dialog;
    const CPluginInventory& m_inventory;
    const CPluginListView& m_plugins;
    CTreeCtrlEx m_tree;
    CTreeCtrlWrapper m_layout{m_tree};
    CLayoutDrag m_drag{m_dialog, m_layout};
    CLayoutButtons m_buttons{m_dialog, m_layout, m_drag};
};
