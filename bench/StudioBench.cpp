#include <windows.h>

#include <shlwapi.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "Benches.h"
#include "Dialog.h"
#include "FoldedText.h"
#include "LayoutFill.h"
#include "Measure.h"
#include "PluginListView.h"
#include "PluginOverview.h"
#include "Studio.h"
#include "TidyFindings.h"
#include "VstToolPaths.h"

namespace {

constexpr int kRuns = 7;
constexpr int kPlugins = 4000;

void Print(const char* what, std::size_t items, const Comparison& result) {
    PrintRow(what, static_cast<int>(items), result);
    std::printf("  ratio %.2f (aim 1.30)\n", result.Ratio());
}

/// The floor finds the plug-ins and asks for their files; one that is not there costs a second question.
void BenchTidyUp(CPluginInventory& inventory, const CExclusionList& exclusions) {
    std::size_t plugins = 0;
    const auto result = Compare(
        kRuns,
        [&] {
            inventory.Enumerate(true);
            const auto all = ListAllPlugins(inventory, exclusions);
            CFileStates files;
            std::vector<FileState> states;
            states.reserve(all.size());
            for (const StudioPlugin& plugin : all) states.push_back(files.Of(plugin.file));
            FindUntidy(all, states, {}, &FoldedText);
            plugins = all.size();
        },
        [&] {
            inventory.Enumerate(true);
            for (const PluginEntry& entry : inventory.Entries())
                ::PathFileExistsW(inventory.FileOf(entry.clsid, *entry.category).c_str());
            for (const auto& [clsid, record] : inventory.Vst().Records()) {
                if (clsid != record.md5Clsid) ::PathFileExistsW(record.path.c_str());
            }
        });
    Print("look for what to tidy up", plugins, result);
}

/// The floor reads files and names of what is registered with the system, and fills the bare control.
void BenchFill(CLayoutFill& fill, CLayoutTreeView& layout, const CPluginInventory& inventory) {
    const CTreeCtrlEx& tree = layout.Tree();
    std::vector<LayoutItem> items;
    const auto result = Compare(
        kRuns,
        [&] {
            layout.Layout().Clear();
            fill.OnByVendor();
        },
        [&] {
            if (items.empty()) {
                for (HTREEITEM item = tree.Root(); item; item = tree.NextInOrder(item))
                    items.push_back(*layout.Layout().Find(item));
            }
            for (const PluginEntry& entry : inventory.Entries()) {
                inventory.FileOf(entry.clsid, *entry.category);
                inventory.RegisteredNameOf(entry.clsid, *entry.category);
            }
            const CRedrawLock noRedraw(tree);
            tree.Delete(TVI_ROOT);
            HTREEITEM folder = nullptr;
            HTREEITEM last = TVI_FIRST;
            for (const LayoutItem& item : items) {
                const bool isFolder = item.kind == LayoutKind::Folder;
                last =
                    tree.Insert(isFolder ? nullptr : folder, isFolder ? TVI_LAST : last, item.name, 8, 8, 0);
                if (isFolder) folder = std::exchange(last, TVI_FIRST);
            }
        });
    Print("fill layout by vendor", items.size(), result);
}

}  // namespace

void BenchStudio() {
    GrowStudio(kPlugins);
    const CPluginDatabase noDatabase;
    CPluginInventory inventory(kDefaultVstKey, noDatabase);
    const CExclusionList exclusions;
    const Visibility visibility;
    const VstToolPaths tools;
    CDialog dialog(IDD_PLUGIN_MANAGER);
    CPluginListView list(dialog, inventory, exclusions, visibility, tools);
    if (!dialog.CreateModeless(nullptr)) return;
    BenchTidyUp(inventory, exclusions);
    CLayoutTreeView layout(dialog, inventory, list);
    layout.OnInitDialog();
    CLayoutFill fill(dialog, inventory, exclusions, layout);
    BenchFill(fill, layout, inventory);
    layout.OnDestroy();
}
