// Which file a registered path means.
#pragma once

#include <string>

/// A path may stand in quotation marks, with anything behind them.
inline std::wstring UnquotedPath(const std::wstring& path) {
    return path.starts_with(L'"') ? path.substr(1, path.find(L'"', 1) - 1) : path;
}

/// The system looks for the file then.
inline bool IsBareName(const std::wstring& file) {
    return !file.empty() && file.find_first_of(L"\\/:") == std::wstring::npos;
}
