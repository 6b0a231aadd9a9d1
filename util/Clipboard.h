#pragma once

#include <windows.h>

#include <string>

/// Puts a text onto the clipboard. False when another program keeps that open for two seconds; what it held
/// stays then.
bool CopyText(HWND owner, const std::wstring& text);
