#include <gtest/gtest.h>

#include "Backups.h"
#include "CorvaneKeys.h"
#include "support/FileSandbox.h"
#include "support/RegistrySandbox.h"
#include "support/SandboxImporter.h"

namespace {

using support::Exists;
using support::SetRaw;

class Backups : public testing::Test {
  protected:
    /// What a program would do that starts anew.
    CBackups NewRun() {
        return {m_folder, L"1", [this](const auto&... what) {
                    ++m_imports;
                    return support::ImportIntoSandbox(what...);
                }};
    }
    DWORD Restore(CBackups& backups, std::size_t which) {
        return backups.Restore(backups.List().at(which), L"back", CWindow(), [](DWORD) { return false; });
    }

    const std::wstring m_key = std::wstring(kAudioPresetsKey) + L"\\{11111111-2222-3333-4444-555555555555}";
    const BackupKey kWhole{BackupHive::User, m_key, {}};
    support::RegistrySandbox m_registry;
    support::FileSandbox m_files;
    const std::wstring m_folder = m_files.Path(L"Backups");
    const std::wstring m_file = m_files.Write(L"Wide", "old");
    int m_imports = 0;
    CBackups m_backups = NewRun();
};

TEST_F(Backups, OnlyTheNamedValuesGoBackAndWhatIsAsItWasIsLeftAlone) {
    for (const wchar_t* name : {L"a", L"b"}) SetRaw(HKEY_CURRENT_USER, m_key, name, REG_BINARY, {1});
    const CRegKey key = CRegKey::Open(HKEY_CURRENT_USER, m_key, KEY_READ | KEY_WRITE).value();
    {
        const CBackup backup =
            m_backups.Make({BackupKind::Presets, L"Rename", {{BackupHive::User, m_key, {L"a", L"c"}}}, {}});
        key.DeleteValue(L"a");
    }
    for (const wchar_t* name : {L"b", L"c"}) SetRaw(HKEY_CURRENT_USER, m_key, name, REG_BINARY, {2});
    EXPECT_EQ(Restore(m_backups, 0), DWORD{ERROR_SUCCESS});
    EXPECT_TRUE(key.HasValue(L"a") && !key.HasValue(L"c"));
    EXPECT_EQ(key.ReadValue(L"b")->data, std::vector{std::byte{2}});
    EXPECT_EQ(Restore(m_backups, 1), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(m_imports, 1);
}

TEST_F(Backups, AStepThatTookNothingOrCannotBeBackedUpLeavesNoBackup) {
    const BackupStep save{BackupKind::Layouts, L"Save", {}, {m_file}, true};
    SetRaw(HKEY_CURRENT_USER, m_key, L"a", REG_BINARY, {1});
    {
        const CBackup backup = m_backups.Make({BackupKind::Presets, L"Import", {kWhole}, {m_file}});
        SetRaw(HKEY_CURRENT_USER, m_key, L"new", REG_BINARY, {1});
    }
    EXPECT_TRUE(m_backups.List().empty());
    for (const char* bytes : {"1", "2"}) {
        const CBackup backup = m_backups.Make(save);
        m_files.Write(L"Wide", bytes);
    }
    ASSERT_EQ(m_backups.List().size(), 1U) << "one copy a run";
    m_files.Write(L"Wide", "another program's");
    {
        const CBackup backup = m_backups.Make(save);
        m_files.Write(L"Wide", "3");
    }
    ASSERT_EQ(m_backups.List().size(), 2U) << "and what others have written";
    CBackups next = NewRun();
    {
        const CBackup backup = next.Make(save);
        const CBackup other = next.Make({BackupKind::Layouts, L"Delete", {}, {m_file}});
        ::DeleteFileW(m_file.c_str());
    }
    EXPECT_EQ(next.List().size(), 4U);
    SetRaw(HKEY_CURRENT_USER, m_key, L"two\nlines", REG_BINARY, {1});
    EXPECT_EQ(next.Make({BackupKind::Presets, L"Delete", {kWhole}, {}}).Error(), DWORD{ERROR_INVALID_NAME});
    const auto full = [](const auto&) { return DWORD{ERROR_DISK_FULL}; };
    EXPECT_EQ(next.KeepLayout(L"Unsaved", full).Error(), full(0));
    m_files.Write(L"Wide", "3");
    const auto ended = [] { return false; };
    EXPECT_EQ(next.Make({BackupKind::Layouts, L"Delete", {}, {m_file}}, ended).Error(),
              DWORD{ERROR_CANCELLED});
    EXPECT_EQ(next.List().size(), 4U);
}

TEST_F(Backups, OneThatWasChangedByHandIsRefusedAsAWhole) {
    const auto refuses = [this](const std::string& from, const std::string& to, const wchar_t* file) {
        SetRaw(HKEY_CURRENT_USER, m_key, L"a", REG_BINARY, {1});
        m_files.Write(L"Wide", "old");
        {
            const CBackup backup = m_backups.Make({BackupKind::Presets, L"Delete", {kWhole}, {m_file}});
            CRegKey::DeleteTree(HKEY_CURRENT_USER, m_key);
            ::DeleteFileW(m_file.c_str());
        }
        const BackupEntry entry = m_backups.List().at(0);
        const std::wstring changed = entry.folder.substr(m_files.Folder().wstring().size() + 1) + file;
        std::string bytes = m_files.Read(changed);
        const std::size_t at = bytes.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        m_files.Write(changed, bytes.replace(at, from.size(), to));
        EXPECT_NE(m_backups.Restore(entry, L"back", CWindow(), [](DWORD) { return true; }),
                  DWORD{ERROR_SUCCESS});
        EXPECT_FALSE(Exists(HKEY_CURRENT_USER, m_key)) << to;
        EXPECT_EQ(m_files.Names(), (std::vector<std::wstring>{L"Backups"})) << to;
        EXPECT_TRUE(m_backups.Delete(entry));
        EXPECT_EQ(m_backups.Restore(entry, L"back", CWindow(), {}), DWORD{ERROR_PATH_NOT_FOUND});
    };
    const auto wide = [](std::wstring_view text) {
        const auto bytes = support::Bytes(text);
        return std::string(bytes.begin(), bytes.end());
    };
    refuses(wide(L"[HKEY_CURRENT_USER"), wide(L"[HKEY_LOCAL_MACHINE"), L"\\before.reg");
    refuses(wide(L"\"a\"=hex:01"), wide(L"; a"), L"\\before.reg");
    refuses("Presets\\{1", "Presets\\{2", L"\\backup.xml");
    refuses("Copy=\"1 Wide", "Copy=\"..\\1 Wide", L"\\backup.xml");
    refuses("\\Wide\"", "\\..\\Wide\"", L"\\backup.xml");
    refuses("<Backup", "<Other", L"\\backup.xml");
    EXPECT_EQ(m_imports, 0);
}

TEST_F(Backups, OfAPluginsOwnKeyNothingGoesButTheNamedValue) {
    const std::wstring server = L"Software\\Classes\\CLSID\\{11111111-2222-3333-4444-555555555555}";
    const BackupStep step{BackupKind::Registry, L"Remove", {{BackupHive::User, server, {L"Merit"}}}, {}};
    const auto restore = [this](const BackupEntry& entry) {
        return m_backups.Restore(entry, L"back", CWindow(), [](DWORD) { return false; });
    };
    SetRaw(HKEY_CURRENT_USER, server, L"Merit", REG_BINARY, {1});
    {
        const CBackup backup = m_backups.Make(step);
        CRegKey::DeleteTree(HKEY_CURRENT_USER, server);
    }
    const BackupEntry removed = m_backups.List().at(0);
    EXPECT_EQ(restore(removed), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(restore(m_backups.List().at(0)), DWORD{ERROR_SUCCESS}) << "of a time without the key";
    EXPECT_FALSE(CRegKey::Open(HKEY_CURRENT_USER, server)) << "nor an empty one is left";
    EXPECT_EQ(restore(removed), DWORD{ERROR_SUCCESS});
    SetRaw(HKEY_CURRENT_USER, server, L"Library", REG_BINARY, {1});
    EXPECT_EQ(restore(m_backups.List().at(0)), DWORD{ERROR_SUCCESS});
    const CRegKey key = CRegKey::Open(HKEY_CURRENT_USER, server).value();
    EXPECT_TRUE(key.HasValue(L"Library") && !key.HasValue(L"Merit"));
    const std::wstring file = removed.folder.substr(m_files.Folder().wstring().size() + 1) + L"\\before.reg";
    const std::string bytes = m_files.Read(file);
    m_files.Write(file, bytes.substr(0, bytes.find(std::string("]\0\r\0\n", 5)) + 6));
    EXPECT_EQ(restore(removed), DWORD{ERROR_INVALID_DATA});
    EXPECT_TRUE(key.HasValue(L"Library"));
}

}  // namespace
