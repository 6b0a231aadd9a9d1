#include "support/StandInHost.h"

#include <cstdint>
#include <cstdio>

namespace support {

StandInHost::~StandInHost() {
    PostMessageW(Window(), WM_CLOSE, 0, 0);
    m_thread.join();
}

// A plain label will do: what the program tells its host is posted, so that the loop sees it.
void StandInHost::Run(Size size) {
    const SIZE extent = size == Size::Large ? SIZE{1150, 900} : SIZE{700, 500};
    const HWND window = CreateWindowExW(0, L"STATIC", L"Stand-in host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                                        60, 50, extent.cx, extent.cy, nullptr, nullptr, nullptr, nullptr);
    ShowWindow(window, SW_SHOWNOACTIVATE);
    m_opened.set_value(window);
    for (MSG message; IsWindow(window) && GetMessageW(&message, nullptr, 0, 0) > 0;) {
        if (message.message >= WM_APP && message.message <= 0xBFFF) {
            const std::scoped_lock lock(m_mutex);
            m_messages.emplace_back(message.message, message.wParam, message.lParam);
        }
        DispatchMessageW(&message);
    }
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
