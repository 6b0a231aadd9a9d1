// The program's own dialog on an empty registry: how it follows the screen's scale, and what it tells those
// who work it without mouse or sight.
#include <map>

#include "AccessibleName.h"
#include "HelpTopics.h"
#include "PluginDetails.h"
#include "ReviewDlg.h"
#include "SinglePropDlg.h"
#include "Version.h"
#include "res/gui/DialogFit.h"
#include "support/MainDialog.h"
#include "support/Surroundings.h"

namespace {

constexpr int kUsual = USER_DEFAULT_SCREEN_DPI;
constexpr int kLarger = 120;  // the dialog still fits the screen

std::vector<HWND> ControlsOf(HWND dialog) {
    std::vector<HWND> controls;
    for (HWND child = ::GetWindow(dialog, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT))
        controls.push_back(child);
    return controls;
}

Size SizeOf(const Rect& place) { return {place.Width(), place.Height()}; }

class MainDialog : public support::MainDialog {
  protected:
    void SetUp() override { Open(); }
    /// For a window that is about to get the size.
    Size SizeWantedAt(int dpi, Size pending) const {
        SIZE size{pending.width, pending.height};
        EXPECT_TRUE(
            m_dialog->Send(WM_GETDPISCALEDSIZE, static_cast<WPARAM>(dpi), reinterpret_cast<LPARAM>(&size)));
        return {static_cast<int>(size.cx), static_cast<int>(size.cy)};
    }
    /// What the system sends when the dialog comes to a screen of that scale.
    void ComeToScreenOf(int dpi, Size window) const {
        const RECT place{10, 20, 10 + window.width, 20 + window.height};
        m_dialog->Send(WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
        const CWindow list = Item(IDC_PLUGINS);
        EXPECT_EQ(list.ClientRect().Height() % list.SendInt(LB_GETITEMHEIGHT), 0) << "half a row";
    }
    Size MinimumSize() const {
        RECT tiny{0, 0, 1, 1};
        m_dialog->Send(WM_SIZING, WMSZ_BOTTOMRIGHT, reinterpret_cast<LPARAM>(&tiny));
        return SizeOf(FromSystem(tiny));
    }
    /// Of the tree: size of its icons, height of its rows.
    std::pair<Size, int> TreeRow() const {
        Size icon;
        const CWindow tree = Item(IDC_LAYOUT_TREE);
        const LRESULT icons = tree.Send(TVM_GETIMAGELIST, TVSIL_NORMAL);
        ::ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(icons), &icon.width, &icon.height);
        return {icon, tree.SendInt(TVM_GETITEMHEIGHT)};
    }
    /// Of the whole dialog: size, least size, rows of the tree; and the place of each control.
    auto State() const {
        std::map<int, Rect> places;
        for (const HWND control : ControlsOf(m_dialog->Handle()))
            places[::GetDlgCtrlID(control)] = CWindow(control).RectIn(m_dialog->Handle());
        return std::tuple(SizeOf(m_dialog->WindowRect()), MinimumSize(), TreeRow(), places);
    }
};

bool IsStop(HWND control) {
    constexpr LONG kStop = WS_VISIBLE | WS_TABSTOP;
    return (::GetWindowLongW(control, GWL_STYLE) & kStop) == kStop;
}

TEST_F(MainDialog, OnAScreenOfAnotherScaleEverythingIsAsIfMadeThere) {
    support::NeedUsualScreen();
    if (IsSkipped()) return;
    auto& layout = m_dialog->View<CLayoutTreeView>().Layout();
    layout.Append(nullptr, NewSeparator());  // the tree's images come with its first item
    layout.Clear();
    const auto before = State();
    const auto& [sizeBefore, minimumBefore, rowBefore, placesBefore] = before;
    const Size clientBefore = SizeOf(m_dialog->ClientRect());
    EXPECT_GT(SizeWantedAt(kLarger, {2000, 900}).width, 2300);
    const Size wanted = SizeWantedAt(kLarger, sizeBefore);
    ComeToScreenOf(kLarger, wanted);
    EXPECT_EQ(m_dialog->WindowRect(), (Rect{10, 20, 10 + wanted.width, 20 + wanted.height}));
    LOGFONTW face{};
    const auto font = reinterpret_cast<HFONT>(Item(IDC_CLOSE).Send(WM_GETFONT));
    ASSERT_TRUE(::GetObjectW(font, sizeof face, &face));
    EXPECT_EQ(face.lfHeight, -::MulDiv(8, kLarger, 72));
    const auto& [size, minimum, row, places] = State();
    EXPECT_GT(size.width, sizeBefore.width * 11 / 10);
    for (const auto& [id, place] : places) {
        const Rect expected = Scaled(placesBefore.at(id), clientBefore, SizeOf(m_dialog->ClientRect()));
        // Rounding may come in twice, and the message alone leaves the window's frame as it is; a combo box
        // has the height that its font asks for.
        EXPECT_NEAR(place.left, expected.left, 2) << id;
        EXPECT_NEAR(place.top, expected.top, 5) << id;
        EXPECT_NEAR(place.right, expected.right, 2) << id;
        EXPECT_TRUE(id == IDC_LAYOUTS || std::abs(place.bottom - expected.bottom) <= 5) << id;
    }
    EXPECT_EQ(rowBefore, std::pair(Size{19, 16}, 20));
    EXPECT_EQ(row, std::pair(Size{24, 20}, 24));
    EXPECT_EQ(minimum, wanted);
    ComeToScreenOf(kUsual, sizeBefore);
    EXPECT_EQ(State(), before) << "and back nothing has moved";

    // A child is told of no place; and its window has been at the usual scale all the time.
    ComeToScreenOf(kLarger, wanted);
    m_dialog->Send(WM_DPICHANGED_AFTERPARENT);
    EXPECT_EQ(State(), before);
}

TEST_F(MainDialog, OnAScreenTooSmallForItsScaleNothingIsCutOffOrCovered) {
    support::NeedUsualScreen();
    if (IsSkipped()) return;
    ComeToScreenOf(2 * kUsual, SizeWantedAt(2 * kUsual, SizeOf(m_dialog->WindowRect())));
    const Rect window = m_dialog->WindowRect();
    EXPECT_LE(window.right, ::GetSystemMetrics(SM_CXSCREEN));
    ::SetWindowPos(m_dialog->Handle(), nullptr, 0, 0, window.Width(), window.Height() * 2 / 3 + 20,
                   SWP_NOZORDER);
    EXPECT_EQ(res_test::PlacementFaults(*m_dialog, res_test::ControlsOf(*m_dialog)), "");
}

/// What a screen reader says of a control: its text or, where that is its content, the label before it.
std::wstring SpokenName(HWND control) {
    const std::wstring kind = support::ClassOf(control);
    if (kind != L"Edit" && kind != L"ListBox" && kind != L"ComboBox" && kind != L"SysListView32")
        return CWindow(control).Text();
    wchar_t cue[64] = {};
    if (kind == L"Edit" && CWindow(control).Send(EM_GETCUEBANNER, cue, 64)) return cue;
    HWND before = ::GetWindow(control, GW_HWNDPREV);
    while (before && !(::GetWindowLongW(before, GWL_STYLE) & WS_VISIBLE))
        before = ::GetWindow(before, GW_HWNDPREV);
    return support::ClassOf(before) == L"Static" ? CWindow(before).Text() : std::wstring();
}

bool HasPage(HWND window) { return HelpPageOf(::GetWindowContextHelpId(window)).has_value(); }

void ExpectNamesAndHelp(HWND dialog) {
    EXPECT_TRUE(HasPage(dialog)) << support::Describe(dialog);
    for (const HWND control : ControlsOf(dialog)) {
        EXPECT_TRUE(!IsStop(control) || !SpokenName(control).empty()) << ::GetDlgCtrlID(control);
    }
}

TEST_F(MainDialog, WhatTheKeyboardReachesHasANameAndHelp) {
    for (const Category category : {Category::DirectXEffects, Category::VstEffects}) {
        CPluginDetails(*m_dialog).ShowFieldsOf(category);
        ExpectNamesAndHelp(m_dialog->Handle());
    }
    EXPECT_EQ(Text(IDC_LAYOUT_TREE), L"Plug-in Menu Layout");
    SetAccessibleName(Control(IDC_LAYOUT_TREE), L"\u8A2D\u5B9A(&Y):");
    EXPECT_EQ(Text(IDC_LAYOUT_TREE), L"\u8A2D\u5B9A:") << "a mnemonic in brackets goes with them";
    for (const HWND control : ControlsOf(m_dialog->Handle())) {
        const int id = ::GetDlgCtrlID(control);
        const bool isText = (CWindow(control).Send(WM_GETDLGCODE) & DLGC_STATIC) != 0;
        const bool leadsToTheWindow = id == IDC_HELP_BUTTON || id == IDC_CLOSE;
        EXPECT_EQ(HasPage(control), !isText && !leadsToTheWindow) << id;
    }
    for (const UINT helpContext : {0U, 130U}) {
        std::wstring value;
        CSinglePropDlg prompt(IDS_FRIENDLY_NAME_TITLE, IDS_FRIENDLY_NAME_PROMPT, value, helpContext);
        ASSERT_TRUE(prompt.CreateModeless(m_dialog->Handle()));
        ExpectNamesAndHelp(prompt.Handle());
    }
    CReviewDlg review({L"caption", L"heading", L"button"}, {{L"column"}}, {});
    ASSERT_TRUE(review.CreateModeless(m_dialog->Handle()));
    ExpectNamesAndHelp(review.Handle());
    for (UINT id = IDD_ABOUT; id < 200; ++id) {
        CDialog dialog(id);
        const bool seenInUse = id == IDD_PLUGIN_MANAGER || id == IDD_SINGLE_PROP || id == IDD_REVIEW;
        if (!seenInUse && dialog.CreateModeless(m_dialog->Handle())) ExpectNamesAndHelp(dialog.Handle());
    }
}

TEST_F(MainDialog, TabGoesThroughThePanesInReadingOrder) {
    std::vector<int> order;
    HWND control = Control(IDC_CLOSE);
    do {
        control = ::GetNextDlgTabItem(m_dialog->Handle(), control, FALSE);
        order.push_back(::GetDlgCtrlID(control));
    } while (order.back() != IDC_CLOSE && order.size() < 100);
    EXPECT_EQ(std::ranges::count(order, IDC_SHOW_EXCLUDED), 0) << "the arrow keys go there, within its group";
    std::vector<std::ptrdiff_t> places;
    for (const int id : {IDC_CATEGORIES, IDC_FIND, IDC_PLUGINS, IDC_FILENAME, IDC_SHOW_ENABLED,
                         IDC_LAYOUT_NEW, IDC_LAYOUTS, IDC_LAYOUT_TREE, IDC_CLOSE})
        places.push_back(std::ranges::find(order, id) - order.begin());
    EXPECT_TRUE(std::ranges::is_sorted(places));
}

TEST_F(MainDialog, TheAboutBoxTellsTheVersionAndTheKeyboardOpensTheLicence) {
    if (!support::OnWine()) GTEST_SKIP() << "the editor that opens may be one that the user is working in";
    m_popups.Expect(std::wstring(kProductVersion), [](HWND about) {
        const auto line = support::TextOf(::GetDlgItem(about, IDC_ABOUT_VERSION));
        EXPECT_NE(line.find(kBuildDate), std::wstring::npos) << support::Utf8(line);
        support::PostKey(::GetDlgItem(about, IDOK), VK_TAB);
        support::PostKey(::GetDlgItem(about, IDC_ABOUT_LICENCE), VK_RETURN);
        const auto viewer = [about] {
            MSG message;  // only the dialog's own loop knows what Tab means
            while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                if (!::IsDialogMessageW(about, &message)) ::DispatchMessageW(&message);
            return ::FindWindowW(L"Notepad", nullptr);
        };
        EXPECT_TRUE(support::WaitFor(
            [&] { return viewer() && support::TextOf(viewer()).starts_with(L"PluginManager-LICENSE"); }));
        ::PostMessageW(viewer(), WM_CLOSE, 0, 0);
        EXPECT_TRUE(support::WaitFor([&] { return viewer() == nullptr; }));
        support::Press(::GetDlgItem(about, IDOK));
    });
    m_dialog->Send(WM_SYSCOMMAND, 0x10);
}

}  // namespace
