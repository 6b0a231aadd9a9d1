// The pictures of the layout pane, by their pixels: the buttons of its toolbar and the icons of its tree.
#include <algorithm>
#include <functional>
#include <set>

#include "LayoutImageList.h"
#include "Resources.h"
#include "support/MainDialog.h"
#include "support/Surroundings.h"

namespace {

constexpr int kSide = 40;

using Pixels = std::vector<DWORD>;

/// What `draw` makes of a white square.
Pixels Drawn(const std::function<void(HDC)>& draw) {
    const BITMAPINFO info{{sizeof(BITMAPINFOHEADER), kSide, -kSide, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
    const UniqueBitmap bitmap(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, nullptr, nullptr, 0));
    const UniqueDc dc(::CreateCompatibleDC(nullptr));
    const HGDIOBJ old = ::SelectObject(dc.Get(), bitmap.Get());
    ::PatBlt(dc.Get(), 0, 0, kSide, kSide, WHITENESS);
    draw(dc.Get());
    ::SelectObject(dc.Get(), old);
    Pixels pixels;
    for (const RGBQUAD& p : PixelsOf(bitmap.Get())) pixels.push_back(RGB(p.rgbRed, p.rgbGreen, p.rgbBlue));
    return pixels;
}

bool IsGrey(const Pixels& pixels) {
    return std::ranges::all_of(pixels, [](DWORD p) {
        const auto [low, high] = std::minmax({GetRValue(p), GetGValue(p), GetBValue(p)});
        return high - low <= 40;
    });
}

class LayoutToolbar : public support::MainDialog {
  protected:
    void SetUp() override { Open(); }
    /// Without what lies above and left of `clip`.
    Pixels Button(int id, UINT state = 0, int clip = 0) const {
        return Drawn([&](HDC dc) {
            ::IntersectClipRect(dc, clip, clip, kSide, kSide);
            const RECT place{0, 0, kSide, kSide};
            const auto control = static_cast<UINT>(id);
            const DRAWITEMSTRUCT item{ODT_BUTTON, control, 0, ODA_DRAWENTIRE, state, Control(id),
                                      dc,         place,   0};
            EXPECT_TRUE(m_dialog->Send(WM_DRAWITEM, control, reinterpret_cast<LPARAM>(&item)));
        });
    }
};

TEST_F(LayoutToolbar, EachButtonHasAPictureOfItsOwnInTheLookOfItsState) {
    support::NeedUsualScreen();
    if (IsSkipped()) return;
    std::vector<Pixels> looks;
    for (const int id : {IDC_LAYOUT_NEW, IDC_LAYOUT_OPEN, IDC_LAYOUT_SAVE, IDC_LAYOUT_DELETE}) {
        for (const UINT state : {UINT{0}, UINT{ODS_SELECTED}, UINT{ODS_FOCUS}})
            looks.push_back(Button(id, state));
        EXPECT_TRUE(IsGrey(looks.emplace_back(Button(id, ODS_DISABLED)))) << id;
    }
    const Pixels normal = Button(IDC_LAYOUT_DELETE);
    EXPECT_FALSE(IsGrey(normal));
    const CWindow button = Item(IDC_LAYOUT_DELETE);
    for (const UINT leaves : {UINT{WM_MOUSELEAVE}, UINT{WM_ENABLE}}) {
        button.Send(WM_MOUSEMOVE, 0, MAKELPARAM(3, 3));
        EXPECT_NE(Button(IDC_LAYOUT_DELETE), normal);
        button.Send(leaves);
        EXPECT_EQ(Button(IDC_LAYOUT_DELETE), normal) << leaves;
    }
    button.Send(WM_THEMECHANGED);
    EXPECT_EQ(Button(IDC_LAYOUT_DELETE), normal) << "the style is found again";
    for (const UINT dpi : {144U, 192U}) {
        m_dialog->View<CLayoutToolbar>().LoadImages(dpi);
        looks.push_back(Button(IDC_LAYOUT_DELETE));
    }
    EXPECT_EQ(std::set(looks.begin(), looks.end()).size(), looks.size()) << "all different";
    Pixels clipped = looks.back();
    for (std::size_t i = 0; i < clipped.size(); ++i)
        if (i / kSide < 10 || i % kSide < 10) clipped[i] = RGB(255, 255, 255);
    EXPECT_EQ(Button(IDC_LAYOUT_DELETE, 0, 10), clipped);
}

TEST_F(LayoutToolbar, TheKeyboardWorksAButton) {
    Show();
    for (const WORD key : {WORD{VK_RETURN}, WORD{VK_SPACE}}) {
        Item(IDC_LAYOUT_OPEN).Focus();
        m_popups.ExpectFile(L"Open Plug-In Menu Layout", L"");
        Key(IDC_LAYOUT_OPEN, key);
        m_popups.ExpectNoMore();
    }
    Item(IDC_LAYOUT_OPEN).Focus();
    Key(IDC_LAYOUT_OPEN, VK_TAB);
    EXPECT_FALSE(Item(IDC_LAYOUT_OPEN).HasFocus());
}

TEST(LayoutIcons, TellTheKindOfAPluginAndWhetherItIsInstalled) {
    const UniqueImageList list = BuildLayoutImageList(USER_DEFAULT_SCREEN_DPI);
    std::vector<Pixels> seen;
    std::wstring letters;  // one for each picture, a capital for a grey one
    LayoutItem item = NewPlugin();
    for (item.category = -1; item.category <= 11; ++item.category) {
        for (const auto& [installed, inInventory] : {std::pair(false, true), {true, true}, {true, false}}) {
            item.installed = installed;
            item.inventoryFlag = inInventory;
            const int image = static_cast<int>(ImagesOf(item).normal);
            const Pixels icon =
                Drawn([&](HDC dc) { ::ImageList_Draw(list.Get(), image, dc, 0, 0, ILD_NORMAL); });
            const auto at = std::ranges::find(seen, icon) - seen.begin();
            if (at == std::ssize(seen)) seen.push_back(icon);
            letters += static_cast<wchar_t>((IsGrey(icon) ? L'A' : L'a') + at);
        }
        letters += L' ';
    }
    EXPECT_EQ(ImagesOf(NewFolder(L"a")).selected, 6);
    for (std::size_t i = 0; i < std::size_t{16} * kSide; ++i)
        EXPECT_TRUE(i % kSide < 16 || seen.front()[i] == RGB(255, 255, 255)) << "apart from the label";
    EXPECT_EQ(letters, L"AAA Bcc Def Ghh Ijk lll Bcc mmm Def Ijk Nop Qrs AAA ");
}

}  // namespace
