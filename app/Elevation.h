// The command that starts the program anew with an administrator's rights.
#pragma once

#include <functional>

#include "Dialog.h"
#include "Handles.h"

/// What became of the dialog's layout is the dialog's to know.
struct ElevationQuestions {
    std::function<bool()> mayClose;  // asks the user, and takes it that the dialog closes
    std::function<void()> stays;     // takes that back
};

class CElevation {
  public:
    CElevation(CDialog& dialog, ElevationQuestions questions);

    /// Adds the command to the system menu, unless the program has these rights.
    void OnInitDialog();
    /// Ends the dialog when the program has started anew. Where the user refuses it the rights, all stays as
    /// it was.
    bool OnSysCommand(UINT command);

  private:
    CDialog& m_dialog;
    const ElevationQuestions m_questions;
    UniqueBitmap m_shield;
};
