#include <algorithm>
#include <gtest/gtest.h>

#include "ResizeLayout.h"
#include "resource.h"

namespace {

std::size_t IndexOf(int id) {
    return static_cast<std::size_t>(std::ranges::find(PlacedControls(), id) - PlacedControls().begin());
}

/// Every control at a place of its own, so that a mixed-up rule shows.
RecordedGeometry Recorded() {
    RecordedGeometry geometry{{}, {1000, 600}, {6, 13}};
    int n = 0;
    for ([[maybe_unused]] const int id : PlacedControls()) {
        geometry.places.push_back({10 + n, 20 + n, 60 + n, 40 + n});
        ++n;
    }
    return geometry;
}

TEST(ResizeLayout, TheSizeItWasRecordedAtChangesNothing) {
    EXPECT_EQ(PlaceControls(Recorded(), {1000, 600}), Recorded().places);
}

TEST(ResizeLayout, OtherUnitsScaleWhatWasRecordedAndBackAgain) {
    // Columns by half as much again, rows to twice; nearest, and the same size wherever it lies.
    EXPECT_EQ(Scaled(Rect{-5, 3, 6, 10}, {6, 13}, {9, 26}), (Rect{-8, 6, 9, 20}));
    EXPECT_EQ(Scaled(Rect{1, 0, 12, 1}, {6, 13}, {9, 13}).Width(),
              Scaled(Rect{2, 0, 13, 1}, {6, 13}, {9, 13}).Width());
    const RecordedGeometry larger = InUnits(Recorded(), {9, 26});
    EXPECT_EQ(larger.client, (Size{1500, 1200}));
    EXPECT_EQ(PlaceControls(larger, larger.client), larger.places);
    const RecordedGeometry back = InUnits(larger, {6, 13});
    EXPECT_EQ(back.places, Recorded().places);
    EXPECT_EQ(back.client, Recorded().client);
}

TEST(ResizeLayout, ControlsFollowTheirEdges) {
    const auto was = Recorded().places;
    const auto now = PlaceControls(Recorded(), {1100, 650});
    // Shifts of left, top, right and bottom when the client grows by 100 and 50.
    const struct {
        int id;
        Rect shift;
    } cases[] = {
        {IDC_LAYOUT_TREE, {0, 0, 100, 50}},    {IDC_CATEGORIES, {0, 0, 0, 50}},
        {IDC_PLUGINS, {0, 0, 0, 50}},          {IDC_PLUGINS_LABEL, {0, 0, 0, 0}},
        {IDC_LAYOUT_SAVE, {0, 0, 0, 0}},       {IDC_LAYOUTS, {0, 0, 0, 0}},
        {IDC_PROMOTE, {0, 0, 0, 0}},           {IDC_VST_ID, {0, 50, 0, 50}},
        {IDC_EXCLUDE, {0, 50, 0, 50}},         {IDC_PRESETS_GROUP, {0, 50, 0, 50}},
        {IDC_VST_SCAN, {0, 50, 0, 50}},        {IDC_CLOSE, {100, 50, 100, 50}},
        {IDC_HELP_BUTTON, {100, 50, 100, 50}},
    };
    for (const auto& c : cases) {
        const Rect& a = was[IndexOf(c.id)];
        const Rect& b = now[IndexOf(c.id)];
        const Rect shift{b.left - a.left, b.top - a.top, b.right - a.right, b.bottom - a.bottom};
        EXPECT_EQ(shift, c.shift) << c.id;
    }
}

TEST(ResizeLayout, ControlsThatKeepTheTemplatesPlaceAreNotPlaced) {
    for (const int id : {IDC_ADD_SEPARATOR, IDC_SORT_ALL, IDC_LAYOUT_FILE}) {
        EXPECT_EQ(std::ranges::count(PlacedControls(), id), 0) << id;
    }
    EXPECT_EQ(PlacedControls().size(), 45U);
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
    for (const auto& c : cases)
        EXPECT_EQ(HoldMinimumSize(c.edge, tooSmall, minimum), c.held) << static_cast<int>(c.edge);
    const Rect large{0, 0, 401, 300};
    EXPECT_EQ(HoldMinimumSize(SizingEdge::TopLeft, large, minimum), large);
}

}  // namespace
