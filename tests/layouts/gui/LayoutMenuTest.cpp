// The context menus of the layout tree.
#include <algorithm>

#include "Resources.h"
#include "layouts/LayoutTreeDialog.h"

namespace {

constexpr UINT kGetMenu = 0x1E1;  // MN_GETHMENU

class LayoutMenu : public support::LayoutTreeDialog {
  protected:
    void SetUp() override { Open(); }
    struct Seen {
        std::vector<UINT> commands;
        POINT corner{};
    };
    static std::vector<UINT> CommandsOf(HMENU menu) {
        std::vector<UINT> commands;
        for (int row = 0; row < ::GetMenuItemCount(menu); ++row)
            commands.push_back(::GetMenuItemID(menu, row));
        return commands;
    }
    /// The menu that `open` brings up; the command is chosen in it, or else it is left.
    static Seen Menu(const std::function<void()>& open, UINT command = 0) {
        static UINT wanted;
        static Seen seen;
        wanted = command;
        seen = {};
        const UINT_PTR timer = ::SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {
            const HWND menu = ::FindWindowW(L"#32768", nullptr);
            if (!menu || !::IsWindowVisible(menu) || !seen.commands.empty()) return;
            const RECT place = support::RectOf(menu);
            seen.corner = {place.left, place.top};
            seen.commands = CommandsOf(reinterpret_cast<HMENU>(support::Send(menu, kGetMenu)));
            const auto chosen = std::ranges::find(seen.commands, wanted);
            if (wanted == 0 || chosen == seen.commands.end()) {
                ::EndMenu();
                return;
            }
            const auto isCommand = [](UINT id) { return id != 0; };  // and no line between them
            auto downs = std::count_if(seen.commands.begin(), chosen + 1, isCommand);
            for (; downs > 0; --downs) support::PostKey(menu, VK_DOWN);
            support::PostKey(menu, VK_RETURN);
        });
        open();
        ::KillTimer(nullptr, timer);
        return seen;
    }
};

TEST_F(LayoutMenu, CommandsDoTheirWork) {
    struct Case {
        const wchar_t* before;
        UINT command;
        const wchar_t* after;
    };
    for (const Case& c : {
             Case{L"*a,b,F(c)", ID_MOVE_TO_BOTTOM, L"b,F(c),*a"},
             Case{L"a,b,^F(c)", ID_MOVE_TO_TOP, L"^F(c),a,b"},
             Case{L"*F(a),b", ID_NEW_SUBFOLDER, L"F(a,*n()),b"},
             Case{L"*F(a),b", ID_NEW_FOLDER_HERE, L"F(a),*n(),b"},
             Case{L"F(a),b", ID_NEW_FOLDER_AT_END, L"F(a),b,*n()"},
             Case{L"+F(b,a),*G(d,c),H(f,e)", ID_SORT_FOLDERS, L"+F(a,b),*G(c,d),H(f,e)"},
             Case{L"*F(G(a)),b", ID_ITEM_DELETE, L"*b"},  // without a question
             Case{L"a,*b", ID_ITEM_RENAME, L"a,*n"},
             Case{L"*F(a)", ID_ITEM_RENAME, L"*n(a)"},
         }) {
        Build(c.before);
        PutUnderPointer({-20, 0});  // not within the menu
        Menu([this] { Type(VK_APPS); }, c.command);
        if (View().IsEditingLabel()) Tree().LabelEdit().SetText(L"n");
        View().EndLabelEdit(false);
        EXPECT_EQ(Shape(), c.after) << support::Utf8(c.before) << ", command " << c.command;
        EXPECT_TRUE(Layout().IsModified());
        const std::wstring buttons = Buttons();
        View().UpdateButtons();
        EXPECT_EQ(Buttons(), buttons);
    }
    for (const int answer : {IDNO, IDYES}) {
        Build(L"*a,F(b)");
        support::EnterText(Control(IDC_LAYOUTS), L"Mine");
        m_popups.Expect(L"all items from the current menu layout, \"Mine\"", answer);
        View().Run(ID_CLEAR_LAYOUT, Tree().Root());
        EXPECT_EQ(Shape(), answer == IDYES ? L"" : L"*a,F(b)");
        EXPECT_EQ(Layout().IsModified(), answer == IDYES);
    }
}

TEST_F(LayoutMenu, TheRightButtonSelectsTheItemAndOpensItsMenu) {
    struct Case {
        const wchar_t* item;
        UINT menu;
        const wchar_t* after;
    };
    const auto open = [this](POINT place) {
        PutUnderPointer(place);
        return Menu([&] {
            PostMouse(WM_RBUTTONDOWN, place, MK_RBUTTON);
            PostMouse(WM_RBUTTONUP, place);
            Pump();
        });
    };
    for (const Case& c : {
             Case{L"a", IDM_LAYOUT_PLUGIN, L"*a,b,F(c),-"},
             Case{L"F", IDM_LAYOUT_FOLDER, L"a,b,*F(c),-"},
             Case{kSeparatorText, 0, L"a,b,F(c),*-"},
             Case{L"", IDM_LAYOUT, L"a,b,F(c),-"},
         }) {
        Build(L"+a,*b,F(c),-");
        const POINT place = PlaceOf(c.item);
        const Seen seen = open(place);
        const UniqueMenu menu = c.menu != 0 ? LoadMenuResource(c.menu) : UniqueMenu();
        EXPECT_EQ(seen.commands, CommandsOf(::GetSubMenu(menu.Get(), 0))) << support::Utf8(c.item);
        EXPECT_EQ(Shape(), c.after);
        if (!*c.item) continue;
        const POINT behind{Tree().ClientRect().right - 2, place.y};
        EXPECT_EQ(open(behind).commands, std::vector<UINT>{});
    }
}

TEST_F(LayoutMenu, ByKeyItOpensAtTheItem) {
    Build(L"*a" + Times(60, L",k"));
    for (const auto& [key, held] : {std::pair<WORD, BYTE>(VK_APPS, 0), {VK_F10, VK_SHIFT}}) {
        Tree().ScrollToTop(Layout().Children(nullptr).back());
        const Seen seen = Menu([&] { Type(key, held); });
        RECT label{};
        ASSERT_TRUE(Tree().LabelOf(Node(L"a"), label));
        EXPECT_GE(label.top, 0);
        POINT corner{label.left, label.bottom};
        ::ClientToScreen(Window(), &corner);
        EXPECT_EQ(std::pair(seen.corner.x, seen.corner.y), std::pair(corner.x, corner.y));
    }
}

}  // namespace
