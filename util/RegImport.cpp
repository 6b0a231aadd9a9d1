#include "RegImport.h"

#include <algorithm>
#include <array>
#include <optional>

#include "Files.h"
#include "Process.h"
#include "Scope.h"

namespace {

/// By its full path: what lies elsewhere under that name may be anybody's.
std::wstring Importer() {
    std::array<wchar_t, MAX_PATH> folder{};
    return std::wstring(folder.data(), ::GetSystemDirectoryW(folder.data(), MAX_PATH)) + L"\\reg.exe";
}

/// Not beside the backup, whose folder may be read-only or full.
std::optional<std::wstring> NewTemporaryFile() {
    std::array<wchar_t, MAX_PATH + 1> folder{};
    std::array<wchar_t, MAX_PATH> path{};
    const bool made = ::GetTempPathW(static_cast<DWORD>(folder.size()), folder.data()) != 0 &&
                      ::GetTempFileNameW(folder.data(), L"reg", 0, path.data()) != 0;
    return made ? std::optional<std::wstring>(path.data()) : std::nullopt;
}

/// While this lives, others can read the file and do nothing else with it.
UniqueFile Guard(const std::wstring& path) {
    return UniqueFile(::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool Holds(const UniqueFile& file, std::string_view bytes) {
    std::string read(bytes.size(), '\0');
    return file && SizeOf(file) == bytes.size() &&
           ReadAll(file.Get(), std::as_writable_bytes(std::span(read))) && read == bytes;
}

}  // namespace

DWORD ImportRegText(const CWindow& owner, BackupHive hive, std::wstring_view text) {
    const auto path = NewTemporaryFile();
    if (!path) return ::GetLastError();
    const std::string_view bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t));
    const CScopeExit remove([&] { ::DeleteFileW(path->c_str()); });
    if (const DWORD error = ReplaceFileContents(*path, bytes)) return error;
    const UniqueFile guard = Guard(*path);
    // Whoever changed it before it was guarded would have it read with an administrator's rights.
    if (!Holds(guard, bytes)) return ERROR_INVALID_DATA;
    const std::wstring arguments = L"import \"" + *path + L"\"";
    const bool asks = hive == BackupHive::Machine && !HasAdministratorRights();
    const auto process = asks ? CProcess::StartElevated(owner, Importer(), arguments, SW_HIDE)
                              : CProcess::StartHidden(Importer(), arguments);
    if (!process) return std::max<DWORD>(::GetLastError(), ERROR_INVALID_FUNCTION);
    const bool enabled = owner.IsEnabled();
    const CScopeExit restore([&] { owner.Enable(enabled); });
    owner.Enable(false);
    if (!process->WaitDispatching(owner)) return ERROR_CANCELLED;
    return process->ExitCode() == 0 ? ERROR_SUCCESS : ERROR_WRITE_FAULT;
}
