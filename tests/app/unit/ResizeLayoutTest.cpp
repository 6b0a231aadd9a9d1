#include <algorithm>
#include <gtest/gtest.h>

#include "ResizeLayout.h"
#include "resource.h"

namespace {

/// Every control at a place of its own, so that a mixed-up rule shows.
RecordedGeometry Recorded() {
    RecordedGeometry geometry{{}, {1000, 600}, {6, 13}};
    for (int n = 0; n < std::ssize(PlacedControls()); ++n)
        geometry.places.push_back({10 + n, 20 + n, 60 + n, 40 + n});
    return geometry;
}

TEST(ResizeLayout, OtherUnitsScaleToTheNearestAndTheSameSizeEverywhere) {
    // Columns by half as much again, rows to twice.
    EXPECT_EQ(Scaled(Rect{-5, 3, 6, 10}, {6, 13}, {9, 26}), (Rect{-8, 6, 9, 20}));
    EXPECT_EQ(Scaled(Rect{1, 0, 12, 1}, {6, 13}, {9, 13}).Width(),
              Scaled(Rect{2, 0, 13, 1}, {6, 13}, {9, 13}).Width());
}

TEST(ResizeLayout, ControlsFollowTheirEdges) {
    const auto was = Recorded().places;
    const auto now = PlaceControls(Recorded(), {1100, 650});
    // How left, top, right and bottom move when the client grows by 100 and 50.
    const struct {
        Rect shift;
        std::vector<int> ids;
    } cases[] = {
        {{0, 0, 0, 0}, {IDC_PLUGINS_LABEL, IDC_LAYOUT_SAVE, IDC_LAYOUTS, IDC_PROMOTE}},
        {{0, 0, 100, 50}, {IDC_LAYOUT_TREE}},
        {{0, 0, 0, 50}, {IDC_CATEGORIES, IDC_PLUGINS}},
        {{0, 50, 0, 50}, {IDC_VST_ID, IDC_EXCLUDE, IDC_PRESETS_GROUP, IDC_VST_SCAN}},
        {{100, 50, 100, 50}, {IDC_CLOSE, IDC_HELP_BUTTON}},
    };
    for (const auto& [shift, ids] : cases) {
        for (const int id : ids) {
            const auto at = std::ranges::find(PlacedControls(), id) - PlacedControls().begin();
            const Rect& a = was.at(static_cast<std::size_t>(at));  // throws where the control is not placed
            const Rect& b = now.at(static_cast<std::size_t>(at));
            const Rect moved{b.left - a.left, b.top - a.top, b.right - a.right, b.bottom - a.bottom};
            EXPECT_EQ(moved, shift) << id;
        }
    }
}

TEST(ResizeLayout, TheDraggedEdgeIsHeldAtTheMinimum) {
    const Size minimum{400, 300};
    const Rect tooSmall{100, 100, 200, 150};
    const struct {
        SizingEdge edge;
        Rect held;
    } cases[] = {
        {SizingEdge::Left, {-200, 100, 200, 400}},       {SizingEdge::Right, {100, 100, 500, 400}},
        {SizingEdge::Top, {100, -150, 500, 150}},        {SizingEdge::TopLeft, {-200, -150, 200, 150}},
        {SizingEdge::TopRight, {100, -150, 500, 150}},   {SizingEdge::Bottom, {100, 100, 500, 400}},
        {SizingEdge::BottomLeft, {-200, 100, 200, 400}}, {SizingEdge::BottomRight, {100, 100, 500, 400}},
    };
    for (const auto& [edge, held] : cases)
        EXPECT_EQ(HoldMinimumSize(edge, tooSmall, minimum), held) << static_cast<int>(edge);
    const Rect large{0, 0, 401, 300};
    EXPECT_EQ(HoldMinimumSize(SizingEdge::TopLeft, large, minimum), large);
}

}  // namespace
