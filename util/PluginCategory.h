// The categories of plug-ins: a fixed table, in the order of the codes that layout files store.
#pragma once

#include <array>
#include <cstddef>

#include "Guid.h"
#include "resource.h"

/// The value is the row of the table below, the item data in the category list, and the code in layout files.
enum class Category {
    DirectXEffects,
    VstEffects,
    DirectXInstruments,
    VstInstruments,
    MidiEffects,
    MediaObjects,
    ControlSurfaces,
    LegacyVstEffects,
    LegacyVstInstruments,
    Vst3Effects,
    Vst3Instruments,
};

struct PluginCategory {
    Guid guid;  // what the preset store is keyed by
    unsigned captionId;
};

inline constexpr std::array<PluginCategory, 11> kCategories = {{
    {"{083863F1-70DE-11D0-BD40-00A0C911CE86}"_guid, IDS_CATEGORY_DX},                // 0
    {"{B84F08B7-2DF0-438B-A5B4-E7700FE06A18}"_guid, IDS_CATEGORY_VST},               // 1
    {"{F2B30048-71CC-4182-A042-5F9719265B2D}"_guid, IDS_CATEGORY_DXI},               // 2
    {"{FDB0F208-FD06-4195-BC36-4BC5AFC89581}"_guid, IDS_CATEGORY_VSTI},              // 3
    {"{EA928480-B8A3-43C0-8FA0-CCAD36569849}"_guid, IDS_CATEGORY_MIDI_EFFECTS},      // 4
    {"{018A6D0F-344A-40DF-864C-3D83A94844E4}"_guid, IDS_CATEGORY_DMO},               // 5
    {"{E26F299E-B4BC-49E6-99BF-275210DDC844}"_guid, IDS_CATEGORY_CONTROL_SURFACES},  // 6
    {"{2BB55B37-EAF2-434F-B82E-AEA2156366CF}"_guid, IDS_CATEGORY_LEGACY_VST},        // 7
    {"{A21768E5-211E-4A57-98D6-F32D57061A1A}"_guid, IDS_CATEGORY_LEGACY_VSTI},       // 8
    {"{5B3CB5A1-2452-4C7B-A445-0A84580F9D7C}"_guid, IDS_CATEGORY_VST3},              // 9
    {"{8D3D44A4-FB4A-4E34-AF6D-910531720233}"_guid, IDS_CATEGORY_VST3I},             // 10
}};

/// The category list from top to bottom; the last two stand there only when the legacy adapter has an
/// inventory.
inline constexpr std::array<Category, 11> kCategoryListOrder = {
    Category::DirectXEffects,     Category::VstEffects,           Category::Vst3Effects,
    Category::DirectXInstruments, Category::VstInstruments,       Category::Vst3Instruments,
    Category::MidiEffects,        Category::MediaObjects,         Category::ControlSurfaces,
    Category::LegacyVstEffects,   Category::LegacyVstInstruments,
};
inline constexpr std::size_t kLegacyCategories = 2;

constexpr const PluginCategory& RowOf(Category category) {
    return kCategories[static_cast<std::size_t>(category)];
}

constexpr bool IsVst3(Category category) {
    return category == Category::Vst3Effects || category == Category::Vst3Instruments;
}

/// A category whose plug-ins come from the VST inventory.
constexpr bool IsVstCategory(Category category) {
    return category == Category::VstEffects || category == Category::VstInstruments || IsVst3(category);
}

/// VST plug-ins wrapped as DirectX filters by the legacy adapter.
constexpr bool IsLegacyWrapped(Category category) {
    return category == Category::LegacyVstEffects || category == Category::LegacyVstInstruments;
}

/// Plug-ins of these can be entries of a layout.
constexpr bool GoesIntoLayouts(Category category) {
    return category != Category::ControlSurfaces && !IsLegacyWrapped(category);
}

constexpr bool IsExcludable(Category category) {
    return category != Category::MidiEffects && category != Category::ControlSurfaces;
}
