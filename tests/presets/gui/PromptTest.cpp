#include <gtest/gtest.h>

#include "SinglePropDlg.h"
#include "resource.h"
#include "support/WindowActions.h"

namespace {

using support::Press;

/// Runs the prompt; `act` comes in a message of its own, as soon as the prompt is open.
template <typename TAct>
INT_PTR RunPrompt(CSinglePropDlg& prompt, TAct act) {
    static std::function<void()> work;
    static HWND opened;
    work = [&] { act(opened); };
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR id, DWORD) {
        opened = ::FindWindowW(nullptr, L"Set Plug-in Friendly Name");
        if (!opened) return;
        ::KillTimer(nullptr, id);
        work();
    });
    const INT_PTR result = prompt.RunModal(nullptr);
    ::KillTimer(nullptr, timer);
    return result;
}

TEST(Prompt, WritesBackOnOkOnly) {
    std::wstring value = L"Old name";
    const auto answer = [&value](const std::wstring& text, int button) {
        CSinglePropDlg prompt(IDS_FRIENDLY_NAME_TITLE, IDS_FRIENDLY_NAME_PROMPT, value);
        return RunPrompt(prompt, [&](HWND dialog) {
            support::EnterText(::GetDlgItem(dialog, IDC_PROMPT_VALUE), text);
            Press(::GetDlgItem(dialog, button));
        });
    };
    EXPECT_EQ(answer(L"Never mind", IDCANCEL), IDCANCEL);
    EXPECT_EQ(value, L"Old name");
    EXPECT_EQ(answer(L"New name", IDOK), IDOK);
    EXPECT_EQ(value, L"New name");
}

TEST(Prompt, EverythingFitsHoweverLongTheTextsAre) {
    for (const std::size_t length : {0U, 8U, 60U, 2000U}) {
        std::wstring value(length, L'W');
        CSinglePropDlg prompt(L"Set Plug-in Friendly Name", L"A label that is rather long: ", value);
        RunPrompt(prompt, [&](HWND dialog) {
            int left = 0;
            for (const int id : {IDC_PROMPT_LABEL, IDC_PROMPT_VALUE, IDOK, IDCANCEL}) {
                const Rect place = prompt.Item(id).RectIn(dialog);
                EXPECT_GE(place.left, left) << id << " overlaps, with " << length;
                EXPECT_GT(place.Width(), 20) << id << " with " << length;
                left = place.right;
            }
            EXPECT_LE(left, prompt.ClientRect().right) << length;
            EXPECT_LE(prompt.WindowRect().Width(), ::GetSystemMetrics(SM_CXSCREEN)) << length;
            EXPECT_EQ(support::TextOf(::GetDlgItem(dialog, IDC_PROMPT_VALUE)), value);
            Press(::GetDlgItem(dialog, IDCANCEL));
        });
    }
}

}  // namespace
