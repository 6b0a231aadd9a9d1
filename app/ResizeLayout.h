// How the main dialog's controls follow its size.
#pragma once

#include <span>
#include <vector>

#include "Geometry.h"

/// The controls that are placed, in the order of the rectangles below.
std::span<const int> PlacedControls();

/// Places of the controls in client coordinates, the size of the client area in which they stood there, and
/// the dialog units that both came from.
struct RecordedGeometry {
    std::vector<Rect> places;
    Size client;
    Size units;
};

/// What would have been recorded with other dialog units.
RecordedGeometry InUnits(RecordedGeometry recorded, Size units);

/// The places of the controls in a client area of another size.
std::vector<Rect> PlaceControls(const RecordedGeometry& recorded, Size client);

/// The edge that the user drags; the values are those of the system's WMSZ_ constants.
enum class SizingEdge { Left = 1, Right, Top, TopLeft, TopRight, Bottom, BottomLeft, BottomRight };

/// Moves the dragged edges back where the window would become smaller than the minimum.
Rect HoldMinimumSize(SizingEdge edge, Rect proposed, Size minimum);
