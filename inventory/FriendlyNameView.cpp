#include "FriendlyNameView.h"

#include "HelpContext.h"
#include "SinglePropDlg.h"

bool CFriendlyNameView::CanRename() const {
    const auto selected = m_list.SelectedRows();
    return selected.size() == 1 && m_names.CanRename(selected.front().item);
}

void CFriendlyNameView::OnRename() {
    if (!CanRename()) return;
    auto [item, name] = m_list.SelectedRows().front();
    if (CSinglePropDlg(IDS_FRIENDLY_NAME_TITLE, IDS_FRIENDLY_NAME_PROMPT, name, kHelpOfNames)
            .RunModal(m_dialog.Handle()) != IDOK) {
        return;
    }
    if (IsBlank(name) || !m_dialog.IsLive() || !m_names.CanRename(item)) return;

    const CListBox plugins = m_list.Plugins();
    const auto rows = CRememberedRows::Of(plugins);
    m_names.Rename(item, name);
    m_list.Refill(rows);
    // The new name may stand far from the old one.
    if (const auto row = plugins.CurrentRow()) plugins.SetCaretRow(*row);
}
