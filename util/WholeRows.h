// A list box that ends with a whole row.
#pragma once

#include <windows.h>

/// The list box keeps the place that it is given; what is left below its last whole row becomes part of its
/// frame. For a box with LBS_NOINTEGRALHEIGHT, whose window data nobody else uses.
void ShowWholeRows(HWND listBox);

/// While it lives, messages go straight to such a list box, of which filling it takes two a row.
class CQuickFill {
  public:
    explicit CQuickFill(HWND listBox);
    ~CQuickFill();
    CQuickFill(const CQuickFill&) = delete;
    CQuickFill& operator=(const CQuickFill&) = delete;

  private:
    HWND m_list;  // null for a list box of another kind
};
