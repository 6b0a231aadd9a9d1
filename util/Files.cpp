#include "Files.h"

#include <algorithm>

namespace {

constexpr ULONGLONG kPatience = 2000;  // ms
constexpr DWORD kRetryEvery = 50;      // ms
constexpr ULONGLONG kNamesToTry = 100;
/// One call to the system moves at most this much.
constexpr std::size_t kMostAtOnce = 0x40000000;
/// Any other error may be one of a file that is there.
constexpr DWORD kNotThere[] = {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_INVALID_DRIVE,
                               ERROR_NOT_READY,      ERROR_BAD_NETPATH,    ERROR_BAD_NET_NAME,
                               ERROR_INVALID_NAME,   ERROR_BAD_PATHNAME};
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

UniqueFile OpenFile(const std::wstring& path, DWORD access, DWORD share, DWORD disposition) {
    return UniqueFile(
        ::CreateFileW(path.c_str(), access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

UniqueFile OpenPatiently(const std::wstring& path, DWORD access, DWORD share, DWORD disposition,
                         CPatience& patience) {
    for (;;) {
        UniqueFile file = OpenFile(path, access, share, disposition);
        if (file || !patience.Waits(::GetLastError())) return file;
    }
}

DWORD Piece(std::size_t size) { return static_cast<DWORD>(std::min(size, kMostAtOnce)); }

/// The error of the last call, which failed; some failures set none.
DWORD LastErrorOr(DWORD otherwise) {
    const DWORD error = ::GetLastError();
    return error == ERROR_SUCCESS ? otherwise : error;
}

DWORD WriteToDisk(const UniqueFile& file, std::string_view bytes) {
    ::SetLastError(ERROR_SUCCESS);
    const bool written = WriteAll(file.Get(), std::as_bytes(std::span(bytes)));
    return written && ::FlushFileBuffers(file.Get()) ? ERROR_SUCCESS : LastErrorOr(ERROR_WRITE_FAULT);
}

/// Makes a new file in the same folder by `fill`, which gives the system's error, and names it; none is left
/// after a failure.
template <typename TFill>
DWORD MakeBeside(const std::wstring& path, std::wstring& beside, TFill&& fill) {
    const std::wstring folder = path.substr(0, path.find_last_of(L"\\/") + 1);
    // What an earlier run could not remove must not use up the names.
    const ULONGLONG first = ::GetTickCount64();
    for (ULONGLONG number = first; number < first + kNamesToTry; ++number) {
        beside = folder + L"~" + std::to_wstring(number) + L".tmp";
        const DWORD error = fill(beside);
        if (error != ERROR_FILE_EXISTS) return error;
    }
    return ERROR_FILE_EXISTS;
}

DWORD WriteNewFile(const std::wstring& path, std::string_view bytes) {
    UniqueFile file = OpenFile(path, GENERIC_WRITE, 0, CREATE_NEW);
    if (!file) return ::GetLastError();
    const DWORD error = WriteToDisk(file, bytes);
    file.Reset();
    CPatience patience;
    if (error != ERROR_SUCCESS) DeleteHeldFile(path, patience);
    return error;
}

/// A target that somebody holds denies access, like one that is not ours to replace.
DWORD ReasonOf(DWORD error, const std::wstring& target) {
    const bool held = error == ERROR_ACCESS_DENIED && !OpenFile(target, DELETE, kShareAll, OPEN_EXISTING) &&
                      ::GetLastError() == ERROR_SHARING_VIOLATION;
    return held ? ERROR_SHARING_VIOLATION : error;
}

DWORD MoveOver(const std::wstring& from, const std::wstring& to) {
    CPatience patience;
    while (!::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        const DWORD error = ::GetLastError();
        if (!patience.Waits(error == ERROR_ACCESS_DENIED ? ERROR_SHARING_VIOLATION : error))
            return ReasonOf(error, to);
    }
    return ERROR_SUCCESS;
}

template <typename TFill>
DWORD Replace(const std::wstring& path, TFill&& fill) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES) {
        if (attributes & FILE_ATTRIBUTE_DIRECTORY) return ERROR_ACCESS_DENIED;
        if (attributes & FILE_ATTRIBUTE_READONLY) return ERROR_FILE_READ_ONLY;
    }
    std::wstring beside;
    DWORD error = MakeBeside(path, beside, fill);
    if (error != ERROR_SUCCESS) return error;
    error = MoveOver(beside, path);
    CPatience patience;
    if (error != ERROR_SUCCESS) DeleteHeldFile(beside, patience);
    return error;
}

}  // namespace

bool CPatience::Waits(DWORD error) {
    if (error != ERROR_SHARING_VIOLATION && error != ERROR_LOCK_VIOLATION) return false;
    const ULONGLONG now = ::GetTickCount64();
    if (m_end == 0) m_end = now + kPatience;
    if (now >= m_end) return false;
    ::Sleep(kRetryEvery);
    return true;
}

UniqueFile OpenForReading(const std::wstring& path, CPatience& patience) {
    UniqueFile file = OpenPatiently(path, GENERIC_READ, kShareAll, OPEN_EXISTING, patience);
    return file && ::GetFileType(file.Get()) == FILE_TYPE_DISK ? std::move(file) : UniqueFile();
}

UniqueFile OpenForWriting(const std::wstring& path) {
    CPatience patience;
    // Emptied afterwards: a hidden file can't be created anew.
    UniqueFile file = OpenPatiently(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                    OPEN_ALWAYS, patience);
    return file && ::SetEndOfFile(file.Get()) ? std::move(file) : UniqueFile();
}

std::optional<std::uint64_t> SizeOf(const UniqueFile& file) {
    LARGE_INTEGER size{};
    if (!file || !::GetFileSizeEx(file.Get(), &size)) return std::nullopt;
    return static_cast<std::uint64_t>(size.QuadPart);
}

bool ReadAll(HANDLE file, std::span<std::byte> bytes) {
    while (!bytes.empty()) {
        DWORD got = 0;
        if (!::ReadFile(file, bytes.data(), Piece(bytes.size()), &got, nullptr) || got == 0) return false;
        bytes = bytes.subspan(got);
    }
    return true;
}

bool WriteAll(HANDLE file, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        DWORD done = 0;
        if (!::WriteFile(file, bytes.data(), Piece(bytes.size()), &done, nullptr) || done == 0) return false;
        bytes = bytes.subspan(done);
    }
    return true;
}

