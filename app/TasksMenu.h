// The button "Tasks", and the commands of the menu that it drops.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "Dialog.h"
#include "Handles.h"

/// A command of the menu, and who serves it. The menu shows one that nobody serves as one that can't be used.
struct TaskCommand {
    UINT id = 0;
    std::function<void()> run;
    std::function<bool()> enabled = [] { return true; };
    /// What stands in the menu instead of its own text, up to the name of the key; empty leaves that.
    std::function<std::wstring()> text = [] { return std::wstring(); };
};

class CTasksMenu {
  public:
    CTasksMenu(CDialog& dialog, std::vector<TaskCommand> commands);

    /// Drops the menu at the button; ends when a command was chosen, which arrives afterwards, or none.
    void Drop() const;
    /// The key that drops the menu from the button, as it does a list.
    bool IsDropKey(const MSG& message) const;
    /// Does nothing when the command can't be used: a key asks no menu.
    void Run(UINT id) const;
    template <UINT Id>
    void OnCommand() const {
        Run(Id);
    }

    /// The menu as it is now.
    UniqueMenu Menu() const;

  private:
    const TaskCommand* Find(UINT id) const;

    CDialog& m_dialog;
    const std::vector<TaskCommand> m_commands;
};
