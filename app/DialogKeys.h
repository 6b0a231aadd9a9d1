// Which key goes where in the main dialog, whatever control has the focus.
#pragma once

#include <windows.h>

#include "Dialog.h"
#include "FindField.h"
#include "FriendlyNameView.h"
#include "LayoutTreeView.h"

class CDialogKeys {
  public:
    CDialogKeys(const CDialog& dialog, CLayoutTreeView& tree, CFindField& find, CFriendlyNameView& names)
        : m_dialog(dialog), m_tree(tree), m_find(find), m_names(names) {}

    /// Before the system's dialog keys; true when that was all the message is for.
    bool OnKey(const MSG& message) const;
    int OnVKeyToItem(UINT key, HWND list) const;

  private:
    void OnEscape() const;
    bool OnEnter() const;
    bool OnControlKey(const MSG& key) const;
    bool HasFocus(int id) const { return m_dialog.Item(id).HasFocus(); }

    const CDialog& m_dialog;
    CLayoutTreeView& m_tree;
    CFindField& m_find;
    CFriendlyNameView& m_names;
};
