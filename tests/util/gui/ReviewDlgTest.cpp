// The list to tick, on a dialog of its own.
#include <array>
#include <gtest/gtest.h>

#include "ReviewDlg.h"
#include "resource.h"
#include "support/WindowActions.h"

namespace {

using Rows = std::vector<std::size_t>;

class ReviewDlg : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(m_dialog.CreateModeless(nullptr));
        m_dialog.Show();
        m_list = m_dialog.Item(IDC_REVIEW_LIST);
    }
    /// The first column of each row, a plus before the ticked ones and a minus before those without a box,
    /// and the button.
    std::wstring Shown() const {
        std::wstring shown;
        for (int i = 0; i < m_list.SendInt(LVM_GETITEMCOUNT); ++i) {
            std::array<wchar_t, 32> text{};
            LVITEMW item{};
            item.pszText = text.data();
            item.cchTextMax = 32;
            m_list.Send(LVM_GETITEMTEXTW, i, &item);
            const auto state = m_list.Send(LVM_GETITEMSTATE, i, LVIS_STATEIMAGEMASK);
            shown += (state == INDEXTOSTATEIMAGEMASK(2) ? L"+"
                      : state == 0                      ? L"-"
                                                        : L"") +
                     std::wstring(text.data()) + L",";
        }
        return shown + m_dialog.Item(IDOK).Text() + (m_dialog.Item(IDOK).IsEnabled() ? L"!" : L"");
    }
    void SortBy(int column) const {
        NMLISTVIEW click{};
        click.hdr = {m_list.Handle(), IDC_REVIEW_LIST, static_cast<UINT>(LVN_COLUMNCLICK)};
        click.iSubItem = column;
        m_dialog.Send(WM_NOTIFY, IDC_REVIEW_LIST, &click);
    }
    void Tick(int item, UINT image) const {
        LVITEMW state{};
        state.state = INDEXTOSTATEIMAGEMASK(image);
        state.stateMask = LVIS_STATEIMAGEMASK;
        m_list.Send(LVM_SETITEMSTATE, item, &state);
    }
    void CtrlA() {
        std::array<BYTE, 256> keys{};
        keys[VK_CONTROL] = 0x80;
        ::SetKeyboardState(keys.data());
        MSG key{};
        key.hwnd = m_list.Handle();
        key.message = WM_KEYDOWN;
        key.wParam = L'A';
        m_list.Focus();
        m_dialog.Translate(key);
        ::SetKeyboardState(std::array<BYTE, 256>{}.data());
    }

    int m_runs = 0;
    CReviewDlg m_dialog{
        {L"Backups", L"What to restore:", L"Restore %d"},
        {{L"When", 100}, {L"Size", 50, ReviewOrder::ByKeyRight}},
        {{{{L"b"}, {L"9", 9}}, true},
         {{{L"a"}, {L"10", 10}}},
         {{{L"c"}, {L"9", 9}}},
         {{{L"d"}, {L"9", 9}}, false, false}},
        {{L"Open", [this](CReviewDlg&) { ++m_runs; }, false}, {L"Delete", [](CReviewDlg& dialog) {
                                                                   dialog.SetRows({{{{L"x"}, {L"", 0}}}});
                                                               }}}};
    CWindow m_list;
};

TEST_F(ReviewDlg, TicksAndSortsAndCounts) {
    EXPECT_EQ(Shown(), L"a,+b,c,-d,Restore 1!") << "by the first column";
    SortBy(0);
    EXPECT_EQ(Shown(), L"-d,c,+b,a,Restore 1!") << "the other way round";
    SortBy(1);
    EXPECT_EQ(Shown(), L"+b,c,-d,a,Restore 1!") << "by number, and what is alike as it was given";
    Tick(2, 2);  // as Space does, on a row without a box
    Tick(3, 2);
    EXPECT_EQ(m_dialog.Checked(), (Rows{0, 1}));
    Tick(0, 1);
    Tick(3, 1);
    EXPECT_EQ(Shown(), L"b,c,-d,a,Restore 0");
    m_dialog.Send(WM_COMMAND, IDOK);
    ASSERT_TRUE(m_dialog.IsLive()) << "Enter, with nothing ticked";
    CtrlA();
    EXPECT_EQ(Shown(), L"+b,+c,-d,+a,Restore 3!");
    CtrlA();
    EXPECT_EQ(m_dialog.Checked(), Rows{});
}

TEST_F(ReviewDlg, ItsOtherButtonsKeepItOpen) {
    EXPECT_EQ(m_dialog.Current(), std::optional<std::size_t>(1)) << "the first row shown";
    m_dialog.Item(IDC_REVIEW_ACTION).Send(BM_CLICK);
    EXPECT_EQ(m_runs, 1);
    m_dialog.Item(IDC_REVIEW_ACTION_2).Send(BM_CLICK);
    EXPECT_EQ(Shown(), L"x,Restore 0");
    EXPECT_FALSE(m_dialog.Item(IDC_REVIEW_ACTION_2).IsEnabled());
    EXPECT_TRUE(m_dialog.Item(IDC_REVIEW_ACTION).IsEnabled());
}

}  // namespace
