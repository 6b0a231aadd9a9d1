#include "LayoutFilesView.h"

#include <algorithm>

#include "Files.h"
#include "LayoutFileDlg.h"
#include "LayoutFolder.h"
#include "LayoutPath.h"
#include "MessageCaption.h"
#include "RegKey.h"
#include "RememberedTree.h"
#include "Resources.h"
#include "SaveFailure.h"
#include "Scope.h"
#include "TextFormat.h"
#include "resource.h"

namespace {

/// Of a layout that counts as unnamed; it is proposed for saving.
bool IsTemporary(const std::wstring& path) { return HasExtension(path, L".tmp"); }

/// The null id finds nothing, though a record without a second id may stand under it.
const VstInventoryRecord* FindVst(const CPluginInventory& inventory, const Guid& clsid) {
    return clsid.IsNull() ? nullptr : inventory.Vst().Find(clsid);
}

LayoutPlugins PluginsOf(const CPluginInventory& inventory) {
    return {[&inventory](const Guid& clsid) { return FindVst(inventory, clsid); },
            [&inventory](LayoutItem& item) {
                item.installed = !item.clsid.IsNull() && inventory.IsInstalled(item.clsid);
                item.inventoryFlag = FindVst(inventory, item.clsid) != nullptr;
            }};
}

}  // namespace

CLayoutFilesView::CLayoutFilesView(CDialog& dialog, CLayoutTreeView& tree, const CPluginInventory& inventory,
                                   const CHostWindow& host, CBackups& backups, const std::wstring& dataFolder,
                                   const std::wstring& folder, std::wstring settingsKey)
    : m_dialog(dialog),
      m_tree(tree),
      m_host(host),
      m_backups(backups),
      m_folder(FullPathOf(folder)),
      m_settingsKey(std::move(settingsKey)),
      m_plugins(PluginsOf(inventory)),
      m_unsaved(dialog, tree.Layout(), m_plugins, backups, dataFolder, [this] {
          return CUnsavedLayout::Title{DisplayName(), m_path};
      }) {}

void CLayoutFilesView::OnInitDialog() {
    m_list = m_dialog.Control<CLayoutList>(IDC_LAYOUTS);
    EnableDelete(false);
    ShowFileName(L"");
    m_tree.WhenRestored([this] { MarkInstalled(); });
}

int CLayoutFilesView::AskToSave(UINT buttons) {
    if (m_tree.IsEditingLabel()) m_tree.EndLabelEdit(false);  // a close box takes no focus from the edit
    if (!m_tree.Layout().IsModified()) return IDNO;
    const std::wstring name = DisplayName().empty() ? LoadText(IDS_UNNAMED_LAYOUT) : m_name;
    const unsigned question = ++m_questions;
    const std::wstring text = FormatText(LoadText(IDS_SAVE_LAYOUT_QUESTION), name);
    // A session that ends meanwhile shows why it can't yet.
    ::ShutdownBlockReasonCreate(m_dialog.Handle(), text.c_str());
    const CScopeExit forget([this] { ::ShutdownBlockReasonDestroy(m_dialog.Handle()); });
    // A box can outlive the window. A host that takes it away brings up another question: that one counts.
    const auto counts = [&] { return m_dialog.IsLive() && question == m_questions; };
    HWND owner = m_dialog.Handle();
    int answer = Ask(text, buttons);
    if (answer <= 0 && counts()) {
        owner = nullptr;  // one that is being destroyed may get no box
        answer = ShowMessage(owner, text, kMessageCaption,
                             buttons | MB_ICONWARNING | MB_TASKMODAL | MB_SETFOREGROUND);
    }
    if (answer <= 0 || !counts()) return IDCANCEL;
    // Without a third button there is no way back.
    return answer == IDYES ? Save(owner, buttons != MB_YESNO) : answer;
}

BackupStep CLayoutFilesView::StepFor(UINT nameId, const std::wstring& path) const {
    return {.kind = BackupKind::Layouts,
            .name = FormatText(LoadText(nameId), FileNameOf(path)),
            .keys = {},
            .files = {path},
            .oncePerRun = nameId == IDS_STEP_SAVE_LAYOUT};
}

