// Waiting for a condition, with a limit.
#pragma once

#include <windows.h>

#include <chrono>
#include <functional>

namespace support {

using namespace std::chrono_literals;

/// Generous: only a test that is about to fail waits this long.
inline constexpr std::chrono::milliseconds kLimit = 10s;

/// Whether the condition came true in time. The calling thread's own windows go on working meanwhile.
inline bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit = kLimit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end) return false;
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return true;
}

}  // namespace support
