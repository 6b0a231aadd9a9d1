#include "AboutDlg.h"

#include "Resources.h"
#include "resource.h"

CAboutDlg::CAboutDlg() : CDialog(IDD_ABOUT) {}

bool CAboutDlg::OnInitDialog() {
    m_icon =
        LoadIconResource(IDI_PLUGIN_MANAGER, ::GetSystemMetrics(SM_CXICON), ::GetSystemMetrics(SM_CYICON));
    Control<CStatic>(IDC_ABOUT_ICON).SetIcon(m_icon.Get());
    Item(IDC_ABOUT_TEXT).SetText(L"" APP_VERSION_TEXT);
    return true;
}
