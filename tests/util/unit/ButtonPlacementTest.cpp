#include <gtest/gtest.h>

#include "ButtonPlacement.h"

namespace {

constexpr Rect kButton{10, 20, 110, 46};
constexpr Size kImage{16, 16};

TEST(ButtonPlacement, AnImageStandsAtTheChosenSideOfTheTextOrAloneInTheMiddle) {
    const auto left = PlaceButtonParts(kButton, kImage, true, ImagePlacement::LeftOfText);
    EXPECT_EQ(left.image, (Rect{18, 25, 34, 41}));
    EXPECT_GT(left.text.left, left.image.right);
    const auto right = PlaceButtonParts(kButton, kImage, true, ImagePlacement::RightOfText);
    EXPECT_EQ(right.image, (Rect{86, 25, 102, 41}));
    EXPECT_LT(right.text.right, right.image.left);
    const auto alone = PlaceButtonParts(kButton, kImage, false, ImagePlacement::RightOfText);
    EXPECT_EQ(alone.image, (Rect{52, 25, 68, 41}));
    const auto none = PlaceButtonParts(kButton, {}, true, ImagePlacement::LeftOfText);
    EXPECT_EQ(none.text, kButton) << "the text has the whole button";
}

}  // namespace
