#include "PluginManagerApp.h"

#include <commctrl.h>
#include <objbase.h>

#include <string>

#include "ChosenLanguage.h"
#include "CrashDump.h"
#include "DataFolder.h"
#include "HelpTopics.h"
#include "InstanceSearch.h"
#include "MessageCaption.h"
#include "PluginManagerDlg.h"
#include "ProgramArguments.h"
#include "ProgramPath.h"
#include "Resources.h"
#include "TaskText.h"
#include "TextFormat.h"

namespace {

constexpr wchar_t kHelpFileName[] = L"PluginManager.chm";

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
    TakeSystemLanguage();

    m_cmdLine = CPluginManagerCmdLine::Parse(ProgramArguments());
    if (BringRunningCopyForward(reinterpret_cast<HWND>(m_cmdLine.parentWnd))) return;
    TakeSettingLanguage();
    PrepareForCrash();
    m_comReady = SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    m_log.Open(L"PluginManager");
    m_mainWindow = ::GetActiveWindow();
    SetDialogHelp(this);

    CPluginManagerDlg dialog(m_cmdLine, DataFolder());
    dialog.RunModal(nullptr);
}

void CPluginManagerApp::ShowHelp(DWORD context) {
    m_mainWindow = ::GetActiveWindow();
    // Now and not at the start: the window would wait for the help engine.
    if (m_help.Path().empty()) m_help.Prepare(ProgramPath(), kHelpFileName);
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
