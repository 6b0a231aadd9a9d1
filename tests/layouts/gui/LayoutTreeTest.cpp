// The layout tree of the main dialog, worked by its buttons and keys.
#include "layouts/LayoutTreeDialog.h"

namespace {

class LayoutTree : public support::LayoutTreeDialog {
  protected:
    void SetUp() override {
        for (const unsigned number : {1U, 2U}) support::AddVst(number, number == 1 ? L"x" : L"y");
        Open();
    }
    void EnterLabel(const std::wstring& text) {
        const CWindow edit = Tree().LabelEdit();
        ASSERT_TRUE(edit.IsLive());
        edit.SetText(text);
        Key(edit.Handle(), VK_RETURN);
    }
};

TEST_F(LayoutTree, ButtonsDoTheirWork) {
    struct Case {
        const wchar_t* before;
        int button;
        const wchar_t* after;
    };
    Choose(support::kVstEffects);
    SelectPlugins({L"x", L"y"});
    for (const Case& c : {
             Case{L"a,*b,F(c)", IDC_MOVE_UP, L"*b,a,F(c)"},
             Case{L"a,b,*F(c)", IDC_MOVE_UP, L"a,*F(c),b"},
             Case{L"*F[a],b", IDC_MOVE_DOWN, L"b,*F[a]"},
             Case{L"F(a,G(+b,*c)),d", IDC_PROMOTE, L"F(a,G(),*c,+b),d"},
             Case{L"F(*G(+a,b))", IDC_PROMOTE, L"F(),+G(b),*a"},
             Case{L"c,-,F(y,x,-),B,a,E()", IDC_SORT_ALL, L"E(),F(x,-,y),a,B,c,-"},
             Case{L"F[a,G[b]],*c", IDC_EXPAND_ALL, L"F(a,G(b)),*c"},
             Case{L"*a,F(+b,c,G(d))", IDC_COLLAPSE_ALL, L"*a,F[b,c,G[d]]"},
             Case{L"F(+a),*b", IDC_COLLAPSE_ALL, L"F[a],*b"},
             Case{L"F(+a,b),^c,d,+e", IDC_REMOVE, L"F(b),*d"},
             Case{L"*F(a),b", IDC_NEW_FOLDER, L"F(a),*n(),b"},
             Case{L"F(^a),b", IDC_NEW_FOLDER, L"F(a),b,*n()"},
             Case{L"F(*a),b", IDC_ADD_SEPARATOR, L"F(a,*-),b"},
             Case{L"F(^a),b", IDC_ADD_SEPARATOR, L"F(a),b,*-"},
             Case{L"F[a],*b,c", IDC_ADD_PLUGIN, L"F[a],b,*y,x,c"},  // each behind the same one
             Case{L"*F[a],b", IDC_ADD_PLUGIN, L"F(a,x,*y),b"},
             Case{L"a", IDC_ADD_PLUGIN, L"a,x,*y"},
         }) {
        SCOPED_TRACE(support::Utf8(c.before) + ", button " + std::to_string(c.button));
        Build(c.before);
        Press(c.button);
        if (c.button == IDC_NEW_FOLDER) EnterLabel(L"n");
        EXPECT_EQ(Shape(), c.after);
        EXPECT_NE(Layout().IsModified(), c.button == IDC_EXPAND_ALL || c.button == IDC_COLLAPSE_ALL);
        const std::wstring buttons = Buttons();
        View().UpdateButtons();
        EXPECT_EQ(Buttons(), buttons);
    }
    Build(L"*a,b");
    View().OnPromote();
    EXPECT_EQ(Shape(), L"b,*a") << "an item of the top level goes to its end";
}

TEST_F(LayoutTree, AMoveIntoTheItemItselfIsRefused) {
    Build(L"F(G(a)),b");
    const HTREEITEM folder = Node(L"F");
    for (const HTREEITEM within : {folder, Node(L"G"), Node(L"a")}) {
        EXPECT_EQ(Layout().MoveInto(folder, within, false), folder);
        EXPECT_EQ(Layout().MoveAfter(folder, within), folder);
    }
    EXPECT_FALSE(Layout().IsModified());
}

TEST_F(LayoutTree, WhatIsInViewStaysUnlessTheItemWouldBeOutOfSight) {
    struct Case {
        const wchar_t* before;
        const wchar_t* top;
        int button;
        const wchar_t* topAfter;
        int more = 60;
    };
    for (const Case& c : {
             Case{L"F(a,b,c,*d)", L"b", IDC_PROMOTE, L"b"}, Case{L"a,b,c,*d", L"b", IDC_MOVE_UP, L"b"},
             Case{L"*a,b,c,d", L"c", IDC_MOVE_DOWN, L"a"}, Case{L"F(a,*b,c,d)", L"b", IDC_REMOVE, L"c"},
             Case{L"F(a,b),c,*d", L"b", IDC_COLLAPSE_ALL, L"F"}, Case{L"c,*b,a", L"c", IDC_SORT_ALL, L"a"},
             Case{L"F(a,b,c,d),G(*e)", L"F", IDC_PROMOTE, L"F", 0},  // all of it is in view
         }) {
        Build(c.before + Times(c.more, L",k"));
        Tree().ScrollToTop(Node(c.top));
        Press(c.button);
        EXPECT_EQ(Tree().FirstVisible(), Node(c.topAfter))
            << support::Utf8(c.before) << ", button " << c.button;
    }
}

TEST_F(LayoutTree, RenamesInPlaceButNotToNothing) {
    Build(L"*a,b,-");
    Type(VK_F2);
    const std::wstring longName(300, L'n');
    EnterLabel(longName);
    EXPECT_EQ(Shape(), L"*" + longName + L",b,-");
    Layout().SetModified(false);
    Type(VK_F2);
    EXPECT_EQ(Tree().LabelEdit().Text(), longName) << "the whole name is there to edit";
    EnterLabel(L"");
    EXPECT_EQ(Shape(), L"*" + longName + L",b,-");
    EXPECT_FALSE(Layout().IsModified());
    EXPECT_FALSE(Tree().EditLabel(Node(kSeparatorText))) << "a separator has no name to edit";
    Build(L"*a,b");
    Type(VK_F2);
    Tree().LabelEdit().SetText(L"c");
    ClickOn(L"b");
    EXPECT_EQ(Shape(), L"c,*b") << "a click elsewhere takes the name, and selects";
}

TEST_F(LayoutTree, KeysSelectAsInAList) {
    struct Case {
        WORD key;
        BYTE held;
        const wchar_t* after;
    };
    Build(L"*a,F[b],c,d");
    for (const Case& c : {
             Case{VK_DOWN, VK_SHIFT, L"+a,*F[b],c,d"},
             Case{VK_END, VK_SHIFT, L"+a,+F[b],+c,*d"},
             Case{VK_UP, VK_SHIFT, L"+a,+F[b],*c,d"},
             Case{VK_UP, 0, L"a,*F[b],c,d"},  // forgets the anchor
             Case{VK_HOME, VK_SHIFT, L"*a,+F[b],c,d"},
             Case{'A', VK_CONTROL, L"*a,+F[b],+c,+d"},  // everything that can be seen
             Case{VK_DOWN, 0, L"a,*F[b],c,d"},
             Case{VK_RIGHT, 0, L"a,*F(b),c,d"},
             Case{VK_DOWN, VK_SHIFT, L"a,+F(*b),c,d"},
             Case{VK_LEFT, 0, L"a,*F(b),c,d"},
             Case{VK_LEFT, 0, L"a,*F[b],c,d"},
             Case{VK_END, 0, L"a,F[b],c,*d"},
         }) {
        Type(c.key, c.held);
        EXPECT_EQ(Shape(), c.after) << c.key << " with " << int{c.held};
    }
    EXPECT_EQ(Buttons(), L"ECSRU");
    Build(L"a,b");
    for (const auto& [key, held] :
         {std::pair<WORD, BYTE>(VK_DOWN, VK_SHIFT), {VK_DELETE, 0}, {VK_F2, 0}, {VK_RETURN, VK_MENU}})
        Type(key, held);
    EXPECT_EQ(Shape(), L"a,b") << "without a caret they have nothing to act on";
}

TEST_F(LayoutTree, WhatAClosedFolderHidesIsNotSelected) {
    Build(L"a,F(b,c,*d)");
    ClickOn(L"c", MK_SHIFT);
    Press(IDC_COLLAPSE_ALL);
    ClickOn(L"a", MK_SHIFT);
    EXPECT_EQ(Shape(), L"*a,+F[b,c,d]") << "up to the folder that hides where the selection began";
    Build(L"^F(+a),+b");
    Type(VK_SUBTRACT);
    EXPECT_EQ(Shape(), L"^F[a],+b");
    EXPECT_EQ(Buttons(), L"ECSRU");
}

TEST_F(LayoutTree, DeletesOnlyWhatShowsAsSelectedAndAsksAboutFolders) {
    Build(L"F(^a),b");
    Type(VK_DELETE);
    EXPECT_EQ(Shape(), L"F(^a),b") << "the caret alone is not enough";
    for (const int answer : {IDNO, IDYES}) {
        Build(L"+a,^F(b),c");
        m_popups.Expect(L"A folder is about to be deleted", answer);
        Type(VK_DELETE);
        EXPECT_EQ(Shape(), answer == IDNO ? L"+a,^F(b),c" : L"*c") << "the caret item goes along";
    }
    Item(IDC_REMOVE).Focus();
    Press(IDC_REMOVE);
    EXPECT_TRUE(Tree().HasFocus()) << "a button that goes grey leaves the keyboard to the tree";
    EXPECT_EQ(Buttons(), L"");
}

TEST_F(LayoutTree, OnlyMissingPluginsAreGreyAndAnEnumerationTellsWhichTheseAre) {
    Build(L"F(a,b),c");
    for (const wchar_t* name : {L"a", L"c"}) {
        Layout().Change(Node(name), [&](LayoutItem& record) {
            record.clsid = *ParseClsid(support::IdText(*name == L'a' ? 3 : 4));
            record.installed = *name == L'c';
        });
    }
    Layout().SetModified(false);
    const auto grey = [this] {
        std::wstring names;
        for (const wchar_t* name : {L"a", L"b", L"c", L"F"})
            if (Drawn(name).clrText == RGB(0xCD, 0xCD, 0xCD)) names += name;
        return names;
    };
    EXPECT_EQ(grey(), L"ab");
    support::AddVst(3, L"Found");
    m_dialog->Send(WM_TIMER, 1);
    EXPECT_EQ(grey(), L"bc");
    EXPECT_FALSE(Layout().IsModified());
}

}  // namespace
