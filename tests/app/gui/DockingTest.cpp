// Where the main dialog lies within a host that is not at the screen's corner, and after it floated.
#include "support/MainDialog.h"
#include "support/StandInHost.h"

namespace {

using support::StandInHost;

constexpr UINT kFloat = 0x30;
constexpr UINT kDock = 0x20;

class Docking : public support::MainDialog {
  protected:
    void OpenIn(StandInHost::Size size) {
        m_host.emplace(size);
        Open({L"/ParentWnd", m_host->HandleText()});
        ASSERT_EQ(Parent(), m_host->Window());
    }
    HWND Parent() const { return ::GetAncestor(m_dialog->Handle(), GA_PARENT); }
    void Choose(UINT command) const { m_dialog->Send(WM_SYSCOMMAND, command); }
    void MoveTo(int left, int top) const {
        ::SetWindowPos(m_dialog->Handle(), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    }
    Rect Place() const { return m_dialog->RectIn(m_host->Window()); }

    std::optional<StandInHost> m_host;
};

TEST_F(Docking, TheDialogLiesWithinTheHost) {
    OpenIn(StandInHost::Size::Large);
    const Rect client = CWindow(m_host->Window()).ClientRect();
    const auto expectInside = [&](const char* when) {
        const Rect place = Place();
        EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.right <= client.right &&
                    place.bottom <= client.bottom)
            << when << ": " << place.left << ',' << place.top << ' ' << place.right << ',' << place.bottom;
    };
    expectInside("at the start");
    const Rect docked = m_dialog->WindowRect();
    Choose(kFloat);
    EXPECT_EQ(Parent(), ::GetDesktopWindow());
    EXPECT_EQ(m_dialog->WindowRect(), docked) << "on the screen it stays where it was";
    Choose(kDock);
    EXPECT_EQ(Parent(), m_host->Window());
    EXPECT_EQ(m_dialog->WindowRect(), docked) << "and where it fits, also in the host";
    for (const auto& [left, top] : {std::pair(1200, 1000), std::pair(-500, 10)}) {
        Choose(kFloat);
        MoveTo(left, top);
        Choose(kDock);
        expectInside("after it floated elsewhere");
    }
}

TEST_F(Docking, OfAHostThatIsTooSmallItTakesTheCorner) {
    OpenIn(StandInHost::Size::Small);
    Rect place = Place();
    EXPECT_EQ(std::pair(place.left, place.top), std::pair(0, 0)) << "at the start";
    Choose(kFloat);
    MoveTo(900, 700);
    Choose(kDock);
    place = Place();
    EXPECT_EQ(std::pair(place.left, place.top), std::pair(0, 0));
}

}  // namespace
