// Painting without flicker.
#pragma once

#include <windows.h>

#include "Handles.h"

/// Takes what is painted, in the target's coordinates, and copies it to the target at the end, all at once:
/// as much of it as the target's clipping shows. Without memory for that, it paints on the target directly.
class CWMemDC {
  public:
    explicit CWMemDC(HDC target);
    ~CWMemDC();
    CWMemDC(const CWMemDC&) = delete;
    CWMemDC& operator=(const CWMemDC&) = delete;

    HDC Handle() const { return m_dc ? m_dc.Get() : m_target; }

  private:
    HDC m_target;
    RECT m_box{};
    // In this order: the surface gives the bitmap back before the bitmap goes.
    UniqueBitmap m_bitmap;
    UniqueDc m_dc;
};
