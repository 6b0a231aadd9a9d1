#include "DialogKeys.h"

#include "MessageCrackers.h"
#include "resource.h"

namespace {

/// In the data of a key that is still held.
constexpr LPARAM kRepeated = 1L << 30;

/// With Alt, too, it is AltGr, which types a letter.
bool IsControlAlone() {
    const auto down = [](int virtualKey) { return (::GetKeyState(virtualKey) & 0x8000) != 0; };
    return down(VK_CONTROL) && !down(VK_MENU) && !down(VK_SHIFT);
}

}  // namespace

bool CDialogKeys::OnKey(const MSG& message) const {
    if (message.message != WM_KEYDOWN) return false;
    const bool controlAlone = IsControlAlone();
    if (m_find.OnKey(message.wParam, controlAlone)) return true;
    switch (message.wParam) {
        case VK_ESCAPE:
            OnEscape();
            return true;  // Escape never closes the dialog
        case VK_RETURN:
            return OnEnter();
        default:
            return controlAlone && OnControlKey(message);
    }
}

void CDialogKeys::OnEscape() const {
    const bool editing = m_tree.IsEditingLabel();
    m_tree.CancelDrag();
    if (editing) m_tree.EndLabelEdit(true);
    m_dialog.Control<CComboBox>(IDC_LAYOUTS).CloseList();
}

bool CDialogKeys::OnEnter() const {
    if (m_tree.IsEditingLabel()) {
        m_tree.EndLabelEdit(false);
        return true;
    }
    // The system would take Enter on the Close button for a click, which only closes; it means OK here.
    if (!HasFocus(IDC_CLOSE)) return false;
    m_dialog.Send(WM_COMMAND, IDOK);
    return true;
}

bool CDialogKeys::OnControlKey(const MSG& key) const {
    UINT command = 0;
    if (key.wParam == 'A' && HasFocus(IDC_PLUGINS)) command = ID_SELECT_ALL;
    if (key.wParam == 'C' && HasFocus(IDC_PLUGINS)) command = ID_COPY_PLUGINS;
    if (key.wParam == 'S' && (key.lParam & kRepeated) == 0) command = ID_SAVE_LAYOUT;
    if (command == 0) return false;
    m_dialog.Send(WM_COMMAND, command);
    return true;
}

int CDialogKeys::OnVKeyToItem(UINT key, HWND list) const {
    if (key != VK_F2 || list != m_dialog.Item(IDC_PLUGINS).Handle()) return crackers::kKeyDefault;
    m_names.OnRename();
    return crackers::kKeyHandled;
}
