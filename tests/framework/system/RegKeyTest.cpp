#include <gtest/gtest.h>

#include "RegKey.h"
#include "support/RegistrySandbox.h"

namespace {

const HKEY kRoot = HKEY_CURRENT_USER;
const std::wstring kPath = L"Software\\RegKeyTest";

const std::wstring kLong(500'000, L'x');
const std::wstring kAtLimit = kLong.substr(0, 259);

std::vector<BYTE> Terminated(std::wstring text) {
    text += L'\0';
    return support::Bytes(text);
}

class RegKey : public testing::Test {
  protected:
    support::RegistrySandbox m_sandbox;
};

TEST_F(RegKey, OnlyWellFormedTextsAreReadAndOnlyExpandableOnesExpanded) {
    ::SetEnvironmentVariableW(L"RegKeyTest", L"C:\\Plug-ins");
    const struct {
        const char* what;
        DWORD type;
        std::vector<BYTE> bytes;
        std::optional<std::wstring> strict, loose;
    } cases[] = {
        {"good", REG_SZ, Terminated(L"%RegKeyTest%\\a"), L"%RegKeyTest%\\a", L"%RegKeyTest%\\a"},
        {"expandable", REG_EXPAND_SZ, Terminated(L"%RegKeyTest%\\a"), L"%RegKeyTest%\\a", L"C:\\Plug-ins\\a"},
        {"nothing to expand", REG_EXPAND_SZ, Terminated(L"%no%"), L"%no%", L"%no%"},
        {"empty", REG_SZ, {}, L"", L""},
        {"terminator only", REG_SZ, Terminated(L""), L"", L""},
        {"no terminator", REG_SZ, support::Bytes(L"abc"), std::nullopt, L"abc"},
        {"odd size", REG_SZ, {'a', 0, 0}, std::nullopt, std::nullopt},
        {"one byte", REG_SZ, {0}, std::nullopt, std::nullopt},
        {"zero inside", REG_SZ, Terminated(std::wstring(L"ab\0cd", 5)), L"ab", L"ab"},
        {"number", REG_DWORD, {'a', 0, 0, 0}, std::nullopt, std::nullopt},
        {"binary", REG_BINARY, Terminated(L"abc"), std::nullopt, std::nullopt},
        {"list", REG_MULTI_SZ, Terminated(L"abc"), std::nullopt, std::nullopt},
        {"at the limit", REG_SZ, Terminated(kAtLimit), kAtLimit, kAtLimit},
        {"past the limit", REG_SZ, Terminated(kAtLimit + L'x'), std::nullopt, std::nullopt},
        {"enormous", REG_SZ, Terminated(kLong), std::nullopt, std::nullopt},
    };
    for (const auto& c : cases) {
        support::SetRaw(kRoot, kPath, L"value", c.type, c.bytes);
        const auto key = CRegKey::Open(kRoot, kPath);
        ASSERT_TRUE(key);
        EXPECT_EQ(key->ReadString(L"value", kPathBytes), c.strict) << c.what;
        EXPECT_EQ(key->ReadPath(L"value"), c.strict ? c.loose : std::nullopt) << c.what;
        EXPECT_EQ(key->ReadUnterminated(L"value", kPathBytes), c.loose) << c.what;
        if (c.bytes.size() <= kPathBytes) continue;
        EXPECT_EQ(key->ReadString(L"value", c.bytes.size()),
                  kLong.substr(0, c.bytes.size() / sizeof(wchar_t) - 1));
        EXPECT_FALSE(key->ReadString(L"value", c.bytes.size() - 1)) << c.what;
    }
}

TEST_F(RegKey, OnlyRealNumbersCount) {
    const auto key = CRegKey::Create(kRoot, kPath);
    support::SetRaw(kRoot, kPath, L"short", REG_DWORD, {1, 0});
    support::SetRaw(kRoot, kPath, L"binary", REG_BINARY, {1, 0, 0, 0});
    support::SetRaw(kRoot, kPath, L"long", REG_QWORD, {1, 0, 0, 0, 0, 0, 0, 0});
    for (const wchar_t* name : {L"short", L"binary", L"long", L"missing"})
        EXPECT_FALSE(key->ReadDword(name)) << name;
    ASSERT_TRUE(key->WriteDword(L"good", 0x80000001));
    EXPECT_EQ(key->ReadDword(L"good"), 0x80000001);
}

TEST_F(RegKey, WritesCountTheTerminatorAndTreesGoWhole) {
    bool existed = true;
    const auto key = CRegKey::Create(kRoot, kPath, KEY_ALL_ACCESS, &existed);
    EXPECT_FALSE(existed);
    EXPECT_TRUE(key->WriteString(nullptr, L"text"));
    EXPECT_EQ(support::Text(kRoot, kPath, nullptr), L"text");
    for (const wchar_t* below : {L"\\a\\b", L"\\longer"}) support::CreateKey(kRoot, kPath + below);
    CRegKey::Create(kRoot, kPath, KEY_ALL_ACCESS, &existed);
    EXPECT_TRUE(existed);
    EXPECT_EQ(key->SubkeyNames(), (std::vector<std::wstring>{L"a", L"longer"}));
    for (const std::wstring& nameless : {std::wstring(), kPath + L"\\"})
        EXPECT_FALSE(CRegKey::DeleteTree(kRoot, nameless));
    EXPECT_TRUE(support::Exists(kRoot, kPath + L"\\a\\b"));
    EXPECT_TRUE(CRegKey::DeleteTree(kRoot, kPath));
    EXPECT_FALSE(support::Exists(kRoot, kPath));
    EXPECT_FALSE(CRegKey::DeleteTree(kRoot, kPath));
}

}  // namespace
