// The least that a program with a dialog does, for the bench to compare with. Given "controls", the dialog
// has those of the program's own. A timer's message has it ask the system for all plug-ins, and list some.
#include <windows.h>

#include <objbase.h>

#include <string>

#include "Bare.h"
#include "resource.h"

namespace {

void Fill(HWND dialog) {
    const HWND list = ::GetDlgItem(dialog, IDC_PLUGINS);
    const int rows = BareEnumeration();
    ::SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    for (int row = 0; row < rows; ++row)
        ::SendMessageW(list, LB_ADDSTRING, 0,
                       reinterpret_cast<LPARAM>((L"Bench plug-in " + std::to_wstring(row)).c_str()));
    ::SendMessageW(list, WM_SETREDRAW, TRUE, 0);
}

INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM, LPARAM) {
    if (message == WM_INITDIALOG) ::SetWindowTextW(dialog, L"Empty dialog");
    if (message == WM_TIMER) Fill(dialog);
    if (message == WM_CLOSE) ::EndDialog(dialog, 0);
    return message == WM_INITDIALOG || message == WM_TIMER || message == WM_CLOSE;
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

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, wchar_t* lpCmdLine, int) {
    if (FAILED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
    const EmptyTemplate empty;
    if (std::wstring(lpCmdLine) == L"controls") {
        ::DialogBoxParamW(instance, MAKEINTRESOURCEW(IDD_PLUGIN_MANAGER), nullptr, &Procedure, 0);
    } else {
        ::DialogBoxIndirectParamW(instance, &empty.head, nullptr, &Procedure, 0);
    }
    ::CoUninitialize();
    return 0;
}
