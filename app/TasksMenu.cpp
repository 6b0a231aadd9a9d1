#include "TasksMenu.h"

#include "resource.h"

/// What can be done; the route table says who does it.
UniqueMenu CTasksMenu::Menu() const {
    const MenuCommand commands[] = {
        {.id = ID_UNDO,
         .enabled = [this] { return m_tree.CanUndo(); },
         .text = [this] { return m_tree.UndoName(); }},
        {.id = ID_REDO,
         .enabled = [this] { return m_tree.CanRedo(); },
         .text = [this] { return m_tree.RedoName(); }},
        {.id = ID_CUT, .enabled = [this] { return m_tree.CanCopy(); }},
        {.id = ID_COPY, .enabled = [this] { return m_tree.CanCopy(); }},
        {.id = ID_PASTE, .enabled = [this] { return m_tree.CanPaste(); }},
        {.id = ID_SAVE_LAYOUT},
        {.id = ID_FILL_BY_VENDOR},
        {.id = ID_FILL_BY_CATEGORY},
        {.id = ID_FILL_BY_BOTH},
        {.id = ID_TIDY_UP},
        {.id = ID_SAVE_STUDIO_SET},
        {.id = ID_LOAD_STUDIO_SET},
        {.id = ID_BACKUPS},
    };
    return BuildCommandMenu(m_dialog, IDM_TASKS, commands);
}

void CTasksMenu::Drop() const {
    const UniqueMenu menu = Menu();
    const Rect button = m_dialog.Item(IDC_TASKS).WindowRect();
    // Where there is no room below the button, the menu is to stand above it, and never on it.
    TPMPARAMS beside{sizeof beside, ToSystem(button)};
    ::TrackPopupMenuEx(::GetSubMenu(menu.Get(), 0), TPM_LEFTALIGN | TPM_TOPALIGN | TPM_VERTICAL, button.left,
                       button.bottom, m_dialog.Handle(), &beside);
}

bool CTasksMenu::OnKey(const MSG& message) const {
    const bool isKeyDown = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
    const bool isDropKey = message.wParam == VK_DOWN || message.wParam == VK_RETURN;
    // Not every system makes a button that got the focus by its letter or the mouse the one that Enter
    // presses.
    if (!isKeyDown || !isDropKey || !m_dialog.Item(IDC_TASKS).HasFocus()) return false;
    Drop();
    return true;
}
