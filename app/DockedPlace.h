// Where the dialog lies within the host's window.
#pragma once

#include <algorithm>

#include "Geometry.h"

/// The place of a window that is to have its top left corner at `left`, `top`: as near to that as it fits
/// into the area. What does not fit is cut off at the right and at the bottom, so that the caption with its
/// menu stays in reach.
constexpr Rect PlaceWithin(Size area, int left, int top, Size window) {
    left = std::max(0, std::min(left, area.width - window.width));
    top = std::max(0, std::min(top, area.height - window.height));
    return {left, top, left + window.width, top + window.height};
}
