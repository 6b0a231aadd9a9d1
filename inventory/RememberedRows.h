// What is selected in the plug-in list, and which part of it is in view, over a refill.
#pragma once

#include <optional>
#include <vector>

#include "Controls.h"
#include "PluginRecords.h"

/// Rows by the plug-ins that they stand for, because a list that was filled anew has others at their numbers.
class CRememberedRows {
  public:
    static CRememberedRows Of(const CListBox& plugins);
    /// For a list that loses its selected rows: the caret goes to the row behind them, and nothing is
    /// selected.
    static CRememberedRows BehindSelection(const CListBox& plugins);
    /// For a list that gets other rows, and so begins at its start.
    static CRememberedRows SelectionOf(const CListBox& plugins);

    /// Selects what was selected, where it still shows, and nothing else. Nobody is notified.
    void Restore(const CListBox& plugins) const;

  private:
    struct Place {
        std::optional<PluginId> plugin;
        int row = 0;  // for a plug-in that is gone
    };
    static Place PlaceAt(const CListBox& plugins, int row);

    std::vector<PluginId> m_selected;
    Place m_caret;
    Place m_top;
};
