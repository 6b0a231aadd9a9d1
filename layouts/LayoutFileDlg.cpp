#include "LayoutFileDlg.h"

#include <dlgs.h>

#include "MessageCaption.h"
#include "Resources.h"
#include "resource.h"

FileDialogSettings LayoutDialogSettings(UINT titleId, const std::wstring& folder) {
    FileDialogSettings settings;
    settings.title = LoadText(titleId);
    settings.defaultExtension = LoadText(IDS_LAYOUT_EXTENSION);
    settings.filterText = LoadText(IDS_LAYOUT_FILTER);
    settings.initialFolder = folder;
    settings.flags = OFN_HIDEREADONLY;
    return settings;
}

std::wstring ProposedFileName(std::wstring_view displayName) {
    std::wstring name;
    for (const wchar_t c : displayName) {
        if (name.size() == MAX_PATH - 1) break;
        if (c >= L' ' && std::wstring_view(L"<>:\"/\\|?*").find(c) == std::wstring_view::npos) name += c;
    }
    return name;
}

namespace {

FileDialogSettings SaveSettings(const std::wstring& folder, const std::wstring& proposedPath) {
    FileDialogSettings settings = LayoutDialogSettings(IDS_SAVE_LAYOUT_TITLE, folder);
    settings.proposedName = proposedPath;
    settings.flags |= OFN_OVERWRITEPROMPT;
    settings.templateId = IDD_LAYOUT_NAME;
    return settings;
}

}  // namespace

CLayoutFileDlg::CLayoutFileDlg(const std::wstring& folder, const std::wstring& proposedPath,
                               std::vector<std::wstring> names, std::wstring displayName)
    : CFileDialog(SaveSettings(folder, proposedPath)),
      m_names(std::move(names)),
      m_displayName(std::move(displayName)) {}

void CLayoutFileDlg::OnInitDone() {
    const auto combo = Window().Control<CComboBox>(IDC_DISPLAY_NAME);
    for (const std::wstring& name : m_names) combo.Add(name);
    combo.SetText(m_displayName);
    // Posted: the dialog gives the focus to its own field when this is over.
    ::PostMessageW(::GetParent(Window().Handle()), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(combo.Handle()),
                   TRUE);
}

/// Without a file name the system's dialog can't be confirmed, and does not say so: it follows the display
/// name until the user enters one.
void CLayoutFileDlg::OnCommand(UINT id, UINT code) {
    if (id != IDC_DISPLAY_NAME || (code != CBN_EDITCHANGE && code != CBN_SELCHANGE)) return;
    const CWindow dialog(::GetParent(Window().Handle()));
    const int field = ::GetDlgItem(dialog.Handle(), cmb13) ? cmb13 : edt1;
    const std::wstring entered = CWindow(::GetDlgItem(dialog.Handle(), field)).Text();
    if (!entered.empty() && entered != m_proposed) return;
    const auto names = Window().Control<CComboBox>(IDC_DISPLAY_NAME);
    const auto row = code == CBN_SELCHANGE ? names.CurrentRow() : std::nullopt;
    m_proposed = ProposedFileName(row ? names.RowText(*row) : names.Text());
    dialog.SendText(CDM_SETCONTROLTEXT, static_cast<WPARAM>(field), m_proposed);
}

bool CLayoutFileDlg::OnFileOk() {
    m_displayName = Window().Control<CComboBox>(IDC_DISPLAY_NAME).Text();
    if (!m_displayName.empty()) return true;
    ShowMessage(::GetParent(Window().Handle()), LoadText(IDS_DISPLAY_NAME_MISSING), kMessageCaption,
                MB_OK | MB_ICONEXCLAMATION);
    return false;
}
