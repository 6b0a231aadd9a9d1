// Class ids as text, by the system's own conversions.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "Guid.h"

/// The system's GUID of the same sixteen bytes, and back.
GUID ToSystem(const Guid& guid);
Guid FromSystem(const GUID& guid);

/// 38 characters, upper-case hexadecimal in braces.
std::wstring ClsidText(const Guid& guid);

/// Nothing when the text is no class id. A text without braces is taken as a program id, as the system does.
std::optional<Guid> ParseClsid(const std::wstring& text);
