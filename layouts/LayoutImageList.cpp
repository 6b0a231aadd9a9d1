#include "LayoutImageList.h"

#include "LayoutItem.h"
#include "Resources.h"
#include "resource.h"

namespace {

using enum LayoutImage;

struct ImageIcon {
    LayoutImage image;
    UINT icon;
};

constexpr ImageIcon kIcons[] = {
    {MidiEffect, IDI_TREE_MIDI_EFFECT},
    {ControlSurface, IDI_TREE_CONTROL_SURFACE},
    {Folder, IDI_TREE_FOLDER},
    {OpenFolder, IDI_TREE_FOLDER_OPEN},
    {Separator, IDI_TREE_SEPARATOR},
    {VstEffectMissing, IDI_TREE_VST_EFFECT_MISSING},
    {VstInstrumentMissing, IDI_TREE_VST_INSTRUMENT_MISSING},
    {Vst3EffectMissing, IDI_TREE_VST3_EFFECT_MISSING},
    {Vst3InstrumentMissing, IDI_TREE_VST3_INSTRUMENT_MISSING},
    {DxEffectMissing, IDI_TREE_DX_EFFECT_MISSING},
    {DxInstrumentMissing, IDI_TREE_DX_INSTRUMENT_MISSING},
    {VstEffect, IDI_TREE_VST_EFFECT},
    {VstInstrument, IDI_TREE_VST_INSTRUMENT},
    {VstEffectElsewhere, IDI_TREE_VST_EFFECT_OTHER},
    {VstInstrumentElsewhere, IDI_TREE_VST_INSTRUMENT_OTHER},
    {Vst3Effect, IDI_TREE_VST3_EFFECT},
    {Vst3Instrument, IDI_TREE_VST3_INSTRUMENT},
    {Vst3EffectElsewhere, IDI_TREE_VST3_EFFECT_OTHER},
    {Vst3InstrumentElsewhere, IDI_TREE_VST3_INSTRUMENT_OTHER},
    {DxEffect, IDI_TREE_DX_EFFECT},
    {DxInstrument, IDI_TREE_DX_INSTRUMENT},
};

/// The generic one for what is unknown, and for the indexes that nothing shows.
UINT IconOf(int index) {
    for (const ImageIcon& known : kIcons) {
        if (static_cast<int>(known.image) == index) return known.icon;
    }
    return IDI_TREE_GENERIC;
}

/// An icon ends in so many empty columns where it has its usual size.
constexpr int kMargin = 3;
constexpr int kUsualSize = 16;

constexpr int kInitialSize = 7;
constexpr int kGrowth = 10;

}  // namespace

UniqueImageList BuildLayoutImageList(UINT dpi) {
    const int iconWidth = ::GetSystemMetricsForDpi(SM_CXSMICON, dpi);
    const int width = iconWidth + ::MulDiv(iconWidth, kMargin, kUsualSize);
    const int height = ::GetSystemMetricsForDpi(SM_CYSMICON, dpi);
    UniqueImageList list(::ImageList_Create(width, height, ILC_COLOR32 | ILC_MASK, kInitialSize, kGrowth));
    for (int index = 0; index < kLayoutImageCount; ++index) {
        const UniqueIcon icon = LoadIconResource(IconOf(index), width, height);
        if (!icon || ::ImageList_ReplaceIcon(list.Get(), -1, icon.Get()) < 0) return {};
    }
    return list;
}
