// Menus whose entries show what can be done at the moment.
#pragma once

#include <windows.h>

#include <functional>
#include <span>
#include <string>

#include "Dialog.h"
#include "Handles.h"

/// A command of a menu that the dialog's route table serves.
struct MenuCommand {
    UINT id = 0;
    std::function<bool()> enabled = [] { return true; };
    /// What stands in the menu instead of the text of the resource, up to the name of the key; empty leaves
    /// that.
    std::function<std::wstring()> text = [] { return std::wstring(); };
};

/// The menu of that number as it is now. An entry with the id of a button presses it, and can be chosen
/// while the button can be pressed; another one needs to be among the commands.
UniqueMenu BuildCommandMenu(const CDialog& dialog, UINT menuId, std::span<const MenuCommand> commands);
