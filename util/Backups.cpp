#include "Backups.h"

#include <algorithm>
#include <utility>

#include "BackupChanges.h"
#include "BackupRules.h"
#include "DataFolder.h"
#include "Files.h"
#include "RegFileText.h"
#include "XmlText.h"

namespace {

constexpr int kNamesToTry = 100;
/// A folder without a record may be a backup that another program is making.
constexpr std::uint64_t kTimeToFinish = 24ULL * 60 * 60 * 10'000'000;  // 100 ns

std::wstring TimeForRecord() {
    SYSTEMTIME time{};
    ::GetSystemTime(&time);
    std::array<wchar_t, 32> text{};
    ::wsprintfW(text.data(), L"%04u-%02u-%02uT%02u:%02u:%02u.%03uZ", time.wYear, time.wMonth, time.wDay,
                time.wHour, time.wMinute, time.wSecond, time.wMilliseconds);
    return text.data();
}

std::uint64_t Joined(DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; }

/// Calls `found` with the data of each file or, else, of each folder, but "." and ".." and those that lead
/// elsewhere.
template <typename TFound>
void ForEachIn(const std::wstring& folder, bool folders, TFound&& found) {
    WIN32_FIND_DATAW data{};
    const HANDLE first = ::FindFirstFileW((folder + L"\\*").c_str(), &data);
    if (first == INVALID_HANDLE_VALUE) return;
    const UniqueHandle<HANDLE, &::FindClose> search(first);
    do {
        const std::wstring_view name = data.cFileName;
        const bool isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        const bool isLink = isFolder && (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT);
        if (isFolder == folders && !isLink && name != L"." && name != L"..") found(data);
    } while (::FindNextFileW(search.Get(), &data));
}

std::uint64_t SizeOfFolder(const std::wstring& folder) {
    std::uint64_t size = 0;
    ForEachIn(folder, false,
              [&](const WIN32_FIND_DATAW& file) { size += Joined(file.nFileSizeHigh, file.nFileSizeLow); });
    return size;
}

DWORD Written(const UniqueFile& file, std::wstring_view text) {
    return WriteAll(file.Get(), std::as_bytes(std::span(text))) ? ERROR_SUCCESS : ::GetLastError();
}

}  // namespace

std::wstring BackupFolder(const std::wstring& dataFolder) {
    return dataFolder.empty() ? dataFolder : dataFolder + L"\\Backups";
}

CBackups::CBackups(std::wstring folder, std::wstring version, RegImporter importer)
    : m_folder(std::move(folder)), m_version(std::move(version)), m_import(std::move(importer)) {}

DWORD CBackups::Begin(BackupEntry& entry, BackupKind kind, const std::wstring& step) const {
    entry.record.kind = kind;
    entry.record.step = XmlTextOf(step);
    entry.record.time = TimeForRecord();
    entry.record.version = m_version;
    if (m_folder.empty()) return ERROR_PATH_NOT_FOUND;
    if (const DWORD error = MakeFolders(m_folder)) return error;
    const std::wstring time = TimeForName();
    for (int number = 1; number <= kNamesToTry; ++number) {
        const std::wstring folder = m_folder + L'\\' + BackupFolderName(time, step, number);
        if (::CreateDirectoryW(folder.c_str(), nullptr)) {
            entry.folder = folder;
            return ERROR_SUCCESS;
        }
        const DWORD error = ::GetLastError();
        if (error != ERROR_ALREADY_EXISTS) return error;
    }
    return ERROR_ALREADY_EXISTS;
}

CBackup CBackups::Make(const BackupStep& step, const std::function<bool()>& goOn) {
    return Make(step, step.stays, goOn);
}

