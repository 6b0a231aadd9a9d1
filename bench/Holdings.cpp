#include "Holdings.h"

#include <windows.h>

#include <psapi.h>

#include <array>
#include <cstdint>

#include "support/SystemCalls.h"

namespace {

// Some systems answer these with 0: then each possible handle is asked what it is.
constexpr std::uintptr_t kLastHandle = 0x100000;
constexpr std::uintptr_t kLongestGap = 0x4000;  // between handles: the lowest free one is given out
constexpr std::uintptr_t kLastGdiObject = 0x4000;
constexpr std::uintptr_t kLastUserObject = 0xFFFE;

int CountHandles() {
    DWORD told = 0;
    if (::GetProcessHandleCount(::GetCurrentProcess(), &told) && told > 0) return static_cast<int>(told);
    int count = 0;
    std::uintptr_t found = 0;
    for (std::uintptr_t handle = 4; handle < kLastHandle && handle - found < kLongestGap; handle += 4) {
        DWORD flags = 0;
        if (!::GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags)) continue;
        found = handle;
        ++count;
    }
    return count;
}

template <typename TIsOne>
int CountObjects(DWORD kind, std::uintptr_t last, TIsOne&& isOne) {
    if (const DWORD told = ::GetGuiResources(::GetCurrentProcess(), kind)) return static_cast<int>(told);
    int count = 0;
    for (std::uintptr_t handle = 1; handle <= last; ++handle) count += isOne(handle);
    return count;
}

std::size_t BytesIn(HANDLE heap) {
    std::size_t bytes = 0;
    ::HeapLock(heap);
    for (PROCESS_HEAP_ENTRY entry{}; ::HeapWalk(heap, &entry);) {
        if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
    }
    ::HeapUnlock(heap);
    return bytes;
}

int g_calls = 0;

/// Leads this program's own calls of a function of the system by way of the counter.
template <auto kFunction>
struct Counted;
template <typename TResult, typename... TArguments, TResult (*kFunction)(TArguments...)>
struct Counted<kFunction> {
    static inline TResult (*s_system)(TArguments...) = nullptr;
    static TResult Call(TArguments... arguments) {
        ++g_calls;
        return s_system(arguments...);
    }
    /// Asked for again, it finds the calls led here already.
    static void Redirect(const char* name) {
        if (!s_system) s_system = support::LeadCalls(L"advapi32", name, &Call);
    }
};

}  // namespace

Holdings Holdings::Now() {
    Holdings now;
    std::array<HANDLE, 64> heaps{};
    const DWORD count = ::GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    for (DWORD i = 0; i < count && i < heaps.size(); ++i)
        now.heapKilobytes += static_cast<double>(BytesIn(heaps[i])) / 1024;
    now.handles = CountHandles();
    now.gdiObjects = CountObjects(GR_GDIOBJECTS, kLastGdiObject, [](std::uintptr_t handle) {
        return ::GetObjectType(reinterpret_cast<HGDIOBJ>(handle)) != 0;
    });
    now.userObjects = CountObjects(GR_USEROBJECTS, kLastUserObject, [](std::uintptr_t handle) {
        return ::IsMenu(reinterpret_cast<HMENU>(handle)) || ::IsWindow(reinterpret_cast<HWND>(handle));
    });
    return now;
}

double PeakMegabytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    ::K32GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<double>(counters.PeakWorkingSetSize) / (1 << 20);
}

void CountRegistryCalls() {
    Counted<&::RegOpenKeyExW>::Redirect("RegOpenKeyExW");
    Counted<&::RegCloseKey>::Redirect("RegCloseKey");
    Counted<&::RegCreateKeyExW>::Redirect("RegCreateKeyExW");
    Counted<&::RegEnumKeyExW>::Redirect("RegEnumKeyExW");
    Counted<&::RegEnumValueW>::Redirect("RegEnumValueW");
    Counted<&::RegQueryInfoKeyW>::Redirect("RegQueryInfoKeyW");
    Counted<&::RegQueryValueExW>::Redirect("RegQueryValueExW");
    Counted<&::RegSetValueExW>::Redirect("RegSetValueExW");
}

int RegistryCalls() { return g_calls; }
