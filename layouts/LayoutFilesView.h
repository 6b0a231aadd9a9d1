// The layout list, the four buttons above the tree, and the layout files behind them.
#pragma once

#include <windows.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "BackupQuestion.h"
#include "Dialog.h"
#include "HostWindow.h"
#include "LayoutList.h"
#include "LayoutTreeView.h"
#include "PluginInventory.h"
#include "UnsavedLayout.h"
#include "XmlTreeCtrl.h"

class CLayoutFilesView {
  public:
    /// `settingsKey` is where the current user's registry notes that layouts have changed, `dataFolder` where
    /// an unsaved layout is kept for the case of a crash.
    CLayoutFilesView(CDialog& dialog, CLayoutTreeView& tree, const CPluginInventory& inventory,
                     const CHostWindow& host, CBackups& backups, const std::wstring& dataFolder,
                     const std::wstring& folder, std::wstring settingsKey);

    void OnInitDialog();
    /// After an enumeration: of the plug-ins in the layout those that are missing become grey, all others
    /// not.
    void MarkInstalled() { m_tree.Layout().Mark(m_plugins.mark); }

    /// Asks whether to save a modified layout, with the given MB_ buttons. Gives the answer's button id: IDNO
    /// when there is nothing to save, IDCANCEL also when the user says yes and then leaves the save dialog,
    /// or nobody could answer.
    int AskToSave(UINT buttons);
    /// A modified layout that is about to be lost goes to the backups; nothing for any other.
    std::optional<CBackup> KeepUnsaved() { return m_unsaved.BackUp(); }
    /// Whether that backup could be made, or the user would do without it.
    bool MayBeDropped(const std::optional<CBackup>& kept) const;
    /// The layout is lost now, and no question is possible.
    void DropUnasked();
    /// Lists the layout files of the layouts folder; none of them is the current one.
    void ListLayouts();
    /// Shows the layout of a file, or a message when it is none.
    void Open(const std::wstring& path);
    /// The same, after asking about a modified layout, as Open does.
    void OpenDropped(const std::wstring& path);
    /// Asks whether to open what a crash has left unsaved. True when a layout was opened.
    bool OfferUnsaved() {
        return m_unsaved.Offer([this](const std::wstring& copy) { return OpenUnsaved(copy); });
    }
    /// Layout files may be others than the list shows, or hold something else.
    void OnRestored(std::span<const std::wstring> files);
    /// Opens a layout that was left unsaved, as it was.
    void OpenBackup(const std::wstring& copy);
    bool OnTimer(UINT_PTR timer) { return m_unsaved.OnTimer(timer); }

    void OnNew();
    void OnOpen();
    void OnSave() { Save(m_dialog.Handle(), true); }
    /// Writes the layout to its own file under the name in the list, without a dialog where it has both.
    void OnSaveInPlace();
    void OnDelete();
    void OnEditName() { m_name = m_list.Text(); }
    /// The list's current row has changed: picked, or only passed in the open list.
    void OnListChange();
    void OnListChosen() { EndPick(true); }
    void OnListLeft() { EndPick(false); }
    void OnDeferred();
    bool IsWheelOverList(const MSG& message) const { return m_list.IsWheelOver(message); }

  private:
    void ShowOpened(const std::wstring& name, const std::wstring& path);
    void ShowNew();
    bool OpenUnsaved(const std::wstring& copy);
    bool Load(CXMLTreeCtrl& document, const std::wstring& path);
    /// With `mayAsk`, nothing is overwritten that could not be backed up, unless the user wants it.
    int Save(HWND owner, bool mayAsk);
    void SaveTo(const std::wstring& path, const std::wstring& name);
    bool DeleteLayout(const std::wstring& path);
    /// Before a layout file is replaced or deleted.
    BackupStep StepFor(UINT nameId, const std::wstring& path) const;
    bool Write(const std::wstring& path, const std::wstring& name);
    void ShowSaved(const std::wstring& path, const std::wstring& name);
    void EndPick(bool chosen);
    void Pick(std::optional<int> row);
    void ShowPicked(std::optional<int> row);
    bool ShowRow(std::optional<int> row);

    void RemovePlaceholder();
    void SetName(const std::wstring& name);
    const std::wstring& DisplayName();
    void ShowFileName(const std::wstring& path) const;
    void EnableDelete(bool enable) const;
    void NoteChange() const;
    int Ask(const std::wstring& question, UINT buttons) const;
    void Complain(const std::wstring& text) const;

    CDialog& m_dialog;
    CLayoutTreeView& m_tree;
    const CHostWindow& m_host;
    CBackups& m_backups;
    const std::wstring m_folder;
    const std::wstring m_settingsKey;
    const LayoutPlugins m_plugins;
    CLayoutList m_list;
    std::optional<int> m_current;  // row of the layout shown; nothing for a new one
    std::wstring m_name;           // in the list's field, before a pick changes it
    bool m_listMoved = false;      // the list's current row is not the layout shown
    bool m_chosen = false;         // the row that the list moved to was picked, and the list not left
    unsigned m_questions = 0;      // asked so far, about unsaved changes
    std::wstring m_path;           // of the layout shown; empty when it has no file
    CUnsavedLayout m_unsaved;
};
