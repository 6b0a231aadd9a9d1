#include "RegImport.h"

#include <array>

#include "Files.h"
#include "Process.h"
#include "Scope.h"

namespace {

/// By its full path: what lies elsewhere under that name may be anybody's.
std::wstring Importer() {
    std::array<wchar_t, MAX_PATH> folder{};
    return std::wstring(folder.data(), ::GetSystemDirectoryW(folder.data(), MAX_PATH)) + L"\\reg.exe";
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

DWORD ImportRegText(const CWindow& owner, const std::wstring& folder, BackupHive hive,
                    std::wstring_view text) {
    const std::wstring path = folder + (hive == BackupHive::User ? L"\\user.reg" : L"\\machine.reg");
    const std::string_view bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t));
    if (const DWORD error = ReplaceFileContents(path, bytes)) return error;
    const CScopeExit remove([&] { ::DeleteFileW(path.c_str()); });
    const UniqueFile guard = Guard(path);
    // Whoever changed it before it was guarded would have it read with an administrator's rights.
    if (!Holds(guard, bytes)) return ERROR_INVALID_DATA;
    const std::wstring arguments = L"import \"" + path + L"\"";
    const bool asks = hive == BackupHive::Machine && !HasAdministratorRights();
    const auto process = asks ? CProcess::StartElevated(owner, Importer(), arguments, SW_HIDE)
                              : CProcess::StartHidden(Importer(), arguments);
    if (!process) return asks ? ERROR_CANCELLED : ERROR_FILE_NOT_FOUND;
    const bool enabled = owner.IsEnabled();
    const CScopeExit restore([&] { owner.Enable(enabled); });
    owner.Enable(false);
    process->WaitDispatching(owner);
    return process->ExitCode() == 0 ? ERROR_SUCCESS : ERROR_WRITE_FAULT;
}
