// Registry files, imported by the system's own program for it.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <string_view>

#include "BackupStep.h"
#include "Window.h"

/// Puts the text into the registry; each key in it is of that hive. Meanwhile it lies in a file that
/// nobody can change. For the machine's hive the system asks for an administrator's rights when they are
/// missing; the user's is always the one of the user who runs this program, whoever the administrator is. The
/// thread's messages are dispatched until it is done, and `owner` takes no input. Gives the system's error,
/// ERROR_CANCELLED when the user refuses.
DWORD ImportRegText(const CWindow& owner, BackupHive hive, std::wstring_view text);

/// That, or what a test has in its place.
using RegImporter = std::function<DWORD(const CWindow& owner, BackupHive hive, std::wstring_view text)>;
