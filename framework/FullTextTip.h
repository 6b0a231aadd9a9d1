// Texts that their controls cut off, shown whole.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "Window.h"

/// Where the mouse rests on a row of a list box, a read-only field or a label that shows not all of its text,
/// the whole text appears in its place. For one dialog; it follows the dialog's messages, not its controls:
/// a control that is subclassed takes longer to fill.
class CFullTextTip {
  public:
    /// Sees each message that was posted to the dialog or one of its controls.
    void Relay(HWND dialog, const MSG& message);

  private:
    struct Place {
        HWND control = nullptr;  // null: nothing that could be cut off
        int row = 0;             // of a list box
        friend bool operator==(const Place&, const Place&) = default;
    };

    Place PlaceAt(const MSG& move) const;
    static std::wstring TextAt(const Place& place, RECT& shown);
    void OnMove(const MSG& move);
    void Show();
    void Hide();
    TTTOOLINFOW Tool() const;
    void Activate(bool shown) const;

    HWND m_dialog = nullptr;
    CWindow m_tip;
    Place m_place;
};
