// The standard streams of the process.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Data go to the standard output and messages to the standard error output: as UTF-8 where they lead to a
/// file or a pipe, as letters of any script where it is a console. A line feed is written as the system's end
/// of a line.
class CConsole {
  public:
    /// Gives the system's error.
    static DWORD Write(std::wstring_view data);
    /// One line. Where it can't be written there is nobody to be told.
    static void Say(const std::wstring& message);
    /// The characters in a line of the standard output; nothing when that is no console.
    static std::optional<std::size_t> Width();
    /// All of the standard input; nothing when it can't be read or is too long to be a list of ids.
    static std::optional<std::string> ReadInput();
};