CBackup CBackups::Make(const BackupStep& step, bool stays, const std::function<bool()>& goOn) {
    CBackup backup(this);
    backup.m_stays = stays;
    const bool isKept = step.oncePerRun && step.keys.empty() &&
                        std::ranges::all_of(step.files, [this](auto& file) { return IsKept(file); });
    const bool isEmpty =
        step.keys.empty() && (stays ? step.files.empty() : std::ranges::none_of(step.files, &IsThere));
    if (step.error == ERROR_SUCCESS && (isKept || isEmpty)) {
        for (const std::wstring& file : step.files) {
            if (isKept) backup.m_files.push_back({FullPathOf(file), 0, {}});
        }
        return backup;
    }
    BackupEntry& entry = backup.m_entry;
    DWORD error = step.error;
    if (error == ERROR_SUCCESS) error = Begin(entry, step.kind, step.name);
    if (error == ERROR_SUCCESS) error = CopyFiles(backup, step, goOn);
    if (error == ERROR_SUCCESS) error = WriteKeys(backup, step);
    if (error == ERROR_SUCCESS) error = WriteBackupRecord(entry.folder + kBackupRecordFile, entry.record);
    backup.m_error = error;
    if (error != ERROR_SUCCESS && !entry.folder.empty()) RemoveFolder(std::exchange(entry.folder, {}));
    return backup;
}

DWORD CBackups::CopyFiles(CBackup& backup, const BackupStep& step, const std::function<bool()>& goOn) {
    BackupRecord& record = backup.m_entry.record;
    for (const std::wstring& file : step.files) {
        if (goOn && !goOn()) return ERROR_CANCELLED;
        const std::wstring path = FullPathOf(file);
        const auto seen = CBackup::See(path);
        const DWORD error = seen ? ERROR_SUCCESS : ::GetLastError();
        // No step takes a folder for a file.
        if (seen && seen->attributes & FILE_ATTRIBUTE_DIRECTORY) continue;
        // What can't be put back is no backup; a file that is not there under such a name needs none.
        if (!IsPlainPath(path)) {
            if (seen) return ERROR_BAD_PATHNAME;
            continue;
        }
        if (!seen && IsThere(path)) return error;
        record.files.push_back({path, {}});
        if (!seen) continue;
        const std::wstring copy = BackupCopyName(record.files.size(), path);
        if (const DWORD failed = CopyUnflushed(path, backup.m_entry.folder + L'\\' + copy)) return failed;
        record.files.back().copy = copy;
        backup.m_files.push_back(*seen);
    }
    // When all are there: what has to be written for one often holds the others, too.
    for (const auto& file : record.files) {
        if (file.copy.empty()) continue;
        if (const DWORD error = FlushToDisk(backup.m_entry.folder + L'\\' + file.copy)) return error;
    }
    return ERROR_SUCCESS;
}

DWORD CBackups::WriteKeys(CBackup& backup, const BackupStep& step) {
    if (step.keys.empty()) return ERROR_SUCCESS;
    const UniqueFile file = OpenForWriting(backup.m_entry.folder + kBackupKeysFile);
    if (!file) return ::GetLastError();
    const RegTextSink sink = [&file, size = std::uint64_t{0}](std::wstring_view piece) mutable -> DWORD {
        size += piece.size() * sizeof(wchar_t);
        return size > kLargestKeysFile ? ERROR_FILE_TOO_LARGE : Written(file, piece);
    };
    std::wstring text(RegFileHeader());
    for (const BackupKey& key : step.keys) {
        backup.m_entry.record.keys.push_back(FullKeyPath(key));
        if (const DWORD error = backup.m_keys.Take(key, text, sink)) return error;
    }
    if (const DWORD error = Written(file, text)) return error;
    return ::FlushFileBuffers(file.Get()) ? ERROR_SUCCESS : ::GetLastError();
}

CBackup CBackups::KeepLayout(const std::wstring& step,
                             const std::function<DWORD(const std::wstring& copy)>& write) {
    CBackup backup(this);
    backup.m_stays = true;
    BackupEntry& entry = backup.m_entry;
    DWORD error = Begin(entry, BackupKind::Layouts, step);
    if (error == ERROR_SUCCESS) {
        entry.record.layout = L"1 layout.pgl";
        error = write(entry.folder + L'\\' + entry.record.layout);
    }
    if (error == ERROR_SUCCESS) error = WriteBackupRecord(entry.folder + kBackupRecordFile, entry.record);
    backup.m_error = error;
    if (error != ERROR_SUCCESS && !entry.folder.empty()) RemoveFolder(std::exchange(entry.folder, {}));
    return backup;
}

