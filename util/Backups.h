// The safety net below everything that the program removes or overwrites.
#pragma once

#include <windows.h>

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "BackupRecord.h"
#include "BackupStep.h"
#include "Files.h"
#include "RegImport.h"
#include "RegSnapshot.h"
#include "Window.h"

/// Where the backups lie in the folder of the program's data; empty when that is.
std::wstring BackupFolder(const std::wstring& dataFolder);

class CBackup;

/// One folder a backup: "before.reg" with the keys, copies of the files, and "backup.xml", which says what
/// lies where. That one is written last and removed first: a folder without it is none, or not yet one.
///
/// Failure contract: operations give the system's error. A backup that fails leaves nothing behind; a restore
/// that fails leaves each file and value old or new.
class CBackups {
  public:
    CBackups(std::wstring folder, std::wstring version, RegImporter importer = &ImportRegText);

    /// Copies what the step names, before it starts. `goOn` is asked before each file; where it says no,
    /// there is no backup, but ERROR_CANCELLED.
    [[nodiscard]] CBackup Make(const BackupStep& step, const std::function<bool()>& goOn = {});
    /// Keeps a layout that is about to be lost, unless the caller discards the backup; `write` makes its
    /// file, and gives the system's error.
    CBackup KeepLayout(const std::wstring& step, const std::function<DWORD(const std::wstring& copy)>& write);

    /// Newest first.
    std::vector<BackupEntry> List() const;
    /// Puts back what the backup holds, where it differs from what is there now, after a backup of that under
    /// the name `step`. Without such a backup it goes on only when `goOn`, asked with the reason, says so. A
    /// layout is not put anywhere: the caller opens its copy.
    DWORD Restore(const BackupEntry& entry, const std::wstring& step, const CWindow& owner,
                  const std::function<bool(DWORD)>& goOn);
    /// False when something of it is still there.
    bool Delete(const BackupEntry& entry);
    /// It is not pruned in this run, as what this run made.
    void Spare(const BackupEntry& entry) { m_fromThisRun.insert(entry.folder); }

  private:
    friend class CBackup;
    /// With `stays`, also of a step that only adds: so that a restore can be taken back.
    CBackup Make(const BackupStep& step, bool stays, const std::function<bool()>& goOn);
    DWORD Begin(BackupEntry& entry, BackupKind kind, const std::wstring& step) const;
    static DWORD CopyFiles(CBackup& backup, const BackupStep& step, const std::function<bool()>& goOn);
    static DWORD WriteKeys(CBackup& backup, const BackupStep& step);
    bool IsKept(const std::wstring& file) const;
    void Finish(CBackup& backup);
    void NoteKept(const CBackup& backup);
    void Prune();
    static bool RemoveFolder(const std::wstring& folder);

    const std::wstring m_folder;
    const std::wstring m_version;
    const RegImporter m_import;
    std::optional<std::vector<BackupEntry>> m_known;  // read with the first pruning
    std::set<std::wstring> m_fromThisRun;             // folders
    /// Copied in this run: by the path in capitals, size and times after the last step.
    std::map<std::wstring, std::array<std::uint64_t, 3>> m_keptFiles;
};

/// Lives while a step runs. At its end the backup goes again when nothing of what the step named has been
/// changed or is gone.
class CBackup {
  public:
    CBackup(CBackup&& other) noexcept;
    CBackup& operator=(CBackup&&) = delete;
    CBackup(const CBackup&) = delete;
    CBackup& operator=(const CBackup&) = delete;
    ~CBackup();

    /// Why there is no backup; ERROR_SUCCESS when there is one, or none was needed.
    DWORD Error() const { return m_error; }
    /// For a step that did not happen.
    void Discard() { m_stays = false; }
    /// For a step that was broken off: the files are again as they were. Gives the
    /// system's error, ERROR_FILE_NOT_FOUND when there is no backup.
    DWORD PutFilesBack();
    /// The same for all that the step named: what it has added goes, too.
    DWORD TakeBack(const CWindow& owner);

  private:
    friend class CBackups;
    /// A file that was there, and by what its change is seen.
    struct SeenFile {
        std::wstring path;
        DWORD attributes = 0;
        std::array<std::uint64_t, 3> sizeAndTimes{};
        bool operator==(const SeenFile&) const = default;
    };
    explicit CBackup(CBackups* store) : m_store(store) {}
    /// Nothing, with the system's last error, for one that can't be asked.
    static std::optional<SeenFile> See(const std::wstring& path);
    static bool IsChanged(const SeenFile& file);
    bool TookSomething() const;

    CBackups* m_store;
    BackupEntry m_entry;   // its folder is empty without a backup
    bool m_stays = false;  // whatever was changed
    CRegSnapshot m_keys;
    std::vector<SeenFile> m_files;  // also of a step that needs no further copy of them
    DWORD m_error = ERROR_SUCCESS;
};
