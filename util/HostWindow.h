// The host's main window, and what the program tells it.
#pragma once

#include <windows.h>

#include "RegKey.h"

inline constexpr UINT kLayoutsChanged =
    WM_APP + 0x81;  // menu layouts were saved, or the dialog closed with OK
inline constexpr UINT kPluginsChanged = WM_APP + 0x82;  // exclusions changed, or a scan ended

/// A handle from the command line, not to be trusted: it may name no window, or one that is long gone.
class CHostWindow {
  public:
    explicit CHostWindow(HWND hwnd) : m_hwnd(hwnd) {}

    HWND Handle() const { return m_hwnd; }
    bool WasGiven() const { return m_hwnd != nullptr; }
    bool IsLive() const { return m_hwnd && ::IsWindow(m_hwnd); }
    /// Posts to a live host only; both parameters are zero.
    void Tell(UINT message) const {
        if (IsLive()) ::PostMessageW(m_hwnd, message, 0, 0);
    }

  private:
    HWND m_hwnd;
};

/// The window that a running copy has noted in the program's key; null when none is noted.
HWND ReadHostWindow(const CRegKey& managerKey);
