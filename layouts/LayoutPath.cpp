#include "LayoutPath.h"

#include <windows.h>

bool HasExtension(std::wstring_view path, std::wstring_view extension) {
    return path.size() >= extension.size() &&
           SamePath(path.substr(path.size() - extension.size()), extension);
}

std::wstring FullPathOf(const std::wstring& path) {
    std::wstring full(::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(::GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

std::wstring FileNameOf(const std::wstring& path) { return path.substr(path.find_last_of(L"\\/") + 1); }
