#include "LayoutTreeView.h"

#include <algorithm>

#include "AccessibleName.h"
#include "LayoutItemProperties.h"
#include "MessageCaption.h"
#include "Resources.h"
#include "TextFormat.h"
#include "resource.h"

namespace {

struct CommandKey {
    UINT key;  // with Ctrl
    UINT command;
};
constexpr CommandKey kCommandKeys[] = {
    {'Z', ID_UNDO}, {'Y', ID_REDO}, {'X', ID_CUT}, {'C', ID_COPY}, {'V', ID_PASTE},
};

std::wstring NameOf(UINT command, UINT step) {
    return step == 0 ? std::wstring() : FormatText(LoadText(command), WithoutMnemonic(LoadText(step)));
}

}  // namespace

CLayoutTreeView::CLayoutTreeView(CDialog& dialog, const CPluginInventory& inventory,
                                 const CPluginListView& plugins)
    : m_dialog(dialog), m_inventory(inventory), m_plugins(plugins) {}

void CLayoutTreeView::OnInitDialog() {
    const CWindow placeholder = m_dialog.Item(IDC_LAYOUT_TREE);
    const Rect place = placeholder.RectIn(m_dialog.Handle());
    ::DestroyWindow(placeholder.Handle());
    constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | TVS_HASLINES | TVS_LINESATROOT |
                             TVS_EDITLABELS | TVS_SHOWSELALWAYS;
    const HWND tree = ::CreateWindowExW(WS_EX_CLIENTEDGE, WC_TREEVIEWW, L"", kStyle, place.left, place.top,
                                        place.Width(), place.Height(), m_dialog.Handle(),
                                        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(IDC_LAYOUT_TREE)),
                                        ::GetModuleHandleW(nullptr), nullptr);
    m_tree.Attach(tree, {.isGrey =
                             [this](HTREEITEM item) {
                                 const LayoutItem* record = m_layout.Find(item);
                                 return record && record->kind == LayoutKind::Plugin && !record->installed;
                             },
                         .onInput = [this] { UpdateButtons(); },
                         .onCommandKey = [this](UINT key) { return OnCommandKey(key); },
                         .onTimer = [this] { m_drag.OnTimer(); }});
    ::SetWindowPos(tree, m_dialog.Item(IDC_LAYOUTS).Handle(), 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    m_tree.Send(WM_SETFONT, static_cast<WPARAM>(m_dialog.Send(WM_GETFONT)));
    // The layout list stands between the tree and the label that is meant for both.
    SetAccessibleName(tree, m_dialog.Item(IDC_LAYOUT_LABEL).Text());
    m_layout.Clear();
}

void CLayoutTreeView::OnDestroy() {
    ClearAccessibleName(m_tree.Handle());
    m_tree.Detach();
}

int CLayoutTreeView::Ask(UINT textId) const {
    return ShowMessage(m_dialog.Handle(), LoadText(textId), kMessageCaption, MB_YESNO | MB_ICONWARNING);
}

LayoutItem CLayoutTreeView::PluginItem(const PluginListItem& plugin, const std::wstring& name) const {
    LayoutItem item = NewPlugin();
    item.name = name;
    item.clsid = plugin.clsid;
    item.category = static_cast<int>(plugin.category);
    item.originalName = m_inventory.RegisteredNameOf(item.clsid, plugin.category).value_or(name);
    const VstInventoryRecord* record = plugin.fromInventory ? m_inventory.Vst().Find(item.clsid) : nullptr;
    if (record) item.vendor = record->vendor;
    item.inventoryFlag = plugin.fromInventory;
    item.installed = true;
    return item;
}

void CLayoutTreeView::OnAddPlugin() {
    const CStep step(*this, IDS_STEP_ADD_PLUGIN);
    // Kept: the target stays the same for all, so behind a plug-in they end up in reverse order.
    const HTREEITEM target = m_tree.Caret();
    HTREEITEM last = nullptr;
    for (const PluginRow& plugin : m_plugins.SelectedRows()) {
        const LayoutItem record = PluginItem(plugin.item, plugin.name);
        if (const HTREEITEM item = m_layout.Insert(target, IntoFolder::Yes, record)) last = item;
    }
    // The caret goes to each in turn, which leaves it on the last.
    if (last) m_tree.SelectOnly(last);
}

