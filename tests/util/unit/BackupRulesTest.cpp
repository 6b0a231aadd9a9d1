#include <gtest/gtest.h>

#include "BackupRules.h"

namespace {

TEST(BackupRules, NamesStayPlainAndShortAndLeadNowhereElse) {
    const std::wstring time = L"2026-11-21 22.05.13";
    EXPECT_EQ(BackupFolderName(time, L"Delete presets of A/B: \"C\"?", 1),
              time + L" Delete presets of A_B_ _C__");
    EXPECT_EQ(BackupFolderName(time, L"Remove ...", 2), time + L" Remove (2)");
    EXPECT_EQ(BackupFolderName(time, std::wstring(59, L'a') + L"\xD83D\xDE00", 1).size(), time.size() + 60);
    EXPECT_TRUE(IsBackupFolderName(time + L" Remove"));
    EXPECT_FALSE(IsBackupFolderName(L"My notes of 2026-11-21"));
    EXPECT_EQ(BackupCopyName(3, L"C:\\x\\Wide.pgl"), L"3 Wide.pgl");
    EXPECT_TRUE(IsBackupCopyName(BackupCopyName(1, L"C:\\" + std::wstring(200, L'a') + L".pgl")));
    for (const wchar_t* name : {L"", L"..", L"1\\a", L"../1", L"1 a:b", L"backup.xml", L"1 a.", L"1 a/b"})
        EXPECT_FALSE(IsBackupCopyName(name)) << testing::PrintToString(std::wstring(name));
    for (const wchar_t* path : {L"C:\\a", L"z:\\a b\\c.d", L"\\\\server\\share\\a"})
        EXPECT_TRUE(IsPlainPath(path));
    for (const wchar_t* path :
         {L"", L"a", L"C:a", L"C:\\", L"C:\\a\\", L"C:\\a\\..\\b", L"C:\\a:b", L"C:/a", L"\\a",
          L"\\\\?\\C:\\a", L"\\\\.\\pipe\\a", L"C:\\a*", L"C:\\a\n", L"C:\\a.", L"C:\\a\\\\b"})
        EXPECT_FALSE(IsPlainPath(path)) << testing::PrintToString(std::wstring(path));
}

TEST(BackupRules, OnlyKeysThatTheProgramAndTheBackupNameComeBack) {
    const std::wstring id = L"{11111111-2222-3333-4444-55555555555F}";
    const std::wstring presets =
        L"HKEY_CURRENT_USER\\SOFTWARE\\Corvane Music Software\\ActiveMovie\\Presets\\" + id;
    const std::wstring classes = L"HKEY_LOCAL_MACHINE\\Software\\Classes\\";
    const std::wstring server = classes + L"CLSID\\" + id;
    const auto allows = [](const std::wstring& path, const std::wstring& named) {
        return IsRestorable({path, false, {}}, std::vector{named});
    };
    EXPECT_TRUE(allows(presets, presets) && allows(presets + L"\\a", presets));
    EXPECT_TRUE(allows(classes + L"Filter\\" + id, classes + L"Filter\\" + id));
    EXPECT_TRUE(allows(server + L"\\Pins\\In", server + L"\\Pins"));
    EXPECT_FALSE(allows(presets, server + L"\\Pins")) << "not named";
    EXPECT_FALSE(allows(presets + L"a", presets)) << "a neighbour";
    for (const std::wstring& path :
         {L"HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run" + id,
          L"HKEY_CLASSES_ROOT\\Filter\\" + id, L"HKEY_USERS" + presets.substr(17),
          L"HKEY_LOCAL_MACHINE" + presets.substr(17), presets.substr(0, presets.size() - 1) + L"*}",
          presets + L"\\..", server + L"\\InprocServer32", classes + L"Filter"})
        EXPECT_FALSE(allows(path, path)) << testing::PrintToString(path);
    const auto allowsOfServer = [&](const RegFileKey& key) { return IsRestorable(key, std::vector{server}); };
    EXPECT_TRUE(allowsOfServer({server, false, {{L"Merit", false, 4, {}}}}));
    EXPECT_FALSE(allowsOfServer({server, false, {{L"", false, 1, {}}}}));
    EXPECT_FALSE(allowsOfServer({server, true, {}}));
    EXPECT_FALSE(allowsOfServer({server + L"\\InprocServer32", false, {}}));
}

TEST(BackupRules, TheOldestOfAKindGoButNoneOfThisRun) {
    std::vector<KeptBackup> backups;
    backups.reserve(102);
    for (int i = 0; i < 102; ++i)
        backups.push_back({BackupKind::Presets, std::to_wstring(1000 + i), 1, i == 0});
    backups.push_back({BackupKind::Layouts, L"0", 1, false});
    EXPECT_EQ(BackupsToPrune(backups), (std::vector<std::size_t>{1, 2}));
    backups.assign({{BackupKind::Registry, L"1", 1, false},
                    {BackupKind::Registry, L"3", 300ULL << 20, true},
                    {BackupKind::Presets, L"1", 1, false},
                    {BackupKind::Presets, L"2", 256ULL << 20, false},
                    {BackupKind::Presets, L"3", 1, false}});
    EXPECT_EQ(BackupsToPrune(backups), (std::vector<std::size_t>{2, 0, 3}));
}

}  // namespace
