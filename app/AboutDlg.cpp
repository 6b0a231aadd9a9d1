#include "AboutDlg.h"

#include <shlwapi.h>

#include <array>

#include "ProgramPath.h"
#include "Resources.h"
#include "ShellOpen.h"
#include "TextFormat.h"
#include "Version.h"
#include "resource.h"

CAboutDlg::CAboutDlg()
    : CDialog(IDD_ABOUT), m_licencePath(ProgramFolder() + L"\\PluginManager-LICENSE.txt") {}

std::span<const CRoute> CAboutDlg::Routes() const {
    using R = CRoutesOf<CAboutDlg>;
    static constexpr CRoute kRoutes[] = {
        R::OnNotify<NM_CLICK, &CAboutDlg::OnLicence>(IDC_ABOUT_LICENCE),
        R::OnNotify<NM_RETURN, &CAboutDlg::OnLicence>(IDC_ABOUT_LICENCE),
    };
    return kRoutes;
}

bool CAboutDlg::OnInitDialog() {
    const UINT dpi = ::GetDpiForWindow(m_hwnd);
    m_icon = LoadIconResource(IDI_PLUGIN_MANAGER, ::GetSystemMetricsForDpi(SM_CXICON, dpi),
                              ::GetSystemMetricsForDpi(SM_CYICON, dpi));
    Control<CStatic>(IDC_ABOUT_ICON).SetIcon(m_icon.Get());
    const CWindow version = Item(IDC_ABOUT_VERSION);
    version.SetText(FormatText(version.Text(), kProductVersion, kBuildDate));
    Item(IDC_ABOUT_LICENCE).Show(::PathFileExistsW(m_licencePath.c_str()) != FALSE);
    return true;
}

void CAboutDlg::OnLicence() {
    if (OpenInShell(m_hwnd, m_licencePath.c_str())) return;
    // Where no program is registered for text files, the system's editor shows it: its own one, not one of
    // that name that lies in the current folder.
    std::array<wchar_t, MAX_PATH> folder{};
    ::GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
    const std::wstring editor = std::wstring(folder.data()) + L"\\notepad.exe";
    OpenInShell(m_hwnd, editor.c_str(), (L"\"" + m_licencePath + L"\"").c_str());
}
