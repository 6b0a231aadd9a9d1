// Pictures with transparency.
#pragma once

#include <windows.h>

#include <span>

#include "Handles.h"

/// A bitmap resource of 32-bit pixels, ready for alpha blending; empty when it is not one.
UniqueBitmap LoadAlphaBitmap(UINT id);
/// The pixels of such a bitmap, opacity in rgbReserved; none when it is not one.
std::span<RGBQUAD> PixelsOf(HBITMAP bitmap);
