#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "Bare.h"
#include "Benches.h"
#include "ClsidText.h"
#include "FileStream.h"
#include "Holdings.h"
#include "Measure.h"
#include "PresetTransfer.h"
#include "PresetWriter.h"

namespace {

namespace fs = std::filesystem;

constexpr Guid kEffects = "{B84F08B7-2DF0-438B-A5B4-E7700FE06A18}"_guid;
constexpr wchar_t kRoot[] = L"SOFTWARE\\Corvane Music Software\\ActiveMovie\\Presets\\";

struct Collection {
    const char* name;
    int presets;
    std::size_t size;
};
/// About what the file says of a preset besides its data.
constexpr std::size_t kRecordHead = 36;

constexpr Collection Small(int presets) { return {"small presets", presets, 64}; }
constexpr Collection kLarge = {"presets of 1 MB", 200, 1 << 20};

Guid PluginNumber(int number) {
    return {static_cast<std::uint32_t>(number), 0x5052, 0xBE9C, {1, 2, 3, 4, 5, 6, 7, 8}};
}

CPresetListMgr Plugin(int number) { return {PluginNumber(number), kEffects, L"Bench"}; }

std::wstring PresetName(int number) { return L"Preset number " + std::to_wstring(number); }

std::wstring KeyOf(int plugin) { return kRoot + ClsidText(PluginNumber(plugin)); }

void AddPresets(int plugin, int presets, std::size_t size) {
    const std::vector<std::byte> data(size, std::byte{'p'});
    const CPresetListMgr store = Plugin(plugin);
    CPresetWriter writer(store);
    for (int i = 0; i < presets; ++i) {
        const std::wstring name = PresetName(i);
        writer.StoreImportedPreset({.type = kPresetInRegistry, .name = name, .data = data});
    }
}

// The floors: the same calls to the system for the same data, and nothing done with them.

HANDLE BareFile(const wchar_t* path, bool write) {
    return ::CreateFileW(path, write ? GENERIC_READ | GENERIC_WRITE : GENERIC_READ, 0, nullptr,
                         write ? CREATE_ALWAYS : OPEN_EXISTING, 0, nullptr);
}

void BareWrite(HANDLE file, const void* data, std::size_t size) {
    DWORD done = 0;
    ::WriteFile(file, data, static_cast<DWORD>(size), &done, nullptr);
}

void BareRead(HANDLE file, std::vector<BYTE>& data) {
    DWORD done = 0;
    ::ReadFile(file, data.data(), static_cast<DWORD>(data.size()), &done, nullptr);
}

void BareExport(int plugin, const std::wstring& path, std::size_t size) {
    std::vector<BYTE> buffer(0x10000);
    std::size_t used = 0;
    const HANDLE out = BareFile(path.c_str(), true);
    CBareKey(HKEY_CURRENT_USER, KeyOf(plugin)).ForValues([&](const BYTE* data, DWORD length) {
        if (size >= 1024) {
            buffer.resize(size);
            const HANDLE preset = BareFile(reinterpret_cast<const wchar_t*>(data), false);
            BareRead(preset, buffer);
            ::CloseHandle(preset);
            BareWrite(out, data, kRecordHead);
            BareWrite(out, buffer.data(), size);
        } else if ((used += length + kRecordHead) > buffer.size()) {
            BareWrite(out, buffer.data(), buffer.size());
            used = 0;
        }
    });
    ::FlushFileBuffers(out);
    ::CloseHandle(out);
}

void BareImport(int plugin, const std::wstring& path, const std::wstring& folder,
                const Collection& collection) {
    std::vector<BYTE> buffer(collection.size);
    const HANDLE in = BareFile(path.c_str(), false);
    const CBareKey key(HKEY_CURRENT_USER, KeyOf(plugin), KEY_WRITE);
    for (int i = 0; i < collection.presets; ++i) {
        const std::wstring name = PresetName(i);
        if (collection.size < 1024) {
            key.Set(name.c_str(), REG_BINARY, buffer.data(), buffer.size());
            continue;
        }
        BareRead(in, buffer);
        std::wstring target = folder;
        target.append(L"\\").append(name);
        const std::wstring beside = target + L".tmp";
        const HANDLE preset = BareFile(beside.c_str(), true);
        BareWrite(preset, buffer.data(), buffer.size());
        ::FlushFileBuffers(preset);
        ::CloseHandle(preset);
        ::MoveFileExW(beside.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
        key.Set(name.c_str(), REG_SZ, target.c_str(), (target.size() + 1) * sizeof(wchar_t));
    }
    ::CloseHandle(in);
}

void BenchCounting() {
    constexpr int kPresetsOfEach = 3;
    constexpr int kFirst = 1000;
    std::vector<std::wstring> keys;
    for (const int plugins : {250, 500, 1000, 2000}) {
        for (int i = static_cast<int>(keys.size()); i < plugins; ++i) {
            AddPresets(kFirst + i, kPresetsOfEach, Small(kPresetsOfEach).size);
            keys.push_back(KeyOf(kFirst + i));
        }
        Row(
            "count presets, plug-ins", plugins,
            [&] {
                for (int i = 0; i < plugins; ++i) Plugin(kFirst + i).CountPresets();
            },
            [&] {
                for (const std::wstring& key : keys)
                    CBareKey(HKEY_CURRENT_USER, key).ForValues([](const BYTE*, DWORD) {}, 0);
            });
    }
}

void BenchTransfer(int plugin, const Collection& collection, const fs::path& folder) {
    AddPresets(plugin, collection.presets, collection.size);
    const std::wstring path = folder / L"ours.spp";
    const std::wstring bare = folder / L"bare.spp";
    const std::wstring presets = folder / L"Shared Presets" / ClsidText(PluginNumber(plugin));
    Row(
        std::string("export ") + collection.name, collection.presets,
        [&] {
            auto file = CFileSink::Create(path);
            ExportPresets(*file, Plugin(plugin), nullptr);
        },
        [&] { BareExport(plugin, bare, collection.size); });
    Row(
        std::string("import ") + collection.name, collection.presets,
        [&] {
            auto file = CFileSource::Open(path);
            ImportPresets(*file, Plugin(plugin), nullptr);
        },
        [&] { BareImport(plugin, bare, presets, collection); });
}

/// Each value is looked at, since it may name a file that goes as well.
void BenchDeletion(int plugin, const Collection& collection) {
    const int twin = plugin + 100;
    Row(
        std::string("delete all ") + collection.name, collection.presets,
        [&] { Plugin(plugin).DeleteAllPresets(); },
        [&] {
            CBareKey(HKEY_CURRENT_USER, KeyOf(twin)).ForValues([](const BYTE*, DWORD) {});
            ::RegDeleteKeyW(HKEY_CURRENT_USER, KeyOf(twin).c_str());
        },
        [&] {
            AddPresets(plugin, collection.presets, collection.size);
            AddPresets(twin, collection.presets, collection.size);
        });
}

}  // namespace

void BenchPresets() {
    const fs::path folder = fs::temp_directory_path() / L"Preset bench";
    fs::create_directories(folder);
    ::SetEnvironmentVariableW(L"CorvaneAppDataRoot", folder.c_str());
    int plugin = 0;
    for (const int presets : {100, 1000, 3000, 10000}) {
        BenchTransfer(++plugin, Small(presets), folder);
        BenchDeletion(plugin, Small(presets));
    }
    BenchTransfer(++plugin, kLarge, folder);
    // No file of 200 MB passes through the memory as a whole.
    Figure("MB at most, with preset files of 200 MB", PeakMegabytes(), 40);
    BenchCounting();
    fs::remove_all(folder);
}
