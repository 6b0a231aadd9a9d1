#include "LayoutPath.h"

bool HasExtension(std::wstring_view path, std::wstring_view extension) {
    return path.size() >= extension.size() &&
           SamePath(path.substr(path.size() - extension.size()), extension);
}

std::wstring FileNameOf(const std::wstring& path) { return path.substr(path.find_last_of(L"\\/") + 1); }
