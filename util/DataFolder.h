#pragma once

#include <string>

/// The folder in which the program keeps what is the user's own, without a backslash at the end; empty where
/// the system has no place for it. It need not exist.
std::wstring DataFolder();
/// The present time as part of a file's name; in the order of the names lies that of the times.
std::wstring TimeForName();
