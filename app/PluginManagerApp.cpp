#include "PluginManagerApp.h"

#include <commctrl.h>
#include <objbase.h>
#include <shellapi.h>

#include <memory>
#include <string>
#include <vector>

#include "CorvaneKeys.h"
#include "CrashDump.h"
#include "DataFolder.h"
#include "HelpTopics.h"
#include "InstanceSearch.h"
#include "InterfaceLanguage.h"
#include "MessageCaption.h"
#include "PluginManagerDlg.h"
#include "ProgramPath.h"
#include "RegKey.h"
#include "Resources.h"
#include "TaskText.h"
#include "TextFormat.h"

namespace {

constexpr wchar_t kHelpFileName[] = L"PluginManager.chm";

/// Room for the name of a language, in bytes.
constexpr std::size_t kLanguageBytes = 64;

std::vector<std::wstring> Arguments() {
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&::LocalFree)> list(
        ::CommandLineToArgvW(::GetCommandLineW(), &count), &::LocalFree);
    if (!list || count < 1) return {};
    return {list.get() + 1, list.get() + count};
}

/// What the thread was asked to quit with; 0 when it wasn't. Taken, because no message box opens meanwhile.
int TakeQuitCode() {
    MSG quit{};
    return ::PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) ? static_cast<int>(quit.wParam) : 0;
}

}  // namespace

void CPluginManagerApp::InitInstance() {
    // What is loaded from here on comes from the system's folder, never from the current one.
    ::SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    const INITCOMMONCONTROLSEX controls{sizeof controls,
                                        ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES | ICC_LINK_CLASS};
    ::InitCommonControlsEx(&controls);
    SetResourceLanguage(NearestInterfaceLanguage(::GetUserDefaultUILanguage()));

    m_cmdLine = CPluginManagerCmdLine::Parse(Arguments());
    if (BringRunningCopyForward(reinterpret_cast<HWND>(m_cmdLine.parentWnd))) return;
    ChooseLanguage();
    PrepareForCrash();
    m_comReady = SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    m_log.Open(L"PluginManager");
    m_help.Prepare(ProgramPath(), kHelpFileName);
    m_mainWindow = ::GetActiveWindow();
    SetDialogHelp(this);

    CPluginManagerDlg dialog(m_cmdLine, DataFolder());
    dialog.RunModal(nullptr);
}

void CPluginManagerApp::ChooseLanguage() const {
    const auto key = CRegKey::Open(HKEY_LOCAL_MACHINE, kCompanyKey);
    const auto name = key ? key->ReadUnterminated(L"Language", kLanguageBytes) : std::nullopt;
    const auto language = name ? FindInterfaceLanguage(*name) : std::nullopt;
    if (!language) return;
    ::SetThreadUILanguage(*language);
    SetResourceLanguage(*language);
}

void CPluginManagerApp::ShowHelp(DWORD context) {
    m_mainWindow = ::GetActiveWindow();
    if (m_help.IsMarked()) {
        ShowMessage(m_mainWindow, FormatText(LoadText(IDS_HELP_MARKED), m_help.Path()), kMessageCaption,
                    MB_OK | MB_ICONINFORMATION);
        return;
    }
    const auto page = HelpPageOf(context);
    const HRESULT shown =
        page ? m_help.ShowTopic(std::wstring(*page)) : m_help.Request(HelpCommand::Context, context);
    // The button must not seem dead where there is no help engine, or no help file.
    if (FAILED(shown)) ::MessageBeep(MB_ICONEXCLAMATION);
}

void CPluginManagerApp::ReportLoggedErrors() const {
    ILoggingService* service = m_log.Service();
    const int errors = service ? service->Query(kQueryErrorCount) : 0;
    if (errors == 0) return;
    const std::wstring path = TakeTaskText(service->LogFilePath());
    ShowMessage(nullptr, FormatText(LoadText(IDS_ERRORS_LOGGED), errors, path), kMessageCaption,
                MB_OK | MB_ICONEXCLAMATION);
}

int CPluginManagerApp::ExitInstance() {
    const int exitCode = TakeQuitCode();
    SetDialogHelp(nullptr);
    m_help.ShutDown();
    ReportLoggedErrors();
    m_log.Close();
    if (m_comReady) ::CoUninitialize();
    return exitCode;
}
