#include "CallCount.h"

#include <windows.h>

#include <algorithm>
#include <span>

namespace {

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
    static void Redirect(const char* name) {
        auto* const base = reinterpret_cast<BYTE*>(::GetModuleHandleW(nullptr));
        const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
        const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
        const auto& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IAT];
        const auto slots =
            std::span(reinterpret_cast<void**>(base + imports.VirtualAddress), imports.Size / sizeof(void*));
        void* const from = reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"advapi32"), name));
        const auto slot = std::ranges::find(slots, from);
        if (slot == slots.end()) return;
        DWORD access = PAGE_READWRITE;
        ::VirtualProtect(&*slot, sizeof(void*), access, &access);
        s_system = reinterpret_cast<TResult (*)(TArguments...)>(from);
        *slot = reinterpret_cast<void*>(&Call);
        ::VirtualProtect(&*slot, sizeof(void*), access, &access);
    }
};

}  // namespace

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
