// System filters that are never offered as audio plug-ins.
#pragma once

#include "Guid.h"

/// Whether the class id stands in the fixed table.
bool IsPermanentlyExcluded(const Guid& clsid);
