#include "ImportPresetsDlg.h"

#include "FileStream.h"
#include "NameOrder.h"
#include "PresetTransfer.h"
#include "Resources.h"

CImportPresetsDlg::CImportPresetsDlg(std::span<const CPresetListMgr> plugins, std::wstring& folder)
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
    PresetPreview preview;
    preview.notAPresetFile = LoadText(IDS_NOT_A_PRESET_FILE);
    preview.goesOn = LoadText(IDS_PREVIEW_GOES_ON);
    preview.add = [&](const std::wstring& line, std::int32_t position) {
        List().SetData(List().Add(line), position);
        if (position != kNoPreset) ++presets;
    };
    if (HasSeveral() || ListFileForPlugin(file, Plugin(), preview) == kNothingForPlugin) {
        file.Seek(0);
        ListFileContents(file, preview);
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
    if (!SamePath(m_previewed, ConfirmedPath())) ShowPreview(ConfirmedPath());
    if (!HasSeveral() && !m_previewed.empty()) TakeSelection();
    return true;
}
