// What the tests need of the system and the screen that they happen to run on. Only tests may ask.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

namespace support {

inline bool OnWine() { return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr; }

/// Skips the test that is running, from its SetUp, where windows of the sizes that it names have no room or
/// another scale makes others of them.
inline void NeedUsualScreen() {
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    const UINT dpi = GetDpiForSystem();
    if (dpi != USER_DEFAULT_SCREEN_DPI || area.right - area.left < 1280 || area.bottom - area.top < 940)
        GTEST_SKIP() << "needs 96 dpi and 1280 x 940 pixels beside the taskbar, not " << dpi << " and "
                     << area.right - area.left << " x " << area.bottom - area.top;
}

}  // namespace support
