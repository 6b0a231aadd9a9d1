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
        m_dialog->Send(WM_DPICHANGED, MAKEWPARAM(120, 120), reinterpret_cast<LPARAM>(&elsewhere));
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

}  // namespace
