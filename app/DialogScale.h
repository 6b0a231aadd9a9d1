// The scale of a dialog: its font, and what its controls are measured in.
#pragma once

#include <windows.h>

#include "Geometry.h"
#include "Handles.h"

/// How much larger the window is than its client area at that scale.
Size FrameSize(HWND window, UINT dpi);

/// For a dialog that places its controls itself, or that may become the child of another window: those the
/// system does not scale, or not in step with what the dialog does.
class CDialogScale {
  public:
    /// Takes the dialog as it was made from its template.
    void Attach(HWND dialog);

    UINT Dpi() const { return m_dpi; }
    /// Width and height of an average character of the dialog's font, in which a template measures.
    Size Units() const { return m_units; }
    Size UnitsAt(UINT dpi) const;
    /// Gives the controls font and place of the scale; the window keeps its size.
    void ChangeTo(UINT dpi);

  private:
    UniqueFont FontAt(UINT dpi) const;
    Size UnitsOf(HFONT font) const;

    HWND m_dialog = nullptr;
    UINT m_dpi = 0;
    LOGFONTW m_face{};
    int m_points = 0;
    Size m_units;
    UniqueFont m_font;  // null as long as it is the template's
};
