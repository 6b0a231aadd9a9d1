#include "TasksMenu.h"

CTasksMenu::CTasksMenu(const CDialog& dialog, std::vector<MenuCommand> commands)
    : m_dialog(dialog), m_commands(std::move(commands)) {}

void CTasksMenu::Drop() const {
    const UniqueMenu menu = Menu();
    const Rect button = m_dialog.Item(IDC_TASKS).WindowRect();
    // Where there is no room below the button, the menu is to stand above it, and never on it.
    TPMPARAMS beside{sizeof beside, ToSystem(button)};
    ::TrackPopupMenuEx(::GetSubMenu(menu.Get(), 0), TPM_LEFTALIGN | TPM_TOPALIGN | TPM_VERTICAL, button.left,
                       button.bottom, m_dialog.Handle(), &beside);
}

bool CTasksMenu::IsDropKey(const MSG& message) const {
    const bool isKeyDown = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
    // Not every system makes a button that got the focus by its letter or the mouse the one that Enter
    // presses.
    return isKeyDown && (message.wParam == VK_DOWN || message.wParam == VK_RETURN) &&
           m_dialog.Item(IDC_TASKS).HasFocus();
}
