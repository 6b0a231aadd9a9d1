// Waiting for a condition, with a limit.
#pragma once

#include <chrono>
#include <functional>

namespace support {

using namespace std::chrono_literals;

/// Generous: only a test that is about to fail waits this long.
inline constexpr std::chrono::milliseconds kLimit = 10s;

/// Whether the condition came true in time. The calling thread's own windows go on working meanwhile.
bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit = kLimit);

}  // namespace support
