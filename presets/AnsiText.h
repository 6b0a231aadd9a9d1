#pragma once

#include "PresetFile.h"

/// The conversions of the user's ANSI code page.
const TextConversion& AnsiText();