void CLayoutFilesView::ListLayouts() {
    const CWaitCursor wait;
    const CRedrawLock noRedraw(m_list);
    m_list.Clear();
    for (const LayoutFile& file : ScanLayoutFolder(m_folder)) m_list.AddLayout(file.name, file.path);
    m_current.reset();
    EnableDelete(false);
    m_list.SetText(m_name);
}

void CLayoutFilesView::Open(const std::wstring& path) {
    const std::wstring full = FullPathOf(path);
    CXMLTreeCtrl document(m_tree.Layout(), m_plugins);
    if (Load(document, full)) {
        m_tree.ForgetSteps();
        ShowOpened(document.LayoutName(), full);
    }
    m_tree.UpdateButtons();
}

void CLayoutFilesView::OpenDropped(const std::wstring& path) {
    if (AskToSave(MB_YESNOCANCEL) == IDCANCEL) return;
    RemovePlaceholder();
    Open(path);
}

void CLayoutFilesView::ShowOpened(const std::wstring& name, const std::wstring& path) {
    m_path = path;
    if (IsTemporary(path)) {
        ShowFileName(L"");
    } else {
        auto row = m_list.RowOf(path);
        // A file that the list did not know leaves the button as it was.
        if (row) EnableDelete(true);
        if (!row) row = m_list.AddLayout(name, path);
        m_list.SetCurrentRow(row);
        if (row) SetName(m_list.RowText(*row));
        ShowFileName(path);
    }
    m_current = m_list.CurrentRow();
}

void CLayoutFilesView::OnRestored(std::span<const std::wstring> files) {
    DisplayName();  // the name that was typed stays in the field
    ListLayouts();
    m_current = m_list.RowOf(m_path);
    m_list.SetCurrentRow(m_current);
    EnableDelete(m_current.has_value());
    SetName(std::wstring(m_name));
    NoteChange();
    const bool isAmongThem =
        std::ranges::any_of(files, [this](const std::wstring& file) { return SamePath(file, m_path); });
    // Before the step there may have been none.
    const bool isThere = ::GetFileAttributesW(m_path.c_str()) != INVALID_FILE_ATTRIBUTES;
    if (isAmongThem && isThere && !m_tree.Layout().IsModified()) Open(m_path);
}

void CLayoutFilesView::OpenBackup(const std::wstring& copy) {
    if (AskToSave(MB_YESNOCANCEL) != IDCANCEL) OpenUnsaved(copy);
}

/// The layout comes back as it was: modified, under its name, and as that of its file.
bool CLayoutFilesView::OpenUnsaved(const std::wstring& copy) {
    CXMLTreeCtrl document(m_tree.Layout(), m_plugins);
    if (!Load(document, copy)) return false;
    m_tree.ForgetSteps();
    const std::wstring path = document.UnsavedFile().value_or(L"");
    // Anybody may have changed the copy: what else a file is called is not to be saved over.
    const bool isLayout = IsPlainPath(path) && (HasExtension(path, L".pgl") || IsTemporary(path));
    isLayout ? ShowOpened(document.LayoutName(), path) : ShowNew();
    SetName(document.LayoutName());
    m_tree.Layout().SetModified(true);
    m_tree.UpdateButtons();
    return true;
}

bool CLayoutFilesView::MayBeDropped(const std::optional<CBackup>& kept) const {
    const DWORD error = kept ? kept->Error() : ERROR_SUCCESS;
    return error == ERROR_SUCCESS || (GoesOnWithoutBackup(m_dialog.Handle(), error) && m_dialog.IsLive());
}

void CLayoutFilesView::DropUnasked() {
    const auto kept = KeepUnsaved();
    // Else the copy for the case of a crash is the last one.
    if (!kept || kept->Error() == ERROR_SUCCESS) m_tree.Layout().SetModified(false);
}

/// False, after a message, when the file is no layout, or when the present one must not be lost for it.
bool CLayoutFilesView::Load(CXMLTreeCtrl& document, const std::wstring& path) {
    const CWaitCursor wait;
    auto kept = KeepUnsaved();
    if (!MayBeDropped(kept)) return false;
    const unsigned changes = m_tree.Layout().Changes();
    if (document.Load(path, false)) {
        m_tree.Layout().SetModified(false);
        return true;
    }
    // A tree that could not be filled again has lost what it held.
    if (kept && m_tree.Layout().Changes() == changes) kept->Discard();
    Complain(LoadText(IDS_NOT_A_LAYOUT));
    return false;
}

