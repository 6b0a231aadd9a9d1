// What the commands say on the standard error output.
#pragma once

#include <windows.h>

#include <string>

#include "CmdStudio.h"
#include "Console.h"
#include "Resources.h"
#include "TextFormat.h"
#include "resource.h"

inline void Say(UINT id) { CConsole::Say(LoadText(id)); }
/// A text of the program, filled in.
template <typename... TArguments>
void Say(UINT id, const TArguments&... arguments) {
    CConsole::Say(FormatText(LoadText(id), arguments...));
}

/// How messages name a plug-in; the name may be unknown.
std::wstring NameWithId(const std::wstring& name, const Guid& clsid);

/// The name with the system's own words for what went wrong.
void SayFileError(const std::wstring& path, DWORD error);

/// Writes what the command has found. A reader that wants no more is told nothing.
CmdExit WriteData(const std::wstring& data);
