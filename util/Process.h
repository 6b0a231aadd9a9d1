// Another program, started and waited for.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "Handles.h"
#include "Window.h"

/// Whether this program has them now.
bool HasAdministratorRights();

/// While the system asks the user for an administrator's rights, `owner` takes no input. Then it may have
/// been taken away. A refusal is a program that can't be started.
class CProcess {
  public:
    using CreateFunction = decltype(::CreateProcessW);

    /// `arguments` directly behind `program`, as the system reads such a command line, in this program's
    /// folder and environment; nothing when it can't be started. For a program that needs an administrator's
    /// rights the system asks for them.
    static std::optional<CProcess> Start(const CWindow& owner, const std::wstring& program,
                                         const std::wstring& arguments,
                                         CreateFunction* create = &::CreateProcessW);
    /// With an administrator's rights, for which the system asks. `file` is a full path.
    static std::optional<CProcess> StartElevated(const CWindow& owner, const std::wstring& file,
                                                 const std::wstring& arguments, int show = SW_SHOWNORMAL);
    /// A program for the console, without one. `file` is a full path.
    static std::optional<CProcess> StartHidden(const std::wstring& file, const std::wstring& arguments);

    /// Waits for the end of the program, however long that takes, and dispatches the thread's messages
    /// meanwhile. False when one of those took `window` away, which may be none, or asks the thread to quit;
    /// that one is posted again.
    bool WaitDispatching(const CWindow& window) const;
    /// Of a program that has ended.
    DWORD ExitCode() const;

  private:
    explicit CProcess(HANDLE process) : m_process(process) {}

    UniqueKernelHandle m_process;
};
