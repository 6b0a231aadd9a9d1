// A window that plays the host of the program.
#pragma once

#include <windows.h>

#include <future>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "support/WaitFor.h"

namespace support {

inline constexpr UINT kLayoutsChanged = 0x8081;
inline constexpr UINT kPluginsChanged = 0x8082;

/// A top-level window off the screen's corner, with a thread of its own, so that it answers while the test
/// waits. It notes the program's messages. A dialog docked into it is destroyed with it.
class StandInHost {
  public:
    struct Message {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        bool operator==(const Message&) const = default;
    };

    /// The main dialog fits into it, or does not.
    enum class Size { Large, Small };
    explicit StandInHost(Size size = Size::Large);
    ~StandInHost();
    StandInHost(const StandInHost&) = delete;
    StandInHost& operator=(const StandInHost&) = delete;

    HWND Window() const { return m_window; }
    /// The window's handle as the program expects it on its command line.
    std::wstring HandleText() const;

    std::vector<Message> Messages() const;
    std::size_t MessageCount(UINT message) const;
    /// Whether the message has come, before the call or within the limit.
    bool WaitForMessage(UINT message, std::chrono::milliseconds limit = kLimit) const;

  private:
    void Run(Size size, std::promise<HWND> opened);

    mutable std::mutex m_mutex;
    std::vector<Message> m_messages;
    HWND m_window = nullptr;
    std::thread m_thread;
};

}  // namespace support
