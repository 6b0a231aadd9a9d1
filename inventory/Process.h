// Another program, started and waited for.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "Handles.h"
#include "Window.h"

class CProcess {
  public:
    /// As the system reads the command line, in this program's folder and environment; nothing when it can't
    /// be started.
    static std::optional<CProcess> Start(std::wstring commandLine);

    /// Waits for the end of the program, however long that takes, and dispatches the thread's messages
    /// meanwhile. False when one of those took `window` away or asks the thread to quit; that one is posted
    /// again.
    bool WaitDispatching(const CWindow& window) const;

  private:
    explicit CProcess(HANDLE process) : m_process(process) {}

    UniqueKernelHandle m_process;
};
