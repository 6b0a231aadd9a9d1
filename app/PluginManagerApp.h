// The program from start to exit.
#pragma once

#include <windows.h>

#include "CmdLine.h"
#include "DebugLog.h"
#include "DialogHelp.h"
#include "HelpFile.h"

/// One object; InitInstance runs the whole program, ExitInstance cleans up, also after a start that found a
/// running copy. No failure of a start is reported to the user.
class CPluginManagerApp : private IDialogHelp {
  public:
    void InitInstance();
    /// Gives the exit code: what the thread was asked to quit with, normally 0.
    int ExitInstance();

  private:
    void ShowHelp(DWORD context) override;
    bool TakesMessage(MSG& message) override { return m_help.TakesMessage(message); }
    void ReportLoggedErrors() const;

    CPluginManagerCmdLine m_cmdLine;
    CHelpFile m_help;
    HWND m_mainWindow = nullptr;  // of the thread, as of the last help request
    CDebugLog m_log;
    bool m_comReady = false;
};
