// What windows show and what a user does to them, in this process or in another.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace support {

/// As SendMessage, but throws when the window is gone or does not answer, so that a hung program fails its
/// test.
LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

std::wstring ClassOf(HWND window);
std::wstring TextOf(HWND window);
RECT RectOf(HWND window);
/// The title and the labels of a dialog.
std::string Describe(HWND window);
std::string Utf8(const std::wstring& text);

// Rows of a list box or a combo box.
std::vector<std::wstring> Rows(HWND list);
std::vector<int> SelectedRows(HWND list);
/// Leaves exactly these rows selected and tells the dialog, as a click does. A text that is no row fails the
/// test.
void SelectRows(HWND list, const std::vector<int>& rows);
void Select(HWND list, const std::vector<std::wstring>& texts);

/// Replaces the text of an edit or combo box; the control's dialog hears of it.
void EnterText(HWND control, const std::wstring& text);
/// Fails the test when there is no such button or it is disabled. Posted: a question that follows holds up
/// nobody.
void Press(HWND button);
/// A key as the control's message loop sees it; modifier keys don't take part.
void PostKey(HWND control, WORD virtualKey);

}  // namespace support
