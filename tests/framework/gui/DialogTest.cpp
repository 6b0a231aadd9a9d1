#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>

#include "Dialog.h"
#include "DialogHelp.h"
#include "resource.h"

namespace {

/// Runs a test's work from inside the dialog's own loop, one step for each timer message.
class CScriptedDialog : public CDialog {
  public:
    using Step = std::function<void(CScriptedDialog&)>;

    explicit CScriptedDialog(std::vector<Step> steps) : CDialog(IDD_ABOUT), m_steps(std::move(steps)) {}

    bool m_swallowKeys = false;
    bool m_failOnKeys = false;
    int m_keysSeen = 0;
    int m_oks = 0;
    bool m_endAtInit = false;

  private:
    std::span<const CRoute> Routes() const override {
        using R = CRoutesOf<CScriptedDialog>;
        static constexpr CRoute kRoutes[] = {
            R::OnMessage<WM_TIMER, &CScriptedDialog::OnTimer>(),
            R::OnCommand<BN_CLICKED, &CScriptedDialog::OnIcon>(IDC_ABOUT_ICON),
        };
        return kRoutes;
    }
    bool OnInitDialog() override {
        m_endAtInit ? End(7) : static_cast<void>(::SetTimer(m_hwnd, 1, 10, nullptr));
        return true;
    }
    void OnOK() override { ++m_oks; }
    bool PreTranslate(const MSG& message) override {
        if (message.message != WM_KEYDOWN) return false;
        ++m_keysSeen;
        if (m_failOnKeys) throw std::runtime_error("a hook that fails");
        return m_swallowKeys;
    }
    void OnTimer(UINT_PTR) {
        if (m_next == m_steps.size()) return End(IDCANCEL);
        m_steps[m_next++](*this);
    }
    void OnIcon() { throw std::runtime_error("a handler that fails"); }

    std::vector<Step> m_steps;
    std::size_t m_next = 0;
};

TEST(Dialog, EndGivesTheResultAndAnEndAtTheStartShowsNothing) {
    CScriptedDialog dialog({[](auto& d) { d.End(42); }});
    EXPECT_EQ(dialog.RunModal(nullptr), 42);
    EXPECT_FALSE(dialog.IsLive());
    CScriptedDialog atOnce({});
    atOnce.m_endAtInit = true;
    EXPECT_EQ(atOnce.RunModal(nullptr), 7);
    EXPECT_EQ(CDialog(9999).RunModal(nullptr), -1) << "there is no such template";
}

TEST(Dialog, AWindowThatIsTakenAwayEndsTheLoop) {
    CScriptedDialog dialog({[](auto& d) { ::DestroyWindow(d.Handle()); }});
    EXPECT_EQ(dialog.RunModal(nullptr), -1);
}

TEST(Dialog, AFailingHandlerEndsItselfOnly) {
    CScriptedDialog dialog({[](auto& d) { d.Send(WM_COMMAND, IDC_ABOUT_ICON); },
                            [](auto& d) {
                                d.m_failOnKeys = true;
                                ::PostMessageW(d.Item(IDOK).Handle(), WM_KEYDOWN, VK_RETURN, 0);
                            },
                            [](auto& d) { d.End(1); }});
    EXPECT_EQ(dialog.RunModal(nullptr), 1);
    EXPECT_EQ(dialog.m_keysSeen, 1);
    EXPECT_EQ(dialog.m_oks, 1) << "a key is no less a key because the hook failed";
}

TEST(Dialog, TheKeyHookComesBeforeTheSystemsKeys) {
    const auto pressEnter = [](auto& d) { ::PostMessageW(d.Item(IDOK).Handle(), WM_KEYDOWN, VK_RETURN, 0); };
    const auto swallow = [](auto& d) { d.m_swallowKeys = true; };
    CScriptedDialog dialog({pressEnter, swallow, pressEnter});
    EXPECT_EQ(dialog.RunModal(nullptr), IDCANCEL);
    EXPECT_EQ(dialog.m_keysSeen, 2);
    EXPECT_EQ(dialog.m_oks, 1) << "the swallowed key must not press the default button";
}

TEST(Dialog, TheOwnerIsDisabledMeanwhileAndEnabledOnTheWayOut) {
    CDialog owner(IDD_ABOUT);
    ASSERT_TRUE(owner.CreateModeless(nullptr));
    bool enabledMeanwhile = true;
    CScriptedDialog dialog({[&](auto&) { enabledMeanwhile = owner.IsEnabled(); }});
    dialog.RunModal(owner.Handle());
    EXPECT_FALSE(enabledMeanwhile);
    EXPECT_TRUE(owner.IsEnabled());
    owner.End(0);
    EXPECT_FALSE(owner.IsLive()) << "a modeless dialog's window goes with End";
}

TEST(Dialog, KeysThatNobodyTakesAreLeftToTheirList) {
    LRESULT answers[2] = {};
    CScriptedDialog({[&](auto& d) {
        answers[0] = d.Send(WM_CHARTOITEM, 'k');
        answers[1] = d.Send(WM_VKEYTOITEM, VK_SPACE);
    }}).RunModal(nullptr);
    EXPECT_EQ(answers[0], -1);
    EXPECT_EQ(answers[1], -1);
}

class CNotedHelp : public IDialogHelp {
  public:
    CNotedHelp() { SetDialogHelp(this); }
    ~CNotedHelp() override { SetDialogHelp(nullptr); }
    CNotedHelp(const CNotedHelp&) = delete;
    CNotedHelp& operator=(const CNotedHelp&) = delete;

    std::vector<DWORD> m_asked;
    UINT m_takes = 0;
    int m_taken = 0;

  private:
    void ShowHelp(DWORD context) override { m_asked.push_back(context); }
    bool TakesMessage(MSG& message) override {
        if (message.message != m_takes) return false;
        ++m_taken;
        return true;
    }
};

TEST(Dialog, HelpIsAskedForByTheNearestNumberAroundTheControl) {
    CNotedHelp help;
    const auto pressF1 = [](auto& d) {
        HELPINFO info{};
        info.cbSize = sizeof info;
        info.iContextType = HELPINFO_WINDOW;
        info.iCtrlId = IDOK;
        info.hItemHandle = d.Item(IDOK).Handle();
        d.Item(IDOK).Send(WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
    };
    const auto numberTheButton = [](auto& d) { ::SetWindowContextHelpId(d.Item(IDOK).Handle(), 77); };
    CScriptedDialog({pressF1, numberTheButton, pressF1}).RunModal(nullptr);
    EXPECT_EQ(help.m_asked, (std::vector<DWORD>{HelpOfDialog(IDD_ABOUT), 77}));
}

TEST(Dialog, TheHelpWindowTakesItsMessagesFirst) {
    CNotedHelp help;
    help.m_takes = WM_KEYDOWN;
    CScriptedDialog dialog({[](auto& d) { ::PostMessageW(d.Handle(), WM_KEYDOWN, VK_RETURN, 0); }});
    dialog.RunModal(nullptr);
    EXPECT_EQ(help.m_taken, 1);
    EXPECT_EQ(dialog.m_keysSeen, 0);
}

}  // namespace
