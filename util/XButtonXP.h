// A push button with an image, in the look of the visual style, or in the classic one where there is none.
#pragma once

#include <windows.h>

#include "AlphaBitmap.h"
#include "ButtonPlacement.h"
#include "OddButton.h"
#include "ThemeHelper.h"

class CXButtonXP : public COddButton {
  public:
    explicit CXButtonXP(const CXThemeHelper& themes = CXThemeHelper::Instance()) : m_themes(themes) {}
    ~CXButtonXP() override { m_themes.Close(m_theme); }
    CXButtonXP(const CXButtonXP&) = delete;
    CXButtonXP& operator=(const CXButtonXP&) = delete;

    /// One from LoadAlphaBitmap. A disabled button shows it in grey.
    void SetImage(UniqueBitmap image, ImagePlacement placement = ImagePlacement::LeftOfText);
    /// Hidden or not, screen readers read the text.
    void ShowText(bool shown) { m_showsText = shown; }
    /// The look of a toolbar's button instead of a dialog's.
    void SetToolbarStyle(bool toolbar);

  private:
    struct Look {
        Rect place;
        bool pressed;
        bool focused;
        bool disabled;
    };

    Answer OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Draw(const DRAWITEMSTRUCT& item) override;
    void ReopenTheme();
    bool IsThemed() const { return m_theme && m_themes.IsThemed(); }
    int ThemeState(const Look& look) const;
    void DrawClassicFrame(HDC dc, Look& look) const;
    void DrawFace(HDC dc, const Look& look) const;
    void DrawImage(HDC dc, const Rect& place, bool disabled) const;
    void DrawCaption(HDC dc, const Look& look, const std::wstring& text, const Rect& place) const;
    Size ImageSize() const;

    const CXThemeHelper& m_themes;
    HTHEME m_theme = nullptr;
    bool m_reopenTheme = true;
    bool m_toolbarStyle = false;
    UniqueBitmap m_image;
    ImagePlacement m_placement = ImagePlacement::LeftOfText;
    bool m_showsText = true;
};
