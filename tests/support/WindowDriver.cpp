#include "support/WindowDriver.h"

#include <windows.h>

#include <functional>
#include <stdexcept>

namespace support {
namespace {

constexpr wchar_t kTitle[] = L"Corvane Plug-in Manager";

/// Asks the system, not the window: a hung program has a title, too.
std::wstring TitleOf(HWND window) {
    wchar_t title[256] = L"";
    InternalGetWindowText(window, title, 256);
    return title;
}

bool IsDialogOf(DWORD processId, HWND window, const std::wstring& title) {
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    return owner == processId && ClassOf(window) == L"#32770" && TitleOf(window).starts_with(title);
}

using Visitor = std::function<bool(HWND)>;  // false ends the walk

BOOL CALLBACK Visit(HWND window, LPARAM visitor) {
    return (*reinterpret_cast<const Visitor*>(visitor))(window);
}

void ForEachTopLevel(const Visitor& visitor) { EnumWindows(Visit, reinterpret_cast<LPARAM>(&visitor)); }

void ForEachWithin(HWND window, const Visitor& visitor) {
    EnumChildWindows(window, Visit, reinterpret_cast<LPARAM>(&visitor));
}

}  // namespace

std::filesystem::path BesideTest(const std::wstring& name) {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::filesystem::path(path).replace_filename(name);
}

struct WindowDriver::Process {
    PROCESS_INFORMATION info{};

    Process(const std::wstring& arguments, const std::filesystem::path& program) {
        std::wstring commandLine = L"\"" + program.wstring() + L"\" " + arguments;
        STARTUPINFOW startup{};
        startup.cb = sizeof(startup);
        if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                            &startup, &info))
            throw std::runtime_error("can't start " + Utf8(program.wstring()));
    }
    ~Process() {
        TerminateProcess(info.hProcess, 99);  // refused, and no harm, when it has ended
        WaitForSingleObject(info.hProcess, 5000);
        CloseHandle(info.hThread);
        CloseHandle(info.hProcess);
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    bool HasEnded(std::chrono::milliseconds limit) const {
        return WaitFor([this] { return WaitForSingleObject(info.hProcess, 0) == WAIT_OBJECT_0; }, limit);
    }
};

WindowDriver::WindowDriver(const std::wstring& arguments, const std::filesystem::path& program)
    : m_process(std::make_unique<Process>(arguments, program)) {}

WindowDriver::~WindowDriver() = default;

HWND WindowDriver::Window() const {
    const DWORD id = m_process->info.dwProcessId;
    if (m_window && IsDialogOf(id, m_window, kTitle)) return m_window;
    m_window = nullptr;
    const Visitor match = [&](HWND window) {
        if (IsDialogOf(id, window, kTitle)) m_window = window;
        return m_window == nullptr;
    };
    ForEachTopLevel([&](HWND window) {
        if (match(window)) ForEachWithin(window, match);
        return m_window == nullptr;
    });
    return m_window;
}

bool WindowDriver::WaitForWindow(std::chrono::milliseconds limit) const {
    return WaitFor([this] { return Window() && IsWindowVisible(Window()); }, limit);
}

HWND WindowDriver::Control(int id) const {
    if (const HWND control = GetDlgItem(Window(), id)) return control;
    throw std::runtime_error("there is no control " + std::to_string(id) + "\n" + OnScreen());
}

HWND WindowDriver::Popup(const std::wstring& title) const {
    HWND found = nullptr;
    const HWND main = Window();
    ForEachTopLevel([&](HWND window) {
        if (window != main && IsWindowVisible(window) &&
            IsDialogOf(m_process->info.dwProcessId, window, title))
            found = window;
        return found == nullptr;
    });
    return found;
}

HWND WindowDriver::WaitForPopup(const std::wstring& title, std::chrono::milliseconds limit) const {
    HWND popup = nullptr;
    WaitFor([&] { return (popup = Popup(title)) != nullptr; }, limit);
    return popup;
}

bool WindowDriver::IsRunning() const { return !m_process->HasEnded(0ms); }

std::optional<DWORD> WindowDriver::WaitForExit(std::chrono::milliseconds limit) const {
    DWORD code = 0;
    if (!m_process->HasEnded(limit) || !GetExitCodeProcess(m_process->info.hProcess, &code))
        return std::nullopt;
    return code;
}

std::optional<DWORD> WindowDriver::Close() const {
    PostMessageW(Window(), WM_CLOSE, 0, 0);
    return WaitForExit();
}

std::string WindowDriver::OnScreen() const {
    std::string text = IsRunning() ? "" : "(the program has ended)\n";
    const HWND main = Window();
    if (main) text += Describe(main);
    ForEachTopLevel([&](HWND window) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner == m_process->info.dwProcessId && window != main && IsWindowVisible(window))
            text += Describe(window);
        return true;
    });
    return text;
}

}  // namespace support
