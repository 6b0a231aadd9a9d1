// The preset store over a registry and a shared folder of the test's own, with real lists.
#include <filesystem>
#include <gtest/gtest.h>

#include "AnsiText.h"
#include "Dialog.h"
#include "FileStream.h"
#include "PresetTransfer.h"
#include "PresetWriter.h"
#include "presets/StoredPresets.h"
#include "resource.h"
#include "support/FileSandbox.h"
#include "support/RegistrySandbox.h"
#include "support/WindowActions.h"

namespace {

namespace fs = std::filesystem;
using support::StoredPresets;
using Names = std::vector<std::wstring>;

constexpr Guid kHall = "{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}"_guid;
constexpr Guid kRoom = "{11111111-2222-3333-4444-555555555555}"_guid;
constexpr Guid kEffects = "{B84F08B7-2DF0-438B-A5B4-E7700FE06A18}"_guid;
constexpr Guid kNowhere = "{00000000-0000-0000-0000-00000000000A}"_guid;
constexpr wchar_t kRoot[] = L"SOFTWARE\\Corvane Music Software\\ActiveMovie\\Presets";
const std::wstring kHallKey = std::wstring(kRoot) + L"\\{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}";

std::vector<std::byte> Data(std::size_t size, char fill = 'd') {
    return {size, static_cast<std::byte>(fill)};
}

class PresetStore : public testing::Test {
  protected:
    // Read once by the process; the sandbox is the same folder for all tests.
    PresetStore() { ::SetEnvironmentVariableW(L"CorvaneAppDataRoot", m_top.c_str()); }

    static bool Store(const std::wstring& name, std::span<const std::byte> data, int type = 3) {
        return CPresetWriter(CPresetListMgr(kHall, kEffects, L"Hall"))
            .Store({.type = type, .name = name, .data = data});
    }
    std::size_t FilesBelowTop() const {
        return static_cast<std::size_t>(
            std::distance(fs::recursive_directory_iterator(m_top), fs::recursive_directory_iterator()));
    }

