// The list to tick, on a dialog of its own.
#include <gtest/gtest.h>

#include "support/ReviewRows.h"

namespace {

using Rows = std::vector<std::size_t>;

class ReviewDlg : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(m_dialog.CreateModeless(nullptr));
        m_dialog.Show();
        m_list = m_dialog.Item(IDC_REVIEW_LIST);
    }
    /// The first column of each row, and the button with a mark where it can be pressed.
    std::wstring Shown() const {
        return support::ReviewText(m_dialog.Handle(), {0}) + (m_dialog.Item(IDOK).IsEnabled() ? L"!" : L"");
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
        MSG key{m_list.Handle(), WM_KEYDOWN, L'A', 0, 0, {}};
        m_list.Focus();
        m_dialog.Translate(key);
        ::SetKeyboardState(std::array<BYTE, 256>{}.data());
    }

    int m_runs = 0;
    CReviewDlg m_dialog{
        {L"Backups", L"What to restore:", L"Restore %d"},
        {{L"When"}, {L"Size", ReviewOrder::ByKeyRight}},
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
    EXPECT_EQ(Shown(), L"[ ]a,\n[x]b,\n[ ]c,\nd,\nRestore 1!") << "by the first column";
    SortBy(0);
    EXPECT_EQ(Shown(), L"d,\n[ ]c,\n[x]b,\n[ ]a,\nRestore 1!") << "the other way round";
    SortBy(1);
    EXPECT_EQ(Shown(), L"[x]b,\n[ ]c,\nd,\n[ ]a,\nRestore 1!")
        << "by number, and what is alike as it was given";
    Tick(2, 2);  // as Space does, on a row without a box
    Tick(3, 2);
    EXPECT_EQ(m_dialog.Checked(), (Rows{0, 1}));
    Tick(0, 1);
    Tick(3, 1);
    EXPECT_EQ(Shown(), L"[ ]b,\n[ ]c,\nd,\n[ ]a,\nRestore 0");
    m_dialog.Send(WM_COMMAND, IDOK);
    ASSERT_TRUE(m_dialog.IsLive()) << "Enter, with nothing ticked";
    CtrlA();
    EXPECT_EQ(Shown(), L"[x]b,\n[x]c,\nd,\n[x]a,\nRestore 3!");
    CtrlA();
    EXPECT_EQ(m_dialog.Checked(), Rows{});
}

TEST_F(ReviewDlg, ItsOtherButtonsKeepItOpen) {
    EXPECT_EQ(m_dialog.Current(), std::optional<std::size_t>(1)) << "the first row shown";
    m_dialog.Item(IDC_REVIEW_ACTION).Send(BM_CLICK);
    EXPECT_EQ(m_runs, 1);
    m_dialog.Item(IDC_REVIEW_ACTION_2).Send(BM_CLICK);
    EXPECT_EQ(Shown(), L"[ ]x,\nRestore 0");
    EXPECT_FALSE(m_dialog.Item(IDC_REVIEW_ACTION_2).IsEnabled());
    EXPECT_TRUE(m_dialog.Item(IDC_REVIEW_ACTION).IsEnabled());
    m_dialog.SetRows({{{{L"x"}, {L""}}}, {{{L"y"}, {L""}}, true, false}});
    Tick(1, 1);
    CtrlA();
    EXPECT_EQ(Shown(), L"[x]x,\n[x]y,\nRestore 2!");
    CtrlA();
    EXPECT_EQ(Shown(), L"[ ]x,\n[x]y,\nRestore 1!") << "what can't be ticked or unticked stays so";
}

TEST_F(ReviewDlg, ColumnsGetWhatTheirTextsWantOfTheRoomThatThereIs) {
    const std::wstring text(80, L'W');
    CReviewDlg wide{{L"", L"", L""}, {{L"a"}, {L"b"}}, {{{{text}, {L"9"}}}}};
    ASSERT_TRUE(wide.CreateModeless(nullptr));
    const CWindow list = wide.Item(IDC_REVIEW_LIST);
    const int wanted = list.SendInt(LVM_GETSTRINGWIDTH, 0, text.c_str());
    const auto fits = [&] { return list.SendInt(LVM_GETCOLUMNWIDTH, 0) > wanted; };
    EXPECT_TRUE(fits()) << "it opens wider";
    for (const int width : {wanted, wanted + 300}) {
        ::SetWindowPos(wide.Handle(), nullptr, 0, 0, width, 400, SWP_NOMOVE | SWP_NOZORDER);
        EXPECT_EQ(fits(), width > wanted);
        EXPECT_LE(list.SendInt(LVM_GETCOLUMNWIDTH, 0) + list.SendInt(LVM_GETCOLUMNWIDTH, 1),
                  list.ClientRect().Width());
    }
}

}  // namespace
