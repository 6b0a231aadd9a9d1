#include "support/WindowActions.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>

#include "support/WaitFor.h"

namespace support {
namespace {

constexpr UINT kAnswerLimit = 5000;

struct ListMessages {
    UINT count, textLength, text, select;
};

bool IsCombo(HWND list) { return ClassOf(list) == L"ComboBox"; }

ListMessages MessagesOf(HWND list) {
    return IsCombo(list) ? ListMessages{CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT, CB_SETCURSEL}
                         : ListMessages{LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT, LB_SETCURSEL};
}

bool IsMultipleChoice(HWND list) {
    return !IsCombo(list) && (GetWindowLongW(list, GWL_STYLE) & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0;
}

WPARAM NotificationOf(HWND control, WORD code) {
    return MAKEWPARAM(static_cast<WORD>(GetDlgCtrlID(control)), code);
}

LPARAM ToLParam(const void* pointer) { return reinterpret_cast<LPARAM>(pointer); }

void DescribeTo(std::ostream& out, HWND window) {
    const RECT rect = RectOf(window);
    out << Utf8(ClassOf(window)) << ' ' << GetDlgCtrlID(window) << " \"" << Utf8(TextOf(window)) << '"'
        << (IsWindowVisible(window) ? "" : " hidden") << (IsWindowEnabled(window) ? "" : " disabled")
        << " at " << rect.left << ',' << rect.top << ' ' << rect.right - rect.left << 'x'
        << rect.bottom - rect.top << '\n';
    const auto name = ClassOf(window);
    if (name != L"ListBox" && name != L"ComboBox") return;
    const auto selected = SelectedRows(window);
    int index = 0;
    for (const auto& row : Rows(window)) {
        const bool chosen = std::ranges::find(selected, index++) != selected.end();
        out << (chosen ? "    * \"" : "      \"") << Utf8(row) << "\"\n";
    }
}

BOOL CALLBACK DescribeChild(HWND child, LPARAM out) {
    auto& stream = *reinterpret_cast<std::ostream*>(out);
    stream << "  ";
    DescribeTo(stream, child);
    return TRUE;
}

}  // namespace

LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    if (!SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kAnswerLimit, &result))
        throw std::runtime_error("a window is gone or does not answer message " + std::to_string(message));
    return static_cast<LRESULT>(result);
}

std::wstring ClassOf(HWND window) {
    wchar_t name[256] = L"";
    GetClassNameW(window, name, 256);
    return name;
}

std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(Send(window, WM_GETTEXTLENGTH)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(Send(window, WM_GETTEXT, text.size(), ToLParam(text.data()))));
    return text;
}

std::wstring LabelsOf(HWND dialog) {
    std::wstring texts;
    for (HWND child = nullptr; (child = FindWindowExW(dialog, child, L"Static", nullptr)) != nullptr;) {
        const auto text = TextOf(child);
        if (!text.empty()) texts += (texts.empty() ? L"" : L"\n") + text;
    }
    return texts;
}

RECT RectOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect;
}

std::string Describe(HWND window) {
    std::ostringstream out;
    try {
        DescribeTo(out, window);
        EnumChildWindows(window, DescribeChild, ToLParam(static_cast<std::ostream*>(&out)));
    } catch (const std::exception& error) {
        out << error.what() << '\n';
    }
    return out.str();
}

std::string Utf8(const std::wstring& text) {
    const auto bytes = std::filesystem::path(text).u8string();  // a path knows how to
    return {bytes.begin(), bytes.end()};
}

/// Room for a row that grows between the question for its length and that for its text.
constexpr std::size_t kSpareCharacters = 1024;

std::vector<std::wstring> Rows(HWND list) {
    const ListMessages messages = MessagesOf(list);
    std::vector<std::wstring> rows;
    const auto count = Send(list, messages.count);
    for (LRESULT i = 0; i < count; ++i) {
        const auto index = static_cast<WPARAM>(i);
        const auto length = Send(list, messages.textLength, index);
        // Another process's list may be filled anew meanwhile: then it counts as empty, and the test looks
        // again.
        if (length < 0) return {};
        std::wstring row(static_cast<std::size_t>(length) + kSpareCharacters, L'\0');
        const auto got = Send(list, messages.text, index, ToLParam(row.data()));
        if (got < 0) return {};
        row.resize(static_cast<std::size_t>(got));
        rows.push_back(row);
    }
    return rows;
}

std::vector<int> SelectedRows(HWND list) {
    std::vector<int> rows;
    if (IsMultipleChoice(list)) {
        const auto count = static_cast<int>(Send(list, LB_GETCOUNT));
        for (int i = 0; i < count; ++i) {
            if (Send(list, LB_GETSEL, static_cast<WPARAM>(i)) > 0) rows.push_back(i);
        }
    } else if (const auto row = Send(list, IsCombo(list) ? CB_GETCURSEL : LB_GETCURSEL); row >= 0) {
        rows.push_back(static_cast<int>(row));
    }
    return rows;
}

void SelectRows(HWND list, const std::vector<int>& rows) {
    if (IsMultipleChoice(list)) {
        Send(list, LB_SETSEL, FALSE, -1);
        for (const int row : rows) Send(list, LB_SETSEL, TRUE, row);
    } else {
        Send(list, MessagesOf(list).select, static_cast<WPARAM>(rows.empty() ? -1 : rows.back()));
    }
    static_assert(LBN_SELCHANGE == CBN_SELCHANGE);
    Send(GetParent(list), WM_COMMAND, NotificationOf(list, LBN_SELCHANGE), ToLParam(list));
}

void Select(HWND list, const std::vector<std::wstring>& texts) {
    const auto all = Rows(list);
    std::vector<int> rows;
    for (const auto& text : texts) {
        const auto found = std::ranges::find(all, text);
        if (found == all.end()) {
            ADD_FAILURE() << "there is no row \"" << Utf8(text) << "\"\n" << Describe(list);
            return;
        }
        rows.push_back(static_cast<int>(found - all.begin()));
    }
    SelectRows(list, rows);
}

int TreeCount(HWND tree) { return static_cast<int>(Send(tree, TVM_GETCOUNT)); }

void PostNotification(HWND control, WORD code) {
    PostMessageW(GetParent(control), WM_COMMAND, NotificationOf(control, code), ToLParam(control));
}

void EnterText(HWND control, const std::wstring& text) {
    Send(control, WM_SETTEXT, 0, ToLParam(text.c_str()));
    // An edit tells its dialog itself; a combo box does so for typed text only.
    if (IsCombo(control))
        Send(GetParent(control), WM_COMMAND, NotificationOf(control, CBN_EDITCHANGE), ToLParam(control));
}

void Press(HWND button) {
    if (IsWindow(button) && IsWindowEnabled(button) && IsWindowVisible(button))
        PostMessageW(button, BM_CLICK, 0, 0);
    else
        ADD_FAILURE() << "this can't be pressed: "
                      << (IsWindow(button) ? Describe(button) : "(no such window)");
}

void PostKey(HWND control, WORD virtualKey) {
    const auto scanCode = static_cast<LPARAM>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC)) << 16;
    PostMessageW(control, WM_KEYDOWN, virtualKey, 1 | scanCode);
    PostMessageW(control, WM_KEYUP, virtualKey, 0xC0000001 | scanCode);
}

void BringToFront(HWND window) {
    SetForegroundWindow(window);
    const HWND top = GetAncestor(window, GA_ROOT);
    if (!WaitFor([&] { return GetForegroundWindow() == top; }))
        ADD_FAILURE() << "the window does not come to the front: " << Describe(window);
}

}  // namespace support
