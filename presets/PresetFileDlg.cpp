#include "PresetFileDlg.h"

#include <algorithm>

#include "Resources.h"

namespace {

FileDialogSettings SettingsOf(UINT titleId, DWORD flags, std::span<const CPresetListMgr> plugins,
                              const std::wstring& folder) {
    const std::wstring name =
        plugins.size() == 1 ? plugins.front().DisplayName() : LoadText(IDS_MULTIPLE_PLUGINS_SELECTED);
    return {.title = LoadText(titleId) + name,
            .defaultExtension = LoadText(IDS_PRESET_EXTENSION),
            .filterText = LoadText(IDS_PRESET_FILTER),
            .initialFolder = folder,
            .proposedName = {},
            .flags = flags | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST,
            .templateId = IDD_PRESET_FILE};
}

}  // namespace

CPresetFileDlg::CPresetFileDlg(UINT titleId, DWORD flags, std::span<const CPresetListMgr> plugins,
                               std::wstring& folder)
    : CFileDialog(SettingsOf(titleId, flags, plugins, folder)), m_plugins(plugins), m_folder(folder) {}

void CPresetFileDlg::OnCommand(UINT id, UINT code) {
    if (id == IDC_PRESET_SELECT_ALL && code == BN_CLICKED) SelectAll();
}

void CPresetFileDlg::ShowSeveral() const {
    m_list.Add(LoadText(IDS_MULTIPLE_PLUGINS_SELECTED));
    SelectAllButton().Enable(false);
}

void CPresetFileDlg::TakeSelection() {
    m_selection.emplace();
    for (const int row : m_list.SelectedRows()) {
        const LPARAM position = m_list.Data(row);
        if (position < 0) continue;
        const auto index = static_cast<std::size_t>(position);
        m_selection->resize(std::max(m_selection->size(), index + 1));
        (*m_selection)[index] = 1;
    }
}
