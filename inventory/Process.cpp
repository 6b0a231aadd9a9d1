#include "Process.h"

#include "DialogHelp.h"

namespace {

constexpr DWORD kSlice = 10;  // ms

/// False when the loops of this thread have to end.
bool DispatchPending(const CWindow& window) {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return false;
        }
        if (HelpTakesMessage(message)) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return window.IsLive();
}

}  // namespace

std::optional<CProcess> CProcess::Start(std::wstring commandLine) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!::CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, /*inherit handles*/ FALSE, 0,
                          nullptr, nullptr, &startup, &started)) {
        return std::nullopt;
    }
    ::CloseHandle(started.hThread);
    return CProcess(started.hProcess);
}

bool CProcess::WaitDispatching(const CWindow& window) const {
    while (::WaitForSingleObject(m_process.Get(), kSlice) == WAIT_TIMEOUT) {
        if (!DispatchPending(window)) return false;
    }
    return true;
}
