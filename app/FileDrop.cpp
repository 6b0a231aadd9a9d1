#include "FileDrop.h"

#include <algorithm>

#include "Files.h"
#include "LayoutPath.h"
#include "MessageCaption.h"
#include "NumberText.h"
#include "Resources.h"
#include "TextFormat.h"
#include "resource.h"

namespace {

/// Looking at a name costs the more the further behind it stands: all of ten thousand would take seconds.
constexpr UINT kMostLookedAt = 2000;
/// In the message about what can't be opened.
constexpr std::size_t kMostNamed = 5;

/// By this message the system copies the files' names to the window, below WM_DROPFILES.
constexpr UINT kCopyGlobalData = 0x0049;

bool IsFile(const std::wstring& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

}  // namespace

void CFileDrop::OnInitDialog() const {
    // A program with an administrator's rights hears nothing else of those that have fewer.
    for (const UINT message : {UINT{WM_DROPFILES}, UINT{WM_COPYDATA}, kCopyGlobalData})
        ::ChangeWindowMessageFilterEx(m_dialog.Handle(), message, MSGFLT_ALLOW, nullptr);
}

void CFileDrop::Accept() const { ::DragAcceptFiles(m_dialog.Handle(), TRUE); }

/// Not below a question or a running tool, nor while a menu is open: its command would act on what the files
/// have replaced. Under a docked dialog it is the host's window that is disabled.
bool CFileDrop::CanTakeFiles() const {
    GUITHREADINFO thread{};
    thread.cbSize = sizeof thread;
    constexpr DWORD kBusy = GUI_INMENUMODE | GUI_POPUPMENUMODE | GUI_SYSTEMMENUMODE | GUI_INMOVESIZE;
    return m_dialog.IsEnabled() && ::IsWindowEnabled(::GetAncestor(m_dialog.Handle(), GA_ROOT)) &&
           ::GetGUIThreadInfo(::GetCurrentThreadId(), &thread) && !(thread.flags & kBusy);
}

void CFileDrop::OnDrop(const CDroppedFiles& files) {
    if (!CanTakeFiles()) {
        ::MessageBeep(MB_ICONEXCLAMATION);
        return;
    }
    ::SetForegroundWindow(::GetAncestor(m_dialog.Handle(), GA_ROOT));
    m_takers.tree.EndInput();
    m_dialog.Control<CComboBox>(IDC_LAYOUTS).CloseList();

    std::wstring layout;
    std::wstring set;
    std::vector<std::wstring> presets;
    std::vector<std::wstring> others;
    const UINT count = files.Count();
    for (UINT i = 0; i < std::min(count, kMostLookedAt); ++i) {
        const std::wstring path = files.Path(i);
        if (HasExtension(path, L".pgl") && IsFile(path)) {
            layout = path;
        } else if (HasExtension(path, L".pgset") && IsFile(path)) {
            set = path;
        } else if (HasExtension(path, L".spp") && IsFile(path)) {
            presets.push_back(path);
        } else {
            others.push_back(FileNameOf(path));
        }
    }
    if (!layout.empty()) m_takers.layouts.OpenDropped(layout);
    if (!set.empty() && m_dialog.IsLive()) m_takers.sets.Load(set);
    ImportPresets(presets, others);
    Report(others, count);
}

/// Whoever leaves one of them leaves those behind it, too.
void CFileDrop::ImportPresets(const std::vector<std::wstring>& files, std::vector<std::wstring>& others) {
    const auto find = [this](const Guid& clsid, const Guid& category) {
        return m_takers.inventory.FindForPresets(clsid, category);
    };
    for (const std::wstring& file : files) {
        if (!m_dialog.IsLive()) return;
        const auto dropped = m_takers.presets.ImportDropped(file, find);
        if (dropped == CPresetView::Dropped::NoPresetFile)
            others.push_back(FormatText(LoadText(IDS_UNREADABLE_PRESETS), FileNameOf(file)));
        if (dropped == CPresetView::Dropped::Left) break;
    }
    if (!files.empty() && m_dialog.IsLive()) m_takers.list.OnSelectionChanged();
}

void CFileDrop::Report(const std::vector<std::wstring>& others, UINT count) const {
    if (!m_dialog.IsLive() || (others.empty() && count <= kMostLookedAt)) return;
    std::wstring text;
    if (!others.empty()) {
        std::wstring names = others.front();
        for (std::size_t i = 1; i < std::min(others.size(), kMostNamed); ++i) names += L'\n' + others[i];
        if (others.size() > kMostNamed)
            names += L'\n' + FormatText(LoadText(IDS_AND_MORE), NumberText(others.size() - kMostNamed));
        text = FormatText(LoadText(IDS_NOT_OPENED), names);
    }
    if (count > kMostLookedAt)
        text += (others.empty() ? L"" : L"\n\n") +
                FormatText(LoadText(IDS_ONLY_FIRST_FILES), NumberText(kMostLookedAt), NumberText(count));
    ShowMessage(m_dialog.Handle(), text, kMessageCaption, MB_OK | MB_ICONEXCLAMATION);
}
