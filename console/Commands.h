// The commands of the console companion; each gives its exit code and says on the way what there is to say.
#pragma once

#include "CmdArguments.h"
#include "CmdStudio.h"
#include "PluginTable.h"

/// The plug-ins that the arguments ask for, by category and then as they were found.
std::vector<PluginTableRow> RowsToList(const CmdArguments& arguments, std::span<const StudioPlugin> plugins);
std::wstring ListText(std::span<const PluginTableRow> rows, ListFormat format);

CmdExit ListPlugins(const CmdArguments& arguments, const CCmdStudio& studio);
CmdExit ChangeExclusions(const CmdArguments& arguments, CCmdStudio& studio);
CmdExit ExportPresetFile(const CmdArguments& arguments, CCmdStudio& studio);
CmdExit ImportPresetFile(const CmdArguments& arguments, CCmdStudio& studio);
CmdExit SaveSet(const CmdArguments& arguments, CCmdStudio& studio);
CmdExit LoadSet(const CmdArguments& arguments, CCmdStudio& studio);
CmdExit VerifyFiles(const CmdArguments& arguments, const CCmdStudio& studio);
