#include "TasksMenu.h"

#include <algorithm>
#include <array>

#include "Resources.h"
#include "resource.h"

namespace {

std::wstring TextOf(HMENU menu, int position) {
    std::array<wchar_t, 256> text{};
    const int length = ::GetMenuStringW(menu, static_cast<UINT>(position), text.data(),
                                        static_cast<int>(text.size()), MF_BYPOSITION);
    return {text.data(), static_cast<std::size_t>(std::max(length, 0))};
}

/// The key, behind a tab, stays.
void SetText(HMENU menu, int position, const std::wstring& text) {
    const std::wstring old = TextOf(menu, position);
    const std::size_t key = std::min(old.find(L'\t'), old.size());
    ::ModifyMenuW(menu, static_cast<UINT>(position), MF_BYPOSITION | MF_STRING,
                  ::GetMenuItemID(menu, position), (text + old.substr(key)).c_str());
}

}  // namespace

CTasksMenu::CTasksMenu(const CDialog& dialog, std::vector<TaskCommand> commands)
    : m_dialog(dialog), m_commands(std::move(commands)) {}

UniqueMenu CTasksMenu::Menu() const {
    UniqueMenu menu = LoadMenuResource(IDM_TASKS);
    const HMENU shown = ::GetSubMenu(menu.Get(), 0);
    for (int i = 0; i < ::GetMenuItemCount(shown); ++i) {
        const UINT id = ::GetMenuItemID(shown, i);
        if (id == 0) continue;  // a separator
        const auto command = std::ranges::find(m_commands, id, &TaskCommand::id);
        const bool served = command != m_commands.end();
        const std::wstring text = served ? command->text() : std::wstring();
        if (!text.empty()) SetText(shown, i, text);
        // Last, for a new text makes a new item.
        const UINT state = served && command->enabled() ? MF_ENABLED : MF_GRAYED;
        ::EnableMenuItem(shown, static_cast<UINT>(i), MF_BYPOSITION | state);
    }
    return menu;
}

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
