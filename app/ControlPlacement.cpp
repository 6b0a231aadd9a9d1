#include "ControlPlacement.h"

#include <optional>

#include "ResizeLayout.h"
#include "resource.h"

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
    // Not the window's own: the system has cut one that is larger than the screen.
    RECT client{0, 0, MAIN_DIALOG_WIDTH, MAIN_DIALOG_HEIGHT};
    ::MapDialogRect(dialog.Handle(), &client);
    g_recorded = RecordedGeometry{{}, {client.right, client.bottom}, units};
    for (const int id : PlacedControls())
        g_recorded->places.push_back(dialog.Item(id).RectIn(dialog.Handle()));
}

Size RecordedClient(Size units) { return Scaled(g_recorded->client, g_recorded->units, units); }

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
