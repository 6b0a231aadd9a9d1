// Which file a registered path means.
#pragma once

#include <string>

/// A path may stand in quotation marks, and a bare name is that of a file in the system's folder.
inline std::wstring RegisteredFile(std::wstring path, const std::wstring& systemFolder) {
    if (path.starts_with(L'"')) path = path.substr(1, path.find(L'"', 1) - 1);
    const bool bare = !path.empty() && path.find_first_of(L"\\/:") == std::wstring::npos;
    return bare ? systemFolder + L'\\' + path : path;
}