std::vector<BackupEntry> CBackups::List() const {
    if (m_folder.empty()) return {};  // else the root of the current drive would be meant
    std::vector<BackupEntry> entries;
    ForEachIn(m_folder, true, [&](const WIN32_FIND_DATAW& found) {
        const std::wstring folder = m_folder + L'\\' + found.cFileName;
        if (auto record = ReadBackupRecord(folder + kBackupRecordFile))
            entries.push_back({folder, std::move(*record), SizeOfFolder(folder)});
    });
    std::ranges::stable_sort(
        entries, std::ranges::greater(),
        [](const BackupEntry& entry) -> const std::wstring& { return entry.record.time; });
    return entries;
}

DWORD CBackups::Restore(const BackupEntry& entry, const std::wstring& step, const CWindow& owner,
                        const std::function<bool(DWORD)>& goOn) {
    // What is done is what stands there now, checked, and not what a list once showed.
    const std::wstring recordFile = entry.folder + kBackupRecordFile;
    const auto record = ReadBackupRecord(recordFile);
    // Another program may have deleted it meanwhile, or its drive is gone.
    if (!record) return IsThere(recordFile) ? ERROR_INVALID_DATA : ::GetLastError();
    const BackupEntry checked{entry.folder, *record, entry.size};
    const auto changes = FindBackupChanges(checked);
    if (!changes) return ERROR_INVALID_DATA;
    BackupStep present{record->kind, step, changes->keys, {}, false};
    for (const auto& file : record->files) present.files.push_back(file.path);
    CBackup backup = Make(present, true, {});
    if (backup.Error() != ERROR_SUCCESS && !goOn(backup.Error())) return ERROR_CANCELLED;
    const DWORD error = PutBack(checked, *changes, owner, m_import);
    // The user is asked before anything is put back.
    if (error == ERROR_CANCELLED) backup.Discard();
    return error;
}

bool CBackups::Delete(const BackupEntry& entry) {
    m_keptFiles.clear();  // one of them may have had its copy here
    if (m_known)
        std::erase_if(*m_known, [&](const BackupEntry& known) { return known.folder == entry.folder; });
    return RemoveFolder(entry.folder);
}

bool CBackups::RemoveFolder(const std::wstring& folder) {
    // Without its record it is no backup any more, however much of it stays.
    CPatience patience;
    if (!DeleteHeldFile(folder + kBackupRecordFile, patience)) return false;
    ForEachIn(folder, false, [&](const WIN32_FIND_DATAW& file) {
        const std::wstring path = folder + L'\\' + file.cFileName;
        // What somebody else has put there stays.
        if (path != folder + kBackupKeysFile && !IsBackupCopyName(file.cFileName)) return;
        // A copy is marked read-only when its original was.
        ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        DeleteHeldFile(path, patience);
    });
    return ::RemoveDirectoryW(folder.c_str()) || !IsThere(folder);
}

/// What another program has made of it since would be lost without a copy of its own.
bool CBackups::IsKept(const std::wstring& file) const {
    const std::wstring path = FullPathOf(file);
    const auto kept = m_keptFiles.find(InCapitals(path));
    if (kept == m_keptFiles.end()) return false;
    const auto seen = CBackup::See(path);
    return !seen || seen->sizeAndTimes == kept->second;
}

void CBackups::NoteKept(const CBackup& backup) {
    for (const auto& file : backup.m_files) {
        if (const auto now = CBackup::See(file.path)) m_keptFiles[InCapitals(file.path)] = now->sizeAndTimes;
    }
}

void CBackups::Finish(CBackup& backup) {
    BackupEntry& entry = backup.m_entry;
    if (entry.folder.empty()) {
        if (backup.m_error == ERROR_SUCCESS) NoteKept(backup);
        return;
    }
    if (!backup.m_stays && !backup.TookSomething()) {
        RemoveFolder(entry.folder);
        return;
    }
    NoteKept(backup);
    m_fromThisRun.insert(entry.folder);
    if (m_known) {
        entry.size = SizeOfFolder(entry.folder);
        m_known->push_back(std::move(entry));
    }
    Prune();
}

