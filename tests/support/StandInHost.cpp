#include "support/StandInHost.h"

#include <commctrl.h>

#include <cstdint>
#include <cstdio>

namespace support {

StandInHost::~StandInHost() {
    PostMessageW(Window(), WM_CLOSE, 0, 0);
    m_thread.join();
}

// A plain label will do.
void StandInHost::Run(Size size) {
    const SIZE extent = size == Size::Large ? SIZE{1150, 900} : SIZE{700, 500};
    const HWND window = CreateWindowExW(0, L"STATIC", L"Stand-in host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                                        60, 50, extent.cx, extent.cy, nullptr, nullptr, nullptr, nullptr);
    SetWindowSubclass(window, &Procedure, 0, reinterpret_cast<DWORD_PTR>(this));
    ShowWindow(window, SW_SHOWNOACTIVATE);
    m_opened.set_value(window);
    for (MSG message; IsWindow(window) && GetMessageW(&message, nullptr, 0, 0) > 0;)
        DispatchMessageW(&message);
}

LRESULT CALLBACK StandInHost::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                        DWORD_PTR self) {
    auto& host = *reinterpret_cast<StandInHost*>(self);
    const bool isOurs = message >= WM_APP && message <= 0xBFFF;
    const bool asksForMenu = message == WM_CONTEXTMENU || message == WM_SYSCHAR ||
                             (message == WM_SYSCOMMAND && (wParam & 0xFFF0) == SC_KEYMENU);
    const bool activates = message == WM_ACTIVATE && LOWORD(wParam) != WA_INACTIVE;
    if (isOurs || asksForMenu || activates) {
        const std::scoped_lock lock(host.m_mutex);
        host.m_messages.emplace_back(message, wParam, lParam);
    }
    return asksForMenu ? 0 : DefSubclassProc(window, message, wParam, lParam);
}

std::wstring StandInHost::HandleText() const {
    wchar_t text[17];
    std::swprintf(text, std::size(text), L"%016llX", reinterpret_cast<std::uintptr_t>(Window()));
    return text;
}

std::vector<StandInHost::Message> StandInHost::Messages() const {
    const std::scoped_lock lock(m_mutex);
    return m_messages;
}

}  // namespace support
