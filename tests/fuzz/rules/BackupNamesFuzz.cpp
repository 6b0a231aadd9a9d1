// The names of backups: a line with the step, and lines with paths and names that a record may hold.
#include "BackupRules.h"
#include "fuzz/FuzzInput.h"

using support::Require;
using support::RequirePlain;

namespace {

constexpr wchar_t kTime[] = L"2026-11-21 22.05.13";

void TryFolder(const std::wstring& step, int number) {
    const std::wstring name = BackupFolderName(kTime, step, number);
    RequirePlain(name);
    Require(IsBackupFolderName(name + L' ') && name.size() <= 100);
    Require(name != BackupFolderName(kTime, step, number + 2));
}

void TryPath(const std::wstring& path, std::size_t number) {
    const std::wstring copy = BackupCopyName(number, path);
    Require(copy.size() <= 80);
    if (IsBackupCopyName(path)) RequirePlain(path);
    if (!IsPlainPath(path)) return;
    Require(IsBackupCopyName(copy));
    const bool onDrive = path.substr(1, 2) == L":\\";
    Require(onDrive || path.starts_with(L"\\\\"));
    // Each part by itself, as the system takes them.
    for (std::size_t start = onDrive ? 3 : 2; start <= path.size();) {
        const std::size_t end = std::min(path.find(L'\\', start), path.size());
        RequirePlain(path.substr(start, end - start));
        start = end + 1;
    }
}

}  // namespace

void TryInput(std::string_view bytes) {
    const auto lines = support::LinesOf(bytes);
    TryFolder(lines[0], static_cast<int>(bytes.size()));
    for (std::size_t i = 0; i < lines.size(); ++i) TryPath(lines[i], i + 1);
}
