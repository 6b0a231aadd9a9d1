// The main dialog's size and place: its minimum, the controls that follow it, and what screens of another
// size or scale make of it.
#pragma once

#include <windows.h>

#include <functional>

#include "Dialog.h"
#include "DialogScale.h"

/// The scale of the controls is that of the screen, or a smaller one where the dialog would be wider than the
/// screen. The frame around them is the system's and keeps the screen's.
class CDialogSize {
  public:
    /// `loadImages` gives the dialog the images for a scale.
    CDialogSize(CDialog& dialog, std::function<void(UINT dpi)> loadImages);

    /// Records the controls as they were made.
    void OnInitDialog();
    /// Fits the window into the screen's work area. The size that it gets is its minimum.
    void FitScreen();
    /// Puts a floating window where the last one was when it closed.
    void PlaceAsBefore();
    UINT ScreenDpi() const { return m_screenDpi; }

    void OnSize(Size client) const;
    void OnSizing(UINT edge, RECT& proposed) const;
    void OnScaledSize(UINT dpi, SIZE& window) const;
    void OnDpiChanged(UINT dpi, const RECT& place);
    void OnParentScaled();
    /// To be called often: a docked dialog hears nothing of its host's moves between screens.
    void FollowHost();
    void StorePlace() const;

  private:
    /// A screen's scale, and the dialog units of the controls on it.
    struct Measure {
        UINT dpi;
        Size units;
    };
    Measure Now() const { return {m_screenDpi, m_scale.Units()}; }
    Measure At(UINT dpi) const { return {dpi, m_scale.UnitsAt(dpi)}; }
    /// The window size that shows by one measure what this size shows by the other.
    Size Converted(Size window, const Measure& from, const Measure& to) const;

    void FitTo(UINT dpi, const Rect& area);
    void MoveTo(const Rect& place, UINT flags = 0) const;

    CDialog& m_dialog;
    const std::function<void(UINT)> m_loadImages;
    CDialogScale m_scale;
    UINT m_screenDpi = 0;
    Size m_minimum;
};