void CBackups::Prune() {
    if (!m_known) {
        m_known = List();
        FILETIME now{};
        ::GetSystemTimeAsFileTime(&now);
        ForEachIn(m_folder, true, [&](const WIN32_FIND_DATAW& found) {
            const std::wstring folder = m_folder + L'\\' + found.cFileName;
            const FILETIME& made = found.ftCreationTime;
            const bool isOld = Joined(made.dwHighDateTime, made.dwLowDateTime) + kTimeToFinish <
                               Joined(now.dwHighDateTime, now.dwLowDateTime);
            if (isOld && IsBackupFolderName(found.cFileName) && !IsThere(folder + kBackupRecordFile))
                RemoveFolder(folder);
        });
    }
    std::vector<KeptBackup> kept;
    for (const BackupEntry& entry : *m_known)
        kept.push_back(
            {entry.record.kind, entry.record.time, entry.size, m_fromThisRun.contains(entry.folder)});
    std::vector<std::wstring> pruned;
    for (const std::size_t i : BackupsToPrune(kept)) pruned.push_back((*m_known)[i].folder);
    for (const std::wstring& folder : pruned) RemoveFolder(folder);
    std::erase_if(*m_known, [&](const BackupEntry& entry) {
        return std::ranges::find(pruned, entry.folder) != pruned.end();
    });
}

CBackup::CBackup(CBackup&& other) noexcept
    : m_store(std::exchange(other.m_store, nullptr)),
      m_entry(std::move(other.m_entry)),
      m_stays(other.m_stays),
      m_keys(std::move(other.m_keys)),
      m_files(std::move(other.m_files)),
      m_error(other.m_error) {}

CBackup::~CBackup() {
    if (!m_store) return;
    Guarded([this] {
        m_store->Finish(*this);
        return true;
    });
}

std::optional<CBackup::SeenFile> CBackup::See(const std::wstring& path) {
    // By its path: under Wine to open and close it takes half as many questions to another process as its
    // copy.
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return std::nullopt;
    const auto timeOf = [](const FILETIME& time) { return Joined(time.dwHighDateTime, time.dwLowDateTime); };
    return SeenFile{path,
                    data.dwFileAttributes,
                    {Joined(data.nFileSizeHigh, data.nFileSizeLow), timeOf(data.ftLastWriteTime),
                     timeOf(data.ftCreationTime)}};
}

bool CBackup::IsChanged(const SeenFile& file) {
    // What a link leads to can change without it.
    return file.attributes & FILE_ATTRIBUTE_REPARSE_POINT || See(file.path) != file;
}

DWORD CBackup::PutFilesBack() {
    if (m_entry.folder.empty()) return ERROR_FILE_NOT_FOUND;
    CPatience patience;
    for (const auto& [path, copy] : m_entry.record.files) {
        if (copy.empty()) {
            if (!DeleteHeldFile(path, patience)) return ERROR_ACCESS_DENIED;
        } else if (const DWORD error = ReplaceFileByCopy(path, m_entry.folder + L'\\' + copy)) {
            return error;
        }
    }
    m_files.clear();  // so that nothing counts as changed
    return ERROR_SUCCESS;
}

DWORD CBackup::TakeBack(const CWindow& owner) {
    if (m_entry.folder.empty()) return ERROR_FILE_NOT_FOUND;
    const auto changes = FindBackupChanges(m_entry);
    const DWORD error = changes ? PutBack(m_entry, *changes, owner, m_store->m_import) : ERROR_INVALID_DATA;
    if (error == ERROR_SUCCESS) {
        m_stays = false;
        m_files.clear();  // so that nothing counts as changed
    }
    return error;
}

bool CBackup::TookSomething() const {
    return !m_keys.IsIntact() || std::ranges::any_of(m_files, &CBackup::IsChanged);
}
