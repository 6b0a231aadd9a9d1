#include "support/WindowDriver.h"

#include <stdexcept>

#include "resource.h"

namespace support {

std::filesystem::path BesideTest(const std::wstring& name) {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::filesystem::path(path).replace_filename(name);
}

void EndProcess(HANDLE process) {
    TerminateProcess(process, 99);  // refused, and no harm, when it has ended
    WaitForSingleObject(process, 5000);
    CloseHandle(process);
}

UniqueProcess StartProgram(const std::wstring& arguments, const wchar_t* file) {
    const auto program = BesideTest(file);
    std::wstring commandLine = L"\"" + program.wstring() + L"\" " + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &started))
        throw std::runtime_error("can't start the program");
    CloseHandle(started.hThread);
    return UniqueProcess(started.hProcess);
}

std::optional<DWORD> WaitForExit(const UniqueProcess& process, std::chrono::milliseconds limit) {
    DWORD code = 0;
    const bool ended = WaitFor([&] { return WaitForSingleObject(process.Get(), 0) == WAIT_OBJECT_0; }, limit);
    return ended && GetExitCodeProcess(process.Get(), &code) ? std::optional(code) : std::nullopt;
}

WindowDriver::WindowDriver(UniqueProcess process, HWND host) : m_process(std::move(process)) {
    const auto isFilled = [&] {
        if (!m_window) m_window = FindWindowExW(host, nullptr, L"#32770", L"Corvane Plug-in Manager x64");
        return m_window && !Rows(IDC_PLUGINS).empty();
    };
    if (!WaitFor(isFilled)) throw std::runtime_error("the program does not fill its lists");
}

std::optional<DWORD> WindowDriver::Close() const {
    PostMessageW(m_window, WM_CLOSE, 0, 0);
    return WaitForExit();
}

}  // namespace support
