#include "support/StandInHost.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace support {

StandInHost::StandInHost(Size size) {
    std::promise<HWND> opened;
    auto window = opened.get_future();
    m_thread = std::thread(&StandInHost::Run, this, size, std::move(opened));
    m_window = window.get();
}

StandInHost::~StandInHost() {
    PostMessageW(m_window, WM_CLOSE, 0, 0);
    m_thread.join();
}

// A plain label will do: what the program tells its host is posted, so that the loop sees it.
void StandInHost::Run(Size size, std::promise<HWND> opened) {
    const SIZE extent = size == Size::Large ? SIZE{1150, 900} : SIZE{700, 500};
    const HWND window = CreateWindowExW(0, L"STATIC", L"Stand-in host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                                        60, 50, extent.cx, extent.cy, nullptr, nullptr, nullptr, nullptr);
    ShowWindow(window, SW_SHOWNOACTIVATE);
    opened.set_value(window);
    for (MSG message; IsWindow(window) && GetMessageW(&message, nullptr, 0, 0) > 0;) {
        if (message.message >= WM_APP && message.message <= 0xBFFF) {
            const std::scoped_lock lock(m_mutex);
            m_messages.push_back({message.message, message.wParam, message.lParam});
        }
        DispatchMessageW(&message);
    }
}

std::wstring StandInHost::HandleText() const {
    wchar_t text[17];
    std::swprintf(text, std::size(text), L"%016llX", reinterpret_cast<std::uintptr_t>(m_window));
    return text;
}

std::vector<StandInHost::Message> StandInHost::Messages() const {
    const std::scoped_lock lock(m_mutex);
    return m_messages;
}

std::size_t StandInHost::MessageCount(UINT message) const {
    const auto messages = Messages();
    return static_cast<std::size_t>(std::ranges::count(messages, message, &Message::message));
}

bool StandInHost::WaitForMessage(UINT message, std::chrono::milliseconds limit) const {
    return WaitFor([&] { return MessageCount(message) > 0; }, limit);
}

}  // namespace support
