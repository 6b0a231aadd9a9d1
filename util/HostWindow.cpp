#include "HostWindow.h"

#include "PointerText.h"

HWND ReadHostWindow(const CRegKey& managerKey) {
    constexpr std::size_t kHandleTextBytes = 64;
    const auto text = managerKey.ReadUnterminated(L"ParentWindow", kHandleTextBytes);
    return reinterpret_cast<HWND>(text ? ParsePointer(*text).value_or(0) : 0);
}
