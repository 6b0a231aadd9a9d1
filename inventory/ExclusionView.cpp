#include "ExclusionView.h"

#include <shlwapi.h>

#include "BackupQuestion.h"
#include "LongWork.h"
#include "MessageCaption.h"
#include "PermanentExclusions.h"
#include "PluginRemoval.h"
#include "Resources.h"
#include "TextFormat.h"

CExclusionView::CExclusionView(CDialog& dialog, CExclusionList& exclusions, const CPluginInventory& inventory,
                               CPluginListView& list, const CHostWindow& host, CBackups& backups,
                               Visibility& visibility)
    : m_dialog(dialog),
      m_exclusions(exclusions),
      m_inventory(inventory),
      m_list(list),
      m_host(host),
      m_backups(backups),
      m_visibility(visibility) {}

void CExclusionView::OnInitDialog() const {
    m_dialog.Control<CButton>(IDC_SHOW_ENABLED).Check();
    m_dialog.Item(IDC_EXCLUDE).SetText(LoadText(IDS_EXCLUDE_PLUGIN));
    m_dialog.Item(IDC_EXCLUDE).Enable(m_list.CanExcludeSelection());
    m_dialog.Item(IDC_SHOW_PERMANENT).Enable(false);
}

void CExclusionView::SetMode(VisibilityMode mode) {
    const bool enabledShown = mode == VisibilityMode::Enabled;
    m_visibility.mode = mode;
    m_dialog.Item(IDC_EXCLUDE).SetText(LoadText(enabledShown ? IDS_EXCLUDE_PLUGIN : IDS_ENABLE_PLUGIN));
    m_dialog.EnableItem(IDC_SHOW_PERMANENT, !enabledShown, IDC_PLUGINS);
    m_dialog.EnableItem(IDC_EXCLUDE, m_list.CanExcludeSelection(), IDC_PLUGINS);
    m_list.Refill();
}

void CExclusionView::OnShowPermanent() {
    m_visibility.showPermanent = m_dialog.Control<CButton>(IDC_SHOW_PERMANENT).IsChecked();
    m_list.Refill();
}

void CExclusionView::OnExclude() {
    const auto behind = CRememberedRows::BehindSelection(m_list.Plugins());
    const auto selected = CRememberedRows::Of(m_list.Plugins());
    const bool done = TogglePluginExclusion();
    if (!m_dialog.IsLive()) return;
    m_exclusions.Load();
    // What the user has ended can be taken up again.
    m_list.Refill(done ? behind : selected);
    m_host.Tell(kPluginsChanged);
}

CExclusionView::Action CExclusionView::ActionFor(const Guid& clsid, const std::wstring& name,
                                                 Category category) const {
    if (::PathFileExistsW(m_inventory.FileOf(clsid, category).c_str())) return Action::Toggle;
    const std::wstring path = m_inventory.PathOf(clsid, category).value_or(L"");
    const std::wstring question = FormatText(LoadText(IDS_MISSING_FILE_QUESTION), name, path);
    switch (ShowMessage(m_dialog.Handle(), question, kMessageCaption, MB_YESNO | MB_ICONEXCLAMATION)) {
        case IDYES:
            return Action::Unregister;
        case IDNO:
            return Action::Toggle;
        default:
            // Nobody answered: a host that closes takes the docked dialog and its question with it.
            return Action::Stop;
    }
}

/// False when the user would not have it done without a backup.
bool CExclusionView::Unregister(const Guid& clsid, const std::wstring& name, Category category) {
    const BackupStep step{.kind = BackupKind::Registry,
                          .name = FormatText(LoadText(IDS_STEP_REMOVE), name),
                          .keys = RegistrationKeys(clsid, category),
                          .files = {}};
    const auto backup = BackUpOrAsk(m_backups, step, m_dialog.Handle());
    if (backup) UnregisterPlugin(clsid, category);
    return backup.has_value();
}

bool CExclusionView::TogglePluginExclusion() {
    const auto category = m_list.SelectedCategory();
    if (!category) return true;
    const CWaitCursor wait;
    bool removed = false;
    const CListBox plugins = m_list.Plugins();
    CLongWork work(m_dialog, IDC_EXCLUSION_GROUP,
                   m_visibility.mode == VisibilityMode::Enabled ? IDS_EXCLUDING : IDS_ENABLING,
                   static_cast<std::size_t>(plugins.SelectedCount()));
    // The rows are counted again each time: the question lets other messages in.
    for (int row = 0; row < plugins.Count(); ++row) {
        const auto* item = plugins.IsSelected(row) ? plugins.ItemOf<PluginListItem>(row) : nullptr;
        if (!item) continue;
        // First: a host that closes meanwhile takes the list along.
        const Guid clsid = item->clsid;
        const std::wstring name = plugins.RowText(row);
        if (!work.Next() || !m_dialog.IsLive()) break;
        if (IsPermanentlyExcluded(clsid)) continue;
        const Action action = ActionFor(clsid, name, *category);
        if (action == Action::Stop) break;
        if (action == Action::Unregister) {
            removed = Unregister(clsid, name, *category) || removed;
        } else if (m_visibility.mode == VisibilityMode::Enabled) {
            CExclusionList::Exclude(clsid, name);
        } else {
            CExclusionList::Enable(clsid);
        }
    }
    if (removed && m_dialog.IsLive()) m_list.EnumeratePlugins();
    return !work.WasEnded();
}
