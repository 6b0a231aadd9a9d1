#include "ControlPlacement.h"

namespace {

/// Room of the batch; it grows by itself when there are more controls.
constexpr int kExpectedControls = 40;

Size ClientSize(const CDialog& dialog) {
    const Rect client = dialog.ClientRect();
    return {client.Width(), client.Height()};
}

}  // namespace

std::optional<RecordedGeometry>& CControlPlacement::Recorded() {
    static std::optional<RecordedGeometry> recorded;
    return recorded;
}

void CControlPlacement::Record(const CDialog& dialog) {
    if (Recorded()) return;
    RecordedGeometry geometry{{}, ClientSize(dialog)};
    for (const int id : PlacedControls()) geometry.places.push_back(dialog.Item(id).RectIn(dialog.Handle()));
    Recorded() = std::move(geometry);
}

void CControlPlacement::Apply(const CDialog& dialog) const {
    if (!Recorded()) return;
    const auto places = PlaceControls(*Recorded(), ClientSize(dialog));
    {
        CGeometryBatch batch(kExpectedControls);
        for (std::size_t i = 0; i < places.size(); ++i) {
            batch.Move(dialog.Item(PlacedControls()[i]).Handle(), places[i]);
        }
    }
    // Group boxes show the dialog's background, so the dialog does not clip its children, and what it erases
    // where it has grown takes controls with it.
    ::RedrawWindow(dialog.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}
