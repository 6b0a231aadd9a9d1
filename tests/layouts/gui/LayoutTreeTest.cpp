// The layout tree of the main dialog, worked by its buttons, menu commands, keys and the mouse.
#include <gtest/gtest.h>

#include "support/MainDialog.h"
#include "support/TestPlugins.h"
#include "support/WaitFor.h"

namespace {

/// Trees are written as "a,F(*b,G[c]),-": plug-ins, open and closed folders, separators. A star stands before
/// what is selected, of which the last is the caret item; "^" makes an item the caret item that is not
/// selected.
class LayoutTree : public support::MainDialog {
  protected:
    void SetUp() override { Open(); }

    CLayoutTreeView& View() { return m_dialog->View<CLayoutTreeView>(); }
    CTreeCtrlWrapper& Layout() { return View().Layout(); }
    CTreeCtrlEx& Tree() { return Layout().Tree(); }
    HWND Window() { return Tree().Handle(); }

    void Build(const std::wstring& text) {
        Layout().Clear();
        HTREEITEM parent = nullptr;
        std::vector<HTREEITEM> closed;
        std::vector<HTREEITEM> selected;
        HTREEITEM caret = nullptr;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const wchar_t c = text[i];
            const wchar_t before = i > 0 ? text[i - 1] : L' ';
            if (c == L'(' || c == L'[') parent = Layout().Children(parent).back();
            if (c == L'[') closed.push_back(parent);
            if (c == L')' || c == L']') parent = Tree().Parent(parent);
            LayoutItem item = c == L'-' ? NewSeparator() : c >= L'a' ? NewPlugin() : NewFolder({c});
            if (c >= L'a') item.name = c;
            const bool isItem = c == L'-' || (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z');
            const HTREEITEM added = isItem ? Layout().Append(parent, item) : nullptr;
            if (isItem && before == L'*') selected.push_back(added);
            if (isItem && before == L'^') caret = added;
        }
        Layout().ExpandAll(true);
        for (const HTREEITEM folder : closed) Tree().Expand(folder, false);
        Tree().SelectOnly(nullptr);
        for (const HTREEITEM item : selected) Tree().AddToSelection(item);
        if (caret) Tree().MoveCaret(caret);
        Layout().SetModified(false);
        View().UpdateButtons();
    }
    std::wstring Shape(HTREEITEM parent = nullptr) {
        std::wstring text;
        for (const HTREEITEM item : Layout().Children(parent)) {
            if (!text.empty()) text += L',';
            if (Tree().IsSelected(item)) text += L'*';
            const LayoutItem* record = Layout().Find(item);
            text += !record ? L"?" : record->kind == LayoutKind::Separator ? L"-" : record->name;
            const bool open = Tree().IsExpanded(item);
            if (Tree().Child(item)) text += (open ? L"(" : L"[") + Shape(item) + (open ? L")" : L"]");
        }
        return text;
    }
    HTREEITEM Node(const wchar_t* name) {
        for (HTREEITEM item = Tree().Root(); item; item = Tree().NextInOrder(item)) {
            if (Tree().ItemText(item) == name) return item;
        }
        return nullptr;
    }
    std::wstring Caret() { return Tree().Caret() ? Tree().ItemText(Tree().Caret()) : L""; }
    std::wstring Top() { return Tree().ItemText(Tree().FirstVisible()); }

