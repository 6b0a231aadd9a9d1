// The layout tree on a hidden dialog.
#include <gtest/gtest.h>
#include <string>

#include "ClsidText.h"
#include "Dialog.h"
#include "LayoutTreeView.h"
#include "resource.h"
#include "support/RegistrySandbox.h"

namespace {

class LayoutTree : public testing::Test {
  protected:
    class CHiddenDialog : public CDialog {
      public:
        CHiddenDialog() : CDialog(IDD_PLUGIN_MANAGER) {}
        CLayoutTreeView* m_view = nullptr;
        WORD m_key = 0;  // the last one that the tree told of
        template <typename T>
        T& View() {
            return *m_view;
        }

      private:
        std::span<const CRoute> Routes() const override {
            using R = CRoutesOf<CHiddenDialog>;
            using Tree = CLayoutTreeView;
            static constexpr CRoute kRoutes[] = {
                R::OnNotify<TVN_SELCHANGEDW, &Tree::OnSelectionChanged>(IDC_LAYOUT_TREE),
                R::OnNotify<TVN_BEGINLABELEDITW, &Tree::OnBeginLabelEdit>(IDC_LAYOUT_TREE),
                R::OnNotify<TVN_ENDLABELEDITW, &Tree::OnEndLabelEdit>(IDC_LAYOUT_TREE),
                R::OnNotify<TVN_DELETEITEMW, &Tree::OnDeleteItem>(IDC_LAYOUT_TREE),
                R::OnNotify<TVN_KEYDOWN, &CHiddenDialog::OnKey>(IDC_LAYOUT_TREE),
            };
            return kRoutes;
        }
        void OnKey(const NMTVKEYDOWN& key) { m_key = key.wVKey; }
    };

    void SetUp() override {
        ASSERT_TRUE(m_dialog.CreateModeless(nullptr));
        m_dialog.m_view = &m_view;
        m_view.OnInitDialog();
    }
    void TearDown() override { m_view.OnDestroy(); }

    CTreeCtrlWrapper& Layout() { return m_view.Layout(); }
    CTreeCtrlEx& Tree() { return Layout().Tree(); }

    /// Builds from a text such as "a,F(b,c),-": capitals are folders.
    void Build(const std::wstring& text) {
        HTREEITEM parent = nullptr;
        for (const wchar_t c : text) {
            if (c == L'(') parent = Last(parent);
            if (c == L')') parent = Tree().Parent(parent);
            if (c == L'-') Layout().Append(parent, NewSeparator());
            if (c >= L'A' && c <= L'Z') Layout().Append(parent, NewFolder({c}));
            if (c >= L'a' && c <= L'z') {
                LayoutItem plugin = NewPlugin();
                plugin.name = c;
                Layout().Append(parent, plugin);
            }
        }
        Layout().SetModified(false);
    }
    HTREEITEM Last(HTREEITEM parent) { return Layout().Children(parent).back(); }
    std::wstring Text(HTREEITEM parent = nullptr) {
        std::wstring text;
        for (const HTREEITEM item : Layout().Children(parent)) {
            if (!text.empty()) text += L',';
            const LayoutItem* record = Layout().Find(item);
            text += !record ? L"?" : record->kind == LayoutKind::Separator ? L"-" : record->name;
            if (Tree().Child(item)) text += L"(" + Text(item) + L")";
        }
        return text;
    }
    HTREEITEM Item(const wchar_t* name) {
        for (HTREEITEM item = Tree().Root(); item; item = Tree().NextInOrder(item)) {
            if (Tree().ItemText(item) == name) return item;
        }
        return nullptr;
    }
    void Select(std::initializer_list<const wchar_t*> names) {
        Tree().SelectOnly(Item(*names.begin()));
        for (const wchar_t* name : names) Tree().SetSelected(Item(name), true);
        m_view.UpdateButtons();
    }
    std::wstring Selected() {
        std::wstring text;
        for (const HTREEITEM item : Tree().SelectedItems()) text += Tree().ItemText(item);
        return text;
    }
    POINT PlaceOf(const wchar_t* name) {
        RECT label{};
        EXPECT_TRUE(TreeView_GetItemRect(Tree().Handle(), Item(name), &label, TRUE)) << name;
        return {(label.left + label.right) / 2, (label.top + label.bottom) / 2};
    }
    void Click(const wchar_t* name, WPARAM keys) {
        const POINT point = PlaceOf(name);
        const LPARAM place = MAKELPARAM(point.x, point.y);
        // Waiting already when the control looks for it.
        ::PostMessageW(Tree().Handle(), WM_LBUTTONUP, keys, place);
        Tree().Send(WM_LBUTTONDOWN, MK_LBUTTON | keys, place);
        MSG up;
        ::PeekMessageW(&up, Tree().Handle(), WM_LBUTTONUP, WM_LBUTTONUP, PM_REMOVE);
    }
    /// From one item to so many pixels below the middle of another; below all without one.
    void Drag(const wchar_t* from, const wchar_t* to, int below) {
        NMTREEVIEWW begin{};
        begin.itemNew.hItem = Item(from);
        begin.ptDrag = PlaceOf(from);
        POINT end = to ? PlaceOf(to) : POINT{5, Tree().ClientRect().bottom - 1};
        end.y += below;
        ::MapWindowPoints(Tree().Handle(), m_dialog.Handle(), &end, 1);
        m_view.OnBeginDrag(begin);
        m_view.OnMouseMove(end);
        m_view.OnButtonUp(end);
    }
    bool IsEnabled(int id) { return m_dialog.Item(id).IsEnabled(); }

