#include <gtest/gtest.h>

#include "VstInventory.h"
#include "support/TestPlugins.h"
#include "support/WindowActions.h"

namespace {

using namespace support;

class VstInventory : public testing::Test {
  protected:
    const VstInventoryRecord* Find(unsigned number) const { return m_inventory.Find(Id(number)); }
    void Read() { m_inventory.Read({}, true); }

    RegistrySandbox m_sandbox;
    CVstInventory m_inventory{kDefaultVstKey};
};

TEST_F(VstInventory, ARecordStandsUnderBothItsIds) {
    AddVst(1, L"a").Number(L"registerAsSynth", 7);
    AddVst(2, L"b").Text(L"clsidPlugMD5", L"no class id");
    AddVst(3, L"c").Number(L"clsidPlugMD5", 1);
    Read();
    ASSERT_TRUE(Find(1) && Find(101) && Find(2) && Find(3));
    EXPECT_EQ(Find(101)->clsid, Id(1));
    EXPECT_EQ(Find(1)->category, Category::VstInstruments);
    EXPECT_TRUE(Find(2)->md5Clsid.IsNull() && Find(3)->md5Clsid.IsNull());
    EXPECT_EQ(m_inventory.Records().size(), 5U) << "with the null id";
}

TEST_F(VstInventory, MalformedValuesAreAbsent) {
    const std::wstring path = std::wstring(kSomeFile) + L'\0';
    const struct {
        const wchar_t* name;
        DWORD type;
        std::vector<BYTE> bytes;
        bool listed;
    } cases[] = {
        {L"FullPath", REG_EXPAND_SZ, Bytes(path), true},
        {L"FullPath", REG_BINARY, Bytes(path), false},
        {L"FullPath", REG_SZ, Bytes(kSomeFile), false},
        {L"FullPath", REG_SZ, Bytes(std::wstring(260, L'x') + L'\0'), false},
        {L"clsidPlug", REG_SZ, Bytes(IdText(1)), false},
        {L"isVst", REG_SZ, Bytes(L"1"), false},
        {L"isShellRoot", REG_BINARY, {1, 0, 0, 0}, true},
        {L"isBad", REG_QWORD, std::vector<BYTE>(8, 1), true},
    };
    for (const auto& c : cases) {
        AddVst(1, L"a").Number(L"clsidPlugMD5", 0).Number(L"isShell", 1);
        SetRaw(HKEY_CURRENT_USER, std::wstring(kVstInventory) + L"a", c.name, c.type, c.bytes);
        Read();
        EXPECT_EQ(Find(1) != nullptr, c.listed) << Utf8(c.name) << ' ' << c.type << ' ' << c.bytes.size();
        DeleteTree(HKEY_CURRENT_USER, std::wstring(kVstInventory) + L"a");
    }
}

TEST_F(VstInventory, AnEntryThatCannotBeOpenedIsPassedOver) {
    for (const unsigned n : {1U, 2U, 3U}) AddVst(n, std::to_wstring(n));
    {
        const ReadOnlyKey locked(HKEY_CURRENT_USER, std::wstring(kVstInventory) + L"2");
        Read();
        EXPECT_TRUE(Find(1) && !Find(2) && Find(3));
        EXPECT_FALSE(m_inventory.OpenEntry(Id(2)));
    }
    DeleteTree(HKEY_CURRENT_USER, kDefaultVstKey);
    Read();
    EXPECT_TRUE(m_inventory.Records().empty()) << "each reading starts anew";
    EXPECT_FALSE(m_inventory.OpenEntry(Id(1)));
}

}  // namespace
