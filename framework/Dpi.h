// The scale of the screen, through functions of the system that older versions do not have.
#pragma once

#include <windows.h>

#include "Geometry.h"

/// Dots per inch that the window is shown at; those of the main screen where screens don't differ.
UINT DpiOf(HWND window);

/// As GetSystemMetrics, for a window on a screen of that scale.
int SystemMetric(int index, UINT dpi);

/// How much larger the window is than its client area at that scale.
Size FrameSize(HWND window, UINT dpi);

/// The system leaves the dialog alone when its scale changes.
void ScaleByOneself(HWND dialog);
