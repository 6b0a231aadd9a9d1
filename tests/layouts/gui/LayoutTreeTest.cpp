// The layout tree of the main dialog, worked by its buttons, menus and keys.
#include "layouts/LayoutTreeDialog.h"
#include "support/ShownMenu.h"

namespace {

class LayoutTree : public support::LayoutTreeDialog {
  protected:
    void SetUp() override {
        support::AddVst(1, L"x");
        support::AddVst(2, L"y");
        Open();
    }
    /// Gives the commands of the menu that it brings up.
    std::vector<UINT> RightClick(POINT place) {
        PutUnderPointer(place);
        PostMouse(WM_RBUTTONDOWN, place, MK_RBUTTON);
        PostMouse(WM_RBUTTONUP, place);
        const auto menu = support::WorkMenu([this] { Pump(); });
        return menu ? menu->commands : std::vector<UINT>();
    }
    /// And ends the edit.
    void EnterLabel(const std::wstring& text, WORD key = VK_RETURN) {
        const CWindow edit = Tree().LabelEdit();
        ASSERT_TRUE(edit.IsLive());
        edit.SetText(text);
        Key(edit.Handle(), key);
    }
};

TEST_F(LayoutTree, CommandsDoTheirWork) {
    Choose(support::kVstEffects);
    SelectPlugins({L"x", L"y"});
    for (const auto& [before, command, after] : Table<Line, int, Line>{
             {L"a,*b,F(c)", IDC_MOVE_UP, L"*b,a,F(c)"},
             {L"*F[a],b", IDC_MOVE_DOWN, L"b,*F[a]"},
             {L"*a,b,F(c)", ID_MOVE_TO_BOTTOM, L"b,F(c),*a"},
             {L"a,b,^F(c)", ID_MOVE_TO_TOP, L"^F(c),a,b"},
             {L"F(a,G(+b,*c)),d", IDC_PROMOTE, L"F(a,G(),*c,+b),d"},
             {L"F(*G(+a,b))", IDC_PROMOTE, L"F(),+G(b),*a"},
             {L"c,-,F(y,x,-),B,a,E()", IDC_SORT_ALL, L"E(),F(x,-,y),a,B,c,-"},
             {L"+F(b,a),*G(d,c),H(f,e)", ID_SORT_FOLDERS, L"+F(a,b),*G(c,d),H(f,e)"},
             {L"F[a,G[b]],*c", IDC_EXPAND_ALL, L"F(a,G(b)),*c"},
             {L"*a,F(+b,c,G(d))", IDC_COLLAPSE_ALL, L"*a,F[b,c,G[d]]"},
             {L"F(+a,b),^c,d,+e", IDC_REMOVE, L"F(b),*d"},
             {L"+F(*a),b", ID_ITEM_DELETE, L"*b"},  // without a question
             {L"*F(a),b", IDC_NEW_FOLDER, L"F(a),*n(),b"},
             {L"F(^a),b", IDC_NEW_FOLDER, L"F(a),b,*n()"},
             {L"*F(a),b", ID_NEW_SUBFOLDER, L"F(a,*n()),b"},
             {L"*F(a),b", ID_NEW_FOLDER_HERE, L"F(a),*n(),b"},
             {L"F(a),b", ID_NEW_FOLDER_AT_END, L"F(a),b,*n()"},
             {L"a,*b", ID_ITEM_RENAME, L"a,*n"},
             {L"F(*a),b", IDC_ADD_SEPARATOR, L"F(a,*-),b"},
             {L"F[a],*b,c", IDC_ADD_PLUGIN, L"F[a],b,*y,x,c"},  // each behind the same one
             {L"*F[a],b", IDC_ADD_PLUGIN, L"F(a,x,*y),b"},
             {L"a", IDC_ADD_PLUGIN, L"a,x,*y"},
         }) {
        SCOPED_TRACE(support::Utf8(before) + ", " + std::to_string(command));
        Build(before);
        if (Control(command)) {
            Press(command);
        } else {
            PutUnderPointer({-20, 0});  // not within the menu
            support::WorkMenu([this] { Type(VK_APPS); }, static_cast<UINT>(command));
        }
        if (std::wstring_view(after).find(L"*n") != std::wstring_view::npos) EnterLabel(L"n");
        EXPECT_EQ(Shape(), after);
        EXPECT_NE(Layout().IsModified(), command == IDC_EXPAND_ALL || command == IDC_COLLAPSE_ALL);
        if (!View().CanUndo()) continue;  // only looks have changed
        while (View().CanUndo()) Type('Z', VK_CONTROL);
        EXPECT_EQ(Shape(), before);
        EXPECT_FALSE(Layout().IsModified());
    }
}

TEST_F(LayoutTree, WhatIsCutOrCopiedIsPastedByTheInsertionRule) {
    const std::wstring tooDeep = L"+" + Times(126, L"F(") + L"*a" + Times(126, L")");
    for (const auto& [before, keys, after] : Table<std::wstring, std::string, std::wstring>{
             {L"*a", "V", L"*a"},
             {L"a", "XCV", L"a"},
             {L"*a,b", "CVV", L"a,a,*a,b"},
             {L"+a,F(b,*-),d", "CV", L"a,F(b,-,+a,*-),d"},
             {L"a,*F[b,G[c]],+d", "XV", L"a,+F[b,G[c]],*d"},
             {L"*F(a)", "CV", L"F(a,*F(a))"},
             {L"a,+F(+b,c),G[d],^e", "CV", L"a,F(b,c),G[d],e,*F(b,c)"},
             {L"+a,^b,c", "XV", L"b,*a,c"},
             {tooDeep, "CV", tooDeep},
         }) {
        SCOPED_TRACE(support::Utf8(before));
        Build(before);
        for (const char key : keys) Type(static_cast<WORD>(key), VK_CONTROL);
        EXPECT_EQ(Shape(), after);
        while (View().CanUndo()) Type('Z', VK_CONTROL);
        EXPECT_EQ(Shape(), before);
    }
}

TEST_F(LayoutTree, MenusOpenForTheItemUnderThePointerOrWithTheCaret) {
    for (const auto& [item, entries, after] : Table<Line, std::size_t, Line>{
             {L"a", 4, L"*a,b,F(c),-"},
             {L"F", 7, L"a,b,*F(c),-"},
             {kSeparatorText, 0, L"a,b,F(c),*-"},
             {L"", 1, L"a,b,F(c),-"},
         }) {
        Build(L"+a,*b,F(c),-");
        EXPECT_EQ(RightClick(PlaceOf(item)).size(), entries) << support::Utf8(after);  // no two menus alike
        EXPECT_EQ(Shape(), after);
    }
    EXPECT_TRUE(RightClick({Tree().ClientRect().right - 2, PlaceOf(L"a").y}).empty()) << "beside an item";
    Build(L"*a" + Times(60, L",k"));
    for (const auto& [key, held] : Table<WORD, BYTE>{{VK_APPS, 0}, {VK_F10, VK_SHIFT}}) {
        Tree().ScrollToTop(Layout().Children(nullptr).back());
        auto menu = support::WorkMenu([this, key = key, held = held] { Type(key, held); });
        ASSERT_TRUE(menu);
        RECT label{};
        ASSERT_TRUE(Tree().LabelOf(Node(L"a"), label));
        EXPECT_GE(label.top, 0);
        ::ScreenToClient(Window(), &menu->corner);
        EXPECT_EQ(std::pair(menu->corner.x, menu->corner.y), std::pair(label.left, label.bottom));
    }
}

TEST_F(LayoutTree, WhatIsInViewStaysUnlessTheItemWouldBeOutOfSight) {
    for (const auto& [before, top, button, topAfter, more] : Table<Line, Line, int, Line, int>{
             {L"F(a,b,c,*d)", L"b", IDC_PROMOTE, L"b", 60},
             {L"a,b,c,*d", L"b", IDC_MOVE_UP, L"b", 60},
             {L"*a,b,c,d", L"c", IDC_MOVE_DOWN, L"a", 60},
             {L"F(a,*b,c,d)", L"b", IDC_REMOVE, L"c", 60},
             {L"F(a,b),c,*d", L"b", IDC_COLLAPSE_ALL, L"F", 60},
             {L"c,*b,a", L"c", IDC_SORT_ALL, L"a", 60},
             {L"F(a,b,c,d),G(*e)", L"F", IDC_PROMOTE, L"F", 0},  // all of it is in view
         }) {
        Build(before + Times(more, L",k"));
        Tree().ScrollToTop(Node(top));
        Press(button);
        EXPECT_EQ(Tree().FirstVisible(), Node(topAfter)) << support::Utf8(before) << ", button " << button;
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
    for (const std::wstring& name : {longName, std::wstring()}) {
        EnterLabel(name);
        Type(VK_F2);
    }
    EnterLabel(L"left", VK_ESCAPE);
    EXPECT_FALSE(Layout().IsModified());
    EXPECT_FALSE(Tree().EditLabel(Node(kSeparatorText))) << "a separator has no name to edit";
    Build(L"*a,b");
    Type(VK_F2);
    Tree().LabelEdit().SetText(L"c");
    ClickOn(L"b");
    EXPECT_EQ(Shape(), L"c,*b") << "a click elsewhere takes the name, and selects";
}

TEST_F(LayoutTree, KeysSelectAsInAListAndWhatAClosedFolderHidesIsNotSelected) {
    Build(L"*a,F[b],c,d");
    for (const auto& [key, held, after] : Table<WORD, BYTE, Line>{
             {VK_DOWN, VK_SHIFT, L"+a,*F[b],c,d"},
             {VK_END, VK_SHIFT, L"+a,+F[b],+c,*d"},
             {VK_UP, VK_SHIFT, L"+a,+F[b],*c,d"},
             {VK_UP, 0, L"a,*F[b],c,d"},  // forgets the anchor
             {VK_HOME, VK_SHIFT, L"*a,+F[b],c,d"},
             {'A', VK_CONTROL, L"*a,+F[b],+c,+d"},  // everything that can be seen
             {VK_DOWN, 0, L"a,*F[b],c,d"},
             {'A', VK_RMENU, L"a,*F[b],c,d"},  // with AltGr it is a letter
             {VK_RIGHT, 0, L"a,*F(b),c,d"},
             {VK_DOWN, VK_SHIFT, L"a,+F(*b),c,d"},
             {VK_END, VK_SHIFT, L"a,+F(+b),+c,*d"},
         }) {
        Type(key, held);
        EXPECT_EQ(Shape(), after) << key << " with " << int{held};
    }
    Build(L"^F(+a),+b");
    Type(VK_SUBTRACT);
    EXPECT_EQ(Shape(), L"^F[a],+b");
    Build(L"^a,b");
    Type(VK_UP);
    EXPECT_EQ(Shape(), L"*a,b") << "there is nothing above";
    for (const bool byKey : {false, true}) {
        Build(L"a,F(b,c,*d),e");
        ClickOn(L"c", MK_SHIFT);
        Press(IDC_COLLAPSE_ALL);
        byKey ? Type(VK_HOME, VK_SHIFT) : ClickOn(L"a", MK_SHIFT);
        EXPECT_EQ(Shape(), L"*a,+F[b,c,d],e") << "up to the folder that hides where the selection began";
    }
    Build(L"a,b");
    for (const auto& [key, held] :
         Table<WORD, BYTE>{{VK_DELETE, 0}, {VK_F2, 0}, {VK_DOWN, VK_SHIFT}, {VK_RETURN, VK_MENU}})
        Type(key, held);
    EXPECT_EQ(Shape(), L"a,b") << "without a caret they have nothing to act on";
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
}

TEST_F(LayoutTree, OnlyMissingPluginsAreGreyAndAnEnumerationTellsWhichTheseAre) {
    Build(L"F(a,b),c");
    Layout().Change(Node(L"a"), [](LayoutItem& plugin) { plugin.clsid = *ParseClsid(support::IdText(3)); });
    Layout().Change(Node(L"c"), [](LayoutItem& plugin) { plugin.installed = true; });
    View().OnSortAll();
    Layout().SetModified(false);
    const auto grey = [this] {
        std::wstring names;
        for (const Line name : {L"a", L"b", L"c", L"F"}) {
            if (Drawn(name).first.clrText == RGB(0xCD, 0xCD, 0xCD)) names += name;
        }
        return names;
    };
    EXPECT_EQ(grey(), L"ab");
    Item(IDC_REMOVE).Focus();
    EXPECT_NE(Drawn(L"c", CDIS_SELECTED).first.clrTextBk, 0U) << "as one to be seen without the focus";
    support::AddVst(3, L"Found");
    m_dialog->Send(WM_TIMER, 1);
    EXPECT_EQ(grey(), L"bc");
    EXPECT_FALSE(Layout().IsModified());
    View().OnUndo();
    EXPECT_EQ(grey(), L"bc") << "in a state from before, too";
}

TEST_F(LayoutTree, FindGoesFromItemToItemAndLeavesThePluginListAlone) {
    Show();
    Choose(support::kVstEffects);
    Item(IDC_FIND).SetText(L"y");
    Build(L"*Dr\x00FCm,-,F[G[drum 2],a],b");
    Tree().Focus();
    Key(Window(), VK_F3);
    EXPECT_TRUE(Item(IDC_FIND).HasFocus()) << "nothing was asked for yet";
    Item(IDC_FIND).SetText(L"drum");
    EXPECT_EQ(Listed(), std::vector<std::wstring>{L"y"});
    Key(IDC_FIND, VK_RETURN);
    EXPECT_EQ(Shape(), L"Dr\x00FCm,-,F(G(*drum 2),a),b");
    EXPECT_TRUE(Tree().HasFocus());
    EXPECT_EQ(Text(IDC_FIND), L"y");
    Key(Window(), VK_F3);
    EXPECT_EQ(Shape(), L"*Dr\x00FCm,-,F(G(drum 2),a),b");
    Build(L"drum,-,*b,F(drums)");
    for (const Line before : {L"*drum,-,b,F(drums)", L"drum,-,b,F(*drums)"}) {
        Key(IDC_LAYOUT_TREE, VK_F3, VK_SHIFT);
        EXPECT_EQ(Shape(), before);
    }
    m_dialog->Send(WM_COMMAND, ID_FIND);
    EXPECT_EQ(Text(IDC_FIND), L"drum");
    Item(IDC_FIND).SetText(L"--");
    Key(IDC_FIND, VK_F3);
    EXPECT_EQ(Shape(), L"drum,-,b,F(*drums)") << "a line is no find";
    Item(IDC_FIND).SetText(L"drum");
    Build(L"^drum,b");
    Key(IDC_FIND, VK_RETURN);
    EXPECT_EQ(Shape(), L"*drum,b");
}

}  // namespace
