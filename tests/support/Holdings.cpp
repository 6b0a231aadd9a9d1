#include "support/Holdings.h"

#include <winternl.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace support {
namespace {

constexpr std::uintptr_t kMostHandles = 0x20000;

/// A row of the table of GDI objects, which the system shares with each process.
struct GdiObject {
    void* kernel;
    std::uint16_t process;
    std::uint16_t lock;
    std::uint16_t unique;
    std::uint8_t type;
    std::uint8_t flags;
    void* user;
};
constexpr std::size_t kGdiTableInPeb = 0xF8;
constexpr std::size_t kGdiObjects = 0x4000;

unsigned CountGdiObjects() {
    const FARPROC processBlock = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetCurrentPeb");
    const auto* peb = reinterpret_cast<const std::byte*>(processBlock());
    const auto* table = *reinterpret_cast<const GdiObject* const*>(peb + kGdiTableInPeb);
    unsigned count = 0;
    for (std::size_t i = 0; table && i < kGdiObjects; ++i) count += table[i].type != 0;
    return count;
}

/// A text that the system's kernel has for a handle.
std::wstring Query(HANDLE handle, int what) {
    using NtQueryObject = LONG(WINAPI*)(HANDLE, int, void*, ULONG, ULONG*);
    static const auto query = reinterpret_cast<NtQueryObject>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQueryObject")));
    alignas(UNICODE_STRING) std::array<std::byte, 4096> answer{};
    ULONG size = 0;
    if (query(handle, what, answer.data(), static_cast<ULONG>(answer.size()), &size) < 0) return {};
    const auto& text = *reinterpret_cast<const UNICODE_STRING*>(answer.data());
    return {text.Buffer, text.Length / sizeof(wchar_t)};
}

/// The system's own enumeration of filters may leave keys open: of keys only the host's count.
bool Counts(HANDLE handle) {
    constexpr int kName = 1, kType = 2;
    DWORD flags = 0;
    return GetHandleInformation(handle, &flags) &&
           (Query(handle, kType) != L"Key" ||
            Query(handle, kName).find(L"Corvane Music Software") != std::wstring::npos);
}

BOOL CALLBACK CountWindow(HWND window, LPARAM count) {
    ++*reinterpret_cast<unsigned*>(count);
    EnumChildWindows(
        window, [](HWND, LPARAM inner) { return ++*reinterpret_cast<unsigned*>(inner), TRUE; }, count);
    return TRUE;
}

}  // namespace

Holdings CountHoldings() {
    Holdings holdings{.gdiObjects = CountGdiObjects()};
    for (std::uintptr_t handle = 4; handle < kMostHandles; handle += 4)
        holdings.handles += Counts(reinterpret_cast<HANDLE>(handle));
    EnumThreadWindows(GetCurrentThreadId(), &CountWindow, reinterpret_cast<LPARAM>(&holdings.windows));
    for (std::uintptr_t menu = 1; menu < 0x10000; ++menu)
        holdings.menus += IsMenu(reinterpret_cast<HMENU>(menu)) != FALSE;
    return holdings;
}

std::wstring TextOf(const Holdings& holdings) {
    return std::to_wstring(holdings.handles) + L" handles, " + std::to_wstring(holdings.gdiObjects) +
           L" GDI objects, " + std::to_wstring(holdings.windows) + L" windows, " +
           std::to_wstring(holdings.menus) + L" menus";
}

}  // namespace support
