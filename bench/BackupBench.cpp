#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "Backups.h"
#include "Bare.h"
#include "Benches.h"
#include "CorvaneKeys.h"
#include "Files.h"
#include "Measure.h"
#include "RegKey.h"

namespace {

namespace fs = std::filesystem;

constexpr wchar_t kClsid[] = L"\\{BAC00000-0000-0000-0000-000000000000}";

struct Collection {
    const char* name;
    int values;
    std::size_t size;  // of each value, or of each file
    bool files;
};
constexpr Collection kCollections[] = {{"backup of small values", 10000, 64, false},
                                       {"backup of large values", 10, 1 << 20, false},
                                       {"backup of files of 1 MB", 200, 1 << 20, true},
                                       {"backup of a file of 200 MB", 1, 200 << 20, true}};

/// The same bytes, read and written: each value, and as much text as the backup makes of them; files each
/// into another.
void BareBackup(const std::wstring& key, const BackupStep& step, std::uintmax_t text,
                const fs::path& folder) {
    fs::create_directory(folder);
    std::vector<std::byte> bytes((std::size_t{1} << 20) + 1);
    const auto open = [](const std::wstring& path, bool write) {
        return UniqueFile(::CreateFileW(path.c_str(), write ? GENERIC_WRITE : GENERIC_READ, FILE_SHARE_READ,
                                        nullptr, write ? CREATE_ALWAYS : OPEN_EXISTING, 0, nullptr));
    };
    if (!step.keys.empty()) {
        CBareKey(HKEY_CURRENT_USER, key).ForValues([](const BYTE*, DWORD) {}, bytes.size());
        const UniqueFile out = open((folder / L"values").wstring(), true);
        for (; text > 0; text -= std::min<std::uintmax_t>(text, bytes.size()))
            WriteAll(out.Get(), std::span(bytes).first(std::min<std::size_t>(text, bytes.size())));
        ::FlushFileBuffers(out.Get());
    }
    int number = 0;
    for (const std::wstring& file : step.files) {
        const UniqueFile in = open(file, false);
        const UniqueFile out = open((folder / std::to_wstring(++number)).wstring(), true);
        for (DWORD got = 0; ::ReadFile(in.Get(), bytes.data(), 1 << 20, &got, nullptr) && got > 0;)
            WriteAll(out.Get(), std::span(bytes).first(got));
        ::FlushFileBuffers(out.Get());
    }
}

}  // namespace

void BenchBackups() {
    const fs::path folder = fs::temp_directory_path() / L"Backup bench";
    const std::wstring key = std::wstring(kAudioPresetsKey) + kClsid;
    for (const Collection& collection : kCollections) {
        fs::remove_all(folder);
        fs::create_directories(folder);
        BackupStep step{.kind = BackupKind::Presets, .name = L"Bench", .keys = {}, .files = {}};
        const std::vector<std::byte> data(collection.files ? 0 : collection.size, std::byte{'b'});
        const auto values = CRegKey::Create(HKEY_CURRENT_USER, key);
        for (int i = 0; i < collection.values; ++i) {
            const std::wstring name = L"Preset number " + std::to_wstring(i);
            if (collection.files) {
                step.files.push_back((folder / name).wstring());
                std::ofstream(folder / name, std::ios::binary) << std::string(collection.size, 'b');
            } else {
                values->WriteValue(name.c_str(), REG_BINARY, data);
            }
        }
        if (!collection.files) step.keys.push_back({BackupHive::User, key, {}});
        CBackups backups((folder / L"Backups").wstring(), L"1");
        const wchar_t* const first = L"Preset number 0";
        std::uintmax_t text = 0;
        const fs::path bareFolder = folder / L"Bare";
        // Puts back what the step has changed, and takes away what either has made: a backup is the making.
        const auto before = [&] {
            for (const BackupEntry& made : backups.List()) {
                if (!collection.files) text = fs::file_size(made.folder + kBackupKeysFile);
                backups.Delete(made);
            }
            fs::remove_all(bareFolder);
            if (!collection.files) values->WriteValue(first, REG_BINARY, data);
        };
        const auto change = [&] {
            if (collection.files) {
                std::ofstream(fs::path(step.files[0]), std::ios::app) << 'x';
            } else {
                values->DeleteValue(first);
            }
        };
        const auto ours = [&] {
            const CBackup backup = backups.Make(step);
            if (backup.Error() != ERROR_SUCCESS) return void(std::puts("no backup could be made"));
            change();
        };
        const auto bare = [&] {
            BareBackup(key, step, text, bareFolder);
            change();
        };
        Row(collection.name, collection.values, ours, bare, before);
        CRegKey::DeleteTree(HKEY_CURRENT_USER, key);
    }
    fs::remove_all(folder);
}
