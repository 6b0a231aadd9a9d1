#include <gtest/gtest.h>
#include <thread>

#include "Files.h"
#include "support/FileSandbox.h"

namespace {

class Files : public testing::Test {
  protected:
    UniqueFile Hold(DWORD access, DWORD share) const {
        return UniqueFile(::CreateFileW(m_old.c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr));
    }
    support::FileSandbox m_files;
    const std::wstring m_old = m_files.Write(L"old", "old");
};

TEST_F(Files, AFailedReplacementLeavesTheOldFile) {
    ::SetFileAttributesW(m_old.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(ReplaceFileContents(m_old, "new"), DWORD{ERROR_FILE_READ_ONLY});
    ::SetFileAttributesW(m_old.c_str(), FILE_ATTRIBUTE_NORMAL);
    {
        const UniqueFile held = Hold(GENERIC_READ, FILE_SHARE_READ);
        EXPECT_EQ(ReplaceFileContents(m_old, "new"), DWORD{ERROR_SHARING_VIOLATION});
    }
    ::CreateDirectoryW(m_files.Path(L"folder").c_str(), nullptr);
    EXPECT_EQ(ReplaceFileContents(m_files.Path(L"folder"), "new"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(ReplaceFileContents(m_files.Path(L"no folder\\a"), "new"), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(m_files.Read(L"old"), "old");
    EXPECT_EQ(ReplaceFileContents(m_old, "new"), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(m_files.Read(L"old"), "new");
    EXPECT_EQ(m_files.Names(), (std::vector<std::wstring>{L"folder", L"old"})) << "and nothing beside them";
}

TEST_F(Files, WhatIsHeldForAMomentIsWaitedFor) {
    const auto whileHeld = [this](DWORD share, auto&& work) {
        UniqueFile held = Hold(GENERIC_READ, share);
        std::thread letGo([&held] {
            ::Sleep(200);
            held.Reset();
        });
        work();
        letGo.join();
    };
    std::string bytes;
    CPatience patience;
    whileHeld(0, [&] { EXPECT_EQ(ReadWholeFile(m_old, 3, bytes, patience), FileRead::Whole); });
    EXPECT_EQ(bytes, "old");
    whileHeld(0, [&] { EXPECT_EQ(ReplaceFileContents(m_old, "new"), DWORD{ERROR_SUCCESS}); });
    whileHeld(0, [&] { EXPECT_TRUE(OpenForWriting(m_old)); });
    EXPECT_EQ(m_files.Read(L"old"), "") << "emptied";
    whileHeld(0, [&] { EXPECT_TRUE(DeleteHeldFile(m_old, patience)); });
    EXPECT_TRUE(m_files.Names().empty());
    EXPECT_TRUE(DeleteHeldFile(m_old, patience)) << "it is gone";
}

TEST_F(Files, SomeoneWhoWritesDoesNotKeepAReaderOut) {
    const UniqueFile writer = Hold(GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
    std::string bytes;
    CPatience patience;
    EXPECT_EQ(ReadWholeFile(m_old, 3, bytes, patience), FileRead::Whole);
    EXPECT_EQ(ReadWholeFile(m_old, 2, bytes, patience), FileRead::NotOpened) << "longer than wanted";
    EXPECT_EQ(ReadWholeFile(m_files.Path(L""), 9, bytes, patience), FileRead::NotOpened) << "a folder";
    EXPECT_EQ(ReadWholeFile(L"nul", 9, bytes, patience), FileRead::NotOpened) << "a device";
}

}  // namespace
