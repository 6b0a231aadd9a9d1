// What --help prints.
#pragma once

#include <optional>
#include <string>

#include "CmdArguments.h"

/// Help on one command, or on all of them; in lines.
std::wstring CmdHelp(std::optional<CmdVerb> verb);
