// What the main dialog tells a mouse that rests on it, by the messages that its loop would see.
#include "support/MainDialog.h"

namespace {

const std::wstring kLong(200, L'm');

class Tips : public support::MainDialog {
  protected:
    void SetUp() override {
        Open();
        Show();
        m_list.emplace(Control(IDC_PLUGINS));
        m_list->Clear();
        for (const auto& row : {std::wstring(L"a, short"), L"b" + kLong, L"c" + kLong}) m_list->Add(row);
    }
    void Post(HWND window, UINT message, POINT client = {}) {
        MSG posted{window, message, 0, MAKELPARAM(client.x, client.y), 0, {}};
        m_dialog->Translate(posted);
    }
    std::wstring RestOn(HWND window, POINT client) {
        Post(window, WM_MOUSEMOVE, client);
        Post(window, WM_MOUSEHOVER, client);
        return Shown();
    }
    POINT Row(int row) const { return {5, row * m_list->SendInt(LB_GETITEMHEIGHT) + 3}; }
    std::wstring RestOnRow(int row) { return RestOn(m_list->Handle(), Row(row)); }
    /// Of the texts that tips hold: that for one control or, without one, that which is shown whole.
    std::wstring TipText(HWND control) const {
        std::wstring text(300, L'\0');
        TTTOOLINFOW tool{};
        tool.cbSize = sizeof tool;
        tool.hwnd = m_dialog->Handle();
        tool.uId = reinterpret_cast<UINT_PTR>(control);
        tool.lpszText = text.data();
        for (HWND tip = nullptr;
             (tip = ::FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr)) != nullptr;) {
            const bool ours = ::GetWindow(tip, GW_OWNER) == m_dialog->Handle();
            if (ours && (control || ::IsWindowVisible(tip)))
                ::SendMessageW(tip, TTM_GETTEXTW, text.size(), reinterpret_cast<LPARAM>(&tool));
        }
        return text.c_str();
    }
    std::wstring Shown() const { return TipText(nullptr); }

    std::optional<CListBox> m_list;
};

TEST_F(Tips, OnlyRowsThatAreCutOffAreShownWholeWhileTheMouseIsOnThem) {
    EXPECT_EQ(RestOnRow(0), L"");
    EXPECT_EQ(RestOnRow(1), L"b" + kLong);
    EXPECT_EQ(RestOnRow(2), L"c" + kLong);
    EXPECT_EQ(RestOnRow(3), L"") << "below the last row";
    EXPECT_NE(RestOnRow(1), L"");
    Post(m_list->Handle(), WM_MOUSELEAVE);
    EXPECT_EQ(Shown(), L"");
}

TEST_F(Tips, FieldsThatCannotBeEditedAndLabelsThatEndInDotsAreShownWhole) {
    const auto restOn = [this](HWND control) {
        CWindow(control).SetText(kLong);
        // Labels let the mouse through to the dialog.
        const Rect place = CWindow(control).RectIn(m_dialog->Handle());
        return support::ClassOf(control) == L"Static"
                   ? RestOn(m_dialog->Handle(), {place.left + 3, place.top + 3})
                   : RestOn(control, {3, 3});
    };
    for (const int id : {IDC_FILENAME, IDC_LAYOUT_FILE}) EXPECT_EQ(restOn(Control(id)), kLong) << id;
    for (const int id : {IDC_LAYOUT_LABEL, IDC_EXCLUDE}) EXPECT_EQ(restOn(Control(id)), L"") << id;
    EXPECT_EQ(restOn(::GetWindow(Control(IDC_LAYOUTS), GW_CHILD)), L"") << "a field for writing";
    EXPECT_EQ(TipText(Control(IDC_LAYOUT_SAVE)), Text(IDC_LAYOUT_SAVE)) << "a picture tells its name";
}

}  // namespace
