#include <atomic>
#include <gtest/gtest.h>
#include <thread>

#include "ClsidText.h"
#include "VstInventory.h"
#include "support/RegistrySandbox.h"

namespace {

constexpr wchar_t kKey[] = L"Software\\Studio\\VST";
constexpr wchar_t kPlug[] = L"{00000001-1111-2222-3333-444444444444}";
constexpr wchar_t kMd5[] = L"{0000000A-1111-2222-3333-444444444444}";

/// An entry under construction; a value that is set again is replaced.
class Entry {
  public:
    explicit Entry(const std::wstring& name) : m_path(std::wstring(kKey) + L"\\Inventory\\" + name) {
        Number(L"isVst", 1)
            .Number(L"isX64", 1)
            .Text(L"FullPath", L"C:\\VST\\a.dll")
            .Text(L"FullName", L"Alpha");
    }
    Entry& Text(const wchar_t* name, const std::wstring& text) {
        support::SetText(HKEY_CURRENT_USER, m_path, name, text);
        return *this;
    }
    Entry& Number(const wchar_t* name, DWORD value) {
        support::SetDword(HKEY_CURRENT_USER, m_path, name, value);
        return *this;
    }
    Entry& Raw(const wchar_t* name, DWORD type, const std::vector<BYTE>& bytes) {
        support::SetRaw(HKEY_CURRENT_USER, m_path, name, type, bytes);
        return *this;
    }

  private:
    std::wstring m_path;
};

class VstInventory : public testing::Test {
  protected:
    const VstInventoryRecord* Find(const wchar_t* clsid) const {
        return m_inventory.Find(*ParseClsid(clsid));
    }

    support::RegistrySandbox m_sandbox;
    CVstInventory m_inventory{kKey};
};

TEST_F(VstInventory, ARecordStandsUnderBothItsIds) {
    Entry(L"a")
        .Text(L"clsidPlug", kPlug)
        .Text(L"clsidPlugMD5", kMd5)
        .Text(L"Vendor", L"Tarnwick")
        .Number(L"uniqueId", 0xFFFFFFFF)
        .Number(L"registerAsSynth", 7);
    m_inventory.Read({}, true);
    ASSERT_TRUE(Find(kPlug) && Find(kMd5));
    const VstInventoryRecord& record = *Find(kMd5);
    EXPECT_EQ(record.path, L"C:\\VST\\a.dll");
    EXPECT_EQ(record.name, L"Alpha");
    EXPECT_EQ(record.vendor, L"Tarnwick");
    EXPECT_EQ(record.uniqueId, -1);
    EXPECT_EQ(record.clsid, *ParseClsid(kPlug));
    EXPECT_EQ(record.category, Category::VstInstruments);
    EXPECT_TRUE(record.isX64);
}

TEST_F(VstInventory, AMissingOrForeignIdLeavesTheNullId) {
    Entry(L"a").Text(L"clsidPlug", kPlug);
    Entry(L"b").Text(L"clsidPlug", L"no class id");
    m_inventory.Read({}, true);
    ASSERT_TRUE(Find(kPlug));
    EXPECT_TRUE(Find(kPlug)->md5Clsid.IsNull());
    EXPECT_EQ(m_inventory.Records().size(), 2U) << "the null id and the plug-in's";
}

TEST_F(VstInventory, MalformedValuesAreAbsent) {
    const auto listed = [this](auto&& spoil) {
        support::DeleteTree(HKEY_CURRENT_USER, kKey);
        Entry entry(L"a");
        spoil(entry.Text(L"clsidPlug", kPlug));
        m_inventory.Read({}, true);
        return Find(kPlug) != nullptr;
    };
    EXPECT_TRUE(listed([](Entry&) {}));
    EXPECT_TRUE(listed(
        [](Entry& e) { e.Raw(L"FullPath", REG_EXPAND_SZ, support::Bytes(std::wstring(L"C:\\a\0", 5))); }));
    EXPECT_FALSE(listed([](Entry& e) { e.Raw(L"FullPath", REG_SZ, {'a', 0, 0}); })) << "odd";
    EXPECT_FALSE(listed([](Entry& e) { e.Raw(L"FullPath", REG_SZ, support::Bytes(L"C:\\a")); }))
        << "unterminated";
    EXPECT_FALSE(listed(
        [](Entry& e) { e.Raw(L"FullPath", REG_BINARY, support::Bytes(std::wstring(L"C:\\a\0", 5))); }));
    EXPECT_FALSE(listed([](Entry& e) { e.Text(L"FullPath", std::wstring(260, L'x')); })) << "522 bytes";
    EXPECT_FALSE(listed([](Entry& e) { e.Number(L"clsidPlug", 1); }));
    EXPECT_FALSE(listed([](Entry& e) { e.Text(L"isVst", L"1"); })) << "a text is no number";
    EXPECT_FALSE(listed([](Entry& e) {
        e.Number(L"isVst3", 1).Raw(L"isX64", REG_QWORD, std::vector<BYTE>(8, 1));
    })) << "for a 32-bit VST3";
    EXPECT_TRUE(listed([](Entry& e) { e.Number(L"isShell", 1).Text(L"isShellRoot", L"1"); }));
}

TEST_F(VstInventory, NamesComeFromTheDatabaseWhereItHasOne) {
    Entry(L"a").Text(L"clsidPlugMD5", kMd5);
    Entry(L"b").Text(L"clsidPlug", kPlug).Text(L"FullName", L"Beta");
    m_inventory.Read({{kMd5, L"From the database"}, {kPlug, L"Not looked for"}}, true);
    EXPECT_EQ(Find(kMd5)->name, L"From the database");
    EXPECT_EQ(Find(kPlug)->name, L"Beta") << "names are kept under the MD5 id";
    m_inventory.Read({{kMd5, L""}}, true);
    EXPECT_EQ(Find(kMd5)->name, L"Alpha");
}

TEST_F(VstInventory, TheScannerMayChangeItWhileItIsRead) {
    const std::wstring inventory = std::wstring(kKey) + L"\\Inventory";
    std::atomic<bool> done = false;
    std::jthread scanner([&] {
        while (!done) {
            try {
                for (const wchar_t* name : {L"a", L"b", L"c"}) {
                    Entry(name).Text(L"clsidPlug", kPlug);
                    ::RegDeleteTreeW(HKEY_CURRENT_USER, (inventory + L"\\a").c_str());
                }
            } catch (const std::exception&) {
                // A key that the reader still holds can't be made anew.
            }
            ::RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
        }
    });
    std::size_t found = 0;
    for (int i = 0; i < 500; ++i) {
        m_inventory.Read({}, true);
        for (const auto& [clsid, record] : m_inventory.Records()) EXPECT_EQ(record.path, L"C:\\VST\\a.dll");
        found += m_inventory.Records().size();
    }
    done = true;
    scanner.join();
    EXPECT_GT(found, 0U);
    ::RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
    m_inventory.Read({}, true);
    EXPECT_TRUE(m_inventory.Records().empty()) << "each read starts anew";
    EXPECT_FALSE(m_inventory.OpenEntry(*ParseClsid(kPlug)));
}

}  // namespace
