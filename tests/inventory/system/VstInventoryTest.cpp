#include <gtest/gtest.h>

#include "VstInventory.h"
#include "support/TestPlugins.h"
#include "support/WindowActions.h"

namespace {

using namespace support;

TEST(VstInventory, AnEntryNeedsItsKindItsIdAndItsFile) {
    const RegistrySandbox sandbox;
    CVstInventory inventory(kDefaultVstKey);
    const std::wstring path = std::wstring(kSomeFile) + L'\0';
    const std::vector<BYTE> zero(4), one = {1, 0, 0, 0};
    const struct {
        const wchar_t* name;
        DWORD type;
        std::vector<BYTE> bytes;
        bool listed;
    } cases[] = {
        {L"isVst", REG_DWORD, one, true},
        {L"isVst", REG_DWORD, zero, false},
        {L"isVst", REG_BINARY, one, false},
        {L"isShellRoot", REG_DWORD, one, false},
        {L"isShellRoot", REG_BINARY, one, true},
        {L"isShell", REG_DWORD, zero, true},
        {L"isBad", REG_DWORD, one, false},
        {L"isBad", REG_QWORD, std::vector<BYTE>(8, 1), true},
        {L"clsidPlug", REG_SZ, Bytes(IdText(1)), false},
        {L"FullPath", REG_EXPAND_SZ, Bytes(path), true},
        {L"FullPath", REG_BINARY, Bytes(path), false},
        {L"FullPath", REG_SZ, Bytes(kSomeFile), false},
        {L"FullPath", REG_SZ, Bytes(std::wstring(260, L'x') + L'\0'), false},
    };
    for (const auto& c : cases) {
        AddVst(1, L"a").Number(L"clsidPlugMD5", 0).Number(L"isShell", 1);  // a shell's member
        SetRaw(HKEY_CURRENT_USER, std::wstring(kVstInventory) + L"a", c.name, c.type, c.bytes);
        inventory.Read({}, true);
        EXPECT_EQ(!inventory.Records().empty(), c.listed)
            << Utf8(c.name) << ' ' << c.type << ' ' << c.bytes.size();
        DeleteTree(HKEY_CURRENT_USER, std::wstring(kVstInventory) + L"a");
        EXPECT_FALSE(inventory.OpenEntry(Id(1))) << "it is gone";
    }
}

}  // namespace