    CHiddenDialog m_dialog;
    CPluginDatabase m_noDatabase;
    CPluginInventory m_inventory{L"Software\\No such key", m_noDatabase};
    CExclusionList m_exclusions;
    Visibility m_visibility;
    VstToolPaths m_tools;
    CPluginListView m_plugins{m_dialog, m_inventory, m_exclusions, m_visibility, m_tools};
    CLayoutTreeView m_view{m_dialog, m_inventory, m_plugins};
};

TEST_F(LayoutTree, MovesUpAndDownAndStopsAtTheEnds) {
    Build(L"a,b,F(c)");
    Select({L"b"});
    m_view.OnMoveUp();
    EXPECT_EQ(Text(), L"b,a,F(c)");
    EXPECT_EQ(Selected(), L"b");
    m_view.OnMoveUp();
    m_view.OnMoveDown();
    EXPECT_EQ(Text(), L"a,b,F(c)");
    Select({L"F"});
    Layout().SetModified(false);
    m_view.OnMoveDown();
    EXPECT_FALSE(Layout().IsModified()) << "the last one stays";
    m_view.OnMoveUp();
    EXPECT_EQ(Text(), L"a,F(c),b") << "its children go along";
    EXPECT_TRUE(Layout().IsModified());
    m_view.Run(ID_MOVE_TO_BOTTOM, nullptr);
    EXPECT_EQ(Text(), L"a,b,F(c)");
    m_view.Run(ID_MOVE_TO_TOP, nullptr);
    EXPECT_EQ(Text(), L"F(c),a,b");
}

TEST_F(LayoutTree, PromotesOutOfItsFolderAndToTheEndOfTheTopLevel) {
    Build(L"F(a,G(b,c)),d");
    Select({L"b", L"c"});
    m_view.OnPromote();
    EXPECT_EQ(Text(), L"F(a,G,c,b),d") << "each goes directly behind the folder";
    Select({L"F"});
    m_view.OnPromote();
    EXPECT_EQ(Text(), L"d,F(a,G,c,b)");
    Select({L"G", L"a"});
    m_view.OnPromote();
    EXPECT_EQ(Text(), L"d,F(c,b),G,a");
}

TEST_F(LayoutTree, PromotesAFolderTogetherWithWhatIsInIt) {
    Build(L"F(G(a))");
    Select({L"G", L"a"});
    m_view.OnPromote();
    EXPECT_EQ(Text(), L"F,G,a");
}

TEST_F(LayoutTree, AMoveIntoItselfIsRefused) {
    Build(L"F(G(a)),b");
    const HTREEITEM folder = Item(L"F");
    EXPECT_EQ(Layout().MoveInto(folder, Item(L"G"), false), folder);
    EXPECT_EQ(Layout().MoveInto(folder, folder, false), folder);
    EXPECT_EQ(Layout().MoveAfter(folder, folder), folder);
    EXPECT_EQ(Layout().MoveAfter(folder, Item(L"a")), folder);
    EXPECT_EQ(Text(), L"F(G(a)),b");
    EXPECT_FALSE(Layout().IsModified());
}

TEST_F(LayoutTree, AMoveKeepsTheIdAndWhetherAFolderIsOpen) {
    Build(L"F(a),b");
    Tree().Expand(Item(L"F"), true);
    const LayoutItemId id = Layout().Find(Item(L"F"))->id;
    const HTREEITEM moved = Layout().MoveAfter(Item(L"F"), Item(L"b"));
    EXPECT_EQ(Layout().Find(moved)->id, id);
    EXPECT_EQ(Layout().HandleOf(id), moved);
    EXPECT_TRUE(Tree().IsExpanded(moved));
}

TEST_F(LayoutTree, SortsFoldersFirstAtEveryDepth) {
    Build(L"c,-,F(y,x,-),a,E");
    m_view.OnSortAll();
    EXPECT_EQ(Text(), L"E,F(x,-,y),a,c,-") << "separators stay behind what they followed";
}

TEST_F(LayoutTree, NewItemsGoByTheInsertionRule) {
    Build(L"F(a),b");
    Select({L"F"});
    m_view.OnNewFolder();
    EXPECT_EQ(Text(), L"F(a),New Folder,b");
    EXPECT_TRUE(m_view.IsEditingLabel());
    m_view.EndLabelEdit(true);
    m_view.OnAddSeparator();
    EXPECT_EQ(Text(), L"F(a),New Folder,-,b");
    EXPECT_FALSE(Tree().EditLabel(Tree().Caret())) << "a separator has no name to edit";
    m_view.Run(ID_NEW_SUBFOLDER, Item(L"F"));
    m_view.EndLabelEdit(true);
    EXPECT_EQ(Text(), L"F(a,New Folder),New Folder,-,b");
    m_view.Run(ID_NEW_FOLDER_AT_END, nullptr);
    m_view.EndLabelEdit(true);
    EXPECT_EQ(Text(), L"F(a,New Folder),New Folder,-,b,New Folder");
    for (const wchar_t* name : {L"x", L"y"}) {
        LayoutItem plugin = NewPlugin();
        plugin.name = name;
        Layout().Insert(Item(L"b"), IntoFolder::Yes, plugin);
    }
    EXPECT_EQ(Text(), L"F(a,New Folder),New Folder,-,b,y,x,New Folder");
}

TEST_F(LayoutTree, RenamesInPlaceButNotToNothing) {
    Build(L"a");
    Tree().EditLabel(Item(L"a"));
    const CWindow edit = Tree().LabelEdit();
    ASSERT_TRUE(edit.IsLive());
    const std::wstring longName(300, L'n');
    edit.SetText(longName);
    m_view.EndLabelEdit(false);
    EXPECT_EQ(Text(), longName);
    Layout().SetModified(false);
    Tree().EditLabel(Tree().Root());
    EXPECT_EQ(Tree().LabelEdit().Text(), longName) << "the whole name is there to edit";
    Tree().LabelEdit().SetText(L"");
    m_view.EndLabelEdit(false);
    EXPECT_EQ(Text(), longName);
    EXPECT_FALSE(Layout().IsModified());
}

TEST_F(LayoutTree, ThePropertiesOfAPluginBringItsOriginalNameUpToDate) {
    const support::RegistrySandbox sandbox;
    LayoutItem plugin = NewPlugin();
    plugin.clsid = "{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}"_guid;
    plugin.originalName = L"Old";
    support::SetText(HKEY_CLASSES_ROOT, L"CLSID\\" + ClsidText(plugin.clsid), nullptr, L"New");
    const HTREEITEM item = Layout().Append(nullptr, plugin);
    Layout().SetModified(false);
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {
        ::PostMessageW(::FindWindowW(nullptr, L"Item Properties"), WM_COMMAND, IDCANCEL, 0);
    });
    m_view.Run(ID_ITEM_PROPERTIES, item);
    ::KillTimer(nullptr, timer);
    EXPECT_EQ(Layout().Find(item)->originalName, L"New");
    EXPECT_FALSE(Layout().IsModified()) << "it was only looked at";
}

