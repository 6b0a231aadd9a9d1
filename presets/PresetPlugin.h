#pragma once

#include <string>

#include "Guid.h"

/// A plug-in as the preset commands know it.
struct PresetPlugin {
    Guid clsid;
    Guid category;
    std::wstring name;  // as shown to the user
};
