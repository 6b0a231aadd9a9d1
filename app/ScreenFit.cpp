#include "ScreenFit.h"

#include <algorithm>

#include "DockedPlace.h"
#include "resource.h"

namespace {

constexpr int kUsualDpi = 96;
constexpr int kDpiStep = 24;  // a quarter: fonts and pictures are made for these scales

/// In rows of the template: the lists still show ten entries then, and the column of buttons ends above the
/// window's edge.
constexpr int kLeastHeight = 275;

/// Of the caption, in heights of the frame: wider than the three buttons.
constexpr int kGrasp = 5;

}  // namespace

ScreenFit FitToScreen(int screenDpi, Size room, const std::function<Size(int)>& wholeAt) {
    for (int dpi = screenDpi;; dpi = std::max(kUsualDpi, (dpi - 1) / kDpiStep * kDpiStep)) {
        const Size whole = wholeAt(dpi);
        const int least = Scaled(whole.height, MAIN_DIALOG_HEIGHT, kLeastHeight);
        if (dpi <= kUsualDpi || (whole.width <= room.width && least <= room.height))
            return {dpi, {whole.width, std::clamp(room.height, least, whole.height)}};
    }
}

Rect HoldInArea(Rect window, Size minimum, const Rect& area) {
    const Size size{std::max(std::min(window.Width(), area.Width()), minimum.width),
                    std::max(std::min(window.Height(), area.Height()), minimum.height)};
    if (size == Size{window.Width(), window.Height()}) return window;
    const Rect place =
        PlaceWithin({area.Width(), area.Height()}, window.left - area.left, window.top - area.top, size);
    return {place.left + area.left, place.top + area.top, place.right + area.left, place.bottom + area.top};
}

bool CanBeGrasped(const Rect& window, int frame, const Rect& area) {
    const int seen = std::min(window.right, area.right) - std::max(window.left, area.left);
    const int middle = window.top + frame / 2;
    return seen >= kGrasp * frame && middle >= area.top && middle < area.bottom;
}
