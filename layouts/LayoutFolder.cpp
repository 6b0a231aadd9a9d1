#include "LayoutFolder.h"

#include <windows.h>

#include "Handles.h"
#include "LayoutPath.h"
#include "XmlDoc.h"

namespace {

/// Kept: a compressed file is not a layout that the host reads.
constexpr DWORD kPassedOver = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_DIRECTORY |
                              FILE_ATTRIBUTE_TEMPORARY | FILE_ATTRIBUTE_COMPRESSED;

std::wstring DisplayNameOf(const std::wstring& path, CPatience& patience) {
    CXmlDoc document;
    if (!document.LoadRoot(path, patience) || !document.TagIs(L"<PluginMenuLayout>") ||
        !document.FindAttribute(L"Name"))
        return {};
    return document.FoundAttribute().value_or(L"");
}

}  // namespace

std::vector<std::wstring> LayoutPaths(const std::wstring& folder, bool all) {
    std::vector<std::wstring> paths;
    if (folder.empty()) return paths;  // else the root of the current drive would be meant
    const std::wstring prefix = folder.ends_with(L'\\') ? folder : folder + L'\\';
    WIN32_FIND_DATAW entry{};
    const HANDLE first = ::FindFirstFileW((prefix + L"*.pgl").c_str(), &entry);
    if (first == INVALID_HANDLE_VALUE) return paths;
    const UniqueHandle<HANDLE, &::FindClose> find(first);
    do {
        // The pattern also finds short names, which Windows makes of extensions that only begin so.
        if ((all || !(entry.dwFileAttributes & kPassedOver)) && HasExtension(entry.cFileName, L".pgl"))
            paths.push_back(prefix + entry.cFileName);
    } while (::FindNextFileW(find.Get(), &entry));
    return paths;
}

std::vector<LayoutFile> ScanLayoutFolder(const std::wstring& folder) {
    std::vector<LayoutFile> files;
    CPatience patience;
    for (std::wstring& path : LayoutPaths(folder, false)) {
        std::wstring name = DisplayNameOf(path, patience);
        if (!name.empty()) files.push_back({std::move(name), std::move(path)});
    }
    return files;
}
