#include "LayoutItemProperties.h"

#include "SinglePropDlg.h"
#include "TreeItemPropDlg.h"
#include "resource.h"

namespace {

void ShowFolder(HWND owner, CTreeCtrlWrapper& layout, HTREEITEM item, const LayoutItem& folder,
                CLayoutHistory& history) {
    std::wstring name = folder.name;
    CSinglePropDlg dialog(IDS_FOLDER_PROPERTIES, IDS_FOLDER_NAME_PROMPT, name);
    if (dialog.RunModal(owner) != IDOK || name.empty() || name == folder.name) return;
    const CLayoutHistory::CStep step(history, IDS_STEP_PROPERTIES);
    layout.Change(item, [&](LayoutItem& record) { record.name = name; });
}

void ShowPlugin(HWND owner, CTreeCtrlWrapper& layout, HTREEITEM item, const LayoutItem& plugin,
                const CPluginInventory& inventory, CLayoutHistory& history) {
    CTreeItemPropDlg dialog(inventory, plugin);
    const bool confirmed = dialog.RunModal(owner) == IDOK;
    layout.NoteOriginalName(item, dialog.OriginalName());
    if (!confirmed) return;
    const bool presetChanged = dialog.DefaultPreset() != plugin.defaultPreset;
    if ((dialog.Name().empty() || dialog.Name() == plugin.name) && !presetChanged) return;
    const CLayoutHistory::CStep step(history, IDS_STEP_PROPERTIES);
    layout.Change(item, [&](LayoutItem& record) {
        // Kept: with another preset an empty name is taken, too.
        record.name = dialog.Name();
        record.defaultPreset = dialog.DefaultPreset();
    });
}

}  // namespace

void ShowItemProperties(HWND owner, CTreeCtrlWrapper& layout, HTREEITEM item,
                        const CPluginInventory& inventory, CLayoutHistory& history) {
    const LayoutItem* record = layout.Find(item);
    if (!record || record->kind == LayoutKind::Separator) return;
    // A copy, because the dialog lets messages in that may change the layout.
    const LayoutItem copy = *record;
    copy.kind == LayoutKind::Folder ? ShowFolder(owner, layout, item, copy, history)
                                    : ShowPlugin(owner, layout, item, copy, inventory, history);
}
