// The least that a program with a dialog does, for the bench to compare with.
//   controls   the dialog has the controls of the program's own
//   fill       it asks the system for all plug-ins, once it is shown, and lists as many rows
#include "EmptyDialog.h"

#include <windows.h>

#include <objbase.h>

#include <cwchar>
#include <string>

#include "BareEnumeration.h"
#include "resource.h"

namespace {

constexpr UINT kFillDelay = 500;  // ms, as the program's

bool IsGiven(const wchar_t* argument) { return std::wcsstr(::GetCommandLineW(), argument) != nullptr; }

void Fill(HWND dialog) {
    const HWND list = ::GetDlgItem(dialog, IDC_PLUGINS);
    const int rows = BareEnumeration();
    ::SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    for (int row = 0; row < rows; ++row)
        ::SendMessageW(list, LB_ADDSTRING, 0,
                       reinterpret_cast<LPARAM>((L"Bench plug-in " + std::to_wstring(row)).c_str()));
    ::SendMessageW(list, WM_SETREDRAW, TRUE, 0);
}

INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            ::SetWindowTextW(dialog, kEmptyDialogTitle);
            if (!::GetDlgItem(dialog, IDC_PLUGINS))
                ::CreateWindowExW(0, L"LISTBOX", L"", WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_SORT, 0, 0,
                                  300, 300, dialog, reinterpret_cast<HMENU>(IDC_PLUGINS),
                                  ::GetModuleHandleW(nullptr), nullptr);
            if (IsGiven(L"fill")) ::SetTimer(dialog, 1, kFillDelay, nullptr);
            return TRUE;
        case WM_TIMER:
            ::KillTimer(dialog, wParam);
            Fill(dialog);
            return TRUE;
        case WM_CLOSE:
            ::EndDialog(dialog, 0);
            return TRUE;
        default:
            return FALSE;
    }
}

/// A template's head, which menu, class and title follow, all of them empty.
struct EmptyTemplate {
    DLGTEMPLATE head{.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE,
                     .dwExtendedStyle = 0,
                     .cdit = 0,
                     .x = 0,
                     .y = 0,
                     .cx = 300,
                     .cy = 200};
    WORD menuClassAndTitle[3]{};
};

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, wchar_t*, int) {
    if (FAILED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
    const EmptyTemplate empty;
    if (IsGiven(L"controls")) {
        ::DialogBoxParamW(instance, MAKEINTRESOURCEW(IDD_PLUGIN_MANAGER), nullptr, &Procedure, 0);
    } else {
        ::DialogBoxIndirectParamW(instance, &empty.head, nullptr, &Procedure, 0);
    }
    ::CoUninitialize();
    return 0;
}
