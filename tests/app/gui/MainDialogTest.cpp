// The program's own dialog on an empty registry: how it follows the screen's scale, and what it tells those
// who work it without mouse or sight.
#include <algorithm>
#include <gtest/gtest.h>
#include <map>

#include "DialogScale.h"
#include "PluginDetails.h"
#include "Resources.h"
#include "SinglePropDlg.h"
#include "support/MainDialog.h"

namespace {

using Places = std::map<int, Rect>;

constexpr int kUsual = USER_DEFAULT_SCREEN_DPI;
constexpr int kLarger = 120;  // the dialog still fits the screen

class MainDialog : public support::MainDialog {
  protected:
    void SetUp() override { Open(); }
    Places ControlPlaces() const {
        Places places;
        for (HWND child = ::GetWindow(m_dialog->Handle(), GW_CHILD); child;
             child = ::GetWindow(child, GW_HWNDNEXT))
            places[::GetDlgCtrlID(child)] = CWindow(child).RectIn(m_dialog->Handle());
        return places;
    }
    Size WindowSize() const { return {m_dialog->WindowRect().Width(), m_dialog->WindowRect().Height()}; }
    Size SizeWantedAt(int dpi) const {
        SIZE size{};
        EXPECT_TRUE(
            m_dialog->Send(WM_GETDPISCALEDSIZE, static_cast<WPARAM>(dpi), reinterpret_cast<LPARAM>(&size)));
        return {static_cast<int>(size.cx), static_cast<int>(size.cy)};
    }
    /// What the system sends when the dialog comes to a screen of that scale.
    void ComeToScreenOf(int dpi, Size window) const {
        const RECT place{10, 20, 10 + window.width, 20 + window.height};
        m_dialog->Send(WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
        EXPECT_EQ(m_dialog->WindowRect(), FromSystem(place));
    }
    Size MinimumSize() const {
        RECT tiny{0, 0, 1, 1};
        m_dialog->Send(WM_SIZING, WMSZ_BOTTOMRIGHT, reinterpret_cast<LPARAM>(&tiny));
        return {static_cast<int>(tiny.right), static_cast<int>(tiny.bottom)};
    }
    int TreeIconSize() const {
        int width = 0;
        int height = 0;
        const LRESULT icons = m_dialog->Item(IDC_LAYOUT_TREE).Send(TVM_GETIMAGELIST, TVSIL_NORMAL);
        ::ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(icons), &width, &height);
        return width;
    }
    static Size UnitsAt(int dpi) {
        CDialog dialog(IDD_PLUGIN_MANAGER);
        EXPECT_TRUE(dialog.CreateModeless(nullptr));
        CDialogScale scale;
        scale.Attach(dialog.Handle());
        scale.ChangeTo(static_cast<UINT>(dpi));
        return scale.Units();
    }
};

TEST_F(MainDialog, OnAScreenOfAnotherScaleEverythingIsAsIfMadeThere) {
    const Places before = ControlPlaces();
    const Size sizeBefore = WindowSize();
    const Size units = UnitsAt(kUsual);
    const int iconsBefore = TreeIconSize();
    const Size wanted = SizeWantedAt(kLarger);
    // The message alone leaves the window's frame as it is.
    const Size frame = FrameSize(m_dialog->Handle(), kUsual);
    const Size largerFrame = FrameSize(m_dialog->Handle(), kLarger);
    ComeToScreenOf(kLarger, {wanted.width - largerFrame.width + frame.width,
                             wanted.height - largerFrame.height + frame.height});

    // The larger font is not exactly wider by the scale; its own units are what counts.
    LOGFONTW face{};
    const auto font = reinterpret_cast<HFONT>(m_dialog->Item(IDC_CLOSE).Send(WM_GETFONT));
    ASSERT_TRUE(::GetObjectW(font, sizeof face, &face));
    EXPECT_EQ(face.lfHeight, -::MulDiv(8, kLarger, 72));
    const Size larger = UnitsAt(kLarger);
    for (const auto& [id, place] : ControlPlaces()) {
        const Rect expected = Scaled(before.at(id), units, larger);
        // Where a control ends with the client area, rounding may come in twice; and a combo
        // box has the height that its font asks for.
        EXPECT_NEAR(place.left, expected.left, 1) << id;
        EXPECT_NEAR(place.top, expected.top, 1) << id;
        EXPECT_NEAR(place.right, expected.right, 2) << id;
        if (id != IDC_LAYOUTS) {
            EXPECT_NEAR(place.bottom, expected.bottom, 2) << id;
        }
    }
    EXPECT_EQ(TreeIconSize(), iconsBefore * kLarger / kUsual);
    EXPECT_EQ(MinimumSize(), wanted);

    ComeToScreenOf(kUsual, sizeBefore);
    EXPECT_EQ(ControlPlaces(), before) << "and back nothing has moved";
    EXPECT_EQ(MinimumSize(), sizeBefore);
    EXPECT_EQ(TreeIconSize(), iconsBefore);
}

TEST_F(MainDialog, AsAChildItTakesItsParentsScaleWithoutBeingGivenAPlace) {
    const Size sizeBefore = WindowSize();
    const int iconsBefore = TreeIconSize();
    const Rect buttonBefore = m_dialog->Item(IDC_EXCLUDE).WindowRect();
    ComeToScreenOf(kLarger, SizeWantedAt(kLarger));
    ASSERT_NE(TreeIconSize(), iconsBefore);
    // The window itself has been at the usual scale all the time, and that is what is asked for now.
    m_dialog->Send(WM_DPICHANGED_AFTERPARENT);
    EXPECT_EQ(TreeIconSize(), iconsBefore);
    EXPECT_EQ(MinimumSize(), sizeBefore);
    EXPECT_EQ(m_dialog->Item(IDC_EXCLUDE).WindowRect().Width(), buttonBefore.Width());
    EXPECT_EQ(WindowSize(), sizeBefore);
}

bool IsShown(HWND control) { return (::GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) != 0; }

/// What a screen reader says of a control: its own text or, where that is its content, the label before it.
std::wstring SpokenName(HWND control) {
    const std::wstring kind = support::ClassOf(control);
    if (kind != L"Edit" && kind != L"ListBox" && kind != L"ComboBox") return CWindow(control).Text();
    HWND before = ::GetWindow(control, GW_HWNDPREV);
    while (before && !IsShown(before)) before = ::GetWindow(before, GW_HWNDPREV);
    return support::ClassOf(before) == L"Static" ? CWindow(before).Text() : std::wstring();
}

void ExpectNames(HWND dialog) {
    int stops = 0;
    for (HWND control = ::GetWindow(dialog, GW_CHILD); control; control = ::GetWindow(control, GW_HWNDNEXT)) {
        if (!IsShown(control) || (::GetWindowLongPtrW(control, GWL_STYLE) & WS_TABSTOP) == 0) continue;
        ++stops;
        EXPECT_NE(SpokenName(control), L"") << ::GetDlgCtrlID(control) << "\n" << support::Describe(dialog);
    }
    EXPECT_GT(stops, 0);
}

TEST_F(MainDialog, EveryControlThatTheKeyboardReachesHasAName) {
    for (const Category category : {Category::DirectXEffects, Category::VstEffects}) {
        CPluginDetails(*m_dialog).ShowFieldsOf(category);
        ExpectNames(m_dialog->Handle());
    }
    EXPECT_EQ(m_dialog->Item(IDC_LAYOUT_TREE).Text(), L"Plug-in Menu Layout");
    for (const int id :
         {IDD_ABOUT, IDD_TREE_ITEM_PROPERTIES, IDD_MANAGE_PRESETS, IDD_PRESET_FILE, IDD_LAYOUT_NAME}) {
        CDialog dialog(static_cast<UINT>(id));
        ASSERT_TRUE(dialog.CreateModeless(m_dialog->Handle())) << id;
        ExpectNames(dialog.Handle());
    }
    std::wstring value;
    CSinglePropDlg prompt(IDS_FRIENDLY_NAME_TITLE, IDS_FRIENDLY_NAME_PROMPT, value);
    ASSERT_TRUE(prompt.CreateModeless(m_dialog->Handle()));
    ExpectNames(prompt.Handle());
}

TEST_F(MainDialog, TabGoesThroughThePanesInReadingOrder) {
    std::vector<int> order;
    HWND control = nullptr;
    do {
        control = ::GetNextDlgTabItem(m_dialog->Handle(), control, FALSE);
        order.push_back(::GetDlgCtrlID(control));
    } while (order.size() < 100 && (order.size() == 1 || order.back() != order.front()));
    order.pop_back();
    const auto at = [&](int id) { return std::ranges::find(order, id) - order.begin(); };
    EXPECT_EQ(order.front(), IDC_CATEGORIES);
    EXPECT_EQ(at(IDC_PLUGINS), 1);
    EXPECT_LT(at(IDC_FILENAME), at(IDC_SHOW_ENABLED));
    EXPECT_LT(at(IDC_SHOW_ENABLED), at(IDC_LAYOUT_NEW));
    EXPECT_EQ(at(IDC_LAYOUT_TREE), at(IDC_LAYOUTS) + 1);
    EXPECT_EQ(order.back(), IDC_CLOSE);
    EXPECT_EQ(at(IDC_SHOW_EXCLUDED), std::ssize(order)) << "the arrow keys go there, within the group";
}

}  // namespace
