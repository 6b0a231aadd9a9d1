// The images of the layout tree.
#pragma once

#include "Handles.h"

/// As high as small icons are at that scale, and wider by a margin at the right; each at the index that its
/// LayoutImage names. Nothing when one can't be loaded, because all later ones would stand for something
/// else.
UniqueImageList BuildLayoutImageList(UINT dpi);
