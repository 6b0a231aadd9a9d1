#include "ResizeLayout.h"

#include <array>
#include <cstddef>

#include "resource.h"

namespace {

/// What a control does along one axis when the client area changes.
enum class Side {
    Keep,   // recorded place and extent
    ToEnd,  // recorded start, and up to the client's end with the recorded margin
    AtEnd,  // recorded margin to the client's end, recorded extent
};
using enum Side;

struct Anchor {
    int id;
    Side horizontal;
    Side vertical;
};

/// Only the tree grows in width, so that what stands between the lists and the tree stays in its columns.
/// IDC_FIND, IDC_ADD_SEPARATOR, IDC_SORT_ALL, IDC_TASKS and IDC_LAYOUT_FILE keep their places in the
/// template.
constexpr auto kAnchors = std::to_array<Anchor>({
    {IDC_CATEGORIES_LABEL, Keep, Keep},
    {IDC_PLUGINS_LABEL, Keep, Keep},
    {IDC_LAYOUT_LABEL, Keep, Keep},
    {IDC_LAYOUT_NEW, Keep, Keep},
    {IDC_LAYOUT_OPEN, Keep, Keep},
    {IDC_LAYOUT_SAVE, Keep, Keep},
    {IDC_LAYOUT_DELETE, Keep, Keep},

    {IDC_CATEGORIES, Keep, ToEnd},
    {IDC_PLUGINS, Keep, ToEnd},

    {IDC_LAYOUT_FILE_LABEL, Keep, Keep},
    {IDC_LAYOUTS, Keep, Keep},
    {IDC_ADD_PLUGIN, Keep, Keep},
    {IDC_NEW_FOLDER, Keep, Keep},
    {IDC_EXPAND_ALL, Keep, Keep},
    {IDC_COLLAPSE_ALL, Keep, Keep},
    {IDC_REMOVE, Keep, Keep},
    {IDC_MOVE_UP, Keep, Keep},
    {IDC_MOVE_DOWN, Keep, Keep},
    {IDC_PROMOTE, Keep, Keep},
    {IDC_LAYOUT_TREE, ToEnd, ToEnd},

    {IDC_VST_GROUP, Keep, AtEnd},
    {IDC_ADAPTER_GROUP, Keep, AtEnd},
    {IDC_VST_OPTIONS, Keep, AtEnd},
    {IDC_ADAPTER_WIZARD, Keep, AtEnd},
    {IDC_ADAPTER_PROPERTIES, Keep, AtEnd},
    {IDC_VST_PROPERTIES, Keep, AtEnd},
    {IDC_VST_SCAN, Keep, AtEnd},
    {IDC_EXCLUSION_GROUP, Keep, AtEnd},
    {IDC_EXCLUDE, Keep, AtEnd},
    {IDC_SHOW_ENABLED, Keep, AtEnd},
    {IDC_SHOW_EXCLUDED, Keep, AtEnd},
    {IDC_SHOW_PERMANENT, Keep, AtEnd},
    {IDC_PRESETS_GROUP, Keep, AtEnd},
    {IDC_IMPORT, Keep, AtEnd},
    {IDC_EXPORT, Keep, AtEnd},
    {IDC_MANAGE, Keep, AtEnd},
    {IDC_FILENAME_LABEL, Keep, AtEnd},
    {IDC_FILENAME, Keep, AtEnd},
    {IDC_CLSID_LABEL, Keep, AtEnd},
    {IDC_CLSID, Keep, AtEnd},
    {IDC_VENDOR, Keep, AtEnd},
    {IDC_VST_ID_LABEL, Keep, AtEnd},
    {IDC_VST_ID, Keep, AtEnd},

    {IDC_HELP_BUTTON, AtEnd, AtEnd},
    {IDC_CLOSE, AtEnd, AtEnd},
});

constexpr auto kPlacedControls = [] {
    std::array<int, kAnchors.size()> ids{};
    for (std::size_t i = 0; i < ids.size(); ++i) ids[i] = kAnchors[i].id;
    return ids;
}();

struct Extent {
    int start;
    int end;
};

/// `growth` is how much longer the client has become.
Extent PlaceOnAxis(Side side, Extent was, int growth) {
    switch (side) {
        case Keep:
            break;
        case ToEnd:
            return {was.start, was.end + growth};
        case AtEnd:
            return {was.start + growth, was.end + growth};
    }
    return was;
}

bool DragsLeft(SizingEdge edge) {
    return edge == SizingEdge::Left || edge == SizingEdge::TopLeft || edge == SizingEdge::BottomLeft;
}

bool DragsTop(SizingEdge edge) {
    return edge == SizingEdge::Top || edge == SizingEdge::TopLeft || edge == SizingEdge::TopRight;
}

}  // namespace

std::span<const int> PlacedControls() { return kPlacedControls; }

RecordedGeometry InUnits(RecordedGeometry recorded, Size units) {
    for (Rect& place : recorded.places) place = Scaled(place, recorded.units, units);
    recorded.client = Scaled(recorded.client, recorded.units, units);
    recorded.units = units;
    return recorded;
}

std::vector<Rect> PlaceControls(const RecordedGeometry& recorded, Size client) {
    const Size growth{client.width - recorded.client.width, client.height - recorded.client.height};
    std::vector<Rect> placed;
    for (std::size_t i = 0; i < kAnchors.size(); ++i) {
        const Rect& was = recorded.places[i];
        const Extent columns = PlaceOnAxis(kAnchors[i].horizontal, {was.left, was.right}, growth.width);
        const Extent rows = PlaceOnAxis(kAnchors[i].vertical, {was.top, was.bottom}, growth.height);
        placed.push_back({columns.start, rows.start, columns.end, rows.end});
    }
    return placed;
}

Rect HoldMinimumSize(SizingEdge edge, Rect proposed, Size minimum) {
    if (proposed.Width() < minimum.width) {
        DragsLeft(edge) ? proposed.left = proposed.right - minimum.width
                        : proposed.right = proposed.left + minimum.width;
    }
    if (proposed.Height() < minimum.height) {
        DragsTop(edge) ? proposed.top = proposed.bottom - minimum.height
                       : proposed.bottom = proposed.top + minimum.height;
    }
    return proposed;
}
