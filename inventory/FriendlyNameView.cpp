#include "FriendlyNameView.h"

#include "SinglePropDlg.h"

namespace {

constexpr UINT kHelpContext = 130;

}  // namespace

void CFriendlyNameView::OnRename() {
    const auto selected = m_list.SelectedRows();
    if (selected.size() != 1 || !m_names.CanRename(selected.front().item)) return;

    auto [item, name] = selected.front();
    if (CSinglePropDlg(IDS_FRIENDLY_NAME_TITLE, IDS_FRIENDLY_NAME_PROMPT, name, kHelpContext)
            .RunModal(m_dialog.Handle()) != IDOK) {
        return;
    }
    if (name.empty() || !m_dialog.IsLive() || !m_names.CanRename(item)) return;

    m_names.Rename(item, name);
    const CListBox plugins = m_list.Plugins();
    const auto row = plugins.CurrentRow();
    m_list.Refill();
    if (row) plugins.Select(*row);
}
