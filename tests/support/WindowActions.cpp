#include "support/WindowActions.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>

#include "support/WaitFor.h"

namespace support {
namespace {

/// Room for the longest row of any test.
constexpr std::size_t kLongestRow = 4096;

bool IsCombo(HWND list) { return ClassOf(list) == L"ComboBox"; }

LPARAM ToLParam(const void* pointer) { return reinterpret_cast<LPARAM>(pointer); }

void Notify(HWND control, WORD code) {
    Send(GetParent(control), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(control), code), ToLParam(control));
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
    std::wstring text = TextOf(window);
    for (HWND label = nullptr; (label = FindWindowExW(window, label, L"Static", nullptr)) != nullptr;)
        text += L'\n' + TextOf(label);
    return Utf8(text);
}

std::string Utf8(const std::wstring& text) {
    const auto bytes = std::filesystem::path(text).u8string();  // a path knows how to
    return {bytes.begin(), bytes.end()};
}

std::vector<std::wstring> Rows(HWND list) {
    const bool combo = IsCombo(list);
    std::vector<std::wstring> rows(static_cast<std::size_t>(Send(list, combo ? CB_GETCOUNT : LB_GETCOUNT)));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i].resize(kLongestRow);
        const LRESULT got = Send(list, combo ? CB_GETLBTEXT : LB_GETTEXT, i, ToLParam(rows[i].data()));
        // Another process's list may be filled anew meanwhile: then it counts as empty, and the test looks
        // again.
        if (got < 0) return {};
        rows[i].resize(static_cast<std::size_t>(got));
    }
    return rows;
}

std::vector<int> SelectedRows(HWND list) {
    if (IsCombo(list)) {
        const auto row = static_cast<int>(Send(list, CB_GETCURSEL));
        return row < 0 ? std::vector<int>() : std::vector{row};
    }
    std::vector<int> rows;
    for (int row = 0; row < Send(list, LB_GETCOUNT); ++row)
        if (Send(list, LB_GETSEL, static_cast<WPARAM>(row)) > 0) rows.push_back(row);
    return rows;
}

void SelectRows(HWND list, const std::vector<int>& rows) {
    const bool combo = IsCombo(list);
    if (!combo && (GetWindowLongW(list, GWL_STYLE) & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0) {
        Send(list, LB_SETSEL, FALSE, -1);
        for (const int row : rows) Send(list, LB_SETSEL, TRUE, row);
    } else {
        Send(list, combo ? CB_SETCURSEL : LB_SETCURSEL, static_cast<WPARAM>(rows.empty() ? -1 : rows.back()));
    }
    static_assert(LBN_SELCHANGE == CBN_SELCHANGE);
    Notify(list, LBN_SELCHANGE);
}

void Select(HWND list, const std::vector<std::wstring>& texts) {
    const auto all = Rows(list);
    std::vector<int> rows;
    for (const auto& text : texts) {
        const auto found = std::ranges::find(all, text);
        if (found == all.end()) FAIL() << "no row " << Utf8(text);
        rows.push_back(static_cast<int>(found - all.begin()));
    }
    SelectRows(list, rows);
}

void EnterText(HWND control, const std::wstring& text) {
    Send(control, WM_SETTEXT, 0, ToLParam(text.c_str()));
    // An edit tells its dialog itself; a combo box does so for typed text only.
    if (IsCombo(control)) Notify(control, CBN_EDITCHANGE);
}

void Press(HWND button) {
    ASSERT_TRUE(IsWindowEnabled(button) && IsWindowVisible(button)) << GetDlgCtrlID(button);
    PostMessageW(button, BM_CLICK, 0, 0);
}

void PostKey(HWND control, WORD virtualKey) {
    const auto scanCode = static_cast<LPARAM>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC)) << 16;
    PostMessageW(control, WM_KEYDOWN, virtualKey, 1 | scanCode);
    PostMessageW(control, WM_KEYUP, virtualKey, 0xC0000001 | scanCode);
}

}  // namespace support
