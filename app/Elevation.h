// The command that starts the program anew with an administrator's rights.
#pragma once

#include "Closing.h"
#include "Dialog.h"
#include "Handles.h"

class CElevation {
  public:
    CElevation(CDialog& dialog, CClosing& closing) : m_dialog(dialog), m_closing(closing) {}

    /// Adds the command to the system menu, unless the program has these rights.
    void OnInitDialog();
    /// Ends the dialog when the program has started anew. Where the user refuses it the rights, all stays as
    /// it was.
    bool OnSysCommand(UINT command);

  private:
    CDialog& m_dialog;
    CClosing& m_closing;
    UniqueBitmap m_shield;
};