void CLayoutTreeView::InsertFolder(HTREEITEM target, IntoFolder into) {
    HTREEITEM folder = nullptr;
    {
        const CStep step(*this, IDS_STEP_NEW_FOLDER);
        folder = m_layout.Insert(target, into, NewFolder(LoadText(IDS_NEW_FOLDER)));
        if (folder) m_tree.SelectOnly(folder);
    }
    Rename(folder);
}

HTREEITEM CLayoutTreeView::PlaceForNew() const {
    return m_tree.SelectedItems().empty() ? nullptr : m_tree.Caret();
}

void CLayoutTreeView::OnNewFolder() { InsertFolder(PlaceForNew(), IntoFolder::No); }

void CLayoutTreeView::OnAddSeparator() {
    const CStep step(*this, IDS_STEP_ADD_SEPARATOR);
    const HTREEITEM separator = m_layout.Insert(PlaceForNew(), IntoFolder::No, NewSeparator());
    if (separator) m_tree.SelectOnly(separator);
}

void CLayoutTreeView::Rename(HTREEITEM item) const {
    if (!item) return;
    m_tree.Focus();
    m_tree.EditLabel(item);
}

void CLayoutTreeView::ExpandAll(bool expand) {
    const CCommand command(*this);
    m_layout.ExpandAll(expand);
}

void CLayoutTreeView::OnSortAll() {
    const CStep step(*this, IDS_STEP_SORT_ALL);
    m_layout.Sort(nullptr);
}

void CLayoutTreeView::SortSelected() {
    const CStep step(*this, IDS_STEP_SORT);
    for (const HTREEITEM item : m_tree.SelectedItems()) m_layout.Sort(item);
}

void CLayoutTreeView::OnRemove() {
    if (!m_layout.WouldDeleteFolder() || Ask(IDS_DELETE_FOLDER_QUESTION) == IDYES) DeleteSelection();
}

void CLayoutTreeView::DeleteSelection() {
    const CStep step(*this, IDS_STEP_REMOVE_ITEMS);
    m_layout.DeleteSelection();
}

void CLayoutTreeView::OnMoveUp() {
    const CStep step(*this, IDS_STEP_MOVE_UP);
    m_layout.MoveUp(m_tree.Caret());
}

void CLayoutTreeView::OnMoveDown() {
    const CStep step(*this, IDS_STEP_MOVE_DOWN);
    m_layout.MoveDown(m_tree.Caret());
}

void CLayoutTreeView::MoveCaretTo(HTREEITEM end, UINT stepText) {
    const CStep step(*this, stepText);
    if (const HTREEITEM caret = m_tree.Caret()) m_layout.Move(caret, m_tree.Parent(caret), end);
}

void CLayoutTreeView::OnPromote() {
    const CStep step(*this, IDS_STEP_PROMOTE);
    for (const LayoutItemId id : m_layout.SelectedIds()) {
        const HTREEITEM item = m_layout.HandleOf(id);
        // Kept: an item of the top level goes to its end.
        m_layout.MoveTo(item, m_tree.Parent(item), IntoFolder::No);
    }
}

void CLayoutTreeView::CancelDrag() {
    m_drag.Cancel();
    UpdateButtons();
}

void CLayoutTreeView::OnCaptureChanged() {
    if (m_drag.IsDragging()) CancelDrag();
}

void CLayoutTreeView::OnButtonUp(POINT client) {
    if (!m_drag.IsDragging()) return;
    m_drag.OnMouseMove(client);
    const CLayoutButtons::CLock lock(m_buttons);
    const CLayoutHistory::CStep step(m_history, IDS_STEP_MOVE);
    m_drag.Drop();
}

BOOL CLayoutTreeView::OnBeginLabelEdit(const NMTVDISPINFOW& item) const {
    const LayoutItem* record = m_layout.Find(item.item.hItem);
    if (!record || record->kind == LayoutKind::Separator) return TRUE;
    // The label is cut where the name is long; what is edited is the name.
    const CWindow edit = m_tree.LabelEdit();
    edit.Send(EM_LIMITTEXT, 0);
    edit.SetText(record->name);
    return FALSE;
}

