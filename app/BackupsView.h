// The list of the backups, and what is done with those that are ticked.
#pragma once

#include <span>
#include <vector>

#include "Backups.h"
#include "Dialog.h"
#include "ExclusionList.h"
#include "HostWindow.h"
#include "LayoutFilesView.h"
#include "PluginListView.h"
#include "ReviewDlg.h"

class CBackupsView {
  public:
    /// What shows the things that a backup may hold.
    struct Rooms {
        CExclusionList& exclusions;
        CPluginListView& list;
        CLayoutFilesView& layouts;
        const CHostWindow& host;
    };
    CBackupsView(const CDialog& dialog, CBackups& backups, Rooms rooms)
        : m_dialog(dialog), m_backups(backups), m_rooms(rooms) {}

    void OnBackups();
    /// A studio set was loaded: what a backup can hold may be other than before, whatever it is.
    void ReadAllAgain() const;

  private:
    std::vector<ReviewRow> ReadRows();
    void OpenFolder(const CReviewDlg& list) const;
    void Delete(CReviewDlg& list);
    void Restore(const std::vector<std::size_t>& rows);
    bool RestoreOne(const BackupEntry& backup);
    void ReadAgain(std::span<const BackupRecord> restored) const;

    const CDialog& m_dialog;
    CBackups& m_backups;
    const Rooms m_rooms;
    std::vector<BackupEntry> m_entries;  // one a row
};
