// The layout files of a folder.
#pragma once

#include <string>
#include <vector>

struct LayoutFile {
    std::wstring name;  // the layout's display name, never empty
    std::wstring path;
};

/// What is called ".pgl" there, whatever it is, as full paths. Those that are hidden, compressed or the like
/// are no layouts; with `all` they count, too.
std::vector<std::wstring> LayoutPaths(const std::wstring& folder, bool all);
/// In the system's order. A file that is hidden, compressed or the like, or that has no display name, is left
/// out.
std::vector<LayoutFile> ScanLayoutFolder(const std::wstring& folder);
