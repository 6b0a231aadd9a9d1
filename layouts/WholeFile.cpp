#include "WholeFile.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "Handles.h"

namespace {

constexpr std::uint64_t kLargestFile = 64ULL << 20;  // a hundred thousand items take about half of it
constexpr int kNamesToTry = 100;
constexpr ULONGLONG kPatience = 2000;  // ms
constexpr DWORD kRetryEvery = 50;      // ms

UniqueFile OpenFile(const std::wstring& path, DWORD access, DWORD share, DWORD disposition) {
    return UniqueFile(
        ::CreateFileW(path.c_str(), access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool WriteAll(HANDLE file, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto size = static_cast<DWORD>(
            std::min(bytes.size(), static_cast<std::size_t>(std::numeric_limits<DWORD>::max())));
        DWORD written = 0;
        if (!::WriteFile(file, bytes.data(), size, &written, nullptr) || written == 0) return false;
        bytes.remove_prefix(written);
    }
    return ::FlushFileBuffers(file) != FALSE;
}

/// A new file in the same folder; nothing when none can be made.
std::optional<std::wstring> WriteBeside(const std::wstring& path, std::string_view bytes) {
    const std::wstring folder = path.substr(0, path.find_last_of(L"\\/") + 1);
    for (int number = 0; number < kNamesToTry; ++number) {
        const std::wstring name = folder + L"~layout" + std::to_wstring(number) + L".tmp";
        const UniqueFile file = OpenFile(name, GENERIC_WRITE | DELETE, FILE_SHARE_DELETE, CREATE_NEW);
        if (!file) {
            if (::GetLastError() == ERROR_FILE_EXISTS) continue;
            return std::nullopt;
        }
        if (WriteAll(file.Get(), bytes)) return name;
        ::DeleteFileW(name.c_str());
        return std::nullopt;
    }
    return std::nullopt;
}

/// What a virus scanner or the host gives for as long as it reads the file.
bool MayPass(DWORD error) { return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED; }

bool MoveOver(const std::wstring& from, const std::wstring& to) {
    const ULONGLONG end = ::GetTickCount64() + kPatience;
    while (!::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        if (!MayPass(::GetLastError()) || ::GetTickCount64() >= end) return false;
        ::Sleep(kRetryEvery);
    }
    return true;
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::wstring& path) {
    const UniqueFile file =
        OpenFile(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING);
    LARGE_INTEGER size{};
    // A device or a pipe would be waited for.
    if (!file || ::GetFileType(file.Get()) != FILE_TYPE_DISK || !::GetFileSizeEx(file.Get(), &size) ||
        static_cast<std::uint64_t>(size.QuadPart) > kLargestFile)
        return std::nullopt;
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD got = 0;
    if (!::ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &got, nullptr))
        return std::nullopt;
    bytes.resize(got);
    return bytes;
}

bool ReplaceFileContents(const std::wstring& path, std::string_view bytes) {
    if (bytes.size() > kLargestFile) return false;
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES &&
        (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)))
        return false;
    const auto beside = WriteBeside(path, bytes);
    if (!beside) return false;
    if (MoveOver(*beside, path)) return true;
    ::DeleteFileW(beside->c_str());
    return false;
}
