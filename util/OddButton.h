// A push button that draws itself: how it follows mouse and keyboard.
#pragma once

#include <windows.h>

#include "Controls.h"
#include "SubclassedControl.h"

/// For a control with the style BS_OWNERDRAW. Its dialog hands on WM_DRAWITEM.
class COddButton : public CSubclassedControl<CButton> {
  public:
    /// A toggle button stays down after one click and comes up with the next.
    void SetToggleMode(bool toggles) { m_toggles = toggles; }
    bool IsToggled() const { return m_toggled; }

    /// False when the item is another control's.
    bool OnDrawItem(const DRAWITEMSTRUCT& item);

  protected:
    Answer OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    virtual void Draw(const DRAWITEMSTRUCT& item) = 0;

    bool IsHot() const { return m_hot; }
    bool IsToggleButton() const { return m_toggles; }
    /// `selected` is what the system says of the button.
    bool IsPressed(bool selected) const;
    void Redraw() const { ::InvalidateRect(m_hwnd, nullptr, FALSE); }

  private:
    void SetHot(bool hot);
    void TrackCursor(LPARAM lParam);
    void OnLeftDown();
    void OnPressEnded();

    bool m_toggles = false;
    bool m_toggled = false;
    bool m_mousePressed = false;
    bool m_hot = false;
};
