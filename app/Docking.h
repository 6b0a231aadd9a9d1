// The main dialog inside the host's window, and outside of it again.
#pragma once

#include "Dialog.h"
#include "HostWindow.h"

/// The system menu of a dialog that starts docked has a command that lets it float, and then one that docks
/// it again. When its parent has changed it is sent WM_DPICHANGED_AFTERPARENT.
class CDocking {
  public:
    CDocking(CDialog& dialog, const CHostWindow& host, bool floating)
        : m_dialog(dialog), m_host(host), m_floating(floating) {}

    /// Fits the system menu and the caption's buttons to a window that belongs to a host.
    void OnInitDialog() const;
    /// Docks a dialog that starts so.
    void Start() const;
    bool OnSysCommand(UINT command);
    // What a child window leaves to its parent: the host hears of none.
    /// Alt and F10 alone: the host's menu would wait for keys that come to this program, which waits for it.
    bool OnKey(const MSG& message) const;
    bool OnSysChar(wchar_t character) const;
    bool OnContextMenu(HWND window, POINT screen) const;

  private:
    bool IsDocked() const { return (m_dialog.Style() & WS_CHILD) != 0; }
    void ShowSystemMenu(POINT screen) const;
    void Dock() const;
    void Float() const;
    void OfferFloating(bool enable) const;
    /// Shows underlined letters and focus frames where the host's window shows them.
    void TakeOverCues() const;
    void PlaceInHost(const Rect& onScreen) const;

    CDialog& m_dialog;
    const CHostWindow& m_host;
    const bool m_floating;
};
