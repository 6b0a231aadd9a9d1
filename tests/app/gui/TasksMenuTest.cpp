// The menu of the button Tasks.
#include <array>

#include "support/MainDialog.h"
#include "support/ShownMenu.h"

namespace {

using Tasks = support::MainDialog;

TEST_F(Tasks, NameWhatTheyCouldDo) {
    Open();
    Press(IDC_ADD_SEPARATOR);
    /// With a minus when it can't be used.
    const auto shown = [this](UINT command) {
        const UniqueMenu menu = m_dialog->View<CTasksMenu>().Menu();
        std::array<wchar_t, 64> text{};
        ::GetMenuStringW(menu.Get(), command, text.data(), 64, MF_BYCOMMAND);
        const bool grey = (::GetMenuState(menu.Get(), command, MF_BYCOMMAND) & MF_GRAYED) != 0;
        return (grey ? L"-" : L"") + std::wstring(text.data());
    };
    EXPECT_EQ(shown(ID_UNDO), L"&Undo Add Separator\tCtrl+Z");
    EXPECT_EQ(shown(ID_REDO), L"-&Redo\tCtrl+Y");
    EXPECT_EQ(shown(ID_FILL_BY_BOTH), L"By Category, &Then Vendor") << "in a menu of its own";
    EXPECT_EQ(shown(ID_BACKUPS), L"&Backups...");
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
