// The preset store over a registry and a shared folder of the test's own.
#include <filesystem>
#include <gtest/gtest.h>

#include "AnsiText.h"
#include "FileStream.h"
#include "PluginCategory.h"
#include "PresetTransfer.h"
#include "PresetWriter.h"
#include "presets/StoredPresets.h"
#include "support/FileSandbox.h"
#include "support/RegistrySandbox.h"

namespace {

namespace fs = std::filesystem;
using Presets = std::set<std::wstring>;

constexpr Guid kHall = "{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}"_guid;
constexpr Guid kEffects = RowOf(Category::VstEffects).guid;
const std::wstring kProduct = L"SOFTWARE\\Corvane Music Software\\";
const std::wstring kHallKey = kProduct + L"ActiveMovie\\Presets\\{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}";

class PresetStore : public testing::Test {
  protected:
    // Read once by the process; the sandbox is the same folder for all tests.
    PresetStore() { ::SetEnvironmentVariableW(L"CorvaneAppDataRoot", m_top.c_str()); }

    bool Store(const std::wstring& name, std::size_t size, char fill = 'd', int type = 3) const {
        CPresetWriter writer(m_hall);
        return Store(writer, name, size, fill, type);
    }
    static bool Store(CPresetWriter& writer, const std::wstring& name, std::size_t size, char fill = 'd',
                      int type = 3) {
        const std::vector<std::byte> data(size, static_cast<std::byte>(fill));
        return writer.StoreImportedPreset({.type = type, .name = name, .data = data});
    }
    bool Delete(const std::wstring& name) { return m_hall.DeletePreset(name, m_patience); }
    static Presets Stored() { return support::StoredPresets(kHallKey); }
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
    CPatience m_patience;
};

TEST_F(PresetStore, LargePresetsAndThoseOfFilesGoToFiles) {
    EXPECT_TRUE(Store(L"small", 1023) && Store(L"large", 1024));
    EXPECT_TRUE(Store(L"of a file", 1, 'd', 1) && Store(L"of no known type", 1, 'd', 7));
    EXPECT_FALSE(Store(L"empty", 0));
    EXPECT_EQ(Stored(), (Presets{L"large@large=1024d", L"of a file@of a file=1d", L"of no known type=1d",
                                 L"small=1023d"}));
    EXPECT_EQ(support::Text(HKEY_CURRENT_USER, kHallKey, L"large"), (m_folder / L"large").wstring());
    EXPECT_TRUE(Store(L"large", 2000, 'x') && Store(L"small", 2, 'x')) << "overwritten without a question";
    fs::create_directory(m_folder / L"taken");
    EXPECT_FALSE(Store(L"taken", 1024)) << "a folder has this name";
    EXPECT_EQ(Stored(), (Presets{L"large@large=2000x", L"of a file@of a file=1d", L"of no known type=1d",
                                 L"small=2x"}));
}

TEST_F(PresetStore, NothingIsWrittenOutsideOfThePluginsFolder) {
    EXPECT_TRUE(Store(L"plain", 1024));
    const std::size_t files = FilesBelowTop();
    for (const wchar_t* name :
         {L"..\\x", L"..\\..\\..\\x", L"/x", L"a:b", L"\\\\localhost\\c$\\x", L"nul.txt", L". ."})
        EXPECT_FALSE(Store(name, 1024) || Store(name, 1, 'd', 1)) << ::testing::PrintToString(name);
    EXPECT_FALSE(Store(std::wstring(5000, L'n'), 1024));
    EXPECT_FALSE(Store(std::wstring(520, L'n'), 1)) << "it would never be listed";
    EXPECT_EQ(FilesBelowTop(), files);
    EXPECT_TRUE(Store(L"..\\x", 1)) << "a registry value may have any name";
    EXPECT_EQ(Stored(), (Presets{L"..\\x=1d", L"plain@plain=1024d"}));
}

TEST_F(PresetStore, TheEndOfANameThatWindowsDropsIsDropped) {
    EXPECT_TRUE(Store(L"Wide...", 1024));
    EXPECT_TRUE(Store(L"WIDE...", 1024, 'x')) << "the same preset";
    EXPECT_FALSE(Store(L"Wide ", 1024) || Store(L"Wide", 1024)) << "the file is another preset's";
    EXPECT_TRUE(Store(L"Thin", 1024) && m_hall.RenamePreset(L"Thin", L"Slim"));
    EXPECT_FALSE(Store(L"Thin.", 1024)) << "under whatever name";
    CPresetWriter writer(m_hall);
    EXPECT_TRUE(Store(writer, L"Init.", 1024));
    EXPECT_FALSE(Store(writer, L"Init ", 1024)) << "of the same command";
    EXPECT_EQ(Stored(), (Presets{L"Init.@Init=1024d", L"Slim@Thin=1024d", L"Wide...@WIDE=1024x"}));
}

TEST_F(PresetStore, DeletingTakesTheFilesAlong) {
    for (const wchar_t* name : {L"in a file", L"gone", L"kept"}) EXPECT_TRUE(Store(name, 1024));
    fs::remove(m_folder / L"gone");
    EXPECT_TRUE(Delete(L"in a file"));
    EXPECT_TRUE(Delete(L"gone")) << "its file was gone before";
    EXPECT_FALSE(Delete(L"never there"));
    EXPECT_FALSE(fs::exists(m_folder / L"in a file"));
    support::SetRaw(HKEY_CURRENT_USER, kHallKey, L"unterminated", REG_SZ,
                    support::Bytes(m_files.Write(L"elsewhere", "x")));
    EXPECT_TRUE(Delete(L"unterminated"));
    EXPECT_FALSE(fs::exists(m_top / L"elsewhere"));
    EXPECT_EQ(Stored(), Presets{L"kept@kept=1024d"});

    support::CreateKey(HKEY_CURRENT_USER, kHallKey + L"\\a subkey");
    EXPECT_TRUE(Store(L"later", 1));
    EXPECT_TRUE(m_hall.DeleteAllPresets([first = true]() mutable { return std::exchange(first, false); }));
    EXPECT_FALSE(fs::exists(m_folder / L"kept"));
    EXPECT_EQ(Stored(), Presets{L"later=1d"}) << "ended before the second";
    EXPECT_TRUE(m_hall.DeleteAllPresets());
    EXPECT_TRUE(support::Subkeys(HKEY_CURRENT_USER, kProduct + L"ActiveMovie\\Presets").empty());
    EXPECT_FALSE(m_hall.DeleteAllPresets()) << "there is no key any more";
}

TEST_F(PresetStore, RenamingKeepsTypeDataAndFileAndNeverOverwrites) {
    EXPECT_TRUE(Store(L"one", 3) && Store(L"two", 1024));
    EXPECT_FALSE(m_hall.RenamePreset(L"one", L"two"));
    EXPECT_FALSE(m_hall.RenamePreset(L"one", L"ONE")) << "the registry knows no case";
    EXPECT_FALSE(m_hall.RenamePreset(L"none", L"three"));
    EXPECT_FALSE(m_hall.RenamePreset(L"one", std::wstring(520, L'n'))) << "it would never be read back";
    EXPECT_EQ(Stored(), (Presets{L"one=3d", L"two@two=1024d"}));
    EXPECT_TRUE(m_hall.RenamePreset(L"one", L"a\\b:c") && m_hall.RenamePreset(L"two", L"four"));
    // Kept: the file has its old name, and one that comes under that name gets it, too.
    EXPECT_TRUE(Store(L"two", 2000, 'x'));
    EXPECT_EQ(Stored(), (Presets{L"a\\b:c=3d", L"four@two=2000x", L"two@two=2000x"}));
}

TEST_F(PresetStore, EachCategoryHasItsRoot) {
    for (const PluginCategory& category : kCategories) {
        CPresetListMgr plugin(kHall, category.guid, L"Hall");
        CPresetWriter writer(plugin);
        EXPECT_TRUE(Store(writer, L"x", 1));
        const wchar_t* root = &category == &RowOf(Category::MidiEffects)       ? L"MIDI Filters"
                              : &category == &RowOf(Category::ControlSurfaces) ? L"ControlSurfaces"
                                                                               : L"ActiveMovie";
        EXPECT_EQ(support::Subkeys(HKEY_CURRENT_USER, kProduct + root + L"\\Presets").size(), 1U)
            << category.captionId;
        EXPECT_TRUE(plugin.DeleteAllPresets());
    }
}

TEST_F(PresetStore, PresetsWithoutDataAreAnnouncedAndNotWritten) {
    support::SetRaw(HKEY_CURRENT_USER, kHallKey, L"good, and long", REG_BINARY, std::vector<BYTE>(5000));
    support::SetDword(HKEY_CURRENT_USER, kHallKey, L"a number", 1);
    support::SetText(HKEY_CURRENT_USER, kHallKey, L"no path", L"");
    support::SetText(HKEY_CURRENT_USER, kHallKey, L"without data", m_files.Write(L"empty file", ""));
    {
        auto written = CFileSink::Create(m_file);
        EXPECT_EQ(ExportPresets(*written, m_hall, nullptr), 1);
    }
    auto file = CFileSource::Open(m_file);
    CPresetFileReader reader(*file, AnsiText());
    EXPECT_EQ(reader.ReadPlugin(reader.ReadHeader()->version).presets, 4);
}

}  // namespace
