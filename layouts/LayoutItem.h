// The records behind the items of a menu layout.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "Guid.h"

/// The numbers are those of the layout records, and sorting goes by them: folders first.
enum class LayoutKind { Folder = 0, Plugin = 1, Separator = 2 };

using LayoutItemId = std::uint32_t;

inline constexpr LayoutItemId kInvalidItemId = 0xFFFFFFFF;
inline constexpr wchar_t kSeparatorText[] = L"-------------------------------";

/// What one item of the tree stands for. `category` is the number that the file holds, which may name none
/// that there is.
struct LayoutItem {
    LayoutItemId id = kInvalidItemId;
    LayoutKind kind = LayoutKind::Folder;
    std::wstring name;
    Guid clsid;  // the null id, but for plug-ins; this and all below is for plug-ins only
    int category = 0;
    std::wstring originalName;
    std::wstring defaultPreset;  // empty: none
    std::optional<std::wstring> vendor;
    bool inventoryFlag = false;  // the plug-in stands in the VST inventory
    bool installed = false;
};

/// A record as the tree and the history of its steps share it: whoever changes it puts another in its place.
using SharedLayoutItem = std::shared_ptr<const LayoutItem>;

// Ids come from three counters for the life of the process, in ranges so far apart that an id tells its kind.
constexpr bool IsPluginId(LayoutItemId id) { return id < 0x100000; }
constexpr bool IsSeparatorId(LayoutItemId id) { return id >= 0x80000000; }
constexpr bool IsFolderId(LayoutItemId id) { return !IsPluginId(id) && !IsSeparatorId(id); }

/// Each gives a record with a new id of its kind, or with the invalid one when these are used up.
LayoutItem NewFolder(std::wstring name);
LayoutItem NewSeparator();
LayoutItem NewPlugin();
/// The same as an item of its own.
LayoutItem WithNewId(LayoutItem record);

/// The tree's images, by their index in its image list. The indexes between have an image that nothing shows.
enum class LayoutImage {
    MidiEffect = 2,
    ControlSurface = 3,
    Folder = 5,
    OpenFolder,
    Separator,
    Unknown,
    VstEffectMissing,
    VstInstrumentMissing,
    Vst3EffectMissing,
    Vst3InstrumentMissing,
    DxEffectMissing,
    DxInstrumentMissing,
    VstEffect,
    VstInstrument,
    VstEffectElsewhere,
    VstInstrumentElsewhere,
    Vst3Effect,
    Vst3Instrument,
    Vst3EffectElsewhere,
    Vst3InstrumentElsewhere,
    DxEffect,
    DxInstrument,
};
inline constexpr int kLayoutImageCount = static_cast<int>(LayoutImage::DxInstrument) + 1;

/// Indexes of the images that an item shows.
struct LayoutImages {
    int normal;
    int selected;

    friend bool operator==(const LayoutImages&, const LayoutImages&) = default;
};
LayoutImages ImagesOf(const LayoutItem& item);
