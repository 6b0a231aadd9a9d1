// The button "Tasks", and the menu that it drops.
#pragma once

#include <windows.h>

#include <vector>

#include "CommandMenu.h"
#include "resource.h"

class CTasksMenu {
  public:
    CTasksMenu(const CDialog& dialog, std::vector<MenuCommand> commands);

    /// Drops the menu at the button, until a command was chosen, which the dialog gets afterwards, or none.
    void Drop() const;
    /// Down on the button drops the menu as it drops a list, Enter as Space does.
    bool IsDropKey(const MSG& message) const;
    /// The menu as it is now.
    UniqueMenu Menu() const { return BuildCommandMenu(m_dialog, IDM_TASKS, m_commands); }

  private:
    const CDialog& m_dialog;
    const std::vector<MenuCommand> m_commands;
};