BOOL CLayoutTreeView::OnEndLabelEdit(const NMTVDISPINFOW& item) {
    if (!item.item.pszText) return FALSE;
    // The notification's text is cut like a label; the field still has all of it.
    const CWindow edit = m_tree.LabelEdit();
    const std::wstring name = edit.IsLive() ? edit.Text() : item.item.pszText;
    const LayoutItem* record = m_layout.Find(item.item.hItem);
    // Some systems take the name that OnBeginLabelEdit has set for the user's.
    if (name.empty() || !record || name == record->name) return FALSE;
    const CLayoutHistory::CStep step(m_history, IDS_STEP_RENAME);
    m_layout.Change(item.item.hItem, [&](LayoutItem& changed) { changed.name = name; });
    return TRUE;
}

void CLayoutTreeView::EndLabelEdit(bool cancel) {
    // Wine reports a cancelled edit a second time, with the field's text: an empty field renames nothing.
    if (cancel) m_tree.LabelEdit().SetText(L"");
    m_tree.EndLabelEdit(cancel);
}

void CLayoutTreeView::OnDoubleClick() {
    POINT client{};
    ::GetCursorPos(&client);
    ::ScreenToClient(m_tree.Handle(), &client);
    UINT flags = 0;
    const HTREEITEM item = m_tree.HitTest(client, &flags);
    const LayoutItem* record =
        (flags & (TVHT_ONITEMICON | TVHT_ONITEMLABEL)) != 0 ? m_layout.Find(item) : nullptr;
    if (record && record->kind != LayoutKind::Folder) ShowProperties(item);
}

BOOL CLayoutTreeView::OnRightClick() {
    POINT screen{};
    ::GetCursorPos(&screen);
    POINT client = screen;
    ::ScreenToClient(m_tree.Handle(), &client);
    ShowContextMenu(m_tree.HitTest(client), screen);
    return TRUE;  // else the control asks the windows around it for a menu, too
}

void CLayoutTreeView::OnItemExpanded(const NMTREEVIEWW& item) const {
    if (item.action != TVE_COLLAPSE) return;
    // A command on the selection must not reach what can't be seen.
    m_tree.DeselectWithin(item.itemNew.hItem);
    UpdateButtons();
}

void CLayoutTreeView::OnKeyDown(const NMTVKEYDOWN& key) {
    if (m_drag.IsDragging()) return;
    switch (key.wVKey) {
        case VK_DELETE:
            if (m_dialog.Item(IDC_REMOVE).IsEnabled()) OnRemove();
            break;
        case VK_F2:
            Rename(m_tree.Caret());
            break;
        case VK_APPS:
            ShowMenuOfCaret();
            break;
        case VK_RETURN:
            if ((::GetKeyState(VK_MENU) & 0x8000) != 0) ShowProperties(m_tree.Caret());
            break;
        default:
            break;
    }
}

void CLayoutTreeView::ShowMenuOfCaret() {
    const HTREEITEM caret = m_tree.Caret();
    if (caret) m_tree.EnsureVisible(caret);
    RECT label{};
    m_tree.LabelOf(caret, label);
    POINT place{label.left, label.bottom};
    ::ClientToScreen(m_tree.Handle(), &place);
    ShowContextMenu(caret, place);
}

void CLayoutTreeView::ShowContextMenu(HTREEITEM item, POINT screen) {
    const LayoutItem* record = m_layout.Find(item);
    if (record && record->kind == LayoutKind::Separator) return;
    const UINT menuId = !record                              ? IDM_LAYOUT
                        : record->kind == LayoutKind::Folder ? IDM_LAYOUT_FOLDER
                                                             : IDM_LAYOUT_PLUGIN;
    const UniqueMenu menu = LoadMenuResource(menuId);
    const auto command =
        static_cast<UINT>(::TrackPopupMenu(::GetSubMenu(menu.Get(), 0), TPM_RETURNCMD | TPM_RIGHTBUTTON,
                                           screen.x, screen.y, 0, m_dialog.Handle(), nullptr));
    if (command == 0) return;
    Run(command, item ? item : m_tree.Root());
}

