// A window that plays the host of the program.
#pragma once

#include <algorithm>
#include <future>
#include <mutex>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "support/WaitFor.h"

namespace support {

inline constexpr UINT kLayoutsChanged = 0x8081;
inline constexpr UINT kPluginsChanged = 0x8082;

/// A top-level window off the screen's corner, with a thread of its own, so that it answers while the test
/// waits. It notes the program's messages, its activations, and the menus that a docked dialog leaves to it:
/// those it does not open. A dialog docked into it is destroyed with it.
class StandInHost {
  public:
    /// The number, wParam and lParam.
    using Message = std::tuple<UINT, WPARAM, LPARAM>;

    /// The main dialog fits into it, or does not.
    enum class Size { Large, Small };
    explicit StandInHost(Size size = Size::Large) : m_thread(&StandInHost::Run, this, size) {}
    ~StandInHost();
    StandInHost(const StandInHost&) = delete;
    StandInHost& operator=(const StandInHost&) = delete;

    HWND Window() const { return m_window.get(); }
    /// The window's handle as the program expects it on its command line.
    std::wstring HandleText() const;

    std::vector<Message> Messages() const;
    std::size_t MessageCount(UINT message) const {
        const auto numberOf = [](const Message& told) { return std::get<UINT>(told); };
        return static_cast<std::size_t>(std::ranges::count(Messages(), message, numberOf));
    }
    /// Whether the message has come, before the call or in time.
    bool WaitForMessage(UINT message) const {
        return WaitFor([&] { return MessageCount(message) > 0; });
    }

  private:
    void Run(Size size);
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                      DWORD_PTR self);

    mutable std::mutex m_mutex;
    std::vector<Message> m_messages;
    std::promise<HWND> m_opened;
    std::shared_future<HWND> m_window = m_opened.get_future().share();
    std::thread m_thread;
};

}  // namespace support
