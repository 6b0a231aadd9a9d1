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

/// What was measured in the units `from`, in the units `to`; rounded to the nearest.
constexpr int Scaled(int length, int from, int to) {
    const int twice = 2 * length * to;
    return (twice < 0 ? twice - from : twice + from) / (2 * from);
}
constexpr Size Scaled(Size size, Size from, Size to) {
    return {Scaled(size.width, from.width, to.width), Scaled(size.height, from.height, to.height)};
}
/// Equal sizes stay equal wherever they lie.
constexpr Rect Scaled(const Rect& r, Size from, Size to) {
    const int left = Scaled(r.left, from.width, to.width);
    const int top = Scaled(r.top, from.height, to.height);
    return {left, top, left + Scaled(r.Width(), from.width, to.width),
            top + Scaled(r.Height(), from.height, to.height)};
}
