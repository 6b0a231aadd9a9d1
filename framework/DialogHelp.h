// The program's help as dialogs see it: they know numbers, the program knows pages.
#pragma once

#include <windows.h>

#include "HelpContext.h"

class IDialogHelp {
  public:
    virtual ~IDialogHelp() = default;
    /// Shows what there is about a dialog or control, by the number that its window carries.
    virtual void ShowHelp(DWORD context) = 0;
    /// The help window lives on this thread: it sees each message before the dialogs do. True swallows it.
    virtual bool TakesMessage(MSG& message) = 0;
};

/// Null: there is no help, as before the first call.
void SetDialogHelp(IDialogHelp* help);

/// Help on `window`: by its own number, else by that of the next window around it that has one.
void ShowHelpOn(HWND window);
/// What F1 does: help on the control that has the focus, on all of the dialog while a menu is open.
void AnswerHelpKey(const HELPINFO& asked, HWND dialog);
bool HelpTakesMessage(MSG& message);
