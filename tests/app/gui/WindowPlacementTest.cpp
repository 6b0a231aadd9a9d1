// Where the floating window opens, by what an earlier one or somebody else stored.
#include "support/MainDialog.h"
#include "support/StandInHost.h"
#include "support/Surroundings.h"

namespace {

constexpr UINT kSize = sizeof(WINDOWPLACEMENT);

class Placement : public support::MainDialog {
  protected:
    void SetUp() override {
        support::NeedUsualScreen();
        Open();
    }
    Rect Reopened(const std::vector<std::wstring>& arguments = {}) {
        ::DestroyWindow(m_dialog->Handle());
        Open(arguments);
        return m_dialog->WindowRect();
    }
    Rect OpenedBy(RECT place, DWORD type = REG_BINARY, std::size_t bytes = kSize, UINT length = kSize) {
        const WINDOWPLACEMENT placement{length, 0, SW_SHOWMINIMIZED, {}, {}, place};
        std::vector<BYTE> data(kSize + 1);
        std::memcpy(data.data(), &placement, kSize);
        data.resize(bytes);
        m_dialog.reset();
        support::SetRaw(HKEY_CURRENT_USER, kManagerKey, L"WindowPlacement", type, data);
        Open();
        return m_dialog->WindowRect();
    }
};

TEST_F(Placement, TheWindowOpensWhereItClosedUnlessItIsDocked) {
    const Rect first = m_dialog->WindowRect();
    const Rect place{-90, 40, 1150, 800};
    ::MoveWindow(m_dialog->Handle(), place.left, place.top, place.Width(), place.Height(), FALSE);
    const support::StandInHost host;
    EXPECT_EQ(Reopened({L"/ParentWnd", host.HandleText()}).Width(), first.Width()) << "docked";
    EXPECT_EQ(Reopened(), place);
    ::MoveWindow(m_dialog->Handle(), 20, 40, place.Width(), place.Height(), FALSE);
    m_dialog->Send(WM_ENDSESSION, TRUE);
    ::MoveWindow(m_dialog->Handle(), place.left, place.top, place.Width(), place.Height(), FALSE);
    m_dialog.reset();
    Open();
    EXPECT_EQ(m_dialog->WindowRect().left, 20) << "an ended session destroys no window";
    ::MoveWindow(m_dialog->Handle(), place.left, place.top, place.Width(), place.Height(), FALSE);
    ::ShowWindow(m_dialog->Handle(), SW_SHOWMAXIMIZED);
    ::ShowWindow(m_dialog->Handle(), SW_SHOWMINIMIZED);
    Reopened();
    EXPECT_TRUE(::IsZoomed(m_dialog->Handle())) << "never minimised";
    EXPECT_EQ(Reopened({L"/Float", L"/ParentWnd", host.HandleText()}), place) << "no button could restore it";
}

TEST_F(Placement, WhatCantBeUsedIsIgnored) {
    const Rect first = m_dialog->WindowRect();
    const RECT good{10, 20, 1210, 920};
    const int screen = ::GetSystemMetrics(SM_CXSCREEN);
    EXPECT_EQ(OpenedBy(good), FromSystem(good));
    EXPECT_EQ(OpenedBy({10, 20, 110, 120}), (Rect{10, 20, 10 + first.Width(), 20 + first.Height()}));
    EXPECT_EQ(OpenedBy({10, 20, 2 * screen, 920}), (Rect{0, 20, screen, 920}));
    EXPECT_EQ(OpenedBy(good, REG_SZ), first);
    EXPECT_EQ(OpenedBy(good, REG_BINARY, kSize - 1), first);
    EXPECT_EQ(OpenedBy(good, REG_BINARY, kSize + 1), first);
    EXPECT_EQ(OpenedBy(good, REG_BINARY, kSize, kSize + 4), first);
    EXPECT_EQ(OpenedBy({1210, 20, 10, 920}), first);
    EXPECT_EQ(OpenedBy({LONG_MIN, 20, LONG_MAX, 920}), first);
    EXPECT_EQ(OpenedBy({4 * screen, 20, 4 * screen + 1200, 920}), first);
    EXPECT_EQ(OpenedBy({10, -40, 1210, 860}), first) << "the caption is out of reach";
}

}  // namespace
