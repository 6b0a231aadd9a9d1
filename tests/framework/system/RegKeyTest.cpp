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
        {"empty", REG_SZ, {}, L"", L""},
        {"no terminator", REG_SZ, support::Bytes(L"abc"), std::nullopt, L"abc"},
        {"odd size", REG_SZ, {'a', 0, 0}, std::nullopt, std::nullopt},
        {"zero inside", REG_SZ, Terminated(std::wstring(L"ab\0cd", 5)), L"ab", L"ab"},
        {"binary", REG_BINARY, Terminated(L"abc"), std::nullopt, std::nullopt},
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

TEST_F(RegKey, TreesGoWholeAndNoRootDoes) {
    for (const wchar_t* below : {L"\\a\\b", L"\\longer"}) support::CreateKey(kRoot, kPath + below);
    for (const std::wstring& nameless : {std::wstring(), kPath + L"\\"})
        EXPECT_FALSE(CRegKey::DeleteTree(kRoot, nameless));
    EXPECT_EQ(support::Subkeys(kRoot, kPath), (std::vector<std::wstring>{L"a", L"longer"}));
    EXPECT_TRUE(CRegKey::DeleteTree(kRoot, kPath));
    EXPECT_FALSE(support::Exists(kRoot, kPath));
    EXPECT_FALSE(CRegKey::DeleteTree(kRoot, kPath));
}

}  // namespace
