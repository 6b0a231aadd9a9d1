#pragma once

#include <windows.h>

#include <algorithm>
#include <span>

namespace support {

/// From now on the program's own calls of that function of the system arrive at `to`. Gives the system's own;
/// null, and nothing is changed, when the program imports no such function.
template <typename TFunction>
TFunction* LeadCalls(const wchar_t* library, const char* name, TFunction* to) {
    auto* const base = reinterpret_cast<BYTE*>(::GetModuleHandleW(nullptr));
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IAT];
    const auto slots =
        std::span(reinterpret_cast<void**>(base + imports.VirtualAddress), imports.Size / sizeof(void*));
    void* const from = reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(library), name));
    const auto slot = std::ranges::find(slots, from);
    if (slot == slots.end()) return nullptr;
    DWORD access = PAGE_READWRITE;
    ::VirtualProtect(&*slot, sizeof(void*), access, &access);
    *slot = reinterpret_cast<void*>(to);
    ::VirtualProtect(&*slot, sizeof(void*), access, &access);
    return reinterpret_cast<TFunction*>(from);
}

}  // namespace support
