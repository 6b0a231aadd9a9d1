#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

#include "BareEnumeration.h"
#include "Benches.h"
#include "Commands.h"
#include "Dialog.h"
#include "ExclusionList.h"
#include "LayoutTreeView.h"
#include "Measure.h"
#include "PluginInventory.h"
#include "PluginListView.h"
#include "Studio.h"
#include "TextBytes.h"
#include "VstToolPaths.h"

namespace {

constexpr int kRuns = 7;

void FillBare(CListBox list, const std::vector<std::wstring>& names) {
    list.Clear();
    const CRedrawLock noRedraw(list);
    list.Reserve(static_cast<int>(names.size()), 24);
    for (const std::wstring& name : names) list.SetData(list.Add(name), 1);
}

/// The first rows of the list go into the layout; the floor inserts as many items into the bare control.
void BenchAddPlugin(CDialog& dialog, const CPluginInventory& inventory, const CPluginListView& plugins) {
    constexpr int kMost = 1000;
    const int added = std::min(kMost, plugins.Plugins().Count());
    CLayoutTreeView layout(dialog, inventory, plugins);
    layout.OnInitDialog();
    plugins.Plugins().Send(LB_SELITEMRANGEEX, 0, added - 1);
    const CTreeCtrlEx& tree = layout.Layout().Tree();
    const auto result = Compare(
        kRuns,
        [&] {
            layout.Layout().Clear();
            layout.OnAddPlugin();
        },
        [&] {
            const CRedrawLock noRedraw(tree);
            tree.Delete(TVI_ROOT);
            for (int row = 0; row < added; ++row)
                tree.Insert(nullptr, TVI_LAST, plugins.Plugins().RowText(row), 8, 8, row);
        });
    PrintRow("add plug-in", added, result);
    layout.OnDestroy();
}

/// Ten plug-ins all over the list stay selected; the floor fills the same list and forgets them. The handler
/// that looks up the presets of what is selected is left out.
void BenchRefillInPlace(CPluginListView& view) {
    constexpr int kSelected = 10;
    const CListBox plugins = view.Plugins();
    const int rows = plugins.Count();
    const auto result = Compare(
        kRuns,
        [&] {
            for (int i = 0; i < kSelected; ++i) plugins.Select((rows - 1) * i / (kSelected - 1));
            const auto remembered = CRememberedRows::Of(plugins);
            view.Refill();
            remembered.Restore(plugins);
        },
        [&] { view.Refill(); });
    PrintRow("refill in place", rows, result);
}

/// Each key leaves all rows, ten of which are selected, as much as a key can have to do; the floor fills the
/// list by a view that looks for nothing.
void BenchFind(CPluginListView& view, CPluginListView& bare) {
    constexpr int kSelected = 10;
    const CListBox plugins = view.Plugins();
    const int rows = plugins.Count();
    bool other = false;
    const auto result = Compare(
        kRuns,
        [&] {
            for (int i = 0; i < kSelected; ++i) plugins.Select((rows - 1) * i / (kSelected - 1));
            other = !other;
            view.Find(other ? L"{" : L"}");
        },
        [&] { bare.Refill(); });
    PrintRow("a key in the field Find", rows, result);
}

/// What a script waits for, but for the start of the program; the floor is one enumeration.
void BenchConsoleList(CPluginInventory& inventory, int size) {
    std::size_t written = 0;
    const auto result = Compare(
        kRuns,
        [&] {
            const CCmdStudio studio(L"");
            written = Utf8Of(ListText(RowsToList({}, studio.Plugins()), ListFormat::Json)).size();
        },
        [&] {
            inventory.ReadAdapterInventory();
            inventory.Enumerate(true);
        });
    PrintRow("list --format json", size, result);
    std::printf("  %zu bytes; ratio %.2f (aim 1.30)\n", written, result.Ratio());
}

void BenchEnumeration(int plugins) {
    const CPluginDatabase noDatabase;
    CPluginInventory inventory(kDefaultVstKey, noDatabase);
    const auto enumerate = [&] {
        inventory.ReadAdapterInventory();
        inventory.Enumerate(true);
    };
    Row({.name = "enumeration", .size = plugins}, enumerate, &BareEnumeration);
    BenchRegQuery(plugins, enumerate);
}

void BenchPanes() {
    const CPluginDatabase noDatabase;
    CPluginInventory inventory(kDefaultVstKey, noDatabase);
    const CExclusionList exclusions;
    const Visibility visibility;
    const VstToolPaths tools;
    CDialog dialog(IDD_PLUGIN_MANAGER);
    CPluginListView view(dialog, inventory, exclusions, visibility, tools);
    if (!dialog.CreateModeless(nullptr)) return;
    view.OnInitDialog();
    view.EnumeratePlugins();
    const auto categories = dialog.Control<CListBox>(IDC_CATEGORIES);
    categories.SetCurrentRow(1);
    view.Refill();
    std::vector<std::wstring> names;
    for (const auto& [clsid, record] : inventory.Vst().Records()) {
        if (clsid != record.md5Clsid) names.push_back(record.name);
    }
    const int rows = view.Plugins().Count();
    const auto result = Compare(
        kRuns, [&] { view.Refill(); }, [&] { FillBare(view.Plugins(), names); });
    PrintRow("category switch", rows, result, kSortedBound);
    view.Refill();  // the floor's rows carry no plug-ins
    BenchAddPlugin(dialog, inventory, view);
    BenchRefillInPlace(view);
    CPluginListView bare(dialog, inventory, exclusions, visibility, tools);
    BenchFind(view, bare);
    view.OnDestroy();
}

}  // namespace

void BenchPlugins() {
    constexpr int kSizes[] = {500, 1000, 2000, 4000};
    for (const int plugins : kSizes) {
        GrowStudio(plugins);
        BenchEnumeration(plugins);
        BenchPanes();
        BenchDialog(plugins);
        BenchStart(plugins);
    }
    BenchMemory(kSizes[3]);
    BenchWrapped();
}
