#pragma once

#include <vector>

#include "BackupStep.h"
#include "PluginCategory.h"

/// The keys in which UnregisterPlugin changes or removes something, of either hive that may hold them.
std::vector<BackupKey> RegistrationKeys(const Guid& clsid, Category category);

/// Takes a plug-in whose file is gone out of the system's registrations. What fails is left as it was.
void UnregisterPlugin(const Guid& clsid, Category category);
