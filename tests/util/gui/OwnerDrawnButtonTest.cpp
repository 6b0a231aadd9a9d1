// Buttons of a hidden dialog, drawn onto a bitmap whose pixels tell the look.
#include <algorithm>
#include <gtest/gtest.h>

#include "Dialog.h"
#include "LayoutImageList.h"
#include "LayoutItem.h"
#include "MemDC.h"
#include "Resources.h"
#include "XButtonXP.h"
#include "resource.h"

namespace {

class Canvas {
  public:
    explicit Canvas(int size) : m_size(size) {
        const BITMAPINFO info{{sizeof(BITMAPINFOHEADER), size, -size, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
        m_bitmap.Reset(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, nullptr, nullptr, 0));
        m_dc.Reset(::CreateCompatibleDC(nullptr));
        ::SelectObject(m_dc.Get(), m_bitmap.Get());
        Fill(::GetSysColor(COLOR_BTNFACE));
    }
    HDC Dc() const { return m_dc.Get(); }
    void Fill(COLORREF colour) const {
        ::SetBkColor(Dc(), colour);
        const RECT all{0, 0, m_size, m_size};
        ::ExtTextOutW(Dc(), 0, 0, ETO_OPAQUE, &all, nullptr, 0, nullptr);
    }
    COLORREF At(int x, int y) const { return ::GetPixel(Dc(), x, y); }
    /// How far the most colourful pixel is from grey.
    int Colourfulness() const {
        ::GdiFlush();
        int most = 0;
        for (const RGBQUAD& p : PixelsOf(m_bitmap.Get())) {
            const auto [low, high] = std::minmax({p.rgbRed, p.rgbGreen, p.rgbBlue});
            most = std::max(most, high - low);
        }
        return most;
    }

  private:
    int m_size;
    UniqueBitmap m_bitmap;
    UniqueDc m_dc;
};

class OwnerDrawnButton : public testing::Test {
  protected:
    static constexpr int kSize = 40;

    void SetUp() override {
        ASSERT_TRUE(m_dialog.CreateModeless(nullptr));
        m_button.ShowText(false);
        m_button.Attach(m_dialog.Item(IDC_LAYOUT_DELETE).Handle());
    }
    /// The classic look, because no style library is found under that name.
    Canvas Drawn(UINT state) {
        Canvas canvas(kSize);
        DRAWITEMSTRUCT item{};
        item.hwndItem = m_button.Handle();
        item.hDC = canvas.Dc();
        item.rcItem = {0, 0, kSize, kSize};
        item.itemState = state;
        EXPECT_TRUE(m_button.OnDrawItem(item));
        return canvas;
    }
    void Mouse(UINT message, bool inside) const {
        m_button.Send(message, 0, inside ? MAKELPARAM(3, 3) : MAKELPARAM(-5, 3));
    }
    bool TakeRepaint() const {
        const bool wanted = ::GetUpdateRect(m_button.Handle(), nullptr, FALSE) != FALSE;
        ::ValidateRect(m_button.Handle(), nullptr);
        return wanted;
    }

