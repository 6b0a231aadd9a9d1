// How far long work is, and its end by Escape.
#include <gtest/gtest.h>

#include "LongWork.h"
#include "ReviewDlg.h"
#include "resource.h"
#include "support/WindowActions.h"

namespace {

TEST(LongWork, TellsHowFarItIsUntilEscape) {
    CReviewDlg dialog({L"Backups", L"As before", L"%d"}, {{L"When", 100}}, {});
    ASSERT_TRUE(dialog.CreateModeless(nullptr));
    const CWindow caption = dialog.Item(IDC_REVIEW_HEADING);
    {
        CLongWork work(dialog, IDC_REVIEW_HEADING, IDS_EXPORTING, 12'345);
        EXPECT_TRUE(work.Next());
        EXPECT_EQ(caption.Text(), L"As before") << "nothing flickers for a moment's work";
        const ULONGLONG end = ::GetTickCount64() + 10'000;
        while (work.Next() && caption.Text() == L"As before" && ::GetTickCount64() < end) continue;
        EXPECT_TRUE(caption.Text().starts_with(L"Exporting ") && caption.Text().ends_with(L" of 12,345"))
            << support::Utf8(caption.Text());
        // Behind another key, and more than once, as a key that is held down.
        for (const WORD key : {WORD{VK_F5}, WORD{VK_ESCAPE}, WORD{VK_ESCAPE}})
            ::PostMessageW(dialog.Handle(), WM_KEYDOWN, key, 0);
        ::PostMessageW(dialog.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, 0);
        while (work.Next() && ::GetTickCount64() < end) continue;
        EXPECT_FALSE(work.Next());
    }
    EXPECT_EQ(caption.Text(), L"As before");
    MSG left;
    EXPECT_FALSE(::PeekMessageW(&left, dialog.Handle(), WM_KEYFIRST, WM_MOUSELAST, PM_REMOVE));
}

}  // namespace
