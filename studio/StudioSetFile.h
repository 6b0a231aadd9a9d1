// The file of a studio set; docs/studio-set-format.md describes it.
#pragma once

#include <windows.h>

#include <string>

#include "StudioSet.h"

enum class SetFileRead {
    Read,
    NotOpened,  // the system's last error says why
    Malformed,
    Newer,  // made by a newer version
};
/// An entry that is of no use is passed over and counted; the set holds no plug-in and no file name twice.
SetFileRead ReadStudioSet(const std::wstring& path, StudioSet& set);

/// Gives the system's error; a file of that name stays as it was then. What XML can't hold of a text is
/// replaced.
DWORD WriteStudioSet(const std::wstring& path, const StudioSet& set);

/// The presets of a set lie beside it: the same name with ".spp" instead of ".pgset".
std::wstring PresetFileOf(const std::wstring& set);
