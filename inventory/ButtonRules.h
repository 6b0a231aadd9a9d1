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

struct ButtonRule {
    int id;
    bool (*canBeUsed)(const PaneState& state);
};

namespace buttons {

constexpr bool Always(const PaneState&) { return true; }
constexpr bool Never(const PaneState&) { return false; }
constexpr bool One(const PaneState& state) { return state.selectedRows == 1; }
constexpr bool OneVst(const PaneState& state) { return One(state) && IsVstCategory(state.category); }
constexpr bool OneVstWithScanner(const PaneState& state) { return OneVst(state) && state.scannerExists; }
constexpr bool OneWrapped(const PaneState& state) { return One(state) && IsLegacyWrapped(state.category); }
constexpr bool WithPresets(const PaneState& state) { return state.presets != 0; }
constexpr bool OneWithPresets(const PaneState& state) { return One(state) && WithPresets(state); }
constexpr bool Excludable(const PaneState& state) {
    return state.selectedRows > 0 && IsExcludable(state.category);
}
constexpr bool Scannable(const PaneState& state) {
    return !IsLegacyWrapped(state.category) && state.scannerExists;
}
constexpr bool WrappedWithProgram(const PaneState& state) {
    return IsLegacyWrapped(state.category) && state.adapterProgramExists;
}
constexpr bool FitForLayout(const PaneState& state) {
    return GoesIntoLayouts(state.category) && state.mode != VisibilityMode::Excluded;
}

/// When the plug-in list was filled anew.
inline constexpr ButtonRule kAfterFill[] = {
    {IDC_IMPORT, Never},
    {IDC_EXPORT, Never},
    {IDC_MANAGE, Never},
    {IDC_ADD_PLUGIN, Never},
    {IDC_EXCLUDE, Excludable},
    {IDC_VST_OPTIONS, Scannable},
    {IDC_VST_SCAN, Scannable},
    {IDC_VST_PROPERTIES, OneVst},
    {IDC_ADAPTER_WIZARD, WrappedWithProgram},
    {IDC_ADAPTER_PROPERTIES, OneWrapped},
};

/// When one or more rows of the plug-in list were selected.
inline constexpr ButtonRule kAfterSelection[] = {
    {IDC_IMPORT, Always},           {IDC_EXPORT, WithPresets}, {IDC_MANAGE, OneWithPresets},
    {IDC_ADD_PLUGIN, FitForLayout}, {IDC_EXCLUDE, Excludable}, {IDC_VST_PROPERTIES, OneVstWithScanner},
    {IDC_ADAPTER_PROPERTIES, One},
};

}  // namespace buttons
