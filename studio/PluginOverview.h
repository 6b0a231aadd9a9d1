// All plug-ins of this computer as one list.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "ExclusionList.h"
#include "PluginInventory.h"
#include "StudioPlugin.h"

/// Those that a list of the main dialog can show, each once, in the order in which they were found: a VST3,
/// which has two rows there, is excluded when both are. Reads the registry for the files of filters only.
std::vector<StudioPlugin> ListAllPlugins(const CPluginInventory& inventory, const CExclusionList& exclusions);

/// What lies on a drive or share that did not answer once is not asked for again: that may take seconds each
/// time.
class CFileStates {
  public:
    FileState Of(const std::wstring& path);

  private:
    std::unordered_map<std::wstring, bool> m_roots;  // whether each is there
};
