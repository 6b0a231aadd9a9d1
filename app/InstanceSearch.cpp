#include "InstanceSearch.h"

#include <string>

#include "CorvaneKeys.h"
#include "HostWindow.h"
#include "RegKey.h"
#include "Resources.h"
#include "resource.h"

namespace {

HWND FindInside(HWND host, const std::wstring& title) {
    return ::IsWindow(host) ? ::FindWindowExW(host, nullptr, nullptr, title.c_str()) : nullptr;
}

HWND StoredHost() {
    const auto key = CRegKey::Create(HKEY_CURRENT_USER, kManagerKey);
    return key ? ReadHostWindow(*key) : nullptr;
}

HWND FindRunningCopy(HWND host) {
    // Kept: the bare title is looked for, without the suffix that the dialog's own caption carries.
    const std::wstring title = LoadText(IDS_TITLE);
    if (const HWND found = ::FindWindowW(nullptr, title.c_str())) return found;
    if (const HWND found = FindInside(host, title)) return found;
    return FindInside(StoredHost(), title);
}

}  // namespace

bool BringRunningCopyForward(HWND host) {
    const HWND copy = FindRunningCopy(host);
    if (!copy) return false;
    // Nothing here waits for the window's program: it may hang.
    if (::IsIconic(copy)) ::ShowWindowAsync(copy, SW_RESTORE);
    // Only a top-level window can come to the foreground: for a docked copy that is its host.
    ::SetForegroundWindow(::GetAncestor(copy, GA_ROOT));
    ::SetWindowPos(copy, HWND_TOP, 0, 0, 0, 0, SWP_ASYNCWINDOWPOS | SWP_NOMOVE | SWP_NOSIZE);
    return true;
}