    POINT PlaceOf(const wchar_t* name) {
        RECT label{};
        EXPECT_TRUE(Tree().LabelOf(Node(name), label)) << support::Utf8(name);
        return {(label.left + label.right) / 2, (label.top + label.bottom) / 2};
    }
    void ClickOn(const wchar_t* name, WPARAM keys = 0) { Click(Window(), PlaceOf(name), keys); }
    /// To a place in the tree; the button is still held then.
    void Drag(const wchar_t* from, POINT to) {
        const POINT start = PlaceOf(from);
        ::PostMessageW(Window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(start.x, start.y));
        ::PostMessageW(Window(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(start.x + 20, start.y));
        Pump();
        ::MapWindowPoints(Window(), m_dialog->Handle(), &to, 1);
        m_end = MAKELPARAM(to.x, to.y);
        m_dialog->Send(WM_MOUSEMOVE, MK_LBUTTON, m_end);
    }
    void Drop() { m_dialog->Send(WM_LBUTTONUP, 0, m_end); }
    /// So many pixels below the middle of the item.
    void Drag(const wchar_t* from, const wchar_t* to, int below) {
        const POINT place = PlaceOf(to);
        Drag(from, POINT{place.x, place.y + below});
    }
    NMTVCUSTOMDRAW Drawn(const wchar_t* name, LRESULT* answer = nullptr) {
        NMTVCUSTOMDRAW draw{};
        draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
        draw.nmcd.dwItemSpec = reinterpret_cast<DWORD_PTR>(Node(name));
        const LRESULT given = View().OnCustomDraw(draw);
        if (answer) *answer = given;
        return draw;
    }
    bool IsGrey(const wchar_t* name) { return Drawn(name).clrText == RGB(0xCD, 0xCD, 0xCD); }
    bool IsMarked(const wchar_t* name) {
        LRESULT answer = 0;
        Drawn(name, &answer);
        return answer == CDRF_NOTIFYPOSTPAINT;
    }
    /// A key as it comes while the other one is held.
    void KeyWith(BYTE held, UINT message, WPARAM key) {
        BYTE keys[256]{};
        ::GetKeyboardState(keys);
        for (const BYTE state : {BYTE{0x80}, BYTE{0}}) {
            keys[held] = state;
            ::SetKeyboardState(keys);
            if (state != 0) Tree().Send(message, key);
        }
    }

    LPARAM m_end = 0;
};

TEST_F(LayoutTree, CommandsDoTheirWork) {
    struct Case {
        const wchar_t* before;
        int button;
        const wchar_t* after;
    };
    for (const Case& c : {
             Case{L"a,*b,F(c)", IDC_MOVE_UP, L"*b,a,F(c)"},
             Case{L"a,b,*F(c)", IDC_MOVE_UP, L"a,*F(c),b"},
             Case{L"*F[a],b", IDC_MOVE_DOWN, L"b,*F[a]"},
             Case{L"F(a,G(*b,*c)),d", IDC_PROMOTE, L"F(a,G,*c,*b),d"},
             Case{L"F(*G(*a,b))", IDC_PROMOTE, L"F,*G(b),*a"},
             Case{L"c,-,F(y,x,-),a,E", IDC_SORT_ALL, L"E,F(x,-,y),a,c,-"},
             Case{L"*a,F(*b,c,G(d))", IDC_COLLAPSE_ALL, L"*a,*F[b,c,G[d]]"},
             Case{L"F(*a),*b", IDC_COLLAPSE_ALL, L"F[a],*b"},
             Case{L"F(*a,b),^c,d,*e", IDC_REMOVE, L"F(b),*d"},
             Case{L"*F(a),b", IDC_NEW_FOLDER, L"F(a),*New Folder,b"},
             Case{L"F(^a),b", IDC_NEW_FOLDER, L"F(a),b,*New Folder"},
             Case{L"F(*a),b", IDC_ADD_SEPARATOR, L"F(a,*-),b"},
             Case{L"F(^a),b", IDC_ADD_SEPARATOR, L"F(a),b,*-"},
         }) {
        Build(c.before);
        Press(c.button);
        View().EndLabelEdit(true);
        EXPECT_EQ(Shape(), c.after) << support::Utf8(c.before) << ", button " << c.button;
    }
    struct MenuCase {
        const wchar_t* before;
        UINT command;
        const wchar_t* target;
        const wchar_t* after;
    };
    for (const MenuCase& c : {
             MenuCase{L"*a,b,F(c)", ID_MOVE_TO_BOTTOM, L"a", L"b,F(c),*a"},
             MenuCase{L"a,b,^F(c)", ID_MOVE_TO_TOP, L"F", L"F(c),a,b"},
             MenuCase{L"*F(a),b", ID_NEW_SUBFOLDER, L"F", L"F(a,*New Folder),b"},
             MenuCase{L"*F(a),b", ID_NEW_FOLDER_HERE, L"F", L"F(a),*New Folder,b"},
             MenuCase{L"*F(a),b", ID_NEW_FOLDER_AT_END, L"F", L"F(a),b,*New Folder"},
             MenuCase{L"*F(b,a),G(d,c)", ID_SORT_FOLDERS, L"F", L"*F(a,b),G(d,c)"},
             MenuCase{L"*F(G(a)),b", ID_ITEM_DELETE, L"F", L"*b"},
         }) {
        Build(c.before);
        View().Run(c.command, Node(c.target));
        View().EndLabelEdit(true);
        EXPECT_EQ(Shape(), c.after) << support::Utf8(c.before) << ", command " << c.command;
    }
    Build(L"*a,b");
    View().OnPromote();
    EXPECT_EQ(Shape(), L"b,*a") << "an item of the top level goes to its end";
    Build(L"a,*b");
    View().OnMoveDown();
    EXPECT_FALSE(Layout().IsModified()) << "the last one stays";
}

TEST_F(LayoutTree, AMoveKeepsTheIdAndIsRefusedIntoTheItemItself) {
    Build(L"F(G(a)),b");
    const HTREEITEM folder = Node(L"F");
    EXPECT_EQ(Layout().Move(folder, Node(L"G"), TVI_LAST), folder);
    EXPECT_EQ(Layout().Move(folder, folder, TVI_LAST), folder);
    EXPECT_EQ(Layout().MoveAfter(folder, folder), folder);
    EXPECT_EQ(Layout().MoveAfter(folder, Node(L"a")), folder);
    EXPECT_FALSE(Layout().IsModified());
    const LayoutItemId id = Layout().Find(folder)->id;
    const HTREEITEM moved = Layout().MoveAfter(folder, Node(L"b"));
    EXPECT_EQ(Layout().Find(moved)->id, id);
    EXPECT_EQ(Layout().HandleOf(id), moved);
}

TEST_F(LayoutTree, SeveralPluginsBehindAPluginEndUpInReverseOrder) {
    Build(L"F(a),b");
    for (const wchar_t* name : {L"x", L"y"}) {
        LayoutItem plugin = NewPlugin();
        plugin.name = name;
        Layout().Insert(Node(L"b"), IntoFolder::Yes, plugin);
    }
    EXPECT_EQ(Shape(), L"F(a),b,y,x");
}

TEST_F(LayoutTree, WhatIsInViewStaysUnlessTheItemWouldBeOutOfSight) {
    struct Case {
        const wchar_t* before;
        const wchar_t* top;
        int button;
        const wchar_t* topAfter;
    };
    for (const Case& c : {
             Case{L"F(a,b,c,*d)", L"b", IDC_PROMOTE, L"b"},
             Case{L"a,b,c,*d", L"b", IDC_MOVE_UP, L"b"},
             Case{L"*a,b,c,d", L"c", IDC_MOVE_DOWN, L"a"},
             Case{L"F(a,*b,c,d)", L"b", IDC_REMOVE, L"c"},
             Case{L"F(a,b),c,*d", L"b", IDC_COLLAPSE_ALL, L"F"},
             Case{L"c,*b,a", L"c", IDC_SORT_ALL, L"a"},
         }) {
        std::wstring text = c.before;
        for (int i = 0; i < 60; ++i) text += L",k";
        Build(text);
        Tree().ScrollToTop(Node(c.top));
        Press(c.button);
        EXPECT_EQ(Top(), c.topAfter) << support::Utf8(c.before) << ", button " << c.button;
    }
    Build(L"F(a,b,c,d),G(*e)");
    Press(IDC_PROMOTE);
    EXPECT_EQ(Top(), L"F") << "all of it is in view";
}

TEST_F(LayoutTree, RenamesInPlaceButNotToNothing) {
    Build(L"*a,b,-");
    Key(Window(), VK_F2);
    const std::wstring longName(300, L'n');
    Tree().LabelEdit().SetText(longName);
    View().EndLabelEdit(false);
    EXPECT_EQ(Shape(), L"*" + longName + L",b,-");
    Layout().SetModified(false);
    Tree().EditLabel(Tree().Root());
    EXPECT_EQ(Tree().LabelEdit().Text(), longName) << "the whole name is there to edit";
    Tree().LabelEdit().SetText(L"");
    View().EndLabelEdit(false);
    EXPECT_FALSE(Layout().IsModified());
    EXPECT_FALSE(Tree().EditLabel(Layout().Children(nullptr).back())) << "a separator has no name to edit";
    Build(L"*a,b");
    Key(Window(), VK_F2);
    Tree().LabelEdit().SetText(L"c");
    ClickOn(L"b");
    EXPECT_EQ(Shape(), L"c,*b") << "a click elsewhere takes the name, and selects";
}

TEST_F(LayoutTree, WhatCouldNotBeSavedIsSelectedAlone) {
    Build(L"*a,*b");
    Layout().Change(Node(L"b"), [](LayoutItem& record) { record.defaultPreset = L"\x01"; });
    support::EnterText(Control(IDC_LAYOUTS), L"Name");
    m_popups.ExpectFile(L"Save Plug-In", m_files.Path(L"x")).Expect(L"contains a character", IDOK);
    Press(IDC_LAYOUT_SAVE);
    EXPECT_EQ(Shape(), L"a,*b");
    EXPECT_TRUE(IsEnabled(IDC_MOVE_UP));
}

TEST_F(LayoutTree, ThePropertiesOfAPluginBringItsOriginalNameUpToDate) {
    LayoutItem plugin = NewPlugin();
    plugin.clsid = "{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}"_guid;
    plugin.originalName = L"Old";
    support::SetText(HKEY_CLASSES_ROOT, L"CLSID\\" + ClsidText(plugin.clsid), nullptr, L"New");
    const HTREEITEM item = Layout().Append(nullptr, plugin);
    Layout().SetModified(false);
    m_popups.Expect(L"Item Properties", IDCANCEL);
    View().Run(ID_ITEM_PROPERTIES, item);
    EXPECT_EQ(Layout().Find(item)->originalName, L"New");
    EXPECT_FALSE(Layout().IsModified()) << "it was only looked at";
}

TEST_F(LayoutTree, AltEnterOpensTheProperties) {
    Build(L"*a,F,-");
    m_popups.Expect(L"Item Properties", IDCANCEL).Expect(L"Folder Name", IDCANCEL);
    Key(Window(), VK_RETURN);
    for (const HTREEITEM item : Layout().Children(nullptr)) {
        Tree().SelectOnly(item);
        KeyWith(VK_MENU, WM_SYSKEYDOWN, VK_RETURN);
    }
}

TEST_F(LayoutTree, TheMenuKeyOpensTheMenuAtTheItem) {
    static RECT menu;
    std::wstring text = L"*a";
    for (int i = 0; i < 60; ++i) text += L",k";
    Build(text);
    Show();
    for (const bool shiftF10 : {false, true}) {
        menu = {};
        Tree().ScrollToTop(Layout().Children(nullptr).back());
        const UINT_PTR timer = ::SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {
            const HWND open = ::FindWindowW(L"#32768", nullptr);
            if (open && ::IsWindowVisible(open) && ::GetWindowRect(open, &menu)) ::EndMenu();
        });
        shiftF10 ? KeyWith(VK_SHIFT, WM_SYSKEYDOWN, VK_F10) : Key(Window(), VK_APPS);
        ::KillTimer(nullptr, timer);
        RECT label{};
        ASSERT_TRUE(Tree().LabelOf(Node(L"a"), label));
        EXPECT_GE(label.top, 0);
        ::MapWindowPoints(Window(), nullptr, reinterpret_cast<POINT*>(&label), 2);
        EXPECT_EQ(menu.left, label.left);
        EXPECT_EQ(menu.top, label.bottom);
    }
}

TEST_F(LayoutTree, DeletesOnlyWhatShowsAsSelectedAndAsksAboutFolders) {
    Build(L"F(^a),b");
    Key(Window(), VK_DELETE);
    EXPECT_EQ(Shape(), L"F(a),b") << "the caret alone is not enough";
    for (const int answer : {IDNO, IDYES}) {
        Build(L"*a,^F(b),c");
        m_popups.Expect(L"A folder is about to be deleted", answer);
        Key(Window(), VK_DELETE);
        EXPECT_EQ(Tree().Count(), answer == IDNO ? 4 : 1) << "the caret item goes along";
    }
}

TEST_F(LayoutTree, ButtonsFollowTheSelection) {
    struct Case {
        const wchar_t* tree;
        std::vector<int> enabled;
    };
    for (const Case& c : {
             Case{L"", {}},
             Case{L"*a,F(b)", {IDC_EXPAND_ALL, IDC_SORT_ALL, IDC_REMOVE, IDC_MOVE_DOWN}},
             Case{L"a,F(*b,*c)", {IDC_EXPAND_ALL, IDC_SORT_ALL, IDC_REMOVE, IDC_PROMOTE}},
             Case{L"*a,F(*b)", {IDC_EXPAND_ALL, IDC_SORT_ALL, IDC_REMOVE}},
             Case{L"a,^F", {IDC_EXPAND_ALL, IDC_SORT_ALL}},
         }) {
        Build(c.tree);
        std::vector<int> enabled;
        for (const int id :
             {IDC_EXPAND_ALL, IDC_SORT_ALL, IDC_REMOVE, IDC_MOVE_UP, IDC_MOVE_DOWN, IDC_PROMOTE}) {
            if (IsEnabled(id)) enabled.push_back(id);
        }
        EXPECT_EQ(enabled, c.enabled) << support::Utf8(c.tree);
    }
    Build(L"*a");
    Item(IDC_REMOVE).Focus();
    Press(IDC_REMOVE);
    EXPECT_TRUE(Tree().HasFocus()) << "a button that goes grey leaves the keyboard to the tree";
}

TEST_F(LayoutTree, OnlyMissingPluginsAreGreyAndAnEnumerationTellsWhichTheseAre) {
    Build(L"F(a,b),c");
    for (const wchar_t* name : {L"a", L"c"}) {
        Layout().Change(Node(name), [&](LayoutItem& record) {
            record.clsid = *ParseClsid(support::IdText(*name == L'a' ? 1 : 2));
            record.installed = *name == L'c';
        });
    }
    Layout().SetModified(false);
    EXPECT_TRUE(IsGrey(L"a") && IsGrey(L"b"));
    EXPECT_FALSE(IsGrey(L"F") || IsGrey(L"c"));
    support::AddVst(1, L"Found");
    m_dialog->Send(WM_TIMER, 1);
    EXPECT_TRUE(IsGrey(L"b") && IsGrey(L"c"));
    EXPECT_FALSE(IsGrey(L"a"));
    EXPECT_FALSE(Layout().IsModified());
}

TEST_F(LayoutTree, ClickingSelectsAsInAList) {
    struct Case {
        const wchar_t* item;
        WPARAM keys;
        const wchar_t* after;
        const wchar_t* caret;
    };
    Build(L"a,*b,c,d");
    for (const Case& c : {
             Case{L"d", MK_SHIFT, L"a,*b,*c,*d", L"d"},
             Case{L"a", MK_SHIFT, L"*a,*b,c,d", L"a"},  // from the same anchor
             Case{L"d", MK_CONTROL, L"*a,*b,c,*d", L"d"},
             Case{L"d", MK_CONTROL, L"*a,*b,c,d", L"a"},  // the first of those that are left
             Case{L"a", MK_CONTROL, L"a,*b,c,d", L"b"},
             Case{L"b", MK_CONTROL, L"a,b,c,d", L""},
             Case{L"d", 0, L"a,b,c,*d", L"d"},
             Case{L"c", MK_SHIFT, L"a,b,*c,*d", L"c"},
             Case{L"b", 0, L"a,*b,c,d", L"b"},  // forgets the anchor
             Case{L"a", MK_SHIFT, L"*a,*b,c,d", L"a"},
         }) {
        ClickOn(c.item, c.keys);
        EXPECT_EQ(Shape(), c.after) << support::Utf8(c.item);
        EXPECT_EQ(Caret(), c.caret);
    }
    EXPECT_FALSE(IsEnabled(IDC_MOVE_DOWN)) << "the release never came to the tree";
    Build(L"a,^b");
    ClickOn(L"b");
    EXPECT_EQ(Shape(), L"a,*b") << "though it was the caret item already";
    const POINT place = PlaceOf(L"a");
    ClickOn(L"a", MK_CONTROL);
    ::PostMessageW(Window(), WM_LBUTTONDBLCLK, MK_LBUTTON | MK_CONTROL, MAKELPARAM(place.x, place.y));
    Pump();
    EXPECT_EQ(Shape(), L"a,*b") << "twice in a row";
    Tree().Delete(Node(L"b"));
    ClickOn(L"a", MK_SHIFT);
    EXPECT_EQ(Shape(), L"*a") << "the anchor is gone";
}

TEST_F(LayoutTree, WhatAClosedFolderHidesIsNotSelected) {
    Build(L"a,F(b,c,*d)");
    ClickOn(L"c", MK_SHIFT);
    Press(IDC_COLLAPSE_ALL);
    ClickOn(L"a", MK_SHIFT);
    EXPECT_EQ(Shape(), L"*a,*F[b,c,d]") << "up to the folder that hides where the selection began";
    Build(L"F(*a),*b");
    Tree().MoveCaret(Node(L"F"));
    Key(Window(), VK_LEFT);
    EXPECT_EQ(Shape(), L"*F[a],b");
    KeyWith(VK_CONTROL, WM_KEYDOWN, 'A');
    EXPECT_EQ(Shape(), L"*F[a],*b") << "everything that can be seen";
}

TEST_F(LayoutTree, DragsTheSelectionToWhereThePointerIs) {
    struct Case {
        const wchar_t* before;
        const wchar_t* from;
        const wchar_t* to;
        int below;
        const wchar_t* after;
    };
    for (const Case& c : {
             Case{L"F(*a,*b),c,d", L"a", L"b", 5, L"F(*a,*b),c,d"},  // onto itself
             Case{L"*F(a)", L"F", L"a", 5, L"*F(a)"},
             Case{L"F(*a,*b),c,d", L"a", L"d", -5, L"F,c,a,b,d"},
             Case{L"F(*a,b),c", L"a", L"b", 5, L"F(b,a),c"},
             Case{L"F(a),*c", L"c", L"F", 5, L"F(a,c)"},
             Case{L"F(a),*c", L"c", L"F", -5, L"c,F(a)"},
             Case{L"F(*a,b),c", L"a", L"c", 200, L"F(b),c,a"},  // below all items
             Case{L"F[a],*c", L"c", L"F", 5, L"F[a,c]"},
             Case{L"*F(*a,b),*c,d", L"F", L"d", 5, L"d,F(a,b),c"},
             Case{L"*F(a,b),*c", L"F", L"b", 5, L"*F(a,b),*c"},  // not into what moves itself
             Case{L"a,*b", L"a", L"b", 5, L"b,a"},
         }) {
        Build(c.before);
        Item(IDC_CATEGORIES).Focus();
        Drag(c.from, c.to, c.below);
        Drop();
        EXPECT_EQ(Shape(), c.after) << support::Utf8(c.before) << " to " << support::Utf8(c.to) << c.below;
        EXPECT_TRUE(Tree().HasFocus() && IsEnabled(IDC_SORT_ALL));
    }
}

TEST_F(LayoutTree, ADragShowsWhereTheItemsWouldLand) {
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
    EXPECT_EQ(Shape(), L"F(b,a),c");
    std::wstring text = L"*a,F(b";
    for (int i = 0; i < 60; ++i) text += L",k";
    Build(text + L")");
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
