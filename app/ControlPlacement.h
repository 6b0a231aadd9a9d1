// Applies the resize layout to a dialog's controls.
#pragma once

#include "Dialog.h"

/// Measures the controls as the template placed them. Only the first dialog of the process is measured: one
/// that is made later follows the same geometry.
void RecordPlacement(const CDialog& dialog, Size units);

/// The client area that was recorded, in a dialog of these units.
Size RecordedClient(Size units);

/// Moves all controls in one batch, for a dialog of these units; nothing before the first RecordPlacement.
void ApplyPlacement(const CDialog& dialog, Size units);
