// The presets that go into the file beside a studio set, and those that such a file can't hold.
#pragma once

#include "PluginInventory.h"
#include "StudioSets.h"

/// Of every plug-in that a list shows. False when `goOn`, asked before each plug-in, ended it.
bool ListPresets(const CPluginInventory& inventory, const std::function<bool()>& goOn, SetToSave& save);
