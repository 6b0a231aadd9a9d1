// The layout tree of the main dialog, worked by the mouse.
#include <cstdlib>

#include "layouts/LayoutTreeDialog.h"

namespace {

constexpr POINT kUpper{0, -5};  // half of an item
constexpr POINT kLower{0, 5};

class LayoutMouse : public support::LayoutTreeDialog {
  protected:
    void SetUp() override { Open(); }
    /// So far from the middle of another; the button is still held then.
    void Drag(Line from, Line to, POINT by) {
        const POINT end = PlaceOf(to);
        Pull(PlaceOf(from), {20, 0});
        m_end = DragTo({end.x + by.x, end.y + by.y});
    }
    void Drop() { m_dialog->Send(WM_LBUTTONUP, 0, m_end); }
    /// Whether the mark that shows where the items would land is at this one.
    bool IsMarked(Line name) { return Drawn(name).second == CDRF_NOTIFYPOSTPAINT; }

    LPARAM m_end = 0;
};

TEST_F(LayoutMouse, ClickingSelectsAsInAList) {
    Build(L"a,*b,F(c,e),d");
    for (const auto& [item, keys, after] : Table<Line, WPARAM, Line>{
             {L"d", MK_SHIFT, L"a,+b,+F(+c,+e),*d"},
             {L"a", MK_SHIFT, L"*a,+b,F(c,e),d"},  // from the same anchor
             {L"d", MK_CONTROL, L"+a,+b,F(c,e),*d"},
             {L"d", MK_CONTROL, L"*a,+b,F(c,e),d"},  // the first of those that are left
             {L"a", MK_CONTROL, L"a,*b,F(c,e),d"},
             {L"b", MK_CONTROL, L"a,b,F(c,e),d"},
             {L"d", 0, L"a,b,F(c,e),*d"},
             {L"e", MK_SHIFT, L"a,b,F(c,*e),+d"},
             {L"c", 0, L"a,b,F(*c,e),d"},  // forgets the anchor
             {L"e", MK_SHIFT, L"a,b,F(+c,*e),d"},
             {L"", 0, L"a,b,F(c,^e),d"},  // and so does a click on no item
             {L"F", MK_SHIFT, L"a,b,*F(+c,+e),d"},
             {L"a", 0, L"*a,b,F(c,e),d"},
         }) {
        ClickOn(item, keys);
        EXPECT_EQ(Shape(), after) << support::Utf8(item);
    }
    for (const auto& [before, item, keys, after] : Table<Line, Line, WPARAM, Line>{
             {L"a,^b", L"b", 0, L"a,*b"}, {L"+a,^b", L"a", MK_CONTROL, L"^a,b"}}) {
        Build(before);
        ClickOn(item, keys);
        EXPECT_EQ(Shape(), after) << support::Utf8(before);
    }
    PostMouse(WM_LBUTTONDBLCLK, PlaceOf(L"a"), MK_LBUTTON | MK_CONTROL);
    Pump();
    EXPECT_EQ(Shape(), L"*a,b") << "it is one more click";
    Build(L"a,*b,c,d");
    ClickOn(L"c", MK_SHIFT);
    Tree().Delete(Node(L"b"));
    ClickOn(L"a", MK_SHIFT);
    EXPECT_EQ(Shape(), L"*a,+c,d") << "the anchor is gone";
}

TEST_F(LayoutMouse, APressOnASelectedItemIsADragOnceThePointerMovesAway) {
    const LONG x = ::GetSystemMetrics(SM_CXDRAG);
    const LONG y = ::GetSystemMetrics(SM_CYDRAG);
    for (const POINT by :
         {POINT{x, -y}, POINT{-x, y}, POINT{x + 1, 0}, POINT{-x - 1, 0}, POINT{0, y + 1}, POINT{0, -y - 1}}) {
        const bool drags = std::abs(by.x) > x || std::abs(by.y) > y;
        Build(L"*a,+b,c");
        Pull(PlaceOf(L"b"), by);
        EXPECT_EQ(View().IsEditingLabel(), !drags) << by.x << ", " << by.y;
        Key(Window(), VK_ESCAPE);
        EXPECT_EQ(Shape(), drags ? L"+a,*b,c" : L"a,*b,c") << by.x << ", " << by.y;
        Type(VK_DOWN);
        EXPECT_EQ(Shape() + Buttons(), L"a,b,*cECSRU") << "the buttons are no longer held up";
    }
}

TEST_F(LayoutMouse, DragsTheSelectionToWhereThePointerIs) {
    for (const auto& [before, from, to, by, after] : Table<Line, Line, Line, POINT, Line>{
             {L"F(+a,*b),c,d", L"a", L"b", kLower, L"F(*a,+b),c,d"},  // onto itself
             {L"*F(a)", L"F", L"a", kLower, L"*F(a)"},
             {L"+F(a,b),*c", L"F", L"b", kLower, L"*F(a,b),+c"},  // into what moves itself
             {L"F(+a,*b),c,d", L"a", L"d", kUpper, L"F(),c,a,^b,d"},
             {L"F(*a,b),c", L"a", L"b", kLower, L"F(b,^a),c"},
             {L"F(a),*b,c", L"c", L"F", kLower, L"F(a,^c),b"},
             {L"F(a),*c", L"c", L"F", kUpper, L"^c,F(a)"},
             {L"F(a,b),*c", L"c", L"a", kUpper, L"F(^c,a,b)"},
             {L"F[a],*c", L"c", L"F", kLower, L"^F[a,c]"},
             {L"+F(+a,b),*c,d", L"F", L"d", kLower, L"d,F(a,b),^c"},
             {L"F(*a,b),c", L"a", L"", POINT{}, L"F(b),c,^a"},  // below all items
             {L"*a,b", L"a", L"b", POINT{-300, 0}, L"*a,b"},    // outside
         }) {
        Build(before);
        Item(IDC_CATEGORIES).Focus();
        Drag(from, to, by);
        EXPECT_EQ(::GetCursor() == ::LoadCursorW(nullptr, IDC_NO), std::abs(by.x + by.y) > 100);
        Drop();
        EXPECT_EQ(Shape(), after) << support::Utf8(before) << " to " << by.x << ", " << by.y;
        EXPECT_TRUE(Tree().HasFocus() && !::GetCapture());
        Type('Z', VK_CONTROL);
        EXPECT_EQ(Unmarked(Shape()), Unmarked(before)) << "however many items, it is one step";
    }
}

TEST_F(LayoutMouse, ADragShowsWhereTheItemsWouldLand) {
    Build(L"*a,F[b],c");
    Drag(L"a", L"c", kUpper);
    EXPECT_EQ(Drawn(L"c").first.clrTextBk, ::GetSysColor(COLOR_WINDOW))
        << "not as the folder that it would go into";
    EXPECT_TRUE(IsMarked(L"c"));
    m_dialog->Send(WM_RBUTTONDOWN);
    Drop();
    EXPECT_EQ(Shape(), L"*a,F[b],c") << "the right button breaks off";
    Drag(L"a", L"c", {0, 5000});
    EXPECT_FALSE(IsMarked(L"c"));
    Drag(L"a", L"F", kLower);
    EXPECT_FALSE(IsMarked(L"F"));
    EXPECT_EQ(Tree().DropTarget(), Node(L"F"));
    EXPECT_TRUE(support::WaitFor([&] { return Tree().IsExpanded(Node(L"F")); }));
    Drop();
    EXPECT_EQ(Shape(), L"F(b,^a),c");
}

}  // namespace
