// A list box that ends with a whole row.
#pragma once

#include <windows.h>

/// The list box keeps the place that it is given; what is left below its last whole row becomes part of its
/// frame. For a box with LBS_NOINTEGRALHEIGHT, whose window data nobody else uses.
void ShowWholeRows(HWND listBox);
