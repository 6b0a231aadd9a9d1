#include "ManagePresetsDlg.h"

#include <algorithm>

#include "HelpContext.h"
#include "LongWork.h"
#include "MessageCaption.h"
#include "Resources.h"
#include "SinglePropDlg.h"
#include "TextFormat.h"
#include "resource.h"

CManagePresetsDlg::CManagePresetsDlg(const CPresetListMgr& presets, CBackups& backups)
    : CDialog(IDD_MANAGE_PRESETS), m_presets(presets), m_backups(backups) {}

std::span<const CRoute> CManagePresetsDlg::Routes() const {
    using Self = CManagePresetsDlg;
    using R = CRoutesOf<CManagePresetsDlg>;
    static constexpr CRoute kRoutes[] = {
        R::OnMessage<WM_VKEYTOITEM, &Self::OnVKeyToItem>(),
        R::OnCommand<LBN_SELCHANGE, &Self::UpdateRename>(IDC_PRESET_LIST),
        R::OnCommand<BN_CLICKED, &Self::OnSelectAll>(IDC_PRESET_SELECT_ALL),
        R::OnCommand<BN_CLICKED, &Self::OnRename>(IDC_PRESET_RENAME),
        R::OnCommand<BN_CLICKED, &Self::OnDelete>(IDC_PRESET_DELETE),
    };
    return kRoutes;
}

bool CManagePresetsDlg::OnInitDialog() {
    m_list = Control<CPresetListBox>(IDC_PRESET_LIST);
    SetText(Text() + m_presets.DisplayName());
    FillList();
    SelectOne(0);
    return true;
}

void CManagePresetsDlg::FillList() {
    const CRedrawLock noRedraw(m_list);
    m_list.Clear();
    m_listed = m_presets.FillPresetList(m_list);
    UpdateRename();
}

/// Of a list in which nothing is selected.
void CManagePresetsDlg::SelectOne(int row) {
    m_list.Select(row);
    m_list.Send(LB_SETCARETINDEX, row);
    UpdateRename();
}

void CManagePresetsDlg::UpdateRename() {
    EnableItem(IDC_PRESET_RENAME, m_list.SelectedCount() == 1, IDC_PRESET_LIST);
}

void CManagePresetsDlg::OnSelectAll() {
    m_list.Select(-1);
    UpdateRename();
}

void CManagePresetsDlg::Report(UINT textId) const {
    ShowMessage(m_hwnd, LoadText(textId), kMessageCaption, MB_OK | MB_ICONEXCLAMATION);
}

std::optional<CBackup> CManagePresetsDlg::BackUp(UINT stepId, std::vector<std::wstring> names,
                                                 bool withFiles) {
    BackupStep step{.kind = BackupKind::Presets,
                    .name = FormatText(LoadText(stepId), m_presets.DisplayName()),
                    .keys = {},
                    .files = {}};
    m_presets.NameIn(step, std::move(names), withFiles);
    return BackUpOrAsk(m_backups, step, m_hwnd);
}

void CManagePresetsDlg::OnDelete() {
    const std::vector<int> rows = m_list.SelectedRows();
    if (rows.empty() && m_listed > 0) return;
    const std::wstring question = FormatText(LoadText(IDS_DELETE_PRESETS_QUESTION), m_presets.DisplayName());
    if (ShowMessage(m_hwnd, question, kMessageCaption, MB_OKCANCEL | MB_ICONEXCLAMATION) != IDOK) return;
    const CWaitCursor wait;
    // Kept: where no preset is listed, having selected none counts as all.
    const bool all = static_cast<int>(rows.size()) == m_listed;
    std::vector<std::wstring> names;
    names.reserve(rows.size());
    for (const int row : rows) names.push_back(m_list.RowText(row));
    const auto backup = BackUp(IDS_STEP_DELETE_PRESETS, all ? std::vector<std::wstring>() : names, true);
    if (!backup) return;
    CLongWork work(*this, IDC_PRESET_LIST_LABEL, IDS_DELETING, rows.size());
    if (all) {
        if (!m_presets.DeleteAllPresets([&work] { return work.Next(); })) Report(IDS_PRESET_DELETE_ERROR);
    } else {
        CPatience patience;
        for (const std::wstring& name : names) {
            if (!work.Next()) break;
            if (!m_presets.DeletePreset(name, patience)) Report(IDS_PRESET_DELETE_ERROR);
        }
    }
    FillList();
    // The row behind the deleted ones, or the last.
    if (m_listed > 0 && !rows.empty()) SelectOne(std::min(rows.front(), m_listed - 1));
}

void CManagePresetsDlg::OnRename() {
    const std::vector<int> rows = m_list.SelectedRows();
    if (rows.size() != 1) return;
    const std::wstring oldName = m_list.RowText(rows.front());
    std::wstring newName = oldName;
    CSinglePropDlg prompt(IDS_RENAME_PRESET_TITLE, IDS_RENAME_PRESET_PROMPT, newName, kHelpOfNames);
    if (prompt.RunModal(m_hwnd) != IDOK || newName.empty()) return;
    const auto backup = BackUp(IDS_STEP_RENAME_PRESET, {oldName, newName}, false);
    if (!backup) return;
    const bool renamed = m_presets.RenamePreset(oldName, newName);
    if (!renamed) Report(IDS_PRESET_RENAME_ERROR);
    FillList();
    if (const auto row = m_list.FindExact(renamed ? newName : oldName)) SelectOne(*row);
}

int CManagePresetsDlg::OnVKeyToItem(UINT key, HWND list) {
    if (list != m_list.Handle() || (key != VK_F2 && key != VK_DELETE)) return crackers::kKeyDefault;
    key == VK_F2 ? OnRename() : OnDelete();
    return crackers::kKeyHandled;
}
