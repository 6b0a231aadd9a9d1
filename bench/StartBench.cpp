#include <windows.h>

#include <psapi.h>

#include <filesystem>
#include <optional>
#include <string>

#include "Benches.h"
#include "CorvaneKeys.h"
#include "Handles.h"
#include "Measure.h"
#include "PluginInventory.h"
#include "resource.h"

namespace {

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
    /// Without the half a second that the program leaves its window to come up.
    void AwaitRows() {
        AwaitWindow();
        constexpr WPARAM kFirstFill = 1;
        ::PostMessageW(m_window, WM_TIMER, kFirstFill, 0);
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

struct Manager : CProgram {
    Manager() : CProgram(L"PluginManager.exe", L"Corvane Plug-in Manager x64") {}
};
struct EmptyDialog : CProgram {
    explicit EmptyDialog(const std::wstring& arguments = {})
        : CProgram(L"empty_dialog.exe", L"Empty dialog", arguments) {}
};

/// What is started stays until the next is: its end is not measured.
void BenchStart(const char* row, int size, const wchar_t* floor, void (CProgram::*wait)()) {
    std::optional<Manager> manager;
    std::optional<EmptyDialog> empty;
    Row(
        row, size, [&] { (manager.emplace().*wait)(); }, [&] { (empty.emplace(floor).*wait)(); },
        [&] {
            manager.reset();
            empty.reset();
        });
}

void BenchMemory(int plugins) {
    constexpr int kVstRow = 1;
    EmptyDialog empty;
    empty.AwaitWindow();
    Manager manager;
    manager.AwaitRows();
    manager.ChooseCategory(kVstRow);
    Figure("MB above an empty dialog, with " + std::to_string(plugins) + " plug-ins listed",
           manager.Megabytes() - empty.Megabytes(), 20);
}

std::wstring QueryOf(const wchar_t* root, const std::wstring& key) {
    return L"reg query \"" + std::wstring(root) + L"\\" + key + L"\" /s >nul & ";
}

/// What the program finds out, beside what would show the same keys.
void BenchRegQuery(int plugins) {
    const CPluginDatabase noDatabase;
    CPluginInventory inventory(kDefaultVstKey, noDatabase);
    const std::wstring commands = L"/c " + QueryOf(L"HKCU", std::wstring(kDefaultVstKey) + L"\\Inventory") +
                                  QueryOf(L"HKLM", kAdapterKey) + QueryOf(L"HKLM", kMidiFiltersKey) +
                                  QueryOf(L"HKCR", kControlSurfacesKey);
    Row(
        "enumeration, beside reg query /s", plugins,
        [&] {
            inventory.ReadAdapterInventory();
            inventory.Enumerate(true);
        },
        [&] { CProgram(L"C:\\windows\\system32\\cmd.exe", L"", commands).AwaitExit(); });
}

}  // namespace

void BenchStarts(int plugins) {
    BenchStart("start, filled", plugins, L"controls", &CProgram::AwaitRows);
    BenchRegQuery(plugins);
    BenchMemory(plugins);
}

void BenchWindow() {
    BenchStart("start, shown, beside an empty dialog", 1, L"", &CProgram::AwaitWindow);
    BenchStart("start, shown, beside its controls", 1, L"controls", &CProgram::AwaitWindow);
}
