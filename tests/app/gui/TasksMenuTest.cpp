// The menu of the button Tasks.
#include "TasksMenu.h"
#include "support/MainDialog.h"
#include "support/ShownMenu.h"

namespace {

using Tasks = support::MainDialog;

TEST_F(Tasks, NameWhatTheyCouldDo) {
    Open();
    Press(IDC_ADD_SEPARATOR);
    const UniqueMenu menu = m_dialog->View<CTasksMenu>().Menu();
    for (const auto& [command, text] :
         {std::pair(UINT{ID_UNDO}, L"&Undo Add Separator\tCtrl+Z"),
          {ID_REDO, L"&Redo\tCtrl+Y"},
          {ID_FILL_BY_BOTH, L"By Category, &Then Vendor"},  // in a menu of its own
          {ID_BACKUPS, L"&Backups..."}}) {
        wchar_t shown[64] = L"";
        ::GetMenuStringW(menu.Get(), command, shown, 64, MF_BYCOMMAND);
        EXPECT_STREQ(shown, text);
        const UINT state = ::GetMenuState(menu.Get(), command, MF_BYCOMMAND);
        EXPECT_EQ((state & MF_GRAYED) != 0, command == ID_REDO) << command;
    }
}

TEST_F(Tasks, DropByMouseSpaceEnterAndDown) {
    Open();
    Show();
    Item(IDC_TASKS).Focus();  // as its letter or a click does
    EXPECT_TRUE(support::WorkMenu([this] { Press(IDC_TASKS); }));
    for (const WORD key : {WORD{VK_RETURN}, WORD{VK_DOWN}})
        EXPECT_TRUE(support::WorkMenu([this, key] { Key(IDC_TASKS, key); })) << key;
    // Sent, for the letter of a posted Space would come to the menu.
    Item(IDC_TASKS).Send(WM_KEYDOWN, VK_SPACE);
    EXPECT_TRUE(support::WorkMenu([this] { Item(IDC_TASKS).Send(WM_KEYUP, VK_SPACE); }));
    EXPECT_TRUE(Item(IDC_TASKS).HasFocus());
}

}  // namespace
