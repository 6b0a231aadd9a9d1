#pragma once

#include "PluginCategory.h"

/// Takes a plug-in whose file is gone out of the system's registrations. What fails is left as it was.
void UnregisterPlugin(const Guid& clsid, Category category);
