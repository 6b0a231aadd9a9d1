#include <gtest/gtest.h>

#include "RegKey.h"
#include "support/RegistrySandbox.h"

namespace {

constexpr wchar_t kPath[] = L"Software\\RegKeyTest";

std::vector<BYTE> Terminated(std::wstring text) {
    text += L'\0';
    return support::Bytes(text);
}

class RegKey : public testing::Test {
  protected:
    support::RegistrySandbox m_sandbox;
};

TEST_F(RegKey, OnlyWellFormedTextsAreRead) {
    const struct {
        const char* what;
        DWORD type;
        std::vector<BYTE> bytes;
        std::optional<std::wstring> strict, loose;
    } cases[] = {
        {"good", REG_SZ, Terminated(L"abc"), L"abc", L"abc"},
        {"expandable", REG_EXPAND_SZ, Terminated(L"%nothing%"), L"%nothing%", L"%nothing%"},
        {"empty", REG_SZ, {}, L"", L""},
        {"terminator only", REG_SZ, Terminated(L""), L"", L""},
        {"no terminator", REG_SZ, support::Bytes(L"abc"), std::nullopt, L"abc"},
        {"odd size", REG_SZ, {'a', 0, 0}, std::nullopt, std::nullopt},
        {"one byte", REG_SZ, {0}, std::nullopt, std::nullopt},
        {"zero inside", REG_SZ, Terminated(std::wstring(L"ab\0cd", 5)), L"ab", L"ab"},
        {"number", REG_DWORD, {'a', 0, 0, 0}, std::nullopt, std::nullopt},
        {"binary", REG_BINARY, Terminated(L"abc"), std::nullopt, std::nullopt},
        {"list", REG_MULTI_SZ, Terminated(L"abc"), std::nullopt, std::nullopt},
        {"at the limit", REG_SZ, Terminated(std::wstring(259, L'x')), std::wstring(259, L'x'),
         std::wstring(259, L'x')},
        {"past the limit", REG_SZ, Terminated(std::wstring(260, L'x')), std::nullopt, std::nullopt},
        {"enormous", REG_SZ, Terminated(std::wstring(500'000, L'x')), std::nullopt, std::nullopt},
    };
    for (const auto& c : cases) {
        support::SetRaw(HKEY_CURRENT_USER, kPath, L"value", c.type, c.bytes);
        const auto key = CRegKey::Open(HKEY_CURRENT_USER, kPath);
        ASSERT_TRUE(key);
        EXPECT_EQ(key->ReadString(L"value", kPathBytes), c.strict) << c.what;
        EXPECT_EQ(key->ReadUnterminated(L"value", kPathBytes), c.loose) << c.what;
    }
}

TEST_F(RegKey, LongTextsAreReadWhole) {
    for (const std::size_t length : {259U, 260U, 261U, 500'000U}) {
        support::SetText(HKEY_CURRENT_USER, kPath, L"value", std::wstring(length, L'x'));
        const auto text = CRegKey::Open(HKEY_CURRENT_USER, kPath)->ReadString(L"value", 1'000'002);
        ASSERT_TRUE(text) << length;
        EXPECT_EQ(text->size(), length);
    }
}

TEST_F(RegKey, OnlyRealNumbersCount) {
    const auto key = CRegKey::Create(HKEY_CURRENT_USER, kPath);
    support::SetRaw(HKEY_CURRENT_USER, kPath, L"short", REG_DWORD, {1, 0});
    support::SetRaw(HKEY_CURRENT_USER, kPath, L"binary", REG_BINARY, {1, 0, 0, 0});
    support::SetRaw(HKEY_CURRENT_USER, kPath, L"long", REG_QWORD, {1, 0, 0, 0, 0, 0, 0, 0});
    for (const wchar_t* name : {L"short", L"binary", L"long", L"missing"})
        EXPECT_FALSE(key->ReadDword(name)) << name;
    ASSERT_TRUE(key->WriteDword(L"good", 0x80000001));
    EXPECT_EQ(key->ReadDword(L"good"), 0x80000001);
}

TEST_F(RegKey, PathsAreExpandedByTheirTypeOnly) {
    ::SetEnvironmentVariableW(L"RegKeyTestFolder", L"C:\\Plug-ins");
    support::SetRaw(HKEY_CURRENT_USER, kPath, L"expand", REG_EXPAND_SZ,
                    Terminated(L"%RegKeyTestFolder%\\a.dll"));
    support::SetText(HKEY_CURRENT_USER, kPath, L"plain", L"%RegKeyTestFolder%\\a.dll");
    const auto key = CRegKey::Open(HKEY_CURRENT_USER, kPath);
    EXPECT_EQ(key->ReadPath(L"expand"), L"C:\\Plug-ins\\a.dll");
    EXPECT_EQ(key->ReadPath(L"plain"), L"%RegKeyTestFolder%\\a.dll");
}

TEST_F(RegKey, WritesCountTheTerminatorAndTreesGoWhole) {
    bool existed = true;
    const auto key = CRegKey::Create(HKEY_CURRENT_USER, kPath, KEY_ALL_ACCESS, &existed);
    EXPECT_FALSE(existed);
    EXPECT_TRUE(key->WriteString(nullptr, L"text"));
    EXPECT_EQ(support::Text(HKEY_CURRENT_USER, kPath, nullptr), L"text");
    CRegKey::Create(HKEY_CURRENT_USER, std::wstring(kPath) + L"\\a\\b", KEY_ALL_ACCESS, &existed);
    CRegKey::Create(HKEY_CURRENT_USER, kPath, KEY_ALL_ACCESS, &existed);
    EXPECT_TRUE(existed);
    EXPECT_EQ(key->SubkeyNames(), std::vector<std::wstring>{L"a"});
    for (const std::wstring& nameless : {std::wstring(), std::wstring(kPath) + L"\\"})
        EXPECT_FALSE(CRegKey::DeleteTree(HKEY_CURRENT_USER, nameless));
    EXPECT_TRUE(support::Exists(HKEY_CURRENT_USER, std::wstring(kPath) + L"\\a\\b"));
    EXPECT_TRUE(CRegKey::DeleteTree(HKEY_CURRENT_USER, kPath));
    EXPECT_FALSE(support::Exists(HKEY_CURRENT_USER, kPath));
    EXPECT_FALSE(CRegKey::DeleteTree(HKEY_CURRENT_USER, kPath));
}

}  // namespace