TEST_F(LayoutTree, DeletesTheSelectionAndTheCaretWithTheirRecords) {
    Build(L"F(a,G(b)),c,d,e");
    Select({L"c", L"F", L"b", L"d"});
    Layout().DeleteSelection();
    EXPECT_EQ(Text(), L"e");
    EXPECT_EQ(Tree().Count(), 1);
    Build(L"x,y");
    Select({L"x"});
    Tree().SetSelected(Item(L"x"), false);
    Layout().DeleteSelection();
    EXPECT_EQ(Text(), L"e,y") << "the caret item goes even if it is not selected";
}

TEST_F(LayoutTree, ButtonsFollowTheSelection) {
    m_view.UpdateButtons();
    for (const int id : {IDC_EXPAND_ALL, IDC_SORT_ALL, IDC_REMOVE, IDC_MOVE_UP, IDC_PROMOTE})
        EXPECT_FALSE(IsEnabled(id));
    Build(L"a,F(b,c)");
    Select({L"a"});
    EXPECT_TRUE(IsEnabled(IDC_EXPAND_ALL) && IsEnabled(IDC_REMOVE) && IsEnabled(IDC_MOVE_DOWN));
    EXPECT_FALSE(IsEnabled(IDC_MOVE_UP) || IsEnabled(IDC_PROMOTE));
    Select({L"b", L"c"});
    EXPECT_TRUE(IsEnabled(IDC_REMOVE) && IsEnabled(IDC_PROMOTE));
    EXPECT_FALSE(IsEnabled(IDC_MOVE_UP) || IsEnabled(IDC_MOVE_DOWN));
    Select({L"a", L"b"});
    EXPECT_FALSE(IsEnabled(IDC_PROMOTE)) << "one of them is in no folder";
}

