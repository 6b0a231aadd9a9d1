#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>

#include "Dialog.h"
#include "DialogHelp.h"
#include "resource.h"
#include "support/Popups.h"
#include "support/WindowActions.h"

namespace {

class CTestDialog : public CDialog {
  public:
    CTestDialog() : CDialog(IDD_ABOUT) {}

    std::function<bool()> m_keyHook = [] { return false; };
    int m_oks = 0;

  private:
    std::span<const CRoute> Routes() const override {
        using R = CRoutesOf<CTestDialog>;
        static constexpr CRoute kRoutes[] = {R::OnCommand<BN_CLICKED, &CTestDialog::OnIcon>(IDC_ABOUT_ICON)};
        return kRoutes;
    }
    void OnOK() override { ++m_oks; }
    bool PreTranslate(const MSG& message) override { return message.message == WM_KEYDOWN && m_keyHook(); }
    void OnIcon() { throw std::runtime_error("a handler that fails"); }
};

TEST(Dialog, TheKeyHookComesBeforeTheSystemsKeysAndWhatFailsEndsItselfOnly) {
    CTestDialog dialog;
    ASSERT_TRUE(dialog.CreateModeless(nullptr));
    const auto oksAfterEnter = [&dialog](std::function<bool()> hook) {
        dialog.m_keyHook = std::move(hook);
        MSG enter{dialog.Item(IDOK).Handle(), WM_KEYDOWN, VK_RETURN, 0, 0, {}};
        EXPECT_TRUE(dialog.Translate(enter));
        return dialog.m_oks;
    };
    EXPECT_EQ(oksAfterEnter([] { return false; }), 1);
    EXPECT_EQ(oksAfterEnter([] { return true; }), 1) << "swallowed";
    EXPECT_EQ(oksAfterEnter([]() -> bool { throw std::runtime_error("a hook that fails"); }), 2)
        << "a key is no less a key";
    dialog.Send(WM_COMMAND, IDC_ABOUT_ICON);
    EXPECT_TRUE(dialog.IsLive());
    for (const UINT key : {UINT{WM_CHARTOITEM}, UINT{WM_VKEYTOITEM}})
        EXPECT_EQ(dialog.Send(key, VK_SPACE), -1) << "a key that nobody takes is left to its list";
}

class CNotedHelp : public IDialogHelp {
  public:
    std::vector<DWORD> m_asked;

  private:
    void ShowHelp(DWORD context) override { m_asked.push_back(context); }
    bool TakesMessage(MSG& message) override { return message.message == WM_KEYDOWN; }
};

TEST(Dialog, HelpIsAskedForByTheNearestNumberAndSeesEachMessageFirst) {
    CNotedHelp help;
    SetDialogHelp(&help);
    CTestDialog owner;
    EXPECT_TRUE(owner.CreateModeless(nullptr));
    const HWND button = owner.Item(IDOK).Handle();
    const auto pressF1 = [&owner](int kind, HANDLE place) {
        HELPINFO info{sizeof info, kind, 0, place, 0, {}};
        owner.Item(IDOK).Send(WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
    };
    pressF1(HELPINFO_WINDOW, button);
    ::SetWindowContextHelpId(button, 77);
    pressF1(HELPINFO_WINDOW, button);
    pressF1(HELPINFO_MENUITEM, ::GetSystemMenu(owner.Handle(), FALSE));
    EXPECT_EQ(help.m_asked, (std::vector<DWORD>{HelpOfDialog(IDD_ABOUT), 77, HelpOfDialog(IDD_ABOUT)}));
    support::Popups popups;
    popups.Expect(L"Corvane Plug-in Manager", [](HWND box) {
        support::PostKey(::GetDlgItem(box, IDOK), VK_RETURN);
        ::PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
    });
    EXPECT_EQ(CDialog(IDD_ABOUT).RunModal(owner.Handle()), IDCANCEL) << "the help window had the key";
    SetDialogHelp(nullptr);
}

}  // namespace
