#pragma once

#include <windows.h>

/// Opens a file, folder or address as Explorer does. False, without a message, when that fails.
bool OpenInShell(HWND owner, const wchar_t* file, const wchar_t* arguments = nullptr);
