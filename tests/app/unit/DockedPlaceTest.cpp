#include <gtest/gtest.h>

#include "DockedPlace.h"

namespace {

TEST(DockedPlace, AsNearAsTheHostAllowsWithTheCornerInside) {
    constexpr Size kHost{1000, 800};
    const struct {
        int left, top;
        Size window;
        Rect place;
    } rows[] = {
        {100, 50, {600, 400}, {100, 50, 700, 450}},     // fits where it is
        {400, 400, {600, 400}, {400, 400, 1000, 800}},  // just
        {401, 401, {600, 400}, {400, 400, 1000, 800}},  // moved back
        {-30, -9, {600, 400}, {0, 0, 600, 400}},
        {-30, 50, {1200, 400}, {0, 50, 1200, 450}},  // too wide
        {100, 50, {1200, 900}, {0, 0, 1200, 900}},   // too large at all
    };
    for (const auto& [left, top, window, place] : rows)
        EXPECT_EQ(PlaceWithin(kHost, left, top, window), place) << left << ' ' << top << ' ' << window.width;
    EXPECT_EQ(PlaceWithin({0, 0}, 5, 5, {10, 10}), (Rect{0, 0, 10, 10})) << "a minimised host";
}

}  // namespace
