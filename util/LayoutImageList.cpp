#include "LayoutImageList.h"

#include "Resources.h"
#include "resource.h"

namespace {

constexpr UINT kIcons[] = {
    IDI_TREE_GENERIC,                  // 0, not used
    IDI_TREE_GENERIC,                  // 1, not used
    IDI_TREE_MIDI_EFFECT,              // 2
    IDI_TREE_CONTROL_SURFACE,          // 3
    IDI_TREE_GENERIC,                  // 4, not used
    IDI_TREE_FOLDER,                   // 5
    IDI_TREE_FOLDER_OPEN,              // 6
    IDI_TREE_SEPARATOR,                // 7
    IDI_TREE_GENERIC,                  // 8
    IDI_TREE_VST_EFFECT_MISSING,       // 9
    IDI_TREE_VST_INSTRUMENT_MISSING,   // 10
    IDI_TREE_VST3_EFFECT_MISSING,      // 11
    IDI_TREE_VST3_INSTRUMENT_MISSING,  // 12
    IDI_TREE_DX_EFFECT_MISSING,        // 13
    IDI_TREE_DX_INSTRUMENT_MISSING,    // 14
    IDI_TREE_VST_EFFECT,               // 15
    IDI_TREE_VST_INSTRUMENT,           // 16
    IDI_TREE_VST_EFFECT_OTHER,         // 17
    IDI_TREE_VST_INSTRUMENT_OTHER,     // 18
    IDI_TREE_VST3_EFFECT,              // 19
    IDI_TREE_VST3_INSTRUMENT,          // 20
    IDI_TREE_VST3_EFFECT_OTHER,        // 21
    IDI_TREE_VST3_INSTRUMENT_OTHER,    // 22
    IDI_TREE_DX_EFFECT,                // 23
    IDI_TREE_DX_INSTRUMENT,            // 24
};

constexpr int kInitialSize = 7;
constexpr int kGrowth = 10;

}  // namespace

UniqueImageList BuildLayoutImageList(UINT dpi) {
    const int width = ::GetSystemMetricsForDpi(SM_CXSMICON, dpi);
    const int height = ::GetSystemMetricsForDpi(SM_CYSMICON, dpi);
    UniqueImageList list(::ImageList_Create(width, height, ILC_COLOR32 | ILC_MASK, kInitialSize, kGrowth));
    for (const UINT id : kIcons) {
        const UniqueIcon icon = LoadIconResource(id, width, height);
        if (!icon || ::ImageList_ReplaceIcon(list.Get(), -1, icon.Get()) < 0) return {};
    }
    return list;
}
