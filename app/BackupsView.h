// The list of the backups, and what is done with those that are ticked.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "Backups.h"
#include "Dialog.h"
#include "ReviewDlg.h"

class CBackupsView {
  public:
    struct Events {
        /// What these name may be other than before.
        std::function<void(std::span<const BackupRecord> backups)> restored;
        /// To be called with the copy of a layout that was left unsaved.
        std::function<void(const std::wstring& copy)> openLayout;
    };
    CBackupsView(const CDialog& dialog, CBackups& backups, Events events)
        : m_dialog(dialog), m_backups(backups), m_events(std::move(events)) {}

    void OnBackups();

  private:
    std::vector<ReviewRow> ReadRows();
    void OpenFolder(const CReviewDlg& list) const;
    void Delete(CReviewDlg& list);
    void Restore(const std::vector<std::size_t>& rows);
    bool RestoreOne(const BackupEntry& backup);

    const CDialog& m_dialog;
    CBackups& m_backups;
    const Events m_events;
    std::vector<BackupEntry> m_entries;  // one a row
};
