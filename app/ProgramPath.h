#pragma once

#include <string>

/// Full path of the running program file.
std::wstring ProgramPath();
/// Its folder, without a backslash at the end.
std::wstring ProgramFolder();
