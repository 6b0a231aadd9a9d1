// The images of the layout tree.
#pragma once

#include "Handles.h"

/// In the size that small icons have at that scale, each at the index that its LayoutImage names; nothing
/// when one can't be loaded, because all later ones would stand for something else.
UniqueImageList BuildLayoutImageList(UINT dpi);
