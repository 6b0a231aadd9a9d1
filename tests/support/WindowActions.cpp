#include "support/WindowActions.h"

#include <commctrl.h>

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>

#include "support/WaitFor.h"

namespace support {
namespace {

/// Room for a row that grows between the question for its length and that for its text.
constexpr std::size_t kSpareCharacters = 1024;

struct ListMessages {
    UINT count, textLength, text, selected, select;
};
constexpr ListMessages kListBox{LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT, LB_GETCURSEL, LB_SETCURSEL};
constexpr ListMessages kComboBox{CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT, CB_GETCURSEL, CB_SETCURSEL};

bool IsCombo(HWND list) { return ClassOf(list) == L"ComboBox"; }

const ListMessages& MessagesOf(HWND list) { return IsCombo(list) ? kComboBox : kListBox; }

bool TakesSeveral(HWND list) {
    return !IsCombo(list) && (GetWindowLongW(list, GWL_STYLE) & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0;
}

LPARAM ToLParam(const void* pointer) { return reinterpret_cast<LPARAM>(pointer); }

void Notify(HWND control, WORD code) {
    Send(GetParent(control), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(control), code), ToLParam(control));
}

void DescribeTo(std::ostream& out, HWND window) {
    out << Utf8(ClassOf(window)) << ' ' << GetDlgCtrlID(window) << " \"" << Utf8(TextOf(window)) << '"'
        << (IsWindowVisible(window) ? "" : " hidden") << (IsWindowEnabled(window) ? "" : " disabled") << '\n';
    for (const auto& row : Rows(window)) out << "    \"" << Utf8(row) << "\"\n";
}

}  // namespace

LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    constexpr auto kMilliseconds = static_cast<UINT>(kLimit.count());
    DWORD_PTR result = 0;
    if (!SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kMilliseconds, &result))
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

RECT RectOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect;
}

std::string Describe(HWND window) {
    std::ostringstream out;
    try {
        DescribeTo(out, window);
        for (HWND child = nullptr; (child = FindWindowExW(window, child, nullptr, nullptr)) != nullptr;)
            DescribeTo(out, child);
    } catch (const std::exception& error) {
        out << error.what() << '\n';
    }
    return out.str();
}

std::string Utf8(const std::wstring& text) {
    const auto bytes = std::filesystem::path(text).u8string();  // a path knows how to
    return {bytes.begin(), bytes.end()};
}

std::vector<std::wstring> Rows(HWND list) {
    const ListMessages& messages = MessagesOf(list);
    std::vector<std::wstring> rows(static_cast<std::size_t>(Send(list, messages.count)));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const LRESULT length = Send(list, messages.textLength, i);
        rows[i].resize(static_cast<std::size_t>(length) + kSpareCharacters);
        const LRESULT got = Send(list, messages.text, i, ToLParam(rows[i].data()));
        // Another process's list may be filled anew meanwhile: then it counts as empty, and the test looks
        // again.
        if (got < 0) return {};
        rows[i].resize(static_cast<std::size_t>(got));
    }
    return rows;
}

std::vector<int> SelectedRows(HWND list) {
    const ListMessages& messages = MessagesOf(list);
    const bool several = TakesSeveral(list);
    const LRESULT current = Send(list, messages.selected);
    const auto count = static_cast<int>(Send(list, messages.count));
    std::vector<int> rows;
    for (int row = 0; row < count; ++row) {
        const auto index = static_cast<WPARAM>(row);
        if (several ? Send(list, LB_GETSEL, index) > 0 : current == row) rows.push_back(row);
    }
    return rows;
}

void SelectRows(HWND list, const std::vector<int>& rows) {
    if (TakesSeveral(list)) {
        Send(list, LB_SETSEL, FALSE, -1);
        for (const int row : rows) Send(list, LB_SETSEL, TRUE, row);
    } else {
        Send(list, MessagesOf(list).select, static_cast<WPARAM>(rows.empty() ? -1 : rows.back()));
    }
    static_assert(LBN_SELCHANGE == CBN_SELCHANGE);
    Notify(list, LBN_SELCHANGE);
}

void Select(HWND list, const std::vector<std::wstring>& texts) {
    const auto all = Rows(list);
    std::vector<int> rows;
    for (const auto& text : texts) {
        const auto found = std::ranges::find(all, text);
        if (found == all.end()) FAIL() << "no row \"" << Utf8(text) << "\" in " << Describe(list);
        rows.push_back(static_cast<int>(found - all.begin()));
    }
    SelectRows(list, rows);
}

int TreeCount(HWND tree) { return static_cast<int>(Send(tree, TVM_GETCOUNT)); }

void PostNotification(HWND control, WORD code) {
    PostMessageW(GetParent(control), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(control), code), ToLParam(control));
}

void EnterText(HWND control, const std::wstring& text) {
    Send(control, WM_SETTEXT, 0, ToLParam(text.c_str()));
    // An edit tells its dialog itself; a combo box does so for typed text only.
    if (IsCombo(control)) Notify(control, CBN_EDITCHANGE);
}

void Press(HWND button) {
    if (!IsWindowEnabled(button) || !IsWindowVisible(button))
        FAIL() << "this can't be pressed: " << Describe(button);
    PostMessageW(button, BM_CLICK, 0, 0);
}

void PostKey(HWND control, WORD virtualKey) {
    const auto scanCode = static_cast<LPARAM>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC)) << 16;
    PostMessageW(control, WM_KEYDOWN, virtualKey, 1 | scanCode);
    PostMessageW(control, WM_KEYUP, virtualKey, 0xC0000001 | scanCode);
}

void BringToFront(HWND window) {
    SetForegroundWindow(window);
    const HWND top = GetAncestor(window, GA_ROOT);
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == top; })) << Describe(window);
}

}  // namespace support
