// The layout tree and the buttons, menus and keys that edit it.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>
#include <utility>

#include "Dialog.h"
#include "LayoutButtons.h"
#include "LayoutDrag.h"
#include "LayoutHistory.h"
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

    bool CanUndo() const { return m_history.UndoText() != 0; }
    bool CanRedo() const { return m_history.RedoText() != 0; }
    /// "&Undo Sort All"; empty when there is nothing to undo.
    std::wstring UndoName() const;
    std::wstring RedoName() const;
    void OnUndo() { Travel(&CLayoutHistory::Undo); }
    void OnRedo() { Travel(&CLayoutHistory::Redo); }
    bool CanCopy() const { return !m_tree.SelectedItems().empty(); }
    bool CanPaste() const { return !m_cut.IsEmpty(); }
    void OnCut();
    /// What is selected, with all that is in it; another layout can take it, too.
    void OnCopy();
    /// Into the selected folder, behind another selected item, or at the end.
    void OnPaste();
    /// Before a command that can come at any time.
    void EndInput();
    /// For commands of the rooms above: one step to undo, under the text of this id, after a drag or the
    /// renaming of an item has ended.
    void Edit(UINT stepText, const std::function<void()>& edit);
    /// An item of its own that stands for the plug-in.
    LayoutItem PluginItem(const PluginListItem& plugin, const std::wstring& name) const;
    /// The plug-ins of a layout from before may be missing now, or no more.
    void WhenRestored(std::function<void()> restored) { m_restored = std::move(restored); }
    /// The tree holds another layout than before.
    void ForgetSteps() { m_history.Forget(); }
    void NoteSaved();

    void OnMouseMove(POINT client) { m_drag.OnMouseMove(client); }
    void OnButtonUp(POINT client);
    void OnCaptureChanged();
    BOOL OnRightClick();
    void OnDoubleClick();
    void OnSelectionChanged() const { UpdateButtons(); }
    void OnItemExpanded(const NMTREEVIEWW& item) const;
    BOOL OnBeginLabelEdit(const NMTVDISPINFOW& item) const;
    BOOL OnEndLabelEdit(const NMTVDISPINFOW& item);
    void OnDeleteItem(const NMTREEVIEWW& item) {
        m_layout.OnDeleteItem(item.itemOld.hItem, static_cast<LayoutItemId>(item.itemOld.lParam));
    }
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

    /// One that can be undone, under the text of this id.
    struct CStep {
        CStep(CLayoutTreeView& view, UINT text) : step(view.m_history, text), command(view) {}
        const CLayoutHistory::CStep step;
        const CCommand command;
    };

    /// The caret item, or null, the end of the top level, when nothing is selected: a click on empty space
    /// does not take the caret away.
    HTREEITEM PlaceForNew() const;
    void InsertFolder(HTREEITEM target, IntoFolder into);
    void Rename(HTREEITEM item) const;
    void ExpandAll(bool expand);
    void SortSelected();
    /// Moves the caret item to the start or the end of its folder: TVI_FIRST or TVI_LAST.
    void MoveCaretTo(HTREEITEM end, UINT stepText);
    void DeleteSelection();
    void ClearLayout();
    void ShowProperties(HTREEITEM item);
    void Travel(bool (CLayoutHistory::*travel)());
    bool OnCommandKey(UINT key);
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
    CLayoutHistory m_history{m_layout};
    CRememberedTree m_cut;  // or copied
    std::function<void()> m_restored = [] {};
};
