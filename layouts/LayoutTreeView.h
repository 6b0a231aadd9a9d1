// The layout tree and the buttons that edit it. The editing commands are to come: until then the tree stays
// empty and the handlers without effect.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "Controls.h"
#include "Dialog.h"

class CLayoutTreeView {
  public:
    explicit CLayoutTreeView(CDialog& dialog) : m_dialog(dialog) {}

    /// Puts the tree in the place of the template's one, directly after the layout list in the tab order.
    void OnInitDialog();
    void OnDestroy() { m_tree = CTreeView(); }

    /// Enables the buttons that can act on the tree as it is.
    void UpdateButtons() const;
    void CancelDrag() {}
    bool IsEditingLabel() const { return m_tree.IsLive() && m_tree.LabelEdit().Handle(); }
    void EndLabelEdit() const { m_tree.EndLabelEdit(true); }

    void OnAddPlugin() {}
    void OnNewFolder() {}
    void OnAddSeparator() {}
    void OnExpandAll() {}
    void OnCollapseAll() {}
    void OnSortAll() {}
    void OnRemove() {}
    void OnMoveUp() {}
    void OnMoveDown() {}
    void OnPromote() {}

    void OnMouseMove(POINT /*client*/) {}
    void OnButtonUp(POINT /*client*/) {}
    void OnRightClick() {}
    void OnDoubleClick() {}
    void OnSelectionChanged() const { UpdateButtons(); }
    BOOL OnBeginLabelEdit(const NMTVDISPINFOW& /*item*/) { return FALSE; }
    BOOL OnEndLabelEdit(const NMTVDISPINFOW& /*item*/) { return FALSE; }
    BOOL OnItemExpanding(const NMTREEVIEWW& /*item*/) { return FALSE; }
    void OnDeleteItem(const NMTREEVIEWW& /*item*/) {}
    void OnKeyDown(const NMTVKEYDOWN& /*key*/) {}
    void OnBeginDrag(const NMTREEVIEWW& /*item*/) {}

  private:
    CDialog& m_dialog;
    CTreeView m_tree;
};
