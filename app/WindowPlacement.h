// Size and place of the floating window, kept in the registry from one run to the next.
#pragma once

#include <windows.h>

#include <optional>

/// What was stored; nothing unless it describes a window that lies on a screen.
std::optional<WINDOWPLACEMENT> LoadWindowPlacement();

/// Stores the placement of a window that is no other window's child.
void SaveWindowPlacement(HWND window);

/// Whether the window was maximised, or will be when it is no longer minimised.
bool IsMaximised(const WINDOWPLACEMENT& placement);
