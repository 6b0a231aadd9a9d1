// Applies the resize layout to a dialog's controls.
#pragma once

#include <optional>

#include "Dialog.h"
#include "ResizeLayout.h"

class CControlPlacement {
  public:
    /// Measures the controls as they stand. Only the first dialog of the process is measured: one that is
    /// made later follows the same geometry.
    void Record(const CDialog& dialog);
    /// Moves all controls in one batch; nothing before the first Record.
    void Apply(const CDialog& dialog) const;

  private:
    static std::optional<RecordedGeometry>& Recorded();
};
