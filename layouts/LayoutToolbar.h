// The four buttons above the layout tree, and the label beside them.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <array>

#include "Dialog.h"
#include "StaticCtrlEx.h"
#include "XButtonXP.h"

class CLayoutToolbar {
  public:
    explicit CLayoutToolbar(CDialog& dialog) : m_dialog(dialog) {}

    void OnInitDialog();
    /// Bitmaps for the screen's scale.
    void LoadImages(UINT dpi);
    /// False when the item is none of these buttons.
    bool OnDrawItem(const DRAWITEMSTRUCT& item);
    void OnNeedTipText(NMTTDISPINFOW& tip) const;

  private:
    CDialog& m_dialog;
    std::array<CXButtonXP, 4> m_buttons;
    CStaticCtrlEx m_label;
    CToolTips m_tips;
};