void CLayoutFilesView::OnNew() {
    if (AskToSave(MB_YESNOCANCEL) != IDCANCEL) {
        const auto kept = KeepUnsaved();
        if (!MayBeDropped(kept)) return;
        ShowNew();
        m_tree.Layout().Clear();
        m_tree.Layout().SetModified(false);
        m_tree.ForgetSteps();
    }
    m_tree.UpdateButtons();
}

/// Of a layout that has no file.
void CLayoutFilesView::ShowNew() {
    m_list.SetCurrentRow(std::nullopt);
    m_current.reset();
    m_path.clear();
    SetName(L"");
    EnableDelete(false);
    ShowFileName(L"");
}

void CLayoutFilesView::OnOpen() {
    if (AskToSave(MB_YESNOCANCEL) == IDCANCEL) return;
    RemovePlaceholder();
    FileDialogSettings settings = LayoutDialogSettings(IDS_OPEN_LAYOUT_TITLE, m_folder);
    settings.flags |= OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST;
    if (const auto path = CFileDialog(settings).RunOpen(m_dialog.Handle())) Open(*path);
    m_tree.UpdateButtons();
}

void CLayoutFilesView::OnListChange() {
    m_listMoved = true;
    if (!m_list.IsDropped()) EndPick(true);
}

void CLayoutFilesView::EndPick(bool chosen) {
    m_chosen = chosen;
    // Deferred: the list writes the row's name into its field when it is done with its notifications, whose
    // order differs from system to system.
    ::PostMessageW(m_dialog.Handle(), crackers::kDeferred, 0, 0);
}

void CLayoutFilesView::OnDeferred() {
    if (!m_listMoved) return;
    const auto row = m_list.CurrentRow();
    // Until the picked layout is loaded, the list shows the present one.
    m_list.SetCurrentRow(m_current);
    m_list.SetText(m_name);
    m_listMoved = false;
    if (m_chosen) Pick(row);
}

void CLayoutFilesView::Pick(std::optional<int> row) {
    const std::wstring path = m_list.PathOf(row);
    const int answer = AskToSave(MB_YESNOCANCEL);
    if (answer == IDCANCEL) return;
    if (answer != IDYES || path.empty()) return ShowPicked(row);
    // Saving fills the list again: the rows are others then, and files of other folders have none.
    if (const auto newRow = m_list.RowOf(path)) return ShowPicked(newRow);
    Open(path);
}

void CLayoutFilesView::ShowPicked(std::optional<int> row) {
    if (ShowRow(row)) m_tree.ForgetSteps();
}

/// False when its file could not be shown.
bool CLayoutFilesView::ShowRow(std::optional<int> row) {
    const std::wstring path = m_list.PathOf(row);
    CXMLTreeCtrl document(m_tree.Layout(), m_plugins);
    if (!path.empty() && !Load(document, path)) return false;
    m_list.SetCurrentRow(row);
    SetName(row ? m_list.RowText(*row) : std::wstring());
    m_path = path;
    ShowFileName(path);
    RemovePlaceholder();
    m_current = m_list.CurrentRow();
    if (m_current) EnableDelete(true);
    m_tree.OnCollapseAll();
    return true;
}

int CLayoutFilesView::Save(HWND owner, bool mayAsk) {
    const std::wstring proposed = IsTemporary(m_path) ? m_path : ProposedFileName(DisplayName());
    CLayoutFileDlg dialog(m_folder, proposed, m_list.Names(), m_name);
    const auto path = dialog.RunSave(owner);
    if (!path || !m_dialog.IsLive()) return IDCANCEL;
    const BackupStep step = StepFor(IDS_STEP_SAVE_LAYOUT, *path);
    const auto backup = mayAsk ? BackUpOrAsk(m_backups, step, owner) : m_backups.Make(step);
    if (!backup) return IDCANCEL;
    SaveTo(*path, dialog.DisplayName());
    return IDYES;
}

void CLayoutFilesView::OnSaveInPlace() {
    m_tree.EndInput();
    const std::wstring name = DisplayName();
    if (name.empty() || m_path.empty() || IsTemporary(m_path)) return OnSave();
    const auto backup = BackUpOrAsk(m_backups, StepFor(IDS_STEP_SAVE_LAYOUT, m_path), m_dialog.Handle());
    if (!backup || !Write(m_path, name)) return;
    const auto row = m_list.RowOf(m_path);
    if (!row || m_list.RowText(*row) == name) return;
    m_list.Remove(*row);
    m_current = m_list.AddLayout(name, m_path);
    m_list.SetCurrentRow(m_current);
    SetName(name);
}

