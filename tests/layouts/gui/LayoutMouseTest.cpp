// The layout tree of the main dialog, worked by the mouse.
#include "layouts/LayoutTreeDialog.h"

namespace {

class LayoutMouse : public support::LayoutTreeDialog {
  protected:
    void SetUp() override { Open(); }
    /// Presses on the item and moves away with the button held, to so many pixels below the middle of
    /// another.
    void Drag(const wchar_t* from, const wchar_t* to, int below) {
        const POINT place = PlaceOf(to);
        Drag(from, POINT{place.x, place.y + below});
    }
    void Drag(const wchar_t* from, POINT to) {
        const POINT start = PlaceOf(from);
        PostMouse(WM_LBUTTONDOWN, start, MK_LBUTTON);
        PostMouse(WM_MOUSEMOVE, {start.x + 20, start.y}, MK_LBUTTON);
        Pump();
        ::MapWindowPoints(Window(), m_dialog->Handle(), &to, 1);
        m_end = MAKELPARAM(to.x, to.y);
        m_dialog->Send(WM_MOUSEMOVE, MK_LBUTTON, m_end);
    }
    void Drop() { m_dialog->Send(WM_LBUTTONUP, 0, m_end); }
    /// Whether the mark that shows where the items would land is at this one.
    bool IsMarked(const wchar_t* name) {
        LRESULT answer = 0;
        Drawn(name, &answer);
        return answer == CDRF_NOTIFYPOSTPAINT;
    }

