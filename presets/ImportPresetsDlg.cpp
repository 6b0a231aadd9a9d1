#include "ImportPresetsDlg.h"

#include "FileStream.h"

CImportPresetsDlg::CImportPresetsDlg(std::span<CPresetListMgr> plugins, std::wstring& folder)
    : CPresetFileDlg(IDS_IMPORT_PRESETS_TITLE, OFN_FILEMUSTEXIST, plugins, folder) {}

void CImportPresetsDlg::OnInitDone() {
    AttachList();
    SelectAllButton().Enable(false);
    if (HasSeveral()) ShowSeveral();
}

void CImportPresetsDlg::OnSelectionChange() {
    const std::wstring path = CurrentPath();
    if (path != m_previewed) ShowPreview(path);
}

int CImportPresetsDlg::FillPreview(IByteSource& file) const {
    int presets = 0;
    const PreviewList list = [&](const std::wstring& line, std::int32_t position) {
        List().SetData(List().Add(line), position);
        if (position != kNoPreset) ++presets;
    };
    if (HasSeveral() || Plugin().ListFileForPlugin(file, list) == kNothingForPlugin) {
        file.Seek(0);
        CPresetListMgr::ListFileContents(file, list);
    }
    return presets;
}

void CImportPresetsDlg::ShowPreview(const std::wstring& path) {
    const CWaitCursor wait;
    const CRedrawLock noRedraw(List());
    List().Clear();
    auto file = CFileSource::Open(path);
    m_previewed = file ? path : std::wstring();
    const int presets = file ? FillPreview(*file) : 0;
    SelectAllButton().Enable(presets > 0);
    if (presets > 0) SelectAll();
    List().FitScrollWidth();
}

bool CImportPresetsDlg::OnFileOk() {
    // A name that was typed has not been looked at yet.
    OnSelectionChange();
    if (!HasSeveral() && !m_previewed.empty()) TakeSelection();
    return true;
}