void CLayoutFilesView::SaveTo(const std::wstring& path, const std::wstring& name) {
    if (Write(path, name)) ShowSaved(path, name);
}

/// Tells the host that layouts have changed, and the user why this one could not be written.
bool CLayoutFilesView::Write(const std::wstring& path, const std::wstring& name) {
    CXMLTreeCtrl document(m_tree.Layout(), m_plugins);
    document.SetLayoutName(name);
    const bool written = document.Save(path);
    if (written) {
        m_tree.NoteSaved();
    } else {
        // So that the user sees which item can't be written.
        if (document.FailedItem()) m_tree.Tree().SelectOnly(document.FailedItem());
        m_tree.UpdateButtons();
        const std::wstring reason = SaveFailureText(document);
        Complain(LoadText(IDS_LAYOUT_SAVE_ERROR) + (reason.empty() ? L"" : L"\n\n" + reason));
    }
    NoteChange();
    m_host.Tell(kLayoutsChanged);
    return written;
}

void CLayoutFilesView::ShowSaved(const std::wstring& path, const std::wstring& name) {
    m_path = path;
    SetName(name);
    ListLayouts();
    ShowFileName(path);
    // Of several layouts with one name it is the one in this file.
    const auto row = m_list.RowOf(path);
    if (!row || m_list.RowText(*row) != name) return;
    const CRememberedTree remembered(m_tree.Layout());
    ShowRow(row);
    remembered.Restore(m_tree.Tree());
    m_tree.UpdateButtons();
}

/// False when the user would not have it done without a backup.
bool CLayoutFilesView::DeleteLayout(const std::wstring& path) {
    const auto backup = BackUpOrAsk(m_backups, StepFor(IDS_STEP_DELETE_LAYOUT, path), m_dialog.Handle());
    if (backup) ::DeleteFileW(path.c_str());
    return backup.has_value();
}

void CLayoutFilesView::OnDelete() {
    const std::wstring path = m_list.PathOf(m_current);
    if (!path.empty() && Ask(LoadText(IDS_DELETE_LAYOUT_QUESTION), MB_YESNO) == IDYES && DeleteLayout(path)) {
        if (SamePath(path, m_path)) m_path.clear();
        m_list.Remove(*m_current);
        m_current.reset();
        // If the user cancels New, the tree is a layout without a file.
        m_list.SetText(m_name);
        ShowFileName(L"");
        EnableDelete(false);
        OnNew();
    }
    NoteChange();
    m_tree.UpdateButtons();
}

void CLayoutFilesView::RemovePlaceholder() {
    if (!m_list.HasPlaceholder()) return;
    m_list.Remove(0);
    if (m_current) m_current = *m_current > 0 ? std::optional(*m_current - 1) : std::nullopt;
}

void CLayoutFilesView::SetName(const std::wstring& name) {
    m_name = name;
    m_list.SetText(name);
}

/// What the list's field shows; the name from before while the list offers other layouts.
const std::wstring& CLayoutFilesView::DisplayName() {
    if (!m_listMoved) m_name = m_list.Text();
    return m_name;
}

void CLayoutFilesView::ShowFileName(const std::wstring& path) const {
    m_dialog.Item(IDC_LAYOUT_FILE).SetText(FileNameOf(path));
}

void CLayoutFilesView::EnableDelete(bool enable) const {
    m_dialog.EnableItem(IDC_LAYOUT_DELETE, enable, IDC_LAYOUTS);
}

void CLayoutFilesView::NoteChange() const {
    if (const auto key = CRegKey::Create(HKEY_CURRENT_USER, m_settingsKey))
        key->WriteDword(L"MenuLayoutsDirty", 1);
}

int CLayoutFilesView::Ask(const std::wstring& question, UINT buttons) const {
    return ShowMessage(m_dialog.Handle(), question, kMessageCaption, buttons | MB_ICONWARNING);
}

void CLayoutFilesView::Complain(const std::wstring& text) const {
    ShowMessage(m_dialog.Handle(), text, kMessageCaption, MB_OK | MB_ICONEXCLAMATION);
}
