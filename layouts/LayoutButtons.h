// The buttons that act on the layout tree's items.
#pragma once

#include "Dialog.h"
#include "LayoutDrag.h"
#include "TreeCtrlWrapper.h"

class CLayoutButtons {
  public:
    CLayoutButtons(const CDialog& dialog, const CTreeCtrlWrapper& layout, const CLayoutDrag& drag)
        : m_dialog(dialog), m_layout(layout), m_drag(drag) {}

    /// Enables those that can act on the tree as it is; does nothing while that is about to change: in a
    /// lock, during a press of the mouse button and during a drag.
    void Update() const;

    /// Leaves the buttons as they are while items change, and sets them at the end.
    class CLock {
      public:
        explicit CLock(CLayoutButtons& buttons) : m_buttons(buttons) { ++m_buttons.m_locks; }
        ~CLock() {
            --m_buttons.m_locks;
            m_buttons.Update();
        }
        CLock(const CLock&) = delete;
        CLock& operator=(const CLock&) = delete;

      private:
        CLayoutButtons& m_buttons;
    };

  private:
    const CDialog& m_dialog;
    const CTreeCtrlWrapper& m_layout;
    const CLayoutDrag& m_drag;
    int m_locks = 0;
};
