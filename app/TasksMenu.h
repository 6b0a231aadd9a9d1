// The button "Tasks", and the menu that it drops.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "Dialog.h"
#include "Handles.h"

/// A command of the menu that the dialog's route table serves. One without such a row can't be chosen.
struct TaskCommand {
    UINT id = 0;
    std::function<bool()> enabled = [] { return true; };
    /// What stands in the menu instead of the text of the resource, up to the name of the key; empty leaves
    /// that.
    std::function<std::wstring()> text = [] { return std::wstring(); };
};

class CTasksMenu {
  public:
    CTasksMenu(const CDialog& dialog, std::vector<TaskCommand> commands);

    /// Drops the menu at the button, until a command was chosen, which the dialog gets afterwards, or none.
    void Drop() const;
    /// Down on the button drops the menu as it drops a list, Enter as Space does.
    bool IsDropKey(const MSG& message) const;
    /// The menu as it is now.
    UniqueMenu Menu() const;

  private:
    const CDialog& m_dialog;
    const std::vector<TaskCommand> m_commands;
};