FileRead ReadWholeFile(const std::wstring& path, std::uint64_t limit, std::string& bytes,
                       CPatience& patience) {
    const UniqueFile file = OpenForReading(path, patience);
    const auto size = SizeOf(file);
    if (!size || *size > limit) return FileRead::NotOpened;
    bytes.resize(static_cast<std::size_t>(*size));
    return ReadAll(file.Get(), std::as_writable_bytes(std::span(bytes))) ? FileRead::Whole : FileRead::Short;
}

DWORD CopyUnflushed(const std::wstring& from, const std::wstring& to) {
    CPatience patience;
    while (!::CopyFileW(from.c_str(), to.c_str(), /*fail if it exists*/ TRUE)) {
        const DWORD error = ::GetLastError();
        if (!patience.Waits(error)) return error;
    }
    return ERROR_SUCCESS;
}

DWORD FlushToDisk(const std::wstring& path) {
    // Of a file that is marked read-only, the system's own delayed writing has to do.
    const UniqueFile file = OpenFile(path, GENERIC_WRITE, kShareAll, OPEN_EXISTING);
    return !file || ::FlushFileBuffers(file.Get()) ? ERROR_SUCCESS : LastErrorOr(ERROR_WRITE_FAULT);
}

DWORD CopyToNewFile(const std::wstring& from, const std::wstring& to) {
    if (const DWORD error = CopyUnflushed(from, to)) return error;
    const DWORD error = FlushToDisk(to);
    CPatience patience;
    if (error != ERROR_SUCCESS) DeleteHeldFile(to, patience);
    return error;
}

DWORD ReplaceFileBy(const std::wstring& path, const std::function<DWORD(const std::wstring& beside)>& fill) {
    return Replace(path, fill);
}

DWORD ReplaceFileContents(const std::wstring& path, std::string_view bytes) {
    return Replace(path, [bytes](const std::wstring& beside) { return WriteNewFile(beside, bytes); });
}

DWORD ReplaceFileByCopy(const std::wstring& path, const std::wstring& from) {
    return Replace(path, [&from](const std::wstring& beside) { return CopyToNewFile(from, beside); });
}

bool IsThere(const std::wstring& path) {
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES ||
           std::ranges::find(kNotThere, ::GetLastError()) == std::end(kNotThere);
}

std::wstring FullPathOf(const std::wstring& path) {
    std::wstring full(::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    const auto size = static_cast<DWORD>(full.size());
    const DWORD length = size == 0 ? 0 : ::GetFullPathNameW(path.c_str(), size, full.data(), nullptr);
    // Where the system has no room for it, the path may well be full already.
    if (length == 0 || length >= size) return path;
    full.resize(length);
    return full;
}

std::wstring FileNameOf(const std::wstring& path) { return path.substr(path.find_last_of(L"\\/:") + 1); }

bool DeleteHeldFile(const std::wstring& path, CPatience& patience) {
    while (!::DeleteFileW(path.c_str())) {
        const DWORD error = ::GetLastError();
        if (!patience.Waits(error)) return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    }
    return true;
}

DWORD MakeFolders(const std::wstring& path) {
    if (::CreateDirectoryW(path.c_str(), nullptr)) return ERROR_SUCCESS;
    const DWORD error = ::GetLastError();
    // The root of a drive can't be made, and says so in other words than a folder that is there.
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES)
        return attributes & FILE_ATTRIBUTE_DIRECTORY ? ERROR_SUCCESS : ERROR_DIRECTORY;
    const std::size_t end = path.find_last_of(L'\\');
    if (error != ERROR_PATH_NOT_FOUND || end == std::wstring::npos || end == 0) return error;
    if (const DWORD above = MakeFolders(path.substr(0, end))) return above;
    return ::CreateDirectoryW(path.c_str(), nullptr) ? ERROR_SUCCESS : ::GetLastError();
}

std::wstring InCapitals(std::wstring text) {
    ::CharUpperBuffW(text.data(), static_cast<DWORD>(text.size()));
    return text;
}
