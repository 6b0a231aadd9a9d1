#include "LayoutItem.h"

#include <array>

namespace {

constexpr LayoutItemId kFirstPluginId = 1024;
constexpr LayoutItemId kFirstFolderId = 0x100000;
constexpr LayoutItemId kFirstSeparatorId = 0x80000000;

constexpr LayoutImages kFolderImages = {5, 6};
constexpr LayoutImages kSeparatorImages = {7, 7};
constexpr int kUnknownCategoryImage = 8;

struct PluginImages {
    int missing;
    int inInventory;
    int elsewhere;
};

/// By category code.
constexpr std::array<PluginImages, 11> kPluginImages = {{
    {13, 23, 23},  // DirectX effects
    {9, 15, 17},   // VST effects
    {14, 24, 24},  // DirectX instruments
    {10, 16, 18},  // VST instruments
    {2, 2, 2},     // MIDI effects
    {13, 23, 23},  // media objects
    {3, 3, 3},     // control surfaces
    {9, 15, 17},   // legacy wrapped VST effects
    {10, 16, 18},  // legacy wrapped VST instruments
    {11, 19, 21},  // VST3 effects
    {12, 20, 22},  // VST3 instruments
}};

int PluginImage(const LayoutItem& item) {
    if (item.category < 0 || item.category >= static_cast<int>(kPluginImages.size()))
        return kUnknownCategoryImage;
    const PluginImages& images = kPluginImages[static_cast<std::size_t>(item.category)];
    if (!item.installed) return images.missing;
    return item.inventoryFlag ? images.inInventory : images.elsewhere;
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

LayoutImages ImagesOf(const LayoutItem& item) {
    switch (item.kind) {
        case LayoutKind::Folder:
            return kFolderImages;
        case LayoutKind::Separator:
            return kSeparatorImages;
        case LayoutKind::Plugin:
            break;
    }
    const int image = PluginImage(item);
    return {image, image};
}
