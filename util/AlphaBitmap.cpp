#include "AlphaBitmap.h"

#include <cstddef>

UniqueBitmap LoadAlphaBitmap(UINT id) {
    UniqueBitmap bitmap(static_cast<HBITMAP>(::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id),
                                                          IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    // Blending expects each colour already multiplied by its pixel's opacity.
    const std::span<RGBQUAD> pixels = PixelsOf(bitmap.Get());
    for (RGBQUAD& pixel : pixels) {
        for (BYTE* colour : {&pixel.rgbRed, &pixel.rgbGreen, &pixel.rgbBlue})
            *colour = static_cast<BYTE>(*colour * pixel.rgbReserved / 255);
    }
    return pixels.empty() ? UniqueBitmap() : std::move(bitmap);
}

std::span<RGBQUAD> PixelsOf(HBITMAP bitmap) {
    DIBSECTION section{};
    if (::GetObjectW(bitmap, sizeof(section), &section) != sizeof(section)) return {};
    const BITMAP& picture = section.dsBm;
    if (picture.bmBitsPixel != 32 || !picture.bmBits) return {};
    return {static_cast<RGBQUAD*>(picture.bmBits),
            static_cast<std::size_t>(picture.bmWidth) * static_cast<std::size_t>(picture.bmHeight)};
}
