#include "PluginMenu.h"

#include <algorithm>

#include "Clipboard.h"
#include "ClsidText.h"
#include "MessageCaption.h"
#include "Resources.h"
#include "ShellOpen.h"
#include "TextFormat.h"
#include "resource.h"

namespace {

/// Tabs and line breaks divide the table, and names may hold any.
std::wstring Cell(std::wstring text) {
    std::ranges::replace_if(
        text, [](wchar_t c) { return c < L' '; }, L' ');
    return text;
}

}  // namespace

CPluginMenu::CPluginMenu(CDialog& dialog, CPluginListView& list, const CPluginInventory& inventory,
                         const CFriendlyNameView& names, CLayoutTreeView& layout)
    : m_dialog(dialog), m_list(list), m_inventory(inventory), m_names(names), m_layout(layout) {}

UniqueMenu CPluginMenu::Menu() const {
    const MenuCommand commands[] = {
        {.id = IDC_EXCLUDE, .text = [this] { return WithoutMnemonic(m_dialog.Item(IDC_EXCLUDE).Text()); }},
        {.id = ID_RENAME_PLUGIN, .enabled = [this] { return m_names.CanRename(); }},
        {.id = ID_SELECT_ALL, .enabled = [this] { return CanSelect(); }},
        {.id = ID_SELECT_NEW, .enabled = [this] { return !RowsNotInLayout().empty(); }},
        {.id = ID_COPY_PLUGINS, .enabled = [this] { return CanSelect() && Plugins().SelectedCount() > 0; }},
        {.id = ID_FILE_LOCATION, .enabled = [this] { return !SelectedFile().empty(); }},
    };
    return BuildCommandMenu(m_dialog, IDM_PLUGINS, commands);
}

bool CPluginMenu::OnContextMenu(HWND window, POINT screen) {
    if (window != Plugins().Handle()) return false;
    const bool byKeyboard = screen.x == -1 && screen.y == -1;
    const RECT client = ToSystem(Plugins().ClientRect());
    POINT place = screen;
    ::ScreenToClient(window, &place);
    // The scroll bar has a menu of its own.
    if (!byKeyboard && !::PtInRect(&client, place)) return false;
    // A right click leaves the keyboard where it was.
    m_dialog.Send(WM_NEXTDLGCTL, window, TRUE);
    if (byKeyboard) {
        place = PlaceOfCaret();
    } else {
        SelectAt(place);
    }
    ::ClientToScreen(window, &place);
    const UniqueMenu menu = Menu();
    ::TrackPopupMenu(::GetSubMenu(menu.Get(), 0), TPM_RIGHTBUTTON, place.x, place.y, 0, m_dialog.Handle(),
                     nullptr);
    return true;
}

void CPluginMenu::SelectAt(POINT client) {
    const auto row = Plugins().RowAt(client);
    if (row && !Plugins().IsSelected(*row)) Select({*row});
}

POINT CPluginMenu::PlaceOfCaret() const {
    const int row = Plugins().CaretRow().value_or(0);
    Plugins().Send(LB_SETCARETINDEX, row, FALSE);  // comes into view by that
    const RECT place = Plugins().PlaceOf(row);
    return {place.left, place.bottom};
}

void CPluginMenu::Select(const std::vector<int>& rows) {
    {
        const CRedrawLock noRedraw(Plugins());
        Plugins().SelectAll(false);
        for (const int row : rows) Plugins().Select(row);
        Plugins().SetCaretRow(rows.front());
    }
    m_list.OnSelectionChanged();
}

void CPluginMenu::OnSelectAll() {
    if (!CanSelect()) return;
    const CWaitCursor wait;
    Plugins().SelectAll();
    m_list.OnSelectionChanged();
}

std::vector<int> CPluginMenu::RowsNotInLayout() const {
    const auto present = m_layout.Layout().Plugins();
    std::vector<int> rows;
    const CListBox plugins = Plugins();
    for (int row = 0, count = plugins.Count(); row < count; ++row) {
        const auto* item = plugins.ItemOf<PluginListItem>(row);
        if (!item || present.contains(item->clsid)) continue;
        // A layout names a VST by either of its ids.
        const VstInventoryRecord* record = m_inventory.Vst().Find(item->clsid);
        if (record && (present.contains(record->clsid) || present.contains(record->md5Clsid))) continue;
        rows.push_back(row);
    }
    return rows;
}

void CPluginMenu::OnSelectNew() {
    const CWaitCursor wait;
    const auto rows = RowsNotInLayout();
    if (!rows.empty()) Select(rows);
}

std::wstring CPluginMenu::TableLine(const PluginRow& plugin) const {
    const PluginListItem& item = plugin.item;
    const VstInventoryRecord* record = m_inventory.Vst().Find(item.clsid);
    return Cell(plugin.name) + L'\t' + (record ? Cell(record->vendor) : L"") + L'\t' +
           LoadText(RowOf(item.category).captionId) + L'\t' + ClsidText(item.clsid) + L'\t' +
           Cell(m_inventory.FileOf(item.clsid, item.category)) + L"\r\n";
}

void CPluginMenu::OnCopy() const {
    const CWaitCursor wait;
    const auto plugins = m_list.SelectedRows();
    if (plugins.empty()) return;
    std::wstring table = LoadText(IDS_PLUGIN_TABLE) + L"\r\n";
    for (const PluginRow& plugin : plugins) table += TableLine(plugin);
    if (!CopyText(m_dialog.Handle(), table))
        ShowMessage(m_dialog.Handle(), LoadText(IDS_CLIPBOARD_BUSY), kMessageCaption, MB_ICONEXCLAMATION);
}

std::wstring CPluginMenu::SelectedFile() const {
    const auto plugins = m_list.SelectedRows();
    if (plugins.size() != 1) return {};
    return m_inventory.FileOf(plugins.front().item.clsid, plugins.front().item.category);
}

void CPluginMenu::OnFileLocation() const {
    const std::wstring file = SelectedFile();
    if (file.empty() || ShowInFolder(file)) return;
    ShowMessage(m_dialog.Handle(), FormatText(LoadText(IDS_FILE_NOT_THERE), file), kMessageCaption,
                MB_ICONEXCLAMATION);
}
