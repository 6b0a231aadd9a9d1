// The button "Tasks", and the menu that it drops.
#pragma once

#include <windows.h>

#include "CommandMenu.h"
#include "LayoutTreeView.h"

class CTasksMenu {
  public:
    CTasksMenu(const CDialog& dialog, const CLayoutTreeView& tree) : m_dialog(dialog), m_tree(tree) {}

    /// Drops the menu at the button, until a command was chosen, which the dialog gets afterwards, or none.
    void Drop() const;
    /// Down on the button drops the menu as it drops a list, Enter as Space does. True when it was one of
    /// these.
    bool OnKey(const MSG& message) const;
    /// The menu as it is now.
    UniqueMenu Menu() const;

  private:
    const CDialog& m_dialog;
    const CLayoutTreeView& m_tree;
};
