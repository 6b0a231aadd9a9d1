#include "WindowPlacement.h"

#include <cstring>
#include <span>

#include "CorvaneKeys.h"
#include "RegKey.h"

namespace {

constexpr wchar_t kValue[] = L"WindowPlacement";

/// No screen reaches further; and these can be subtracted from each other.
constexpr LONG kFarthest = 0x7FFF;

bool IsOnScreen(const RECT& place) {
    for (const LONG edge : {place.left, place.top, place.right, place.bottom})
        if (edge < -kFarthest || edge > kFarthest) return false;
    return place.left < place.right && place.top < place.bottom &&
           ::MonitorFromRect(&place, MONITOR_DEFAULTTONULL);
}

}  // namespace

std::optional<WINDOWPLACEMENT> LoadWindowPlacement() {
    const auto key = CRegKey::Open(HKEY_CURRENT_USER, kManagerKey);
    const auto value = key ? key->ReadValue(kValue) : std::nullopt;
    WINDOWPLACEMENT placement{};
    if (!value || value->type != REG_BINARY || value->data.size() != sizeof placement) return std::nullopt;
    std::memcpy(&placement, value->data.data(), sizeof placement);
    if (placement.length != sizeof placement || !IsOnScreen(placement.rcNormalPosition)) return std::nullopt;
    return placement;
}

void SaveWindowPlacement(HWND window) {
    if (::GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) return;
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    if (!::GetWindowPlacement(window, &placement) || !IsOnScreen(placement.rcNormalPosition)) return;
    if (const auto key = CRegKey::Open(HKEY_CURRENT_USER, kManagerKey, KEY_WRITE))
        key->WriteValue(kValue, REG_BINARY, std::as_bytes(std::span(&placement, 1)));
}

bool IsMaximised(const WINDOWPLACEMENT& placement) {
    const bool minimised = placement.showCmd == SW_SHOWMINIMIZED || placement.showCmd == SW_MINIMIZE;
    return placement.showCmd == SW_SHOWMAXIMIZED || (minimised && placement.flags & WPF_RESTORETOMAXIMIZED);
}