TEST_F(LayoutTree, AButtonThatGoesGreyLeavesTheKeyboardToTheTree) {
    Build(L"a");
    Tree().SelectOnly(Item(L"a"));
    m_dialog.Item(IDC_REMOVE).Focus();
    ASSERT_TRUE(m_dialog.Item(IDC_REMOVE).HasFocus());
    m_view.OnRemove();
    EXPECT_TRUE(Tree().HasFocus());
}

TEST_F(LayoutTree, ShiftF10IsTheMenuKey) {
    BYTE keys[256]{};
    ::GetKeyboardState(keys);
    for (const BYTE shift : {BYTE{0x80}, BYTE{0}}) {
        keys[VK_SHIFT] = shift;
        ::SetKeyboardState(keys);
        m_dialog.m_key = 0;
        Tree().Send(WM_SYSKEYDOWN, VK_F10);
        EXPECT_EQ(m_dialog.m_key == VK_APPS, shift != 0);
    }
}

TEST_F(LayoutTree, OnlyMissingPluginsAreDrawnInGrey) {
    Build(L"F(a,b),-");
    Layout().Change(Item(L"a"), [](LayoutItem& record) { record.installed = true; });
    const auto colourOf = [this](HTREEITEM item) {
        NMTVCUSTOMDRAW draw{};
        draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
        draw.nmcd.dwItemSpec = reinterpret_cast<DWORD_PTR>(item);
        draw.clrText = RGB(1, 2, 3);
        m_view.OnCustomDraw(draw);
        return draw.clrText;
    };
    EXPECT_EQ(colourOf(Item(L"b")), RGB(0xCD, 0xCD, 0xCD));
    for (const HTREEITEM other : {Item(L"a"), Item(L"F"), Last(nullptr)})
        EXPECT_EQ(colourOf(other), RGB(1, 2, 3));
}

