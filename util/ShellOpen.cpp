#include "ShellOpen.h"

#include <shellapi.h>
#include <shlobj.h>
#include <shlwapi.h>

#include <memory>

bool OpenInShell(HWND owner, const wchar_t* file, const wchar_t* arguments) {
    SHELLEXECUTEINFOW request{};
    request.cbSize = sizeof request;
    request.fMask = SEE_MASK_FLAG_NO_UI;
    request.hwnd = owner;
    request.lpFile = file;
    request.lpParameters = arguments;
    request.nShow = SW_SHOWNORMAL;
    return ::ShellExecuteExW(&request) != FALSE;
}

bool ShowInFolder(const std::wstring& path) {
    // Other texts than paths have a meaning to the shell, too.
    if (!::PathFileExistsW(path.c_str())) return false;
    PIDLIST_ABSOLUTE found = nullptr;
    if (FAILED(::SHParseDisplayName(path.c_str(), nullptr, &found, 0, nullptr))) return false;
    const std::unique_ptr<ITEMIDLIST, decltype(&::CoTaskMemFree)> item(found, &::CoTaskMemFree);
    return SUCCEEDED(::SHOpenFolderAndSelectItems(item.get(), 0, nullptr, 0));
}
