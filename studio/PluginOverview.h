// All plug-ins of this computer as one list.
#pragma once

#include <vector>

#include "ExclusionList.h"
#include "PluginInventory.h"
#include "StudioPlugin.h"

/// Those that a list of the main dialog can show, each once, in the order in which they were found: a VST3,
/// which has two rows there, is excluded when both are. Reads the registry for the files of filters only.
std::vector<StudioPlugin> ListAllPlugins(const CPluginInventory& inventory, const CExclusionList& exclusions);

/// Gone is said only of a file whose drive or share is there: what is merely not connected may come back.
enum class FileState { There, Gone, OutOfReach };
FileState FileStateOf(const std::wstring& path);
