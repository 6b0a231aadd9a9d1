// Menus that come up.
#pragma once

#include <functional>
#include <optional>

#include "support/WindowActions.h"

namespace support {

struct ShownMenu {
    POINT corner;
    std::vector<UINT> commands;  // up to the one that was wanted
};

/// The menu that `open` brings up, of which one command is chosen, or else it is left. Nothing when none
/// came.
inline std::optional<ShownMenu> WorkMenu(const std::function<void()>& open, UINT command = 0) {
    static std::optional<ShownMenu> shown;
    static UINT wanted;
    shown.reset();
    wanted = command;
    // While a menu is shown, only timers come through.
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {
        constexpr UINT kGetMenu = 0x1E1;  // MN_GETHMENU
        const HWND window = FindWindowW(L"#32768", nullptr);
        if (shown || !window || !IsWindowVisible(window)) return;
        shown = {{RectOf(window).left, RectOf(window).top}, {}};
        const auto menu = reinterpret_cast<HMENU>(Send(window, kGetMenu));
        for (int row = 0; row < GetMenuItemCount(menu); ++row) {
            const UINT entry = GetMenuItemID(menu, row);
            if (entry == 0) continue;  // a line between others
            shown->commands.push_back(entry);
            PostKey(window, VK_DOWN);
            if (entry == wanted) return PostKey(window, VK_RETURN);
        }
        EndMenu();
    });
    open();
    KillTimer(nullptr, timer);
    return shown;
}

}  // namespace support
