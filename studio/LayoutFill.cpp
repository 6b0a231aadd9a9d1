#include "LayoutFill.h"

#include <unordered_map>
#include <utility>

#include "Files.h"
#include "FoldedText.h"
#include "MessageCaption.h"
#include "NameOrder.h"
#include "PluginOverview.h"
#include "Resources.h"
#include "resource.h"

namespace {

/// Adds what a plan names to a tree.
class CFilling {
  public:
    CFilling(CLayoutTreeView& tree, const std::vector<StudioPlugin>& plugins)
        : m_tree(tree), m_plugins(plugins) {}

    void Into(HTREEITEM parent, const FolderPlan& plan);
    /// The first new folder of the top level; without any, all that came to other folders.
    void Select() const;

  private:
    struct Added {
        LayoutItem record;
        const FolderPlan* folder = nullptr;  // what comes into it
    };
    CTreeCtrlWrapper& Layout() const { return m_tree.Layout(); }
    std::vector<Added> ItemsFor(const FolderPlan& plan, const std::vector<HTREEITEM>& present);
    HTREEITEM Insert(HTREEITEM parent, HTREEITEM previous, const LayoutItem& record) const;
    void Note(HTREEITEM parent, HTREEITEM added);

    CLayoutTreeView& m_tree;
    const std::vector<StudioPlugin>& m_plugins;
    HTREEITEM m_newFolder = nullptr;    // the first of the top level
    std::vector<HTREEITEM> m_inOthers;  // what came to folders that were there
    int m_newAround = 0;                // how many new folders surround what comes now
};

/// New items for what is not among those that are there; what is, is filled at once.
std::vector<CFilling::Added> CFilling::ItemsFor(const FolderPlan& plan,
                                                const std::vector<HTREEITEM>& present) {
    std::unordered_map<std::wstring, HTREEITEM> folders;
    for (const HTREEITEM item : present) {
        const LayoutItem* record = Layout().Find(item);
        if (record && record->kind == LayoutKind::Folder)
            folders.try_emplace(ComparedText(record->name, &FoldedText), item);
    }
    std::vector<Added> added;
    for (const FolderPlan& folder : plan.folders) {
        const auto known = folders.find(ComparedText(folder.name, &FoldedText));
        if (known != folders.end())
            Into(known->second, folder);
        else
            added.push_back({NewFolder(folder.name), &folder});
    }
    for (const std::size_t i : plan.plugins)
        added.push_back({m_tree.PluginItem(m_plugins[i].item, m_plugins[i].name)});
    return added;
}

HTREEITEM CFilling::Insert(HTREEITEM parent, HTREEITEM previous, const LayoutItem& record) const {
    return previous ? Layout().Insert(previous, IntoFolder::No, record) : Layout().Prepend(parent, record);
}

void CFilling::Into(HTREEITEM parent, const FolderPlan& plan) {
    const std::vector<HTREEITEM> present = Layout().Children(parent);
    const std::vector<Added> added = ItemsFor(plan, present);
    std::vector<SortItem> items;
    // The top level keeps its order.
    const std::size_t sorted = parent ? present.size() : 0;
    for (std::size_t i = 0; i < sorted; ++i) {
        const LayoutItem* record = Layout().Find(present[i]);
        items.push_back(record ? SortItem{record->kind, record->name} : SortItem{});
    }
    for (const Added& each : added) items.push_back({each.record.kind, each.record.name});
    HTREEITEM previous = parent || present.empty() ? nullptr : present.back();
    for (const std::size_t i : OrderWithAdded(items, sorted, &CompareIgnoringCase)) {
        if (i < sorted) {
            previous = present[i];
            continue;
        }
        const auto& [record, folder] = added[i - sorted];
        // Each behind the one before: to add to the end, the control would walk all of them.
        const HTREEITEM item = Insert(parent, previous, record);
        if (!item) return;
        previous = item;
        if (m_newAround == 0) Note(parent, item);
        if (!folder) continue;
        ++m_newAround;
        Into(item, *folder);
        --m_newAround;
    }
}

void CFilling::Note(HTREEITEM parent, HTREEITEM added) {
    if (parent)
        m_inOthers.push_back(added);
    else if (!m_newFolder)
        m_newFolder = added;
}

void CFilling::Select() const {
    const CTreeCtrlEx& tree = m_tree.Tree();
    if (m_newFolder) return tree.SelectOnly(m_newFolder);
    if (m_inOthers.empty()) return;
    for (const HTREEITEM item : m_inOthers) {
        for (HTREEITEM folder = tree.Parent(item); folder && !tree.IsExpanded(folder);
             folder = tree.Parent(folder))
            tree.Expand(folder, true);
    }
    tree.SelectOnly(m_inOthers.front());
    for (const HTREEITEM item : m_inOthers) tree.SetSelected(item, true);
}

}  // namespace

void CLayoutFill::Fill(FillOrder order) {
    const CWaitCursor wait;
    bool filled = false;
    m_tree.Edit(IDS_STEP_FILL_LAYOUT, [&] {
        const std::vector<StudioPlugin> plugins = ListAllPlugins(m_inventory, m_exclusions);
        const PlanTexts texts{
            .captionOf = [](Category category) { return LoadText(RowOf(category).captionId); },
            .fold = {.text = &FoldedText, .path = &InCapitals}};
        const FolderPlan plan = PlanLayout(plugins, m_tree.Layout().Plugins(), order, texts);
        filled = !plan.folders.empty();
        if (!filled) return;
        CFilling filling(m_tree, plugins);
        filling.Into(nullptr, plan);
        filling.Select();
    });
    if (!filled)
        ShowMessage(m_dialog.Handle(), LoadText(IDS_NOTHING_TO_FILL), kMessageCaption, MB_ICONINFORMATION);
}
