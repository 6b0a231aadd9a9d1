#include "ExportPresetsDlg.h"

CExportPresetsDlg::CExportPresetsDlg(std::span<const CPresetListMgr> plugins, std::wstring& folder)
    : CPresetFileDlg(IDS_EXPORT_PRESETS_TITLE, OFN_OVERWRITEPROMPT, plugins, folder) {}

void CExportPresetsDlg::OnInitDone() {
    AttachList();
    if (HasSeveral()) {
        ShowSeveral();
        List().Enable(false);
        return;
    }
    const CRedrawLock noRedraw(List());
    if (Plugin().FillPresetList(List()) > 0) SelectAll();
    List().FitScrollWidth();
}

bool CExportPresetsDlg::OnFileOk() {
    if (!HasSeveral()) TakeSelection();
    return true;
}
