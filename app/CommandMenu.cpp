#include "CommandMenu.h"

#include <algorithm>
#include <array>

#include "Resources.h"

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

void ShowState(const CDialog& dialog, HMENU shown, std::span<const MenuCommand> commands) {
    for (int i = 0; i < ::GetMenuItemCount(shown); ++i) {
        const HMENU below = ::GetSubMenu(shown, i);
        if (below) ShowState(dialog, below, commands);
        const UINT id = ::GetMenuItemID(shown, i);
        if (below || id == 0) continue;  // 0: a separator
        const CWindow button = dialog.Item(static_cast<int>(id));
        const auto command = std::ranges::find(commands, id, &MenuCommand::id);
        const bool served = command != commands.end();
        const std::wstring text = served ? command->text() : std::wstring();
        if (!text.empty()) SetText(shown, i, text);
        // Last, for a new text makes a new item.
        const bool enabled = button.Handle() ? button.IsEnabled() : served && command->enabled();
        ::EnableMenuItem(shown, static_cast<UINT>(i), MF_BYPOSITION | (enabled ? MF_ENABLED : MF_GRAYED));
    }
}

}  // namespace

UniqueMenu BuildCommandMenu(const CDialog& dialog, UINT menuId, std::span<const MenuCommand> commands) {
    UniqueMenu menu = LoadMenuResource(menuId);
    ShowState(dialog, ::GetSubMenu(menu.Get(), 0), commands);
    return menu;
}
