#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "Bare.h"
#include "BareLayout.h"
#include "Benches.h"
#include "ClsidText.h"
#include "CorvaneKeys.h"
#include "FileStream.h"
#include "Files.h"
#include "Measure.h"
#include "PresetTransfer.h"
#include "StudioSetFile.h"
#include "StudioSets.h"

namespace {

namespace fs = std::filesystem;

constexpr int kPresetsOfEach = 10;
constexpr int kItemsInLayout = 40;
constexpr std::size_t kPresetSize = 64;

/// Of so many plug-ins half are VST, and have presets.
struct Amounts {
    int exclusions;
    int layouts;
    int pluginsWithPresets;
};
constexpr Amounts AmountsFor(int plugins) { return {plugins / 4, plugins / 8, plugins / 2}; }

std::wstring ExclusionKey(int number) {
    return std::wstring(kExclusionKey) + L"\\" + ClsidText({static_cast<std::uint32_t>(number), 7, 7, {}});
}

void Fill(const CPluginInventory& inventory, const Amounts& amounts, const fs::path& layouts) {
    for (int i = 0; i < amounts.exclusions; ++i)
        CRegKey::Create(HKEY_CURRENT_USER, ExclusionKey(i))->WriteString(nullptr, L"Excluded");
    std::string items;
    for (int i = 0; i < kItemsInLayout; ++i)
        items += "<Plugin CLSID=\"{00000001-0002-0003-0400-000000000000}\" Category=\"1\" Name=\"Item " +
                 std::to_string(i) + "\" OriginalName=\"Item\"/>";
    fs::create_directories(layouts);
    for (int i = 0; i < amounts.layouts; ++i)
        std::ofstream(layouts / (std::to_wstring(i) + L".pgl"), std::ios::binary)
            << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<PluginMenuLayout DocSchema=\"1\" Name=\"" << i
            << "\">" << items << "</PluginMenuLayout>\r\n";
    const std::vector<std::byte> data(kPresetSize, std::byte{'b'});
    int plugins = 0;
    for (const auto& [id, record] : inventory.Vst().Records()) {
        if (!HasRow(id, record) || plugins++ >= amounts.pluginsWithPresets) continue;
        const auto key = CPresetListMgr(id, RowOf(*record.category).guid, L"").OpenPluginKey(true);
        for (int i = 0; i < kPresetsOfEach; ++i)
            key->WriteValue((L"Preset number " + std::to_wstring(i)).c_str(), REG_BINARY, data);
    }
}

/// Another studio: nothing of it is here.
void Empty(const fs::path& layouts) {
    CRegKey::DeleteTree(HKEY_CURRENT_USER, kExclusionKey);
    CRegKey::DeleteTree(HKEY_CURRENT_USER, kAudioPresetsKey);
    fs::remove_all(layouts);
    fs::create_directories(layouts);
}

void ReadKeys(const wchar_t* path) {
    const CBareKey top(HKEY_CURRENT_USER, path);
    top.ForSubkeys(
        [&](const wchar_t* name) { CBareKey(top.Handle(), name).ForValues([](const BYTE*, DWORD) {}); });
}

/// Everything is read once, layouts by the parser.
void ReadStudio(const fs::path& layouts) {
    ReadKeys(kExclusionKey);
    ReadKeys(kAudioPresetsKey);
    for (const auto& file : fs::directory_iterator(layouts)) BareRead(file.path().wstring());
}

void ReadSet(const std::wstring& set) {
    BareRead(set);
    std::string presets;
    CPatience patience;
    ReadWholeFile(PresetFileOf(set), fs::file_size(PresetFileOf(set)), presets, patience);
}

/// The floor of saving: what is there is read, and as many bytes are written.
void BareSave(const fs::path& layouts, const std::wstring& set, const fs::path& out) {
    ReadStudio(layouts);
    for (const wchar_t* extension : {L".pgset", L".spp"}) {
        const auto size = fs::file_size(fs::path(set).replace_extension(extension));
        ReplaceFileContents(out.wstring() + extension, std::string(static_cast<std::size_t>(size), 'b'));
    }
}

/// The floor of loading: set and presets are read, and each key, value and file is written.
void BareLoad(const SetToLoad& load, int exclusions, const fs::path& layouts, const std::wstring& set) {
    ReadSet(set);
    const std::vector<std::byte> data(kPresetSize, std::byte{'b'});
    for (int i = 0; i < exclusions; ++i)
        CRegKey::Create(HKEY_CURRENT_USER, ExclusionKey(i))->WriteString(nullptr, L"Excluded");
    for (const auto& [file, xml] : load.set.layouts)
        ReplaceFileContents((layouts / file).wstring(), std::string(xml.begin(), xml.end()));
    for (const PresetPlugin& plugin : load.presetPlugins) {
        const auto key = CPresetListMgr(plugin).OpenPluginKey(true);
        for (int i = 0; i < kPresetsOfEach; ++i)
            key->WriteValue((L"Preset number " + std::to_wstring(i)).c_str(), REG_BINARY, data);
    }
}

}  // namespace

void BenchStudioSets(int plugins) {
    const Amounts amounts = AmountsFor(plugins);
    const fs::path folder = fs::temp_directory_path() / L"Set bench";
    const fs::path layouts = folder / L"Layouts";
    const std::wstring file = folder / L"studio.pgset";
    fs::remove_all(folder);
    const CPluginDatabase database;
    CPluginInventory inventory(kDefaultVstKey, database);
    inventory.Enumerate(true);
    CFriendlyNames names(inventory, database);
    CBackups backups(folder / L"Backups", L"1");
    CStudioSets sets(inventory, names, backups, layouts.wstring());
    Fill(inventory, amounts, layouts);
    Row(
        "save a studio set", plugins,
        [&] {
            SetToSave save;
            sets.Gather(save, true, {});
            sets.Save(save, file, L"Bench", {});
        },
        [&] { BareSave(layouts, file, folder / L"bare"); });
    SetToLoad planned;
    Row(
        "find a set loaded already", plugins,
        [&] {
            planned = {};
            sets.Plan(file, SetMode::Add, true, planned, {});
        },
        [&] {
            ReadSet(file);
            ReadStudio(layouts);
        });
    Row(
        "load a studio set", plugins,
        [&] {
            SetToLoad load;
            sets.Plan(file, SetMode::Add, true, load, {});
            sets.Load(load, L"Bench", CWindow(), {});
        },
        [&] { BareLoad(planned, amounts.exclusions, layouts, file); }, [&] { Empty(layouts); });
    Empty(layouts);
    fs::remove_all(folder);
}
