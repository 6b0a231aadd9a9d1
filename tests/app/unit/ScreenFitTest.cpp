#include <gtest/gtest.h>
#include <map>

#include "ScreenFit.h"

namespace {

/// The template at the dialog units of each scale.
Size WholeAt(int dpi) {
    static const std::map<int, Size> kUnits = {{96, {6, 13}},  {110, {7, 14}},  {120, {7, 16}},
                                               {144, {9, 19}}, {168, {10, 23}}, {192, {12, 26}}};
    return Scaled(Size{700, 380}, {4, 8}, kUnits.at(dpi));
}

TEST(ScreenFit, TheWindowLiesWithinEveryScreenAtEveryScale) {
    const struct {
        Size screen;
        int scales[5];  // of the controls, where the screen's is 100 to 200 %
    } rows[] = {
        {{1366, 768}, {96, 120, 120, 120, 120}},
        {{1280, 1024}, {96, 120, 120, 120, 120}},
        {{1920, 1080}, {96, 120, 144, 168, 168}},
        {{3840, 2160}, {96, 120, 144, 168, 192}},
    };
    for (const auto& [screen, scales] : rows) {
        for (int dpi = 96; const int scale : scales) {
            // Without frame, caption and taskbar.
            const Size room{screen.width - 16 * dpi / 96, screen.height - 79 * dpi / 96};
            const Size whole = WholeAt(scale);
            EXPECT_LE(whole.width, room.width);
            EXPECT_EQ(FitToScreen(dpi, room, WholeAt),
                      (ScreenFit{scale, {whole.width, std::min(whole.height, room.height)}}))
                << screen.width << " at " << dpi;
            dpi += 24;
        }
    }
    EXPECT_EQ(FitToScreen(120, {3840, 508}, WholeAt), (ScreenFit{120, {1225, 508}})) << "ten rows";
    EXPECT_EQ(FitToScreen(120, {3840, 507}, WholeAt), (ScreenFit{96, {1050, 507}})) << "and no fewer";
    EXPECT_EQ(FitToScreen(110, {1224, 800}, WholeAt), (ScreenFit{96, {1050, 618}})) << "from any scale";
    EXPECT_EQ(FitToScreen(192, {640, 300}, WholeAt), (ScreenFit{96, {1050, 413}})) << "and no further";
}

}  // namespace
