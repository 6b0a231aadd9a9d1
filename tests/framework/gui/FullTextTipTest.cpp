// Tips over controls of a dialog that is on the screen, by the messages that its loop would see.
#include <gtest/gtest.h>

#include "Dialog.h"
#include "resource.h"
#include "support/WindowActions.h"

namespace {

const std::wstring kLong(200, L'm');

class FullTextTip : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(m_dialog.CreateModeless(nullptr));
        ::ShowWindow(m_dialog.Handle(), SW_SHOWNOACTIVATE);
        for (const auto& row : {std::wstring(L"a, short"), L"b" + kLong, L"c" + kLong})
            m_dialog.Control<CListBox>(IDC_PLUGINS).Add(row);
    }
    void Post(HWND window, UINT message, POINT client = {}) {
        m_tip.Relay(m_dialog.Handle(), {window, message, 0, MAKELPARAM(client.x, client.y), 0, {}});
    }
    void RestOn(HWND window, POINT client) {
        Post(window, WM_MOUSEMOVE, client);
        Post(window, WM_MOUSEHOVER, client);
    }
    void RestOnRow(int row) {
        const auto list = m_dialog.Control<CListBox>(IDC_PLUGINS);
        RestOn(list.Handle(), {5, row * list.SendInt(LB_GETITEMHEIGHT) + 3});
    }
    /// The tip's window while it is shown, else null.
    HWND Tip() const {
        HWND tip = nullptr;
        while ((tip = ::FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr)) != nullptr) {
            if (::GetWindow(tip, GW_OWNER) == m_dialog.Handle() && ::IsWindowVisible(tip)) return tip;
        }
        return nullptr;
    }
    std::wstring Shown() const {
        if (!Tip()) return {};
        std::wstring text(300, L'\0');
        TTTOOLINFOW tool{};
        tool.cbSize = sizeof tool;
        tool.hwnd = m_dialog.Handle();
        tool.lpszText = text.data();
        ::SendMessageW(Tip(), TTM_GETTEXTW, text.size(), reinterpret_cast<LPARAM>(&tool));
        return text.c_str();
    }

    CDialog m_dialog{IDD_PLUGIN_MANAGER};
    CFullTextTip m_tip;
};

TEST_F(FullTextTip, ShowsOnlyRowsThatAreCutOffAndFollowsTheMouse) {
    RestOnRow(0);
    EXPECT_EQ(Shown(), L"");
    RestOnRow(1);
    EXPECT_EQ(Shown(), L"b" + kLong);
    Post(m_dialog.Item(IDC_PLUGINS).Handle(), WM_MOUSEMOVE,
         {50, m_dialog.Item(IDC_PLUGINS).SendInt(LB_GETITEMHEIGHT) + 3});
    EXPECT_EQ(Shown(), L"b" + kLong) << "within the row it stays";
    RestOnRow(2);
    EXPECT_EQ(Shown(), L"c" + kLong);
    RestOnRow(3);
    EXPECT_EQ(Shown(), L"") << "below the last row";
}

TEST_F(FullTextTip, AnyActionHidesIt) {
    const HWND list = m_dialog.Item(IDC_PLUGINS).Handle();
    for (const int action : {WM_KEYDOWN, WM_LBUTTONDOWN, WM_MOUSEWHEEL, WM_MOUSELEAVE}) {
        RestOnRow(1);
        EXPECT_NE(Shown(), L"");
        Post(list, static_cast<UINT>(action));
        EXPECT_EQ(Shown(), L"") << action;
        Post(list, WM_MOUSEHOVER);
        EXPECT_EQ(Shown(), L"") << "a rest that was waited for before " << action;
    }
}

TEST_F(FullTextTip, KnowsFieldsThatCannotBeEditedAndLabelsThatEndInDots) {
    const auto restOn = [this](int id) {
        const CWindow control = m_dialog.Item(id);
        control.SetText(kLong);
        // Labels let the mouse through to the dialog.
        const Rect place = control.RectIn(m_dialog.Handle());
        const bool label = support::ClassOf(control.Handle()) == L"Static";
        label ? RestOn(m_dialog.Handle(), {place.left + 3, place.top + 3}) : RestOn(control.Handle(), {3, 3});
        return Shown();
    };
    EXPECT_EQ(restOn(IDC_FILENAME), kLong);
    EXPECT_EQ(restOn(IDC_LAYOUT_FILE), kLong);
    EXPECT_EQ(restOn(IDC_LAYOUT_LABEL), L"") << "is not made to be cut off";
    EXPECT_EQ(restOn(IDC_EXCLUDE), L"");
    RestOn(::GetWindow(m_dialog.Item(IDC_LAYOUTS).Handle(), GW_CHILD), {3, 3});
    EXPECT_EQ(Shown(), L"") << "a field for writing";
}

}  // namespace
