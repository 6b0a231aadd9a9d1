#include <windows.h>

#include <string>
#include <utility>
#include <vector>

#include "Bare.h"
#include "BareLayout.h"
#include "Benches.h"
#include "ClsidText.h"
#include "CorvaneKeys.h"
#include "Dialog.h"
#include "Files.h"
#include "FoldedText.h"
#include "LayoutFill.h"
#include "Measure.h"
#include "PluginListView.h"
#include "PluginOverview.h"
#include "TidyFindings.h"
#include "VstToolPaths.h"

namespace {

/// Looks for what Tidy Up lists. One file that is not there costs a second question.
void BenchTidyUp(int plugins, CPluginInventory& inventory, const CExclusionList& exclusions) {
    Row(
        "look for what to tidy up", plugins,
        [&] {
            inventory.Enumerate(true);
            const auto all = ListAllPlugins(inventory, exclusions);
            CFileStates files;
            std::vector<FileState> states;
            states.reserve(all.size());
            for (const StudioPlugin& plugin : all) states.push_back(files.Of(plugin.file));
            FindUntidy(all, states, {}, {&FoldedText, &InCapitals});
        },
        [] { BareEnumeration(BareFiles::Asked); });
}

/// The key below the root of the classes in which a plug-in's name stands.
std::wstring NameKeyOf(const PluginEntry& entry) {
    const std::wstring clsid = ClsidText(entry.clsid);
    if (*entry.category == Category::ControlSurfaces)
        return std::wstring(kControlSurfacesKey) + L"\\" + clsid;
    if (*entry.category == Category::MediaObjects)
        return std::wstring(kMediaObjectsKey) + L"\\" + clsid.substr(1, clsid.size() - 2);
    return L"CLSID\\" + clsid;
}

/// Into an empty layout. Of what is registered with the system, file and name are read.
void BenchFill(int plugins, CLayoutFill& fill, CLayoutTreeView& layout, const CPluginInventory& inventory) {
    layout.Layout().Clear();
    fill.OnByVendor();
    std::vector<LayoutItem> items;
    for (HTREEITEM item = layout.Tree().Root(); item; item = layout.Tree().NextInOrder(item))
        items.push_back(*layout.Layout().Find(item));
    const CBareTree bare(layout.Tree());
    Row(
        "fill layout by vendor", plugins, [&] { fill.OnByVendor(); },
        [&] {
            for (const PluginEntry& entry : inventory.Entries()) {
                const CBareKey file(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID\\" +
                                                            ClsidText(entry.clsid) + L"\\InprocServer32");
                if (file.Handle()) file.Ask(nullptr);
                const bool isSurface = *entry.category == Category::ControlSurfaces;
                CBareKey(HKEY_CLASSES_ROOT, NameKeyOf(entry)).Ask(isSurface ? L"Description" : nullptr);
            }
            const CRedrawLock noRedraw(bare);
            HTREEITEM folder = nullptr;
            HTREEITEM last = TVI_FIRST;
            for (const LayoutItem& item : items) {
                const bool isFolder = item.kind == LayoutKind::Folder;
                last =
                    bare.Insert(isFolder ? nullptr : folder, isFolder ? TVI_LAST : last, item.name, 8, 8, 0);
                if (isFolder) folder = std::exchange(last, TVI_FIRST);
            }
        },
        [&] {
            layout.Layout().Clear();
            bare.Delete(TVI_ROOT);
        });
}

}  // namespace

void BenchStudio(int plugins) {
    const CPluginDatabase noDatabase;
    CPluginInventory inventory(kDefaultVstKey, noDatabase);
    const CExclusionList exclusions;
    const Visibility visibility;
    const VstToolPaths tools;
    CDialog dialog(IDD_PLUGIN_MANAGER);
    CPluginListView list(dialog, inventory, exclusions, visibility, tools);
    if (!dialog.CreateModeless(nullptr)) return;
    BenchTidyUp(plugins, inventory, exclusions);
    CLayoutTreeView layout(dialog, inventory, list);
    layout.OnInitDialog();
    CLayoutFill fill(dialog, inventory, exclusions, layout);
    BenchFill(plugins, fill, layout, inventory);
    layout.OnDestroy();
}