    LPARAM m_end = 0;
};

TEST_F(LayoutMouse, ClickingSelectsAsInAListAndTheButtonsFollow) {
    struct Case {
        const wchar_t* item;
        WPARAM keys;
        const wchar_t* after;
        const wchar_t* buttons;
    };
    Build(L"a,*b,F(c,e),d");
    for (const Case& c : {
             Case{L"d", MK_SHIFT, L"a,+b,+F(+c,+e),*d", L"ECSR"},
             Case{L"a", MK_SHIFT, L"*a,+b,F(c,e),d", L"ECSR"},  // from the same anchor
             Case{L"d", MK_CONTROL, L"+a,+b,F(c,e),*d", L"ECSR"},
             Case{L"d", MK_CONTROL, L"*a,+b,F(c,e),d", L"ECSR"},  // the first of those that are left
             Case{L"a", MK_CONTROL, L"a,*b,F(c,e),d", L"ECSRUD"},
             Case{L"b", MK_CONTROL, L"a,b,F(c,e),d", L"ECS"},
             Case{L"d", 0, L"a,b,F(c,e),*d", L"ECSRU"},
             Case{L"e", MK_SHIFT, L"a,b,F(c,*e),+d", L"ECSR"},
             Case{L"c", 0, L"a,b,F(*c,e),d", L"ECSRDP"},  // forgets the anchor
             Case{L"e", MK_SHIFT, L"a,b,F(+c,*e),d", L"ECSRP"},
             Case{L"", 0, L"a,b,F(c,^e),d", L"ECS"},  // and so does a click on no item
             Case{L"F", MK_SHIFT, L"a,b,*F(+c,+e),d", L"ECSR"},
             Case{L"a", 0, L"*a,b,F(c,e),d", L"ECSRD"},
         }) {
        ClickOn(c.item, c.keys);
        EXPECT_EQ(Shape(), c.after) << support::Utf8(c.item);
        EXPECT_EQ(Buttons(), c.buttons) << support::Utf8(c.item);
    }
    Build(L"a,^b");
    ClickOn(L"b");
    EXPECT_EQ(Shape(), L"a,*b") << "though it was the caret item already";
    ClickOn(L"a", MK_CONTROL);
    PostMouse(WM_LBUTTONDBLCLK, PlaceOf(L"a"), MK_LBUTTON | MK_CONTROL);
    Pump();
    EXPECT_EQ(Shape(), L"a,*b") << "twice in a row";
    Tree().Delete(Node(L"b"));
    ClickOn(L"a", MK_SHIFT);
    EXPECT_EQ(Shape(), L"*a") << "the anchor is gone";
}

TEST_F(LayoutMouse, APressOnASelectedItemIsADragOnceThePointerMovesAway) {
    const LONG x = ::GetSystemMetrics(SM_CXDRAG);
    const LONG y = ::GetSystemMetrics(SM_CYDRAG);
    for (const auto& [by, drags] : {std::pair(POINT{x, -y}, false),
                                    {POINT{-x, y}, false},
                                    {POINT{x + 1, 0}, true},
                                    {POINT{-x - 1, 0}, true},
                                    {POINT{0, y + 1}, true},
                                    {POINT{0, -y - 1}, true}}) {
        Build(L"*a,+b,c");
        const POINT start = PlaceOf(L"b");
        PostMouse(WM_LBUTTONDOWN, start, MK_LBUTTON);
        PostMouse(WM_MOUSEMOVE, {start.x + by.x, start.y + by.y}, MK_LBUTTON);
        PostMouse(WM_LBUTTONUP, start);
        Pump();
        EXPECT_EQ(View().IsEditingLabel(), !drags) << by.x << ", " << by.y;
        Key(Window(), VK_ESCAPE);
        EXPECT_EQ(Shape(), drags ? L"+a,*b,c" : L"a,*b,c") << by.x << ", " << by.y;
        EXPECT_EQ(Buttons(), drags ? L"ECSR" : L"ECSRUD") << by.x << ", " << by.y;
    }
}

TEST_F(LayoutMouse, DragsTheSelectionToWhereThePointerIs) {
    struct Case {
        const wchar_t* before;
        const wchar_t* from;
        const wchar_t* to;
        int below;
        const wchar_t* after;
    };
    for (const Case& c : {
             Case{L"F(+a,*b),c,d", L"a", L"b", 5, L"F(*a,+b),c,d"},  // onto itself
             Case{L"*F(a)", L"F", L"a", 5, L"*F(a)"},
             Case{L"F(+a,*b),c,d", L"a", L"d", -5, L"F(),c,a,^b,d"},
             Case{L"F(*a,b),c", L"a", L"b", 5, L"F(b,^a),c"},
             Case{L"F(a),*c", L"c", L"F", 5, L"F(a,^c)"},
             Case{L"F(a),*c", L"c", L"F", -5, L"^c,F(a)"},
             Case{L"F(*a,b),c", L"a", L"", 0, L"F(b),c,^a"},  // below all items
             Case{L"F[a],*c", L"c", L"F", 5, L"^F[a,c]"},
             Case{L"+F(+a,b),*c,d", L"F", L"d", 5, L"d,F(a,b),^c"},
             Case{L"+F(a,b),*c", L"F", L"b", 5, L"*F(a,b),+c"},  // not into what moves itself
             Case{L"a,*b", L"a", L"b", 5, L"b,^a"},
             Case{L"a,*b,-", L"b", L"a", -5, L"^b,a,-"},
         }) {
        Build(c.before);
        Item(IDC_CATEGORIES).Focus();
        Drag(c.from, c.to, c.below);
        Drop();
        EXPECT_EQ(Shape(), c.after) << support::Utf8(c.before) << " to " << support::Utf8(c.to) << c.below;
        EXPECT_TRUE(Tree().HasFocus() && IsEnabled(IDC_SORT_ALL));
    }
}

TEST_F(LayoutMouse, ADragShowsWhereTheItemsWouldLand) {
    Build(L"*a,F[b],c");
    Drag(L"a", L"c", -5);
    EXPECT_TRUE(IsMarked(L"c"));
    EXPECT_EQ(Drawn(L"c").clrTextBk, ::GetSysColor(COLOR_WINDOW))
        << "not as the folder that it would go into";
    m_dialog->Send(WM_RBUTTONDOWN);
    Drop();
    EXPECT_EQ(Shape(), L"*a,F[b],c") << "the right button breaks off";
    Drag(L"a", L"F", 5);
    EXPECT_FALSE(IsMarked(L"F"));
    EXPECT_EQ(Tree().DropTarget(), Node(L"F"));
    EXPECT_TRUE(support::WaitFor([&] { return Tree().IsExpanded(Node(L"F")); }));
    Drop();
    EXPECT_EQ(Shape(), L"F(b,^a),c");
    Build(L"*a,F(b" + Times(60, L",k") + L")");
    Drag(L"a", L"F", 5);
    Drop();
    RECT row{};
    EXPECT_TRUE(Tree().RowOf(Node(L"a"), row) && row.bottom <= Tree().ClientRect().bottom)
        << "what has moved is in view";
    for (const POINT outside : {POINT{-30, 20}, POINT{20, -30}, POINT{20, 5000}}) {
        Build(L"*a,F(b),c");
        Drag(L"a", outside);
        EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_NO));
        EXPECT_FALSE(IsMarked(L"c") || IsMarked(L"F"));
        Drop();
        EXPECT_EQ(Shape(), L"*a,F(b),c");
    }
}

}  // namespace
