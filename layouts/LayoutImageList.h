// The images of the layout tree.
#pragma once

#include "Handles.h"

/// In the size that small icons have at that scale. An image's index is what a layout item's record asks for;
/// nothing when an image can't be loaded, because all later ones would stand for something else.
UniqueImageList BuildLayoutImageList(UINT dpi);
