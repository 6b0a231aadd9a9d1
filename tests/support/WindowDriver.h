// The real program, worked through its window.
#pragma once

#include <windows.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "support/WaitFor.h"
#include "support/WindowActions.h"

namespace support {

/// A file in the folder of the test program.
std::filesystem::path BesideTest(const std::wstring& name);

/// One run of the program; it is ended with its driver. Starting throws when there is no such program.
class WindowDriver {
  public:
    explicit WindowDriver(const std::wstring& arguments = {},
                          const std::filesystem::path& program = BesideTest(L"PluginManager.exe"));
    ~WindowDriver();
    WindowDriver(const WindowDriver&) = delete;
    WindowDriver& operator=(const WindowDriver&) = delete;

    /// The main dialog, floating or docked into another window; null when it is not there.
    HWND Window() const;
    bool WaitForWindow(std::chrono::milliseconds limit = kLimit) const;
    /// A control of the main dialog. Throws when there is none: nothing could be said of what it shows.
    HWND Control(int id) const;

    /// A dialog of the program besides the main one, such as a message box, whose title begins so.
    HWND Popup(const std::wstring& title = {}) const;
    /// Null when none comes in time.
    HWND WaitForPopup(const std::wstring& title = {}, std::chrono::milliseconds limit = kLimit) const;

    // By control id, in the main dialog.
    std::wstring TextOf(int id) const { return support::TextOf(Control(id)); }
    std::vector<std::wstring> Rows(int id) const { return support::Rows(Control(id)); }
    std::vector<int> SelectedRows(int id) const { return support::SelectedRows(Control(id)); }
    void Select(int id, const std::vector<std::wstring>& rows) const { support::Select(Control(id), rows); }
    bool IsEnabled(int id) const { return IsWindowEnabled(Control(id)) != FALSE; }
    bool IsVisible(int id) const { return IsWindowVisible(Control(id)) != FALSE; }
    void Press(int id) const { support::Press(Control(id)); }

    bool IsRunning() const;
    /// The program's exit code; nothing when it still runs at the end of the limit.
    std::optional<DWORD> WaitForExit(std::chrono::milliseconds limit = kLimit) const;
    /// Closes the main dialog as its Close box does.
    std::optional<DWORD> Close() const;

    /// All that the program shows, for the message of a failed test.
    std::string OnScreen() const;

  private:
    struct Process;
    std::unique_ptr<Process> m_process;
    mutable HWND m_window = nullptr;
};

}  // namespace support
