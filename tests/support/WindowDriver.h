// The real program, worked through its window.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>

#include "Handles.h"
#include "support/WaitFor.h"
#include "support/WindowActions.h"

namespace support {

inline constexpr wchar_t kExclusions[] = L"Software\\Corvane Music Software\\ExcludedPlugIns";
inline constexpr wchar_t kManager[] = L"Software\\Corvane Music Software\\Corvane Plugin Manager";

/// A file in the folder of the test program.
std::filesystem::path BesideTest(const std::wstring& name);

/// Tests of the program write to the real registry: they run only where the sample studio was loaded for
/// them.
class ProgramTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!std::getenv("STUDIO")) GTEST_SKIP() << "needs a prefix of its own with the sample studio";
        Begin();
    }
    /// Once it is certain that the test runs.
    virtual void Begin() {}
};

void EndProcess(HANDLE process);
/// A run of the program; it is ended with its owner.
using UniqueProcess = UniqueHandle<HANDLE, &EndProcess>;
UniqueProcess StartProgram(const std::wstring& arguments = {}, const wchar_t* file = L"PluginManager.exe");
/// The exit code; nothing when it still runs at the end of the limit.
std::optional<DWORD> WaitForExit(const UniqueProcess& process, std::chrono::milliseconds limit = kLimit);

class WindowDriver {
  public:
    /// Starts the program and waits for its lists to be filled; throws when that does not happen. `host` is
    /// the window it is to dock into.
    explicit WindowDriver(const std::wstring& arguments = {}, HWND host = nullptr)
        : WindowDriver(StartProgram(arguments), host) {}
    /// The same for one that was started; without a process its end can't be waited for.
    explicit WindowDriver(UniqueProcess process, HWND host = nullptr);

    HWND Window() const { return m_window; }
    HWND Control(int id) const { return GetDlgItem(m_window, id); }

    // By control id, in the main dialog.
    std::wstring TextOf(int id) const { return support::TextOf(Control(id)); }
    std::vector<std::wstring> Rows(int id) const { return support::Rows(Control(id)); }
    void Select(int id, const std::vector<std::wstring>& rows) const { support::Select(Control(id), rows); }

    std::optional<DWORD> WaitForExit(std::chrono::milliseconds limit = kLimit) const {
        return support::WaitForExit(m_process, limit);
    }
    /// Closes the main dialog as its Close box does.
    std::optional<DWORD> Close() const;

  private:
    UniqueProcess m_process;
    HWND m_window = nullptr;
};

}  // namespace support
