#pragma once

#include <windows.h>

/// Looks for a running copy: at the top level, inside the given host window, inside the host window that the
/// running copy stored. A copy that is found is brought to the front.
bool BringRunningCopyForward(HWND host);