    support::RegistrySandbox m_sandbox;
    const support::FileSandbox m_files;
    const fs::path& m_top = m_files.Folder();
    const fs::path m_folder = m_top / L"Shared Presets" / L"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}";
    const std::wstring m_file = m_files.Path(L"presets.spp");
    CPresetListMgr m_hall{kHall, kEffects, L"Hall"};
    CPresetListMgr m_room{kRoom, kEffects, L"Room"};
    CPatience m_patience;
};

TEST_F(PresetStore, LargePresetsAndThoseOfFilesGoToFiles) {
    EXPECT_TRUE(Store(L"small", Data(1023)));
    EXPECT_TRUE(Store(L"large", Data(1024)));
    EXPECT_TRUE(Store(L"of a file", Data(1), 1));
    EXPECT_TRUE(Store(L"of no known type", Data(1), 7));
    EXPECT_FALSE(Store(L"empty", {}));
    EXPECT_EQ(support::Text(HKEY_CURRENT_USER, kHallKey, L"large"), (m_folder / L"large").wstring());
    EXPECT_EQ(fs::file_size(m_folder / L"large"), 1024U);
    EXPECT_TRUE(fs::exists(m_folder / L"of a file"));
    EXPECT_EQ(m_hall.CountPresets(), 4U);
    EXPECT_FALSE(fs::exists(m_folder / L"small"));

    EXPECT_TRUE(Store(L"large", Data(2000, 'x')));
    EXPECT_EQ(fs::file_size(m_folder / L"large"), 2000U) << "overwritten without a question";
    EXPECT_TRUE(Store(L"small", Data(2, 'x')));
    EXPECT_TRUE(StoredPresets(kHallKey).contains(L"small:3:xx"));
    fs::create_directory(m_folder / L"taken");
    EXPECT_FALSE(Store(L"taken", Data(1024))) << "a folder has this name";
    EXPECT_EQ(m_hall.CountPresets(), 4U);
    EXPECT_FALSE(CPresetWriter(CPresetListMgr(kHall, kNowhere, L""))
                     .Store({.type = 3, .name = L"x", .data = Data(1)}));
}

TEST_F(PresetStore, NothingIsWrittenOutsideOfThePluginsFolder) {
    EXPECT_TRUE(Store(L"plain", Data(1024)));
    const std::size_t files = FilesBelowTop();
    for (const wchar_t* name : {L"..\\x", L"..\\..\\..\\x", L"/x", L"a/b", L"a:b", L"C:\\x",
                                L"\\\\localhost\\c$\\x", L"..", L"nul.txt", L"COM1", L". .", L"x\n"}) {
        EXPECT_FALSE(Store(name, Data(1024))) << ::testing::PrintToString(name);
        EXPECT_FALSE(Store(name, Data(1), 1)) << ::testing::PrintToString(name);
    }
    EXPECT_FALSE(Store(std::wstring(5000, L'n'), Data(1024)));
    EXPECT_FALSE(Store(std::wstring(520, L'n'), Data(1))) << "it would never be listed";
    EXPECT_EQ(FilesBelowTop(), files);
    EXPECT_EQ(m_hall.CountPresets(), 1U);
    EXPECT_TRUE(Store(L"..\\x", Data(1))) << "a registry value may have any name";
    fs::remove_all(m_top / L"Shared Presets");
    m_files.Write(L"Shared Presets", "a file in the folder's place");
    EXPECT_FALSE(Store(L"plain", Data(1024)));
}

TEST_F(PresetStore, TheEndOfANameThatWindowsDropsIsDropped) {
    EXPECT_TRUE(Store(L"Wide...", Data(1024)));
    EXPECT_EQ(support::Text(HKEY_CURRENT_USER, kHallKey, L"Wide..."), (m_folder / L"Wide").wstring());
    EXPECT_TRUE(Store(L"WIDE...", Data(1024, 'x'))) << "the same preset";
    for (const wchar_t* other : {L"Wide ", L"Wide"})
        EXPECT_FALSE(Store(other, Data(1024))) << "the file is another preset's";
    Store(L"Thin", Data(1024));
    m_hall.RenamePreset(L"Thin", L"Slim");
    EXPECT_FALSE(Store(L"Thin.", Data(1024))) << "under whatever name";
    CPresetWriter writer(m_hall);
    EXPECT_TRUE(writer.Store({.type = 3, .name = L"Init.", .data = Data(1024)}));
    EXPECT_FALSE(writer.Store({.type = 3, .name = L"Init ", .data = Data(1024)})) << "of the same command";
    EXPECT_EQ(m_hall.CountPresets(), 3U);
    EXPECT_TRUE(StoredPresets(kHallKey).contains(L"Wide...:1:" + std::wstring(1024, L'x')));
}

TEST_F(PresetStore, WhatCannotBeStoredLeavesWhatWasThere) {
    const std::wstring small = L"small", large = L"large", orphan = L"orphan";
    Store(large, Data(1024));
    Store(orphan, Data(1024));
    CRegKey::Open(HKEY_CURRENT_USER, kHallKey, KEY_WRITE)->DeleteValue(orphan.c_str());
    const auto before = StoredPresets(kHallKey);
    const UniqueFile held(::CreateFileW((m_folder / orphan).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, 0, nullptr));
    EXPECT_FALSE(Store(orphan, Data(2000)));
    EXPECT_EQ(StoredPresets(kHallKey), before) << "no value without its data";
    // A key that goes in the middle of a command takes no more values.
    CPresetWriter writer(m_hall);
    EXPECT_TRUE(writer.Store({.type = 3, .name = small, .data = Data(1)}));
    support::DeleteTree(HKEY_CURRENT_USER, kHallKey);
    EXPECT_FALSE(writer.Store({.type = 3, .name = large, .data = Data(2000)}));
    EXPECT_FALSE(writer.Store({.type = 3, .name = L"new", .data = Data(2000)}));
    EXPECT_EQ(fs::file_size(m_folder / large), 1024U);
    EXPECT_EQ(FilesBelowTop(), 4U) << "two folders, two files";
}

TEST_F(PresetStore, DeletingTakesTheFilesAlong) {
    Store(L"in a file", Data(1024));
    Store(L"gone", Data(1024));
    Store(L"kept", Data(1024));
    Store(L"small", Data(1));
    fs::remove(m_folder / L"gone");
    EXPECT_TRUE(m_hall.DeletePreset(L"in a file", m_patience));
    EXPECT_TRUE(m_hall.DeletePreset(L"gone", m_patience)) << "its file was gone before";
    EXPECT_FALSE(m_hall.DeletePreset(L"never there", m_patience));
    EXPECT_FALSE(fs::exists(m_folder / L"in a file"));
    support::SetRaw(HKEY_CURRENT_USER, kHallKey, L"unterminated", REG_SZ,
                    support::Bytes(m_files.Write(L"elsewhere", "x")));
    EXPECT_TRUE(m_hall.DeletePreset(L"unterminated", m_patience));
    EXPECT_FALSE(fs::exists(m_top / L"elsewhere"));

    support::CreateKey(HKEY_CURRENT_USER, kHallKey + L"\\a subkey");
    EXPECT_TRUE(m_hall.DeleteAllPresets());
    EXPECT_FALSE(fs::exists(m_folder / L"kept"));
    EXPECT_FALSE(support::Exists(HKEY_CURRENT_USER, kHallKey));
    EXPECT_TRUE(support::Exists(HKEY_CURRENT_USER, kRoot));
    EXPECT_FALSE(m_hall.DeleteAllPresets()) << "there is no key any more";
    CPresetListMgr nowhere(kHall, kNowhere, L"");
    EXPECT_FALSE(nowhere.DeleteAllPresets() || nowhere.DeletePreset(L"x", m_patience) ||
                 nowhere.RenamePreset(L"x", L"y"));
}

TEST_F(PresetStore, RenamingKeepsTypeDataAndFileAndNeverOverwrites) {
    Store(L"one", Data(3));
    Store(L"two", Data(1024));
    support::SetDword(HKEY_CURRENT_USER, kHallKey, L"number", 5);
    const auto before = StoredPresets(kHallKey);
    EXPECT_FALSE(m_hall.RenamePreset(L"one", L"two"));
    EXPECT_FALSE(m_hall.RenamePreset(L"one", L"ONE")) << "the registry knows no case";
    EXPECT_FALSE(m_hall.RenamePreset(L"none", L"three"));
    EXPECT_FALSE(m_hall.RenamePreset(L"one", std::wstring(520, L'n'))) << "it would never be read back";
    EXPECT_EQ(StoredPresets(kHallKey), before);
    EXPECT_TRUE(m_hall.RenamePreset(L"one", L"a\\b:c"));
    EXPECT_TRUE(m_hall.RenamePreset(L"two", L"four"));
    EXPECT_TRUE(m_hall.RenamePreset(L"number", L"five"));
    EXPECT_TRUE(StoredPresets(kHallKey).contains(L"a\\b:c:3:ddd"));
    EXPECT_EQ(support::Text(HKEY_CURRENT_USER, kHallKey, L"four"), (m_folder / L"two").wstring());
    EXPECT_EQ(support::Dword(HKEY_CURRENT_USER, kHallKey, L"five"), 5U);
    EXPECT_EQ(m_hall.CountPresets(), 3U);
}

TEST_F(PresetStore, AKeyThatCanOnlyBeReadLosesNothing) {
    Store(L"small", Data(3));
    Store(L"in a file", Data(1024));
    const auto before = StoredPresets(kHallKey);
    const std::size_t files = FilesBelowTop();
    {
        const support::ReadOnlyKey locked(HKEY_CURRENT_USER, kHallKey);
        EXPECT_FALSE(Store(L"small", Data(1)) || Store(L"in a file", Data(2000)) ||
                     Store(L"new", Data(1024)));
        EXPECT_FALSE(m_hall.DeletePreset(L"in a file", m_patience) || m_hall.DeleteAllPresets());
        EXPECT_FALSE(m_hall.RenamePreset(L"small", L"other"));
    }
    EXPECT_EQ(StoredPresets(kHallKey), before);
    EXPECT_EQ(FilesBelowTop(), files);
}

TEST_F(PresetStore, EachCategoryHasItsRoot) {
    const std::wstring product = L"SOFTWARE\\Corvane Music Software\\";
    const std::wstring midi = product + L"MIDI Filters\\Presets",
                       surfaces = product + L"ControlSurfaces\\Presets";
    const std::pair<Guid, std::wstring> roots[] = {{"{083863F1-70DE-11D0-BD40-00A0C911CE86}"_guid, kRoot},
                                                   {"{F2B30048-71CC-4182-A042-5F9719265B2D}"_guid, kRoot},
                                                   {"{018A6D0F-344A-40DF-864C-3D83A94844E4}"_guid, kRoot},
                                                   {"{FDB0F208-FD06-4195-BC36-4BC5AFC89581}"_guid, kRoot},
                                                   {"{5B3CB5A1-2452-4C7B-A445-0A84580F9D7C}"_guid, kRoot},
                                                   {"{8D3D44A4-FB4A-4E34-AF6D-910531720233}"_guid, kRoot},
                                                   {"{2BB55B37-EAF2-434F-B82E-AEA2156366CF}"_guid, kRoot},
                                                   {"{A21768E5-211E-4A57-98D6-F32D57061A1A}"_guid, kRoot},
                                                   {"{EA928480-B8A3-43C0-8FA0-CCAD36569849}"_guid, midi},
                                                   {"{E26F299E-B4BC-49E6-99BF-275210DDC844}"_guid, surfaces}};
    for (const auto& [category, root] : roots) {
        CPresetListMgr plugin(kHall, category, L"Hall");
        EXPECT_TRUE(CPresetWriter(plugin).Store({.type = 3, .name = L"x", .data = Data(1)}));
        EXPECT_EQ(support::Subkeys(HKEY_CURRENT_USER, root).size(), 1U) << support::Utf8(root);
        EXPECT_TRUE(plugin.DeleteAllPresets());
    }
    EXPECT_EQ(CPresetListMgr(kHall, kNowhere, L"Hall").CountPresets(), 0U) << "a category without a store";
}

TEST_F(PresetStore, ListsCarryTheIndexInTheStore) {
    CDialog dialog(IDD_MANAGE_PRESETS);
    ASSERT_TRUE(dialog.CreateModeless(nullptr));
    const auto list = dialog.Control<CListBox>(IDC_PRESET_LIST);
    EXPECT_EQ(m_hall.FillPresetList(list), 0);
    Store(L"b", Data(1));
    support::SetRaw(HKEY_CURRENT_USER, kHallKey, std::wstring(520, L'm').c_str(), REG_BINARY, {1});
    Store(L"z", Data(1));
    support::SetDword(HKEY_CURRENT_USER, kHallKey, L"z, a number", 1);
    const std::wstring longest(519, L'z');
    support::SetRaw(HKEY_CURRENT_USER, kHallKey, longest.c_str(), REG_BINARY, {});
    EXPECT_EQ(m_hall.FillPresetList(list), 4);
    EXPECT_EQ(m_hall.CountPresets(), 4U);
    EXPECT_EQ(support::Rows(list.Handle()), (Names{L"b", L"z", L"z, a number", longest}));
    EXPECT_EQ(list.Data(*list.FindExact(L"B")), 0);
    EXPECT_EQ(list.Data(*list.FindExact(L"z")), 2) << "the index counts what is passed over";
    EXPECT_FALSE(list.FindExact(L"y"));
    list.Clear();
    EXPECT_FALSE(list.FindExact(L"z"));
}

TEST_F(PresetStore, WhatIsExportedComesBackTheSame) {
    for (int i = 0; i < 40; ++i)
        Store(L"preset " + std::to_wstring(i),
              Data(1 + 4000 * static_cast<std::size_t>(i), static_cast<char>('a' + i % 26)));
    Store(L"in a file", Data(1), 1);
    const auto before = StoredPresets(kHallKey);
    {
        auto file = CFileSink::Create(m_file);
        ASSERT_TRUE(file);
        EXPECT_EQ(ExportPresets(*file, m_hall, nullptr), 41);
    }
    EXPECT_TRUE(m_hall.DeleteAllPresets());
    auto file = CFileSource::Open(m_file);
    ASSERT_TRUE(file);
    EXPECT_EQ(ImportPresets(*file, m_room, nullptr), kNothingForPlugin) << "another plug-in's";
    file->Seek(0);
    EXPECT_EQ(ImportPresets(*file, m_hall, nullptr), 41);
    EXPECT_EQ(StoredPresets(kHallKey), before);
    int listed = 0;
    file->Seek(0);
    PresetPreview preview;
    preview.add = [&](const std::wstring&, std::int32_t position) { EXPECT_EQ(position, listed++); };
    EXPECT_EQ(ListFileForPlugin(*file, m_hall, preview), 41);
}

TEST_F(PresetStore, PresetsThatCannotBeWritten) {
    Store(L"good", Data(2));
    const auto result = [this](std::wstring* invalid = nullptr) {
        auto file = CFileSink::Create(m_file);
        return ExportPresets(*file, m_hall, nullptr,
                             {.invalidPreset =
                                  [&](const std::wstring& name) {
                                      if (invalid) *invalid = name;
                                  },
                              .progress = {}});
    };
    const auto announced = [this] {
        auto file = CFileSource::Open(m_file);
        CPresetFileReader reader(*file, AnsiText());
        return reader.ReadPlugin(reader.ReadHeader()->version).presets;
    };
    // These write nothing and are announced all the same.
    support::SetDword(HKEY_CURRENT_USER, kHallKey, L"a number", 1);
    support::SetText(HKEY_CURRENT_USER, kHallKey, L"no path", L"");
    support::SetText(HKEY_CURRENT_USER, kHallKey, L"without data", m_files.Write(L"empty file", ""));
    EXPECT_EQ(result(), 1);
    EXPECT_EQ(announced(), 4);

    const std::wstring locked = m_files.Write(L"locked", "data");
    const UniqueFile lock(::CreateFileW(locked.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    for (const std::wstring& file :
         {std::wstring(L"C:\\no such folder\\x"), std::wstring(L"C:\\windows"), locked}) {
        support::SetText(HKEY_CURRENT_USER, kHallKey, L"unreadable", file);
        std::wstring invalid;
        EXPECT_EQ(result(&invalid), kPresetIoFailure);
        EXPECT_EQ(invalid, L"unreadable");
    }
}

}  // namespace
