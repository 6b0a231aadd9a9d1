// Applies the resize layout to a dialog's controls.
#pragma once

#include "Dialog.h"

/// Measures the controls as they stand. Only the first dialog of the process is measured: one that is made
/// later follows the same geometry.
void RecordPlacement(const CDialog& dialog, Size units);

/// Moves all controls in one batch, for a dialog of these units; nothing before the first RecordPlacement.
void ApplyPlacement(const CDialog& dialog, Size units);
