// Where the main dialog lies within a host that is not at the screen's corner, and after it floated.
#include "DockedPlace.h"
#include "support/MainDialog.h"
#include "support/StandInHost.h"

namespace {

using support::StandInHost;

class Docking : public support::MainDialog {
  protected:
    void OpenIn(StandInHost::Size size) {
        m_dialog.reset();
        m_host.emplace(size);
        Open({L"/ParentWnd", m_host->HandleText()});
    }
    HWND Parent() const { return ::GetAncestor(m_dialog->Handle(), GA_PARENT); }
    void Float() const { m_dialog->Send(WM_SYSCOMMAND, 0x30); }
    void Dock() const { m_dialog->Send(WM_SYSCOMMAND, 0x20); }
    void ExpectWithinTheHost(const char* when) const {
        EXPECT_EQ(Parent(), m_host->Window()) << when;
        const Rect client = CWindow(m_host->Window()).ClientRect();
        const Rect place = m_dialog->RectIn(m_host->Window());
        EXPECT_EQ(place, PlaceWithin({client.Width(), client.Height()}, place.left, place.top,
                                     {place.Width(), place.Height()}))
            << when << ": " << place.left << ',' << place.top;
    }

    std::optional<StandInHost> m_host;
};

TEST_F(Docking, TheDialogLiesWithinTheHostAsFarAsItHasRoom) {
    for (const auto size : {StandInHost::Size::Large, StandInHost::Size::Small}) {
        OpenIn(size);
        ExpectWithinTheHost("at the start");
        const Rect docked = m_dialog->WindowRect();
        const RECT elsewhere = ToSystem(m_dialog->RectIn(m_host->Window()));
        const UINT larger = ::GetDpiForWindow(m_dialog->Handle()) * 5 / 4;
        m_dialog->Send(WM_DPICHANGED, MAKEWPARAM(larger, larger), reinterpret_cast<LPARAM>(&elsewhere));
        Key(IDC_CATEGORIES, VK_SHIFT);
        EXPECT_EQ(m_dialog->WindowRect().Width(), docked.Width())
            << "asked for the scale, as no host tells it";
        Float();
        EXPECT_EQ(Parent(), ::GetDesktopWindow());
        EXPECT_EQ(m_dialog->WindowRect(), docked) << "on the screen it stays where it was";
        Dock();
        EXPECT_EQ(m_dialog->WindowRect(), docked) << "and where it fits, also in the host";
        for (const auto& [left, top] : {std::pair(1200, 1000), std::pair(-500, 10)}) {
            Float();
            ::SetWindowPos(m_dialog->Handle(), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
            Dock();
            ExpectWithinTheHost("after it floated elsewhere");
        }
    }
}

TEST_F(Docking, TheKeyboardComesBackFromDialogsAndTheHostOpensNoMenu) {
    OpenIn(StandInHost::Size::Large);
    Show();
    Press(IDC_NEW_FOLDER);
    m_popups.Expect(L"About", IDCANCEL);
    m_dialog->Send(WM_SYSCOMMAND, 0x10);
    EXPECT_TRUE(::IsChild(m_dialog->Handle(), ::GetFocus())) << "the label's field is gone";
    m_popups.Expect(L"Save changes", IDNO).ExpectFile(L"Open Plug-In Menu Layout", L"");
    Press(IDC_LAYOUT_OPEN);
    EXPECT_GE(m_host->MessageCount(WM_ACTIVATE), 4U) << "it had the keyboard after each";

    Item(IDC_CATEGORIES).Send(WM_CONTEXTMENU, 0, -1);
    Item(IDC_CATEGORIES).Focus();
    constexpr LPARAM kAlt = 1 << 29, kReleased = 0xC0000000;
    for (const WORD key : {WORD{VK_MENU}, WORD{VK_F10}}) {
        ::PostMessageW(Control(IDC_CATEGORIES), WM_SYSKEYDOWN, key, kAlt);
        ::PostMessageW(Control(IDC_CATEGORIES), WM_SYSKEYUP, key, kReleased);
        Pump();
    }
    for (const WORD choice : {WORD{VK_UP}, WORD{VK_RETURN}}) support::PostKey(m_dialog->Handle(), choice);
    Item(IDC_PLUGINS).Send(WM_SYSCHAR, L' ', 1 << 29);
    Pump();
    EXPECT_EQ(Parent(), ::GetDesktopWindow()) << "by the last command of the dialog's own menu";
    for (const UINT asked : {UINT{WM_CONTEXTMENU}, UINT{WM_SYSCHAR}, UINT{WM_SYSCOMMAND}})
        EXPECT_EQ(m_host->MessageCount(asked), 0U) << asked;
    Dock();
    EXPECT_EQ(::GetFocus(), Control(IDC_CATEGORIES)) << "not the host";
}

}  // namespace
