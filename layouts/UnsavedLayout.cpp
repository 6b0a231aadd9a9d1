#include "UnsavedLayout.h"

#include <utility>

#include "MessageCaption.h"
#include "Resources.h"
#include "TextFormat.h"
#include "resource.h"

namespace {

/// Nothing when the file is no document.
std::optional<std::wstring> NameIn(const std::wstring& copy) {
    CXmlDoc document;
    if (!document.Load(copy, /*rootOnly*/ true) || !document.FindAttribute(L"Name")) return std::nullopt;
    return document.FoundAttribute().value_or(L"");
}

/// As the user knows it.
std::wstring ShownName(const std::wstring& name) {
    return name.empty() ? LoadText(IDS_UNNAMED_LAYOUT) : name;
}

}  // namespace

CUnsavedLayout::CUnsavedLayout(const CDialog& dialog, CTreeCtrlWrapper& layout, const LayoutPlugins& plugins,
                               CBackups& backups, const std::wstring& dataFolder,
                               std::function<Title()> title)
    : m_dialog(dialog),
      m_layout(layout),
      m_plugins(plugins),
      m_backups(backups),
      m_title(std::move(title)),
      m_autosave(dialog, dataFolder,
                 [this](const std::wstring& copy) { return Write(copy) == ERROR_SUCCESS; }) {
    m_layout.WhenModified([this](bool modified) { m_autosave.OnModified(modified); });
}

DWORD CUnsavedLayout::Write(const std::wstring& copy) {
    const Title title = m_title();
    CXMLTreeCtrl document(m_layout, m_plugins);
    document.SetLayoutName(title.name);
    document.NoteUnsavedFile(title.path);
    if (document.Save(copy)) return ERROR_SUCCESS;
    return document.SaveError() != ERROR_SUCCESS ? document.SaveError() : DWORD{ERROR_WRITE_FAULT};
}

CBackup CUnsavedLayout::KeepAs(const std::wstring& name,
                               const std::function<DWORD(const std::wstring& copy)>& write) {
    return m_backups.KeepLayout(FormatText(LoadText(IDS_STEP_UNSAVED_LAYOUT), ShownName(name)), write);
}

std::optional<CBackup> CUnsavedLayout::BackUp() {
    if (!m_layout.IsModified()) return std::nullopt;
    return KeepAs(m_title().name, [this](const std::wstring& copy) { return Write(copy); });
}

bool CUnsavedLayout::Offer(const std::function<bool(const std::wstring&)>& open) {
    while (const auto left = m_autosave.TakeLeft()) {
        const auto name = NameIn(*left);
        // What can't be read is put by without a question.
        const int answer =
            !name ? IDNO
                  : ShowMessage(m_dialog.Handle(),
                                FormatText(LoadText(IDS_OPEN_UNSAVED_QUESTION), ShownName(*name)),
                                kMessageCaption, MB_YESNO | MB_ICONWARNING);
        // Where the window was taken away meanwhile, the copy is for the next start.
        if (!m_dialog.IsLive()) break;
        if (answer == IDYES && open(*left)) {
            m_autosave.Keep();
            return true;
        }
        const CBackup kept = KeepAs(name.value_or(L""),
                                    [&left](const std::wstring& copy) { return CopyToNewFile(*left, copy); });
        if (kept.Error() == ERROR_SUCCESS) ::DeleteFileW(left->c_str());
        m_autosave.GiveBack();
    }
    m_autosave.GiveBack();
    return false;
}
