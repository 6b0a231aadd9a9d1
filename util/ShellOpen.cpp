#include "ShellOpen.h"

#include <shellapi.h>

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
