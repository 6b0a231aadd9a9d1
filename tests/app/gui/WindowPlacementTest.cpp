// Where the floating window opens, by what an earlier one or somebody else stored.
#include "WindowPlacement.h"
#include "support/MainDialog.h"
#include "support/StandInHost.h"

namespace {

class Placement : public support::MainDialog {
  protected:
    Rect Reopened(const std::vector<std::wstring>& arguments = {}) {
        Close();
        Open(arguments);
        return m_dialog->WindowRect();
    }
    void Close() const {
        if (m_dialog) ::DestroyWindow(m_dialog->Handle());
    }
    void Put(const Rect& place) const {
        ::MoveWindow(m_dialog->Handle(), place.left, place.top, place.Width(), place.Height(), FALSE);
    }
    bool IsMaximised() const { return ::IsZoomed(m_dialog->Handle()) != FALSE; }
};

TEST_F(Placement, TheWindowOpensWhereItClosedUnlessItIsDocked) {
    const Rect first = Reopened();
    const Rect place{-90, 40, 1150, 800};
    Put(place);
    const support::StandInHost host;
    EXPECT_EQ(Reopened({L"/ParentWnd", host.HandleText()}).Width(), first.Width()) << "docked";
    EXPECT_EQ(Reopened(), place);
    ::ShowWindow(m_dialog->Handle(), SW_SHOWMAXIMIZED);
    ::ShowWindow(m_dialog->Handle(), SW_SHOWMINIMIZED);
    Reopened();
    EXPECT_TRUE(IsMaximised()) << "never minimised";
    EXPECT_EQ(Reopened({L"/Float", L"/ParentWnd", host.HandleText()}), place)
        << "nothing there could restore it";
}

TEST_F(Placement, WhatCantBeUsedIsIgnored) {
    const Rect first = Reopened();
    const RECT good{10, 20, 1210, 920};
    constexpr UINT kSize = sizeof(WINDOWPLACEMENT);
    const struct {
        DWORD type;
        UINT bytes, length;
        RECT stored;
        Rect opened;
    } rows[] = {
        {REG_BINARY, kSize, kSize, good, FromSystem(good)},
        {REG_SZ, kSize, kSize, good, first},
        {REG_BINARY, kSize - 1, kSize, good, first},
        {REG_BINARY, kSize + 1, kSize, good, first},
        {REG_BINARY, kSize, kSize + 4, good, first},
        {REG_BINARY, kSize, kSize, {1210, 20, 10, 920}, first},
        {REG_BINARY, kSize, kSize, {LONG_MIN, 20, LONG_MAX, 920}, first},
        {REG_BINARY, kSize, kSize, {9000, 20, 10200, 920}, first},
        {REG_BINARY, kSize, kSize, {10, -40, 1210, 860}, first},  // the caption is out of reach
        {REG_BINARY, kSize, kSize, {10, 20, 110, 120}, {10, 20, 10 + first.Width(), 20 + first.Height()}},
        {REG_BINARY, kSize, kSize, {10, 20, 5010, 920}, {0, 20, 1280, 920}},
    };
    for (const auto& [type, bytes, length, stored, opened] : rows) {
        const WINDOWPLACEMENT placement{length, 0, SW_SHOWMINIMIZED, {}, {}, stored};
        std::vector<BYTE> data(kSize + 1);
        std::memcpy(data.data(), &placement, kSize);
        data.resize(bytes);
        Close();
        support::SetRaw(HKEY_CURRENT_USER, kManagerKey, L"WindowPlacement", type, data);
        EXPECT_EQ(Reopened(), opened) << type << ' ' << bytes << ' ' << length << ' ' << stored.left;
    }
}

}  // namespace
