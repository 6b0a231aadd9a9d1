// Rectangles and sizes for code that includes no Windows header.
#pragma once

struct Size {
    int width = 0;
    int height = 0;

    friend constexpr bool operator==(const Size&, const Size&) = default;
};

/// Left and top lie inside, right and bottom just outside, as in the system's RECT.
struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    constexpr int Width() const { return right - left; }
    constexpr int Height() const { return bottom - top; }
    friend constexpr bool operator==(const Rect&, const Rect&) = default;
};
