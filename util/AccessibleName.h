// Names for screen readers.
#pragma once

#include <windows.h>

#include <string>

/// Names a control that has neither a text of its own nor a label directly before it. A mnemonic in the name
/// is left out. The service keeps the name until it is cleared.
void SetAccessibleName(HWND control, const std::wstring& name);
/// The same for a control whose text is what the user types.
void SetReaderName(HWND control, const std::wstring& name);
/// Before the control is destroyed.
void ClearAccessibleName(HWND control);
