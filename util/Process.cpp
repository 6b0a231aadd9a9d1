#include "Process.h"

#include <shellapi.h>
#include <shlwapi.h>

#include "DialogHelp.h"
#include "Scope.h"

namespace {

constexpr DWORD kSlice = 10;  // ms

/// The system's ERROR_ELEVATION_REQUIRED, which the compiler's headers lack.
constexpr DWORD kElevationRequired = 740;

/// False when the loops of this thread have to end.
bool DispatchPending() {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (EndsLoop(message)) return false;
        if (HelpTakesMessage(message)) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return true;
}

}  // namespace

bool HasAdministratorRights() {
    UniqueKernelHandle token;
    TOKEN_ELEVATION elevation{};
    DWORD size = 0;
    return ::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, token.Put()) &&
           ::GetTokenInformation(token.Get(), TokenElevation, &elevation, sizeof elevation, &size) &&
           elevation.TokenIsElevated != 0;
}

std::optional<CProcess> CProcess::Start(const CWindow& owner, const std::wstring& program,
                                        const std::wstring& arguments, CreateFunction* create) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    std::wstring commandLine = program + arguments;
    if (create(nullptr, commandLine.data(), nullptr, nullptr, /*inherit handles*/ FALSE, 0, nullptr, nullptr,
               &startup, &started)) {
        ::CloseHandle(started.hThread);
        return CProcess(started.hProcess);
    }
    if (::GetLastError() != kElevationRequired) return std::nullopt;
    std::wstring file = program;
    ::PathRemoveBlanksW(file.data());
    ::PathUnquoteSpacesW(file.data());
    return StartElevated(owner, file.c_str(), arguments);
}

std::optional<CProcess> CProcess::StartElevated(const CWindow& owner, const std::wstring& file,
                                                const std::wstring& arguments, int show) {
    const bool enabled = owner.IsEnabled();
    const CScopeExit restore([&] { owner.Enable(enabled); });
    owner.Enable(false);
    SHELLEXECUTEINFOW request{};
    request.cbSize = sizeof request;
    request.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    request.hwnd = owner.Handle();
    request.lpVerb = L"runas";
    request.lpFile = file.c_str();
    // The system puts a blank of its own before them.
    request.lpParameters = arguments.c_str() + (arguments.starts_with(L' ') ? 1 : 0);
    request.nShow = show;
    if (!::ShellExecuteExW(&request) || !request.hProcess) return std::nullopt;
    return CProcess(request.hProcess);
}

std::optional<CProcess> CProcess::StartHidden(const std::wstring& file, const std::wstring& arguments) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    std::wstring commandLine = L"\"" + file + L"\" " + arguments;
    if (!::CreateProcessW(file.c_str(), commandLine.data(), nullptr, nullptr, /*inherit handles*/ FALSE,
                          CREATE_NO_WINDOW, nullptr, nullptr, &startup, &started))
        return std::nullopt;
    ::CloseHandle(started.hThread);
    return CProcess(started.hProcess);
}

DWORD CProcess::ExitCode() const {
    DWORD code = STILL_ACTIVE;
    ::GetExitCodeProcess(m_process.Get(), &code);
    return code;
}

bool CProcess::WaitDispatching(const CWindow& window) const {
    const bool hasWindow = window.Handle() != nullptr;
    while (::WaitForSingleObject(m_process.Get(), kSlice) == WAIT_TIMEOUT) {
        if (!DispatchPending() || (hasWindow && !window.IsLive())) return false;
    }
    return true;
}
