// Starts of the real program, as processes of their own.
#include <windows.h>

#include <psapi.h>

#include <filesystem>
#include <memory>
#include <string>

#include "Benches.h"
#include "CorvaneKeys.h"
#include "EmptyDialog.h"
#include "Handles.h"
#include "Measure.h"
#include "Studio.h"
#include "resource.h"

namespace {

constexpr wchar_t kProgramTitle[] = L"Corvane Plug-in Manager x64";
constexpr DWORD kPatience = 60000;  // ms

template <typename TCondition>
void Await(TCondition&& isMet) {
    const ULONGLONG end = ::GetTickCount64() + kPatience;
    while (!isMet() && ::GetTickCount64() < end) ::Sleep(1);
}

/// One beside the bench's own file; closed at the end, and waited for.
class CProgram {
  public:
    CProgram(const wchar_t* file, const wchar_t* title, const std::wstring& arguments = {}) : m_title(title) {
        wchar_t own[MAX_PATH];
        ::GetModuleFileNameW(nullptr, own, MAX_PATH);
        const auto path = std::filesystem::path(own).parent_path() / file;
        std::wstring commandLine = L"\"" + path.wstring() + L"\" " + arguments;
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION started{};
        ::CreateProcessW(path.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                         &startup, &started);
        ::CloseHandle(started.hThread);
        m_process = UniqueKernelHandle(started.hProcess);
    }
    ~CProgram() {
        if (m_window) ::PostMessageW(m_window, WM_CLOSE, 0, 0);
        ::WaitForSingleObject(m_process.Get(), kPatience);
    }
    CProgram(const CProgram&) = delete;
    CProgram& operator=(const CProgram&) = delete;

    void AwaitWindow() {
        Await([this] {
            m_window = ::FindWindowExW(nullptr, nullptr, L"#32770", m_title);
            return ::IsWindowVisible(m_window);
        });
    }
    void AwaitRows() {
        AwaitWindow();
        Await([this] { return ::SendMessageW(Item(IDC_PLUGINS), LB_GETCOUNT, 0, 0) > 0; });
    }
    void AwaitExit() const { ::WaitForSingleObject(m_process.Get(), INFINITE); }
    void ChooseCategory(int row) const {
        ::SendMessageW(Item(IDC_CATEGORIES), LB_SETCURSEL, static_cast<WPARAM>(row), 0);
        ::SendMessageW(m_window, WM_COMMAND, MAKEWPARAM(IDC_CATEGORIES, LBN_SELCHANGE),
                       reinterpret_cast<LPARAM>(Item(IDC_CATEGORIES)));
    }
    /// What belongs to the process alone.
    double Megabytes() const {
        PROCESS_MEMORY_COUNTERS counters{};
        ::K32GetProcessMemoryInfo(m_process.Get(), &counters, sizeof counters);
        return static_cast<double>(counters.PagefileUsage) / (1 << 20);
    }

  private:
    HWND Item(int id) const { return ::GetDlgItem(m_window, id); }

    const wchar_t* m_title;
    UniqueKernelHandle m_process;
    HWND m_window = nullptr;
};

/// What is started stays until the next is: its end is not measured.
class CStarts {
  public:
    void Program() { m_program = std::make_unique<CProgram>(L"PluginManager.exe", kProgramTitle); }
    void Empty(const std::wstring& arguments) {
        m_empty = std::make_unique<CProgram>(L"empty_dialog.exe", kEmptyDialogTitle, arguments);
    }
    void End() {
        m_program.reset();
        m_empty.reset();
    }
    std::unique_ptr<CProgram> m_program;
    std::unique_ptr<CProgram> m_empty;
};

std::wstring QueryOf(const wchar_t* root, const std::wstring& key) {
    return L"reg query \"" + std::wstring(root) + L"\\" + key + L"\" /s >nul & ";
}

}  // namespace

void BenchStart(int plugins) {
    CStarts starts;
    const auto shown = [&](const char* name, const wchar_t* floor, double bound) {
        Row(
            {.name = name, .size = plugins, .bound = bound, .runs = 5, .before = [&] { starts.End(); }},
            [&] {
                starts.Program();
                starts.m_program->AwaitWindow();
            },
            [&] {
                starts.Empty(floor);
                starts.m_empty->AwaitWindow();
            });
    };
    shown("start, shown, beside an empty dialog", L"", kNoBound);
    shown("start, shown, beside its controls", L"controls", kUsualBound);
    Row(
        {.name = "start, filled", .size = plugins, .runs = 5, .before = [&] { starts.End(); }},
        [&] {
            starts.Program();
            starts.m_program->AwaitRows();
        },
        [&] {
            starts.Empty(L"fill controls");
            starts.m_empty->AwaitRows();
        });
    starts.End();
}

void BenchRegQuery(int plugins, const Work& ours) {
    const std::wstring commands = L"/c " + QueryOf(L"HKCU", std::wstring(kDefaultVstKey) + L"\\Inventory") +
                                  QueryOf(L"HKLM", kAdapterKey) + QueryOf(L"HKLM", kMidiFiltersKey) +
                                  QueryOf(L"HKCR", kControlSurfacesKey);
    Row({.name = "enumeration, beside reg query /s", .size = plugins, .bound = kNoBound, .runs = 3}, ours,
        [&] { CProgram(L"C:\\windows\\system32\\cmd.exe", L"", commands).AwaitExit(); });
}

void BenchMemory(int plugins) {
    constexpr int kVstRow = 1;
    CProgram empty(L"empty_dialog.exe", kEmptyDialogTitle);
    empty.AwaitRows();
    CProgram program(L"PluginManager.exe", kProgramTitle);
    program.AwaitRows();
    program.ChooseCategory(kVstRow);
    Figure("MB above an empty dialog, with " + std::to_string(plugins) + " plug-ins listed",
           program.Megabytes() - empty.Megabytes(), 20);
}
