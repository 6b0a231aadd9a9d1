// Files that are read and written in one go.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

/// Nothing for what is no plain file, can't be read, or is larger than any sensible layout.
std::optional<std::string> ReadWholeFile(const std::wstring& path);

/// Writes beside the file, under a name that does not match a scan for layouts, and moves the result over it
/// when it is complete: a failure leaves the old file as it was. Another program that holds the file is given
/// two seconds to let go of it. A file that is marked read-only is not replaced, and nothing is written that
/// is too large to be read again.
bool ReplaceFileContents(const std::wstring& path, std::string_view bytes);
