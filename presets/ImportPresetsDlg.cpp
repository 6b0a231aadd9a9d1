#include "ImportPresetsDlg.h"

#include "FileStream.h"
#include "Resources.h"

CImportPresetsDlg::CImportPresetsDlg(std::span<CPresetListMgr> plugins, std::wstring& folder)
    : CPresetFileDlg(IDS_IMPORT_PRESETS_TITLE, OFN_FILEMUSTEXIST, plugins, folder) {}

void CImportPresetsDlg::OnInitDone() {
    AttachList();
    SelectAllButton().Enable(false);
    if (HasSeveral()) ShowSeveral();
}

void CImportPresetsDlg::OnSelectionChange() {
    const std::wstring path = CurrentPath();
    if (path == m_chosen) return;
    m_chosen = path;
    ShowPreview(path);
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
    m_previewed = path;
    auto file = CFileSource::Open(m_previewed);
    if (!file && !path.empty() && ::GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) {
        // The dialog gives a name the extension that was not typed.
        m_previewed += L"." + LoadText(IDS_PRESET_EXTENSION);
        file = CFileSource::Open(m_previewed);
    }
    if (!file) m_previewed.clear();
    const int presets = file ? FillPreview(*file) : 0;
    SelectAllButton().Enable(presets > 0);
    if (presets > 0) SelectAll();
    List().FitScrollWidth();
}

bool CImportPresetsDlg::OnFileOk() {
    // What is selected in the list must be of the file that is read. A name may have been typed just now.
    if (::CompareStringOrdinal(m_previewed.c_str(), -1, ConfirmedPath().c_str(), -1, TRUE) != CSTR_EQUAL)
        ShowPreview(ConfirmedPath());
    if (!HasSeveral() && !m_previewed.empty()) TakeSelection();
    return true;
}
