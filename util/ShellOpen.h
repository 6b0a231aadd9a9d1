#pragma once

#include <windows.h>

#include <string>

/// Opens a file, folder or address as Explorer does. False, without a message, when that fails.
bool OpenInShell(HWND owner, const wchar_t* file, const wchar_t* arguments = nullptr);
/// Shows the file or folder, selected, in the folder that it lies in. False when it is not there.
bool ShowInFolder(const std::wstring& path);
