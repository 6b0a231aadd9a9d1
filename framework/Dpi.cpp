#include "Dpi.h"

#include "Window.h"

namespace {

template <typename TFunction>
TFunction* FindInUser(const char* name) {
    const HMODULE user = ::GetModuleHandleW(L"user32.dll");
    // By way of void*, because the compiler warns of a direct cast between two function types.
    return reinterpret_cast<TFunction*>(reinterpret_cast<void*>(::GetProcAddress(user, name)));
}

}  // namespace

UINT DpiOf(HWND window) {
    static auto* const find = FindInUser<decltype(::GetDpiForWindow)>("GetDpiForWindow");
    const UINT dpi = find ? find(window) : 0;
    return dpi != 0 ? dpi : static_cast<UINT>(::GetDeviceCaps(CClientDC(CWindow()).Get(), LOGPIXELSY));
}

int SystemMetric(int index, UINT dpi) {
    static auto* const find = FindInUser<decltype(::GetSystemMetricsForDpi)>("GetSystemMetricsForDpi");
    return find ? find(index, dpi) : ::GetSystemMetrics(index);
}

Size FrameSize(HWND window, UINT dpi) {
    static auto* const adjust = FindInUser<decltype(::AdjustWindowRectExForDpi)>("AdjustWindowRectExForDpi");
    const auto style = static_cast<DWORD>(::GetWindowLongPtrW(window, GWL_STYLE));
    const auto extended = static_cast<DWORD>(::GetWindowLongPtrW(window, GWL_EXSTYLE));
    RECT frame{};
    adjust ? adjust(&frame, style, FALSE, extended, dpi)
           : ::AdjustWindowRectEx(&frame, style, FALSE, extended);
    return {static_cast<int>(frame.right - frame.left), static_cast<int>(frame.bottom - frame.top)};
}

void ScaleByOneself(HWND dialog) {
    static auto* const set = FindInUser<decltype(::SetDialogDpiChangeBehavior)>("SetDialogDpiChangeBehavior");
    if (set) set(dialog, DDC_DISABLE_ALL, DDC_DISABLE_ALL);
}
