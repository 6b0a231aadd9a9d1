// The menu of the button Tasks.
#include <array>

#include "TasksMenu.h"
#include "support/LeaveMenu.h"
#include "support/MainDialog.h"

namespace {

class Tasks : public support::MainDialog {
  protected:
    /// Each entry's text, in brackets when it can't be used.
    static std::wstring Shown(const CTasksMenu& tasks) {
        const UniqueMenu menu = tasks.Menu();
        const HMENU shown = ::GetSubMenu(menu.Get(), 0);
        std::wstring texts;
        for (UINT i = 0; i < 13; ++i) {
            std::array<wchar_t, 64> text{};
            ::GetMenuStringW(shown, i, text.data(), 64, MF_BYPOSITION);
            const bool grey = text[0] && (::GetMenuState(shown, i, MF_BYPOSITION) & MF_GRAYED) != 0;
            texts += (grey ? L"(" : L"") + std::wstring(text.data()) + (grey ? L")" : L"") + L",";
        }
        return texts;
    }
};

TEST_F(Tasks, NameWhatTheyCouldDo) {
    Open();
    bool enabled = true;
    const CTasksMenu tasks(*m_dialog, {{.id = ID_UNDO,
                                        .enabled = [&] { return enabled; },
                                        .text = [] { return std::wstring(L"&Undo Sort All"); }},
                                       {.id = ID_BACKUPS}});
    EXPECT_EQ(Shown(tasks),
              L"&Undo Sort All\tCtrl+Z,(&Redo\tCtrl+Y),,(Cu&t\tCtrl+X),(&Copy\tCtrl+C),"
              L"(&Paste\tCtrl+V),,(&Save Layout\tCtrl+S),,(S&ave Studio Set...),(&Load Studio Set...),,"
              L"&Backups...,");
    enabled = false;
    EXPECT_TRUE(Shown(tasks).starts_with(L"(&Undo Sort All\tCtrl+Z)"));
}

TEST_F(Tasks, DropByMouseSpaceEnterAndDown) {
    Open();
    Show();
    Item(IDC_TASKS).Focus();  // as its letter or a click does
    EXPECT_TRUE(support::LeaveMenu([this] { Press(IDC_TASKS); }));
    for (const WORD key : {WORD{VK_RETURN}, WORD{VK_DOWN}})
        EXPECT_TRUE(support::LeaveMenu([this, key] { Key(IDC_TASKS, key); })) << key;
    // Sent, for the letter of a posted Space would come to the menu.
    Item(IDC_TASKS).Send(WM_KEYDOWN, VK_SPACE);
    EXPECT_TRUE(support::LeaveMenu([this] { Item(IDC_TASKS).Send(WM_KEYUP, VK_SPACE); }));
    EXPECT_TRUE(Item(IDC_TASKS).HasFocus());
}

}  // namespace
