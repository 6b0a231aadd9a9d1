// Where image and text of a button go.
#pragma once

#include "Geometry.h"

/// The numbers are those of the button's placement setting.
enum class ImagePlacement { LeftOfText = 1, RightOfText = 2 };

struct ButtonParts {
    Rect image;
    Rect text;
};

/// An image of no width counts as no image; without a text the image is centred.
constexpr ButtonParts PlaceButtonParts(const Rect& button, Size image, bool hasText,
                                       ImagePlacement placement) {
    constexpr int kMargin = 4;
    const bool right = placement == ImagePlacement::RightOfText;
    const int free = button.Width() - image.width;
    int left = button.left + free / 2;
    if (hasText) left = right ? button.right - 2 * kMargin - image.width : button.left + 2 * kMargin;
    const int top = button.top + (button.Height() - image.height) / 2;

    ButtonParts parts{{left, top, left + image.width, top + image.height}, button};
    if (image.width == 0) return parts;
    if (right) {
        parts.text.left += kMargin;
        parts.text.right = parts.image.left - kMargin;
    } else {
        parts.text.left = parts.image.right + kMargin;
        parts.text.right -= kMargin;
    }
    return parts;
}
