#include "LayoutItem.h"

#include <array>

namespace {

constexpr LayoutItemId kFirstPluginId = 1024;
constexpr LayoutItemId kFirstFolderId = 0x100000;
constexpr LayoutItemId kFirstSeparatorId = 0x80000000;

using enum LayoutImage;

struct PluginImages {
    LayoutImage missing;
    LayoutImage inInventory;
    LayoutImage elsewhere;
};

/// By category code.
constexpr std::array<PluginImages, 11> kPluginImages = {{
    {DxEffectMissing, DxEffect, DxEffect},                             // DirectX effects
    {VstEffectMissing, VstEffect, VstEffectElsewhere},                 // VST effects
    {DxInstrumentMissing, DxInstrument, DxInstrument},                 // DirectX instruments
    {VstInstrumentMissing, VstInstrument, VstInstrumentElsewhere},     // VST instruments
    {MidiEffect, MidiEffect, MidiEffect},                              // MIDI effects
    {DxEffectMissing, DxEffect, DxEffect},                             // media objects
    {ControlSurface, ControlSurface, ControlSurface},                  // control surfaces
    {VstEffectMissing, VstEffect, VstEffectElsewhere},                 // legacy wrapped VST effects
    {VstInstrumentMissing, VstInstrument, VstInstrumentElsewhere},     // legacy wrapped VST instruments
    {Vst3EffectMissing, Vst3Effect, Vst3EffectElsewhere},              // VST3 effects
    {Vst3InstrumentMissing, Vst3Instrument, Vst3InstrumentElsewhere},  // VST3 instruments
}};

LayoutImage PluginImage(const LayoutItem& item) {
    if (item.category < 0 || item.category >= static_cast<int>(kPluginImages.size())) return Unknown;
    const PluginImages& images = kPluginImages[static_cast<std::size_t>(item.category)];
    if (!item.installed) return images.missing;
    return item.inventoryFlag ? images.inInventory : images.elsewhere;
}

constexpr LayoutImages Show(LayoutImage normal, LayoutImage selected) {
    return {static_cast<int>(normal), static_cast<int>(selected)};
}

/// Beyond its range an id would tell another kind, and could be the id of an item that is there.
LayoutItem NewItem(LayoutKind kind, LayoutItemId& nextId, LayoutItemId endOfRange) {
    LayoutItem item;
    item.kind = kind;
    if (nextId < endOfRange) item.id = nextId++;
    return item;
}

}  // namespace

LayoutItem NewFolder(std::wstring name) {
    static LayoutItemId next = kFirstFolderId;
    LayoutItem item = NewItem(LayoutKind::Folder, next, kFirstSeparatorId);
    item.name = std::move(name);
    return item;
}

LayoutItem NewSeparator() {
    static LayoutItemId next = kFirstSeparatorId;
    LayoutItem item = NewItem(LayoutKind::Separator, next, kInvalidItemId);
    item.name = kSeparatorText;
    return item;
}

LayoutItem NewPlugin() {
    static LayoutItemId next = kFirstPluginId;
    return NewItem(LayoutKind::Plugin, next, kFirstFolderId);
}

LayoutItem WithNewId(LayoutItem record) {
    switch (record.kind) {
        case LayoutKind::Folder:
            record.id = NewFolder({}).id;
            break;
        case LayoutKind::Separator:
            record.id = NewSeparator().id;
            break;
        case LayoutKind::Plugin:
            record.id = NewPlugin().id;
            break;
    }
    return record;
}

LayoutImages ImagesOf(const LayoutItem& item) {
    switch (item.kind) {
        case LayoutKind::Folder:
            return Show(Folder, OpenFolder);
        case LayoutKind::Separator:
            return Show(Separator, Separator);
        case LayoutKind::Plugin:
            break;
    }
    const LayoutImage image = PluginImage(item);
    return Show(image, image);
}
