#include "ResizeLayout.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "resource.h"

namespace {

enum class Side {
    Keep,        // recorded place and extent
    After,       // behind the reference with the recorded gap, recorded extent
    AfterToEnd,  // behind the reference, and up to the client's end with the recorded margin
    ToEnd,       // recorded start, and up to the client's end
    End,         // recorded margin to the client's end, recorded extent
};

struct AxisRule {
    Side side;
    int reference = 0;  // the control that After and AfterToEnd follow
};

// The words of the table below, for columns and rows alike.
constexpr AxisRule Keep() { return {Side::Keep}; }
constexpr AxisRule After(int id) { return {Side::After, id}; }
constexpr AxisRule FromBehind(int id) { return {Side::AfterToEnd, id}; }
constexpr AxisRule ToEnd() { return {Side::ToEnd}; }
constexpr AxisRule AtEnd() { return {Side::End}; }

struct Anchor {
    int id;
    AxisRule horizontal;
    AxisRule vertical;
};

/// A reference stands above the rows that name it. IDC_ADD_SEPARATOR, IDC_SORT_ALL and IDC_LAYOUT_FILE keep
/// their places in the template.
constexpr auto kAnchors = std::to_array<Anchor>({
    {IDC_CATEGORIES_LABEL, Keep(), Keep()},
    {IDC_PLUGINS_LABEL, Keep(), Keep()},
    {IDC_LAYOUT_LABEL, Keep(), Keep()},
    {IDC_LAYOUT_NEW, Keep(), Keep()},
    {IDC_LAYOUT_OPEN, Keep(), Keep()},
    {IDC_LAYOUT_SAVE, Keep(), Keep()},
    {IDC_LAYOUT_DELETE, Keep(), Keep()},

    {IDC_CATEGORIES, Keep(), FromBehind(IDC_CATEGORIES_LABEL)},
    {IDC_PLUGINS, After(IDC_CATEGORIES), ToEnd()},

    {IDC_LAYOUT_FILE_LABEL, After(IDC_PLUGINS), Keep()},
    {IDC_LAYOUTS, After(IDC_PLUGINS), Keep()},
    {IDC_ADD_PLUGIN, After(IDC_PLUGINS), Keep()},
    {IDC_NEW_FOLDER, After(IDC_PLUGINS), Keep()},
    {IDC_EXPAND_ALL, After(IDC_PLUGINS), Keep()},
    {IDC_COLLAPSE_ALL, After(IDC_PLUGINS), Keep()},
    {IDC_REMOVE, After(IDC_PLUGINS), Keep()},
    {IDC_MOVE_UP, After(IDC_PLUGINS), Keep()},
    {IDC_MOVE_DOWN, After(IDC_PLUGINS), Keep()},
    {IDC_PROMOTE, After(IDC_PLUGINS), Keep()},
    {IDC_LAYOUT_TREE, FromBehind(IDC_ADD_PLUGIN), FromBehind(IDC_LAYOUTS)},

    {IDC_VST_GROUP, Keep(), AtEnd()},
    {IDC_ADAPTER_GROUP, Keep(), AtEnd()},
    {IDC_VST_OPTIONS, Keep(), AtEnd()},
    {IDC_ADAPTER_WIZARD, Keep(), AtEnd()},
    {IDC_ADAPTER_PROPERTIES, Keep(), AtEnd()},
    {IDC_VST_PROPERTIES, Keep(), AtEnd()},
    {IDC_VST_SCAN, Keep(), AtEnd()},
    {IDC_EXCLUSION_GROUP, Keep(), AtEnd()},
    {IDC_EXCLUDE, Keep(), AtEnd()},
    {IDC_SHOW_ENABLED, Keep(), AtEnd()},
    {IDC_SHOW_EXCLUDED, Keep(), AtEnd()},
    {IDC_SHOW_PERMANENT, Keep(), AtEnd()},
    {IDC_PRESETS_GROUP, Keep(), AtEnd()},
    {IDC_IMPORT, Keep(), AtEnd()},
    {IDC_EXPORT, Keep(), AtEnd()},
    {IDC_MANAGE, Keep(), AtEnd()},
    {IDC_FILENAME_LABEL, Keep(), AtEnd()},
    {IDC_FILENAME, Keep(), AtEnd()},
    {IDC_CLSID_LABEL, Keep(), AtEnd()},
    {IDC_CLSID, Keep(), AtEnd()},
    {IDC_VENDOR, Keep(), AtEnd()},
    {IDC_VST_ID_LABEL, Keep(), AtEnd()},
    {IDC_VST_ID, Keep(), AtEnd()},

    {IDC_HELP_BUTTON, AtEnd(), AtEnd()},
    {IDC_CLOSE, AtEnd(), AtEnd()},
});

constexpr std::size_t IndexOf(int id) {
    return static_cast<std::size_t>(
        std::ranges::find(kAnchors, id, [](const Anchor& anchor) { return anchor.id; }) - kAnchors.begin());
}

constexpr bool ReferencesComeFirst() {
    for (std::size_t i = 0; i < kAnchors.size(); ++i) {
        for (const AxisRule& rule : {kAnchors[i].horizontal, kAnchors[i].vertical}) {
            if (rule.reference != 0 && IndexOf(rule.reference) >= i) return false;
        }
    }
    return true;
}
static_assert(ReferencesComeFirst());

constexpr auto kPlacedControls = [] {
    std::array<int, kAnchors.size()> ids{};
    for (std::size_t i = 0; i < ids.size(); ++i) ids[i] = kAnchors[i].id;
    return ids;
}();

struct Extent {
    int start;
    int end;
};

/// `referenceShift` is how far the reference's end has moved, `growth` how much longer the client has become.
Extent PlaceOnAxis(Side side, Extent was, int referenceShift, int growth) {
    switch (side) {
        case Side::Keep:
            break;
        case Side::After:
            return {was.start + referenceShift, was.end + referenceShift};
        case Side::AfterToEnd:
            return {was.start + referenceShift, was.end + growth};
        case Side::ToEnd:
            return {was.start, was.end + growth};
        case Side::End:
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
    std::vector<Rect> placed = recorded.places;
    const auto shiftOf = [&](const AxisRule& rule, int Rect::*end) {
        if (rule.reference == 0) return 0;
        const std::size_t reference = IndexOf(rule.reference);
        return placed[reference].*end - recorded.places[reference].*end;
    };
    for (std::size_t i = 0; i < kAnchors.size(); ++i) {
        const Anchor& anchor = kAnchors[i];
        const Rect& was = recorded.places[i];
        const Extent columns =
            PlaceOnAxis(anchor.horizontal.side, {was.left, was.right},
                        shiftOf(anchor.horizontal, &Rect::right), client.width - recorded.client.width);
        const Extent rows =
            PlaceOnAxis(anchor.vertical.side, {was.top, was.bottom}, shiftOf(anchor.vertical, &Rect::bottom),
                        client.height - recorded.client.height);
        placed[i] = {columns.start, rows.start, columns.end, rows.end};
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
