#include "support/StandInHost.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <future>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace support {

struct StandInHost::State {
    HWND window = nullptr;
    std::thread thread;
    mutable std::mutex mutex;
    std::vector<Message> messages;

    void Run(Size size, std::promise<HWND> opened);
    static LRESULT CALLBACK WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
};

LRESULT CALLBACK StandInHost::State::WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* state = reinterpret_cast<State*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (state && (message == kLayoutsChanged || message == kPluginsChanged)) {
        const std::scoped_lock lock(state->mutex);
        state->messages.push_back({message, wParam, lParam});
        return 0;
    }
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(hwnd, message, wParam, lParam);
}

void StandInHost::State::Run(Size size, std::promise<HWND> opened) {
    constexpr wchar_t kClass[] = L"StandInHost";
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = WindowProc;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kClass;
    windowClass.hbrBackground = GetSysColorBrush(COLOR_APPWORKSPACE);
    RegisterClassW(&windowClass);  // fails for the second host of a test, which uses the class of the first
    const SIZE extent = size == Size::Large ? SIZE{1150, 900} : SIZE{700, 500};
    const HWND created =
        CreateWindowExW(0, kClass, L"Stand-in host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 60, 50, extent.cx,
                        extent.cy, nullptr, nullptr, windowClass.hInstance, nullptr);
    SetWindowLongPtrW(created, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ShowWindow(created, SW_SHOWNOACTIVATE);
    opened.set_value(created);
    if (!created) return;
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
}

StandInHost::StandInHost(Size size) : m_state(std::make_unique<State>()) {
    std::promise<HWND> opened;
    auto window = opened.get_future();
    m_state->thread = std::thread(&State::Run, m_state.get(), size, std::move(opened));
    m_state->window = window.get();
    if (m_state->window) return;
    m_state->thread.join();
    throw std::runtime_error("the stand-in host can't open its window");
}

StandInHost::~StandInHost() {
    PostMessageW(m_state->window, WM_CLOSE, 0, 0);
    m_state->thread.join();
}

HWND StandInHost::Window() const { return m_state->window; }

std::wstring StandInHost::HandleText() const {
    wchar_t text[17];
    std::swprintf(text, std::size(text), L"%016llX", reinterpret_cast<std::uintptr_t>(m_state->window));
    return text;
}

std::vector<StandInHost::Message> StandInHost::Messages() const {
    const std::scoped_lock lock(m_state->mutex);
    return m_state->messages;
}

std::size_t StandInHost::MessageCount(UINT message) const {
    const auto messages = Messages();
    return static_cast<std::size_t>(std::ranges::count(messages, message, &Message::message));
}

bool StandInHost::WaitForMessage(UINT message, std::chrono::milliseconds limit) const {
    return WaitFor([&] { return MessageCount(message) > 0; }, limit);
}

}  // namespace support
