// What the program reads and leaves in the registry at each start.
#pragma once

#include <windows.h>

#include <string>

#include "CorvaneKeys.h"

struct ManagerSettings {
    std::wstring layoutFolder;  // of the menu layout files; empty when none is set
    bool succeeded = false;     // under `registerOnly`: the Tools-menu entry was written in full
};

/// Reads the settings below kManagerKey and notes this program, and the host's window if it is live. With
/// `registerOnly` it also does so machine-wide and enters the program into the host's Tools menu.
ManagerSettings LoadManagerSettings(bool registerOnly, HWND host);

/// Removes the host's window, which is stored only while there is a dialog.
void ForgetParentWindow();
