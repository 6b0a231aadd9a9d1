// How large the main dialog opens on a screen, and where its window may stand there.
#pragma once

#include <functional>

#include "Geometry.h"

/// A scale, and the client area that the dialog gets at it.
struct ScreenFit {
    int dpi;
    Size client;

    friend constexpr bool operator==(const ScreenFit&, const ScreenFit&) = default;
};

/// For a screen of that scale with room for a client area of that size. `wholeAt` tells the size at which all
/// controls have the extent of the template. Their columns can't give way, so where these are too wide the
/// dialog takes the next smaller scale of those that the system offers, down to 100 %. Where it is only too
/// high, the lists and the tree give way, but not for ever: then it takes the smaller scale, too.
ScreenFit FitToScreen(int screenDpi, Size room, const std::function<Size(int dpi)>& wholeAt);

/// The window no smaller than `minimum`, and else no larger than the area. Where that changes its size it
/// comes to lie within the area; where not, it stays, even if it hangs over an edge.
Rect HoldInArea(Rect window, Size minimum, const Rect& area);

/// Whether so much of the window's caption lies in the area that the mouse can take hold of it.
/// `frame` is the height of the window's frame and caption together.
bool CanBeGrasped(const Rect& window, int frame, const Rect& area);
