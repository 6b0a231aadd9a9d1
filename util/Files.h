// Files that other programs may read, hold or watch at the same moment.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Handles.h"

/// Two seconds for others to let go of a file: virus scanners and indexers hold what was just written. One
/// object may serve several files; they share the two seconds.
class CPatience {
  public:
    /// Waits a moment, and says whether to try again. False at once for an error that waiting does not cure,
    /// and when the time is over.
    bool Waits(DWORD error);

  private:
    ULONGLONG m_end = 0;  // from the first error on
};

/// Others may read, write and remove the file meanwhile. Nothing for a device or a pipe, which might never
/// answer.
UniqueFile OpenForReading(const std::wstring& path, CPatience& patience);
/// Creates or empties the file, for writing and reading; others may read it.
UniqueFile OpenForWriting(const std::wstring& path);
std::optional<std::uint64_t> SizeOf(const UniqueFile& file);

bool ReadAll(HANDLE file, std::span<std::byte> bytes);
bool WriteAll(HANDLE file, std::span<const std::byte> bytes);

enum class FileRead { Whole, Short, NotOpened };
/// Puts a whole file into `bytes`. One that is longer than the limit is not opened.
FileRead ReadWholeFile(const std::wstring& path, std::uint64_t limit, std::string& bytes,
                       CPatience& patience);

/// Gives ERROR_SUCCESS when the bytes are on the disk, else the system's error. They are written beside the
/// file, as a ".tmp", and moved over it when they are complete: a failure leaves the old file as it was. A
/// file that is marked read-only is not replaced.
DWORD ReplaceFileContents(const std::wstring& path, std::string_view bytes);

/// As ReplaceFileContents, with what `fill` writes: it makes the new file of that name, or leaves none, and
/// gives the system's error, ERROR_FILE_EXISTS for a name that is taken.
DWORD ReplaceFileBy(const std::wstring& path, const std::function<DWORD(const std::wstring& beside)>& fill);

/// A copy with times and attributes, on the disk; the target must be new, and none is left after a failure.
/// Gives the system's error.
DWORD CopyToNewFile(const std::wstring& from, const std::wstring& to);
/// The same without waiting for the disk, for several files: FlushToDisk has to follow for each.
DWORD CopyUnflushed(const std::wstring& from, const std::wstring& to);
DWORD FlushToDisk(const std::wstring& path);
/// As ReplaceFileContents, with the contents of another file.
DWORD ReplaceFileByCopy(const std::wstring& path, const std::wstring& from);

/// A file or a folder, of whatever kind. True also where the system can't tell.
bool IsThere(const std::wstring& path);
/// Where the system would look for it: a path may be relative, or have detours.
std::wstring FullPathOf(const std::wstring& path);
/// The last part of a path; without a folder the name is behind the drive.
std::wstring FileNameOf(const std::wstring& path);

/// False when the file is still there.
bool DeleteHeldFile(const std::wstring& path, CPatience& patience);

/// Makes the folder with those on the way to it. Gives the system's error; one that is there is none.
DWORD MakeFolders(const std::wstring& path);

/// For comparing: the file system and the registry know no case.
std::wstring InCapitals(std::wstring text);
