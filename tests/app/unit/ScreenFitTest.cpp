#include <gtest/gtest.h>

#include "ScreenFit.h"

namespace {

/// The template at the dialog units of each scale.
Size WholeAt(int dpi) {
    constexpr Size kUnits[] = {{6, 13}, {7, 16}, {9, 19}, {10, 23}, {12, 26}};
    return Scaled(Size{700, 380}, {4, 8}, kUnits[(dpi - 96) / 24]);
}

TEST(ScreenFit, TheWindowLiesWithinEveryScreenAtEveryScale) {
    const struct {
        Size screen;
        int scales[5];  // of the controls, where the screen's is 100 to 200 %
    } rows[] = {
        {{1366, 768}, {96, 120, 120, 120, 120}},
        {{1280, 1024}, {96, 120, 120, 120, 120}},
        {{1920, 1080}, {96, 120, 144, 168, 168}},
    };
    for (const auto& [screen, scales] : rows) {
        for (int dpi = 96; const int scale : scales) {
            // Without frame, caption and taskbar.
            const Size room{screen.width - 16 * dpi / 96, screen.height - 79 * dpi / 96};
            const Size whole = WholeAt(scale);
            EXPECT_LE(whole.width, room.width);
            EXPECT_EQ(FitToScreen(dpi, room, WholeAt),
                      (ScreenFit{scale, {whole.width, std::min(whole.height, room.height)}}));
            dpi += 24;
        }
    }
    EXPECT_EQ(FitToScreen(120, {3840, 550}, WholeAt), (ScreenFit{120, {1225, 550}})) << "ten rows";
    EXPECT_EQ(FitToScreen(120, {3840, 549}, WholeAt), (ScreenFit{96, {1050, 549}})) << "and no fewer";
    EXPECT_EQ(FitToScreen(192, {640, 300}, WholeAt), (ScreenFit{96, {1050, 447}})) << "and no further";
}

}  // namespace
