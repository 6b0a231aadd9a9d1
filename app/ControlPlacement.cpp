#include "ControlPlacement.h"

#include <optional>

#include "ResizeLayout.h"

namespace {

std::optional<RecordedGeometry> g_recorded;

/// Room of the batch; it grows by itself when there are more controls.
constexpr int kExpectedControls = 40;

Size ClientSize(const CDialog& dialog) {
    const Rect client = dialog.ClientRect();
    return {client.Width(), client.Height()};
}

}  // namespace

void RecordPlacement(const CDialog& dialog, Size units) {
    if (g_recorded) return;
    g_recorded = RecordedGeometry{{}, ClientSize(dialog), units};
    for (const int id : PlacedControls())
        g_recorded->places.push_back(dialog.Item(id).RectIn(dialog.Handle()));
}

void ApplyPlacement(const CDialog& dialog, Size units) {
    if (!g_recorded) return;
    const auto places = PlaceControls(InUnits(*g_recorded, units), ClientSize(dialog));
    {
        CGeometryBatch batch(kExpectedControls);
        for (std::size_t i = 0; i < places.size(); ++i) {
            batch.Move(dialog.Item(PlacedControls()[i]).Handle(), places[i]);
        }
    }
    // The dialog does not clip its children, because group boxes show its background. So it erases controls
    // where it has grown.
    ::RedrawWindow(dialog.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}
