// Menus that are only looked at.
#pragma once

#include <functional>
#include <optional>

#include "support/WindowActions.h"

namespace support {

/// Leaves the menu that `open` brings up. Gives its corner; nothing when none came.
inline std::optional<POINT> LeaveMenu(const std::function<void()>& open) {
    static std::optional<POINT> corner;
    corner.reset();
    // While a menu is shown, only timers come through.
    const UINT_PTR timer = SetTimer(nullptr, 0, 50, [](HWND, UINT, UINT_PTR, DWORD) {
        const HWND menu = FindWindowW(L"#32768", nullptr);
        if (!menu || !IsWindowVisible(menu)) return;
        corner = {RectOf(menu).left, RectOf(menu).top};
        EndMenu();
    });
    open();
    KillTimer(nullptr, timer);
    return corner;
}

}  // namespace support
