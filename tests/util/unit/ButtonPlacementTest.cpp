#include <gtest/gtest.h>

#include "ButtonPlacement.h"

namespace {

TEST(ButtonPlacement, AnImageStandsAtTheChosenSideOfTheTextOrAloneInTheMiddle) {
    constexpr Rect kButton{10, 20, 110, 46};
    constexpr Size kImage{16, 16};
    const auto place = [=](Size image, bool hasText, ImagePlacement side) {
        return PlaceButtonParts(kButton, image, hasText, side);
    };
    const auto left = place(kImage, true, ImagePlacement::LeftOfText);
    EXPECT_EQ(left.image, (Rect{18, 25, 34, 41}));
    EXPECT_EQ(left.text, (Rect{38, 20, 106, 46}));
    const auto right = place(kImage, true, ImagePlacement::RightOfText);
    EXPECT_EQ(right.image, (Rect{86, 25, 102, 41}));
    EXPECT_EQ(right.text, (Rect{14, 20, 82, 46}));
    EXPECT_EQ(place(kImage, false, ImagePlacement::RightOfText).image, (Rect{52, 25, 68, 41}));
    EXPECT_EQ(place({}, true, ImagePlacement::LeftOfText).text, kButton) << "the text has the whole button";
}

}  // namespace
