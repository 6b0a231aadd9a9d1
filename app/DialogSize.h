// The main dialog's size: its minimum, the controls that follow it, and what a change of scale makes of it.
#pragma once

#include <windows.h>

#include <functional>

#include "Dialog.h"
#include "DialogScale.h"

class CDialogSize {
  public:
    /// `loadImages` gives the dialog the images for a scale.
    CDialogSize(CDialog& dialog, std::function<void(UINT dpi)> loadImages);

    /// The dialog as it opens: it gets no smaller than that.
    void OnInitDialog();
    UINT Dpi() const { return m_scale.Dpi(); }

    void OnSize(Size client) const;
    void OnSizing(UINT edge, RECT& proposed) const;
    void OnScaledSize(UINT dpi, SIZE& window) const;
    void OnDpiChanged(UINT dpi, const RECT& place);
    void OnParentScaled();

  private:
    Size WindowSize() const;
    void ScaleTo(UINT dpi);

    CDialog& m_dialog;
    const std::function<void(UINT)> m_loadImages;
    CDialogScale m_scale;
    Size m_minimum;
};