    CDialog m_dialog{IDD_PLUGIN_MANAGER};
    CXThemeHelper m_noThemes{L"no-such-library.dll"};
    CXButtonXP m_button{m_noThemes};
};

TEST(ThemeHelper, IsThereOnlyWithAllEntryPoints) {
    EXPECT_TRUE(CXThemeHelper().IsAvailable());
    const CXThemeHelper incomplete(L"version.dll");
    EXPECT_FALSE(incomplete.IsAvailable() || incomplete.IsThemed());
    EXPECT_EQ(incomplete.Open(nullptr, L"Button"), nullptr);
    EXPECT_FALSE(CXThemeHelper(L"no-such-library.dll").IsAvailable());
}

TEST(MemDC, CopiesToTheSamePlaceAndOnlyWithinTheClipping) {
    const Canvas target(30);
    target.Fill(RGB(255, 255, 255));
    ::IntersectClipRect(target.Dc(), 10, 10, 20, 20);
    {
        const CWMemDC surface(target.Dc());
        const RECT all{0, 0, 15, 30};
        ::FillRect(surface.Handle(), &all, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
        EXPECT_EQ(target.At(12, 12), RGB(255, 255, 255)) << "not before the end";
    }
    EXPECT_EQ(target.At(12, 12), RGB(0, 0, 0));
    ::SelectClipRgn(target.Dc(), nullptr);
    EXPECT_EQ(target.At(5, 12), RGB(255, 255, 255));
}

TEST_F(OwnerDrawnButton, ClassicFramesTellFocusAndPress) {
    EXPECT_EQ(Drawn(ODS_FOCUS).At(0, 0), RGB(0, 0, 0));
    EXPECT_NE(Drawn(0).At(0, 0), RGB(0, 0, 0));
    EXPECT_EQ(Drawn(ODS_SELECTED).At(0, 0), ::GetSysColor(COLOR_BTNSHADOW));
    const Canvas both = Drawn(ODS_SELECTED | ODS_FOCUS);
    EXPECT_EQ(both.At(0, 0), RGB(0, 0, 0));
    EXPECT_EQ(both.At(1, 1), ::GetSysColor(COLOR_BTNSHADOW)) << "inside the focus frame";
}

TEST_F(OwnerDrawnButton, TheImageIsGreyWhenDisabledAndMovesWhenPressed) {
    m_button.SetImage(LoadAlphaBitmap(IDB_LAYOUT_DELETE));
    const Canvas normal = Drawn(0);
    const Canvas pressed = Drawn(ODS_SELECTED);
    const Canvas disabled = Drawn(ODS_DISABLED);
    EXPECT_GT(normal.Colourfulness(), 100);
    EXPECT_LE(disabled.Colourfulness(), 2);
    const int middle = kSize / 2;
    EXPECT_NE(disabled.At(middle, middle), ::GetSysColor(COLOR_BTNFACE)) << "but it is drawn";
    for (int x = middle - 6; x < middle + 6; ++x) EXPECT_EQ(normal.At(x, x), pressed.At(x + 1, x + 1));
    EXPECT_NE(normal.At(middle, middle), normal.At(middle - 6, middle)) << "there is something to move";
}

TEST_F(OwnerDrawnButton, RepaintsOnceWhenTheMouseComesAndOnceWhenItGoes) {
    ::ShowWindow(m_dialog.Handle(), SW_SHOWNOACTIVATE);
    ::UpdateWindow(m_button.Handle());
    TakeRepaint();
    Mouse(WM_MOUSEMOVE, true);
    EXPECT_TRUE(TakeRepaint());
    Mouse(WM_MOUSEMOVE, true);
    Mouse(WM_MOUSEHOVER, true);
    EXPECT_FALSE(TakeRepaint());
    Mouse(WM_MOUSELEAVE, false);
    EXPECT_TRUE(TakeRepaint());
    Mouse(WM_MOUSEMOVE, false);
    EXPECT_FALSE(TakeRepaint());
}

TEST_F(OwnerDrawnButton, AToggleStaysDownUntilTheNextClickAndIgnoresOneThatEndsOutside) {
    m_button.SetToggleMode(true);
    Mouse(WM_LBUTTONDOWN, true);
    EXPECT_TRUE(m_button.IsToggled());
    Mouse(WM_LBUTTONUP, true);
    EXPECT_TRUE(m_button.IsToggled());
    const COLORREF down = Drawn(0).At(1, 1);
    Mouse(WM_LBUTTONDOWN, true);
    Mouse(WM_MOUSEMOVE, false);
    EXPECT_EQ(Drawn(0).At(1, 1), down) << "shown as it will be left";
    Mouse(WM_LBUTTONUP, false);
    EXPECT_TRUE(m_button.IsToggled());
    Mouse(WM_LBUTTONDBLCLK, true);
    EXPECT_TRUE(m_button.IsToggled());
    EXPECT_NE(m_button.Send(BM_GETSTATE) & BST_PUSHED, 0);
    Mouse(WM_LBUTTONDOWN, true);
    Mouse(WM_LBUTTONUP, true);
    EXPECT_NE(Drawn(0).At(1, 1), down);
}

TEST_F(OwnerDrawnButton, WantsEveryKeyButTab) {
    const auto codeFor = [this](UINT message, WPARAM key) {
        MSG query{m_button.Handle(), message, key, 0, 0, {}};
        return m_button.Send(WM_GETDLGCODE, key, reinterpret_cast<LPARAM>(&query));
    };
    EXPECT_EQ(codeFor(WM_KEYDOWN, VK_TAB) & DLGC_WANTALLKEYS, 0);
    EXPECT_NE(codeFor(WM_KEYDOWN, VK_RETURN) & DLGC_WANTALLKEYS, 0);
    EXPECT_NE(m_button.Send(WM_GETDLGCODE) & DLGC_WANTALLKEYS, 0);
}

TEST_F(OwnerDrawnButton, EnterPressesItAsTheSpaceBarDoes) {
    class CCountingDialog : public CDialog {
      public:
        CCountingDialog() : CDialog(IDD_PLUGIN_MANAGER) {}
        int m_clicks = 0;

      private:
        std::span<const CRoute> Routes() const override {
            using R = CRoutesOf<CCountingDialog>;
            static constexpr CRoute kRoutes[] = {
                R::OnCommand<BN_CLICKED, &CCountingDialog::OnClick>(IDC_LAYOUT_DELETE)};
            return kRoutes;
        }
        void OnClick() { ++m_clicks; }
    };
    CCountingDialog dialog;
    ASSERT_TRUE(dialog.CreateModeless(nullptr));
    m_button.Attach(dialog.Item(IDC_LAYOUT_DELETE).Handle());
    m_button.Focus();
    for (const int key : {VK_RETURN, VK_SPACE}) {
        dialog.m_clicks = 0;
        m_button.Send(WM_KEYDOWN, static_cast<WPARAM>(key));
        m_button.Send(WM_KEYUP, static_cast<WPARAM>(key));
        EXPECT_EQ(dialog.m_clicks, 1) << key;
    }
}

TEST_F(OwnerDrawnButton, ForgetsTheControlThatGoesFirst) {
    ::DestroyWindow(m_button.Handle());
    EXPECT_EQ(m_button.Handle(), nullptr);
    EXPECT_FALSE(m_button.OnDrawItem({})) << "no window is not its window";
}

TEST(LayoutImages, GreyMeansNotInstalledInEveryPlaceOfTheList) {
    const UniqueImageList list = BuildLayoutImageList(USER_DEFAULT_SCREEN_DPI);
    ASSERT_EQ(::ImageList_GetImageCount(list.Get()), kLayoutImageCount);
    for (int category = 0; category <= 10; ++category) {
        LayoutItem item = NewPlugin();
        item.category = category;
        const bool alwaysTheSame = category == 4 || category == 6;
        for (const bool installed : {false, true}) {
            item.installed = installed;
            const Canvas canvas(32);
            canvas.Fill(RGB(255, 255, 255));
            ::ImageList_Draw(list.Get(), ImagesOf(item).normal, canvas.Dc(), 0, 0, ILD_NORMAL);
            EXPECT_EQ(canvas.Colourfulness() > 40, installed || alwaysTheSame) << category;
        }
    }
}

}  // namespace
