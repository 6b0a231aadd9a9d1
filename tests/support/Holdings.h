// What a process holds of the system, to see whether it grows.
#pragma once

#include <windows.h>

#include <string>

namespace support {

struct Holdings {
    unsigned handles = 0;
    unsigned gdiObjects = 0;
    unsigned windows = 0;  // of this thread
    unsigned menus = 0;
};

/// Counted one by one: not every system tells how many there are.
Holdings CountHoldings();
std::wstring TextOf(const Holdings& holdings);

}  // namespace support
