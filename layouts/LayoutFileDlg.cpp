#include "LayoutFileDlg.h"

#include <dlgs.h>

#include <algorithm>

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

/// Of the system's dialog around the added template; older ones have an edit field.
CWindow FileNameField(const CWindow& added) {
    const CWindow dialog(::GetParent(added.Handle()));
    const CWindow combo = dialog.Item(cmb13);
    return combo.IsLive() ? combo : dialog.Item(edt1);
}

/// Between the end of a label and its field, at least.
constexpr int kLabelGap = 4;

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
    m_fileName.Attach(FileNameField(Window()).Handle());
    AlignRow();
    FocusName();
}

/// Posted: the dialog gives the focus to its own field when this is over.
void CLayoutFileDlg::FocusName() const {
    const HWND name = Window().Item(IDC_DISPLAY_NAME).Handle();
    ::PostMessageW(::GetParent(Window().Handle()), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(name), TRUE);
}

Answer CLayoutFileDlg::CFileNameField::OnMessage(UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    if (message == WM_WINDOWPOSCHANGED) m_dialog.AlignRow();
    return std::nullopt;
}

void CLayoutFileDlg::AlignRow() const {
    const HWND row = Window().Handle();
    const CWindow systemLabel(::GetDlgItem(::GetParent(row), stc3));
    if (!systemLabel.IsLive() || !m_fileName.IsLive()) return;
    const CWindow label = Window().Item(IDC_DISPLAY_NAME_LABEL);
    const Rect field = m_fileName.RectIn(row);
    // What lies beyond the added window is not drawn.
    const Rect window = Window().ClientRect();
    if (window.right < field.right)
        ::SetWindowPos(row, nullptr, 0, 0, field.right, window.bottom,
                       SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    // A label that is too long for the room before the field begins further left.
    const CClientDC dc(label);
    const CSelectedObject font(dc.Get(), label.Font());
    const int needed = TextExtent(dc.Get(), label.Text()).width + kLabelGap;
    const int left = std::min(systemLabel.RectIn(row).left, field.left - needed);
    const auto place = [row](const CWindow& control, int from, int to) {
        const Rect was = control.RectIn(row);
        ::SetWindowPos(control.Handle(), nullptr, from, was.top, to - from, was.Height(),
                       SWP_NOZORDER | SWP_NOACTIVATE);
    };
    place(label, left, field.left);
    place(Window().Item(IDC_DISPLAY_NAME), field.left, field.right);
}

/// Without a file name the system's dialog can't be confirmed, and does not say so: it follows the display
/// name until the user enters one.
void CLayoutFileDlg::OnCommand(UINT id, UINT code) {
    if (id != IDC_DISPLAY_NAME || (code != CBN_EDITCHANGE && code != CBN_SELCHANGE)) return;
    const CWindow field = FileNameField(Window());
    const std::wstring entered = field.Text();
    if (!entered.empty() && entered != m_proposed) return;
    const auto names = Window().Control<CComboBox>(IDC_DISPLAY_NAME);
    const auto row = code == CBN_SELCHANGE ? names.CurrentRow() : std::nullopt;
    m_proposed = ProposedFileName(row ? names.RowText(*row) : names.Text());
    CWindow(::GetParent(field.Handle()))
        .SendText(CDM_SETCONTROLTEXT, static_cast<WPARAM>(::GetDlgCtrlID(field.Handle())), m_proposed);
}

bool CLayoutFileDlg::OnFileOk() {
    m_displayName = Window().Control<CComboBox>(IDC_DISPLAY_NAME).Text();
    if (!m_displayName.empty()) return true;
    ShowMessage(::GetParent(Window().Handle()), LoadText(IDS_DISPLAY_NAME_MISSING), kMessageCaption,
                MB_OK | MB_ICONEXCLAMATION);
    FocusName();
    return false;
}
