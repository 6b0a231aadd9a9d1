// The presets that go into the file beside a studio set, and those that such a file can't hold.
#pragma once

#include <windows.h>

#include <functional>
#include <span>
#include <string>

#include "PluginInventory.h"
#include "StudioSets.h"

/// Of every plug-in that a list shows. False when `goOn`, asked before each plug-in, ended it.
bool ListPresets(const CPluginInventory& inventory, const std::function<bool()>& goOn, SetToSave& save);

/// Writes them beside the file and over it; gives the system's error, and ERROR_CANCELLED when `goOn`, asked
/// before each preset, ended it. Then the file is as it was.
DWORD ExportPresetsTo(const std::wstring& path, std::span<const SetToSave::Presets> presets,
                      const std::function<bool()>& goOn);
