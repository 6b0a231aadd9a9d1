// When the buttons of the plug-in panes can be used.
#pragma once

#include "PluginCategory.h"
#include "VisibilityRule.h"

/// What the panes show at the moment.
struct PaneState {
    Category category = Category::DirectXEffects;
    VisibilityMode mode = VisibilityMode::Enabled;
    int selectedRows = 0;
    unsigned presets = 0;  // of all selected plug-ins
    bool scannerExists = false;
    bool adapterProgramExists = false;
};

constexpr bool CanExclude(const PaneState& state) {
    return state.selectedRows > 0 && IsExcludable(state.category);
}

/// The plug-in list was filled anew.
struct ButtonsAfterFill {
    bool vstOptions, vstScan, vstProperties, adapterWizard, adapterProperties, exclude;
};
constexpr ButtonsAfterFill AfterFill(const PaneState& state) {
    const bool legacy = IsLegacyWrapped(state.category);
    const bool one = state.selectedRows == 1;
    return {
        .vstOptions = !legacy && state.scannerExists,
        .vstScan = !legacy && state.scannerExists,
        .vstProperties = IsVstCategory(state.category) && one,
        .adapterWizard = legacy && state.adapterProgramExists,
        .adapterProperties = legacy && one,
        .exclude = CanExclude(state),
    };
}

/// One or more rows of the plug-in list were selected.
struct ButtonsAfterSelection {
    bool exportPresets, managePresets, exclude, vstProperties, adapterProperties, addPlugin;
};
constexpr ButtonsAfterSelection AfterSelection(const PaneState& state) {
    const bool one = state.selectedRows == 1;
    return {
        .exportPresets = state.presets != 0,
        .managePresets = one && state.presets != 0,
        .exclude = CanExclude(state),
        .vstProperties = one && state.scannerExists && IsVstCategory(state.category),
        .adapterProperties = one,
        .addPlugin = state.category != Category::ControlSurfaces && !IsLegacyWrapped(state.category) &&
                     state.mode != VisibilityMode::Excluded,
    };
}