void CLayoutTreeView::Run(UINT command, HTREEITEM target) {
    switch (command) {
        case ID_ITEM_DELETE:
            // Kept: unlike the Remove button, the menu does not ask about folders.
            DeleteSelection();
            break;
        case ID_ITEM_PROPERTIES:
            ShowProperties(target);
            break;
        case ID_CLEAR_LAYOUT:
            ClearLayout();
            break;
        case ID_NEW_FOLDER_AT_END:
            InsertFolder(nullptr, IntoFolder::No);
            break;
        case ID_ITEM_RENAME:
            Rename(target);
            break;
        case ID_NEW_FOLDER_HERE:
            InsertFolder(target, IntoFolder::No);
            break;
        case ID_MOVE_TO_TOP:
            MoveCaretTo(TVI_FIRST, IDS_STEP_TO_TOP);
            break;
        case ID_MOVE_TO_BOTTOM:
            MoveCaretTo(TVI_LAST, IDS_STEP_TO_BOTTOM);
            break;
        case ID_SORT_FOLDERS:
            SortSelected();
            break;
        case ID_NEW_SUBFOLDER:
            InsertFolder(target, IntoFolder::Yes);
            break;
        default:
            break;
    }
    UpdateButtons();
}

void CLayoutTreeView::ClearLayout() {
    const std::wstring name = m_dialog.Item(IDC_LAYOUTS).Text();
    const std::wstring question = FormatText(LoadText(IDS_CLEAR_LAYOUT_QUESTION), name);
    if (ShowMessage(m_dialog.Handle(), question, kMessageCaption, MB_YESNO | MB_ICONWARNING) != IDYES) return;
    const CLayoutHistory::CStep step(m_history, IDS_STEP_REMOVE_ITEMS);
    m_layout.Clear();
    m_layout.SetModified(true);
}

void CLayoutTreeView::ShowProperties(HTREEITEM item) {
    ShowItemProperties(m_dialog.Handle(), m_layout, item, m_inventory, m_history);
}

std::wstring CLayoutTreeView::UndoName() const { return NameOf(IDS_UNDO_STEP, m_history.UndoText()); }

std::wstring CLayoutTreeView::RedoName() const { return NameOf(IDS_REDO_STEP, m_history.RedoText()); }

bool CLayoutTreeView::OnCommandKey(UINT key) {
    const auto* command = std::ranges::find(kCommandKeys, key, &CommandKey::key);
    if (m_drag.IsDragging() || command == std::end(kCommandKeys)) return false;
    m_dialog.Send(WM_COMMAND, command->command);
    return true;
}

void CLayoutTreeView::EndInput() {
    CancelDrag();
    if (IsEditingLabel()) EndLabelEdit(false);
}

void CLayoutTreeView::Edit(UINT stepText, const std::function<void()>& edit) {
    EndInput();
    const CStep step(*this, stepText);
    edit();
}

void CLayoutTreeView::OnCopy() {
    EndInput();
    if (CanCopy()) m_cut = CRememberedTree(m_layout, CRememberedTree::Part::Selection);
}

void CLayoutTreeView::OnCut() {
    OnCopy();
    const auto selected = m_tree.SelectedItems();
    if (selected.empty()) return;
    const CStep step(*this, IDS_STEP_CUT);
    // The caret item is deleted even if it is not selected, and so was not copied.
    if (!m_tree.Caret() || !m_tree.IsSelected(m_tree.Caret())) m_tree.MoveCaret(selected.front());
    m_layout.DeleteSelection();
}

void CLayoutTreeView::OnPaste() {
    EndInput();
    if (!CanPaste()) return;
    const CStep step(*this, IDS_STEP_PASTE);
    if (!m_cut.Paste(m_layout, PlaceForNew())) ::MessageBeep(MB_OK);
    m_restored();
}

void CLayoutTreeView::Travel(bool (CLayoutHistory::*travel)()) {
    EndInput();
    const CLayoutButtons::CLock lock(m_buttons);
    if ((m_history.*travel)()) m_restored();
}

void CLayoutTreeView::NoteSaved() {
    m_history.NoteSaved();
    m_layout.SetModified(false);
}
