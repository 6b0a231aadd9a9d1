#include "FriendlyNameView.h"

#include "SinglePropDlg.h"

namespace {

constexpr UINT kHelpContext = 130;

}  // namespace

void CFriendlyNameView::OnRename() {
    const CListBox plugins = m_list.Plugins();
    const auto rows = plugins.SelectedRows();
    if (rows.size() != 1) return;
    const auto* selected = plugins.ItemOf<PluginListItem>(rows.front());
    if (!selected || !m_names.CanRename(*selected)) return;

    // A copy: while the question is open, other messages may fill the list anew.
    const PluginListItem item = *selected;
    std::wstring name = plugins.RowText(rows.front());
    if (CSinglePropDlg(IDS_FRIENDLY_NAME_TITLE, IDS_FRIENDLY_NAME_PROMPT, name, kHelpContext)
            .RunModal(m_dialog.Handle()) != IDOK) {
        return;
    }
    if (name.empty() || !m_dialog.IsLive() || !m_names.CanRename(item)) return;

    m_names.Rename(item, name);
    const auto row = plugins.CurrentRow();
    m_list.Refill();
    if (row) plugins.Select(*row);
}