TEST_F(LayoutTree, ClickingSelectsAsInAList) {
    Build(L"a,b,c,d");
    Tree().SelectOnly(Item(L"b"));
    Click(L"d", MK_SHIFT);
    EXPECT_EQ(Selected(), L"bcd");
    Click(L"a", MK_SHIFT);
    EXPECT_EQ(Selected(), L"ab") << "from the same anchor";
    Click(L"d", MK_CONTROL);
    EXPECT_EQ(Selected(), L"abd");
    EXPECT_EQ(Tree().Caret(), Item(L"d"));
    Click(L"d", MK_CONTROL);
    EXPECT_EQ(Selected(), L"ab");
    EXPECT_EQ(Tree().Caret(), Item(L"a")) << "the first of those that are left";
    Click(L"a", MK_CONTROL);
    Click(L"b", MK_CONTROL);
    EXPECT_EQ(Selected(), L"");
    EXPECT_EQ(Tree().Caret(), nullptr);
}

TEST_F(LayoutTree, APlainClickSelectsOneItemAndSetsTheButtons) {
    Build(L"a,b,c,d");
    Select({L"a"});
    Click(L"b", 0);
    EXPECT_TRUE(IsEnabled(IDC_MOVE_UP)) << "the release never came to the tree";
    Tree().SetSelected(Item(L"b"), false);
    Click(L"b", 0);
    EXPECT_EQ(Selected(), L"b") << "though it was the caret item already";
    Click(L"d", MK_SHIFT);
    Click(L"a", 0);
    Click(L"b", MK_SHIFT);
    EXPECT_EQ(Selected(), L"ab") << "a plain click forgets where a selection began";
    Tree().Delete(Item(L"a"));
    Click(L"c", MK_SHIFT);
    EXPECT_EQ(Selected(), L"bc") << "and so does the end of that item";
}

TEST_F(LayoutTree, DragsTheSelectionAndLeavesItWhereItIsWhenItIsDroppedOnItself) {
    Build(L"F(a,b),c,d");
    Tree().Expand(Item(L"F"), true);
    Select({L"a", L"b"});
    Drag(L"a", L"a", -1);
    Drag(L"a", L"b", 1);
    EXPECT_EQ(Text(), L"F(a,b),c,d");
    Drag(L"a", L"d", -1);
    EXPECT_EQ(Text(), L"F,c,a,b,d") << "before the item, in its upper half";
    EXPECT_EQ(Selected(), L"");
    Drag(L"d", L"F", 1);
    EXPECT_EQ(Text(), L"F(d),c,a,b");
    Drag(L"F", L"F", 0);
    Drag(L"F", L"d", 1);
    EXPECT_EQ(Text(), L"F(d),c,a,b") << "not into itself";
    Drag(L"c", L"F", -1);
    EXPECT_EQ(Text(), L"c,F(d),a,b") << "the first of its parent";
    Drag(L"d", nullptr, 0);
    EXPECT_EQ(Text(), L"c,F,a,b,d") << "below all items";
    EXPECT_TRUE(IsEnabled(IDC_SORT_ALL));
}

TEST_F(LayoutTree, WhatIsDraggedWithItsFolderStaysInIt) {
    Build(L"F(a,b),c,d");
    Tree().Expand(Item(L"F"), true);
    Select({L"F", L"a", L"c"});
    Drag(L"F", L"d", 1);
    EXPECT_EQ(Text(), L"d,F(a,b),c");
    Select({L"F", L"c"});
    Drag(L"F", L"b", 1);
    EXPECT_EQ(Text(), L"d,F(a,b),c") << "nothing moves into a folder that moves itself";
}

}  // namespace
