#include <algorithm>
#include <gtest/gtest.h>

#include "ClsidText.h"
#include "FriendlyNames.h"
#include "support/FileSandbox.h"
#include "support/RegistrySandbox.h"
#include "support/WindowDriver.h"

namespace {

using support::ReadOnlyKey;
using support::SetDword;
using support::SetText;
using support::Text;

constexpr wchar_t kAdapterEntry[] = L"Software\\Corvane Music Software\\Corvane VST Adapter\\Inventory\\a";
constexpr wchar_t kVstEntry[] = L"Software\\Corvane Music Software\\Corvane VST\\Inventory\\a";
constexpr wchar_t kMidi[] = L"SOFTWARE\\Corvane Music Software\\MIDI Filters\\";
constexpr wchar_t kInstances[] = L"CLSID\\{083863F1-70DE-11D0-BD40-00A0C911CE86}\\Instance";

Guid Id(unsigned number) { return {number, 0xABCD, 0x1234, {1, 2, 3, 4, 5, 6, 7, 8}}; }
std::wstring IdText(unsigned number) { return ClsidText(Id(number)); }

class FriendlyNames : public testing::Test {
  protected:
    void SetUp() override { support::RegisterAudioFilter(IdText(1), L"Old"); }

    void Enumerate() {
        m_inventory.ReadAdapterInventory();
        m_inventory.Enumerate(true);
    }
    PluginListItem ItemOf(unsigned number) const {
        const auto& entries = m_inventory.Entries();
        const auto found = std::ranges::find(entries, Id(number), &PluginEntry::clsid);
        if (found == entries.end()) throw std::runtime_error("a plug-in is missing");
        return {.sourceIndex = static_cast<unsigned>(found - entries.begin()),
                .clsid = found->clsid,
                .md5Clsid = {},
                .category = found->category.value()};
    }
    /// Renames and tells what the inventory says then.
    std::wstring Rename(unsigned number, Category expected) {
        Enumerate();
        const PluginListItem item = ItemOf(number);
        EXPECT_EQ(item.category, expected);
        EXPECT_TRUE(m_names.CanRename(item));
        m_names.Rename(item, L"VST New");
        return m_inventory.Entries()[item.sourceIndex].name.value_or(L"");
    }
    static void ExpectText(const std::wstring& classesKey, const wchar_t* name, const wchar_t* text) {
        EXPECT_EQ(Text(HKEY_CLASSES_ROOT, classesKey, name), text) << testing::PrintToString(classesKey);
    }
    /// All keys that a filter's name could go to.
    static void CreateFilterKeys() {
        for (const std::wstring key : {L"Filter\\", L"CorvanePlugIns\\", L"CLSID\\"})
            SetText(HKEY_CLASSES_ROOT, key + IdText(1), nullptr, L"Old");
    }
    void ExpectFilterNames() {
        ExpectText(kInstances, L"FriendlyName", L"VST New");
        ExpectText(L"Filter\\" + IdText(1), nullptr, L"VST New");
        ExpectText(L"CLSID\\" + IdText(1), nullptr, L"VST New");
        ExpectText(L"CorvanePlugIns\\" + IdText(1), L"Description", L"VST New");
        ExpectText(L"CorvanePlugIns\\" + IdText(1), nullptr, L"Old");
        Enumerate();
        EXPECT_EQ(m_inventory.Entries()[ItemOf(1).sourceIndex].name, L"VST New") << "from the property bag";
    }
    static void Wrap(bool synth, bool hostAddsPrefix) {
        SetText(HKEY_LOCAL_MACHINE, kAdapterEntry, L"clsidPlug", IdText(1));
        SetDword(HKEY_LOCAL_MACHINE, kAdapterEntry, L"isVst", 1);
        SetDword(HKEY_LOCAL_MACHINE, kAdapterEntry, L"registerAsSynth", synth);
        SetDword(HKEY_LOCAL_MACHINE, kAdapterEntry, L"addVstPrefix", hostAddsPrefix);
    }

    /// Number 5, with the MD5 id of another number.
    static void AddVst(const std::wstring& entry = kVstEntry, unsigned md5 = 6) {
        SetText(HKEY_CURRENT_USER, entry, L"clsidPlug", L"{00000005-abcd-1234-0102-030405060708}");
        SetText(HKEY_CURRENT_USER, entry, L"clsidPlugMD5", IdText(md5));
        SetText(HKEY_CURRENT_USER, entry, L"FullPath", L"C:\\a.dll");
        SetText(HKEY_CURRENT_USER, entry, L"FullName", L"Old");
        SetDword(HKEY_CURRENT_USER, entry, L"isVst", 1);
        SetDword(HKEY_CURRENT_USER, entry, L"isX64", 1);
    }
    static PluginListItem VstItem() {
        return {.clsid = Id(5), .md5Clsid = Id(6), .fromInventory = true, .category = Category::VstEffects};
    }

    support::RegistrySandbox m_sandbox;
    CPluginDatabase m_noDatabase;
    CPluginInventory m_inventory{kDefaultVstKey, m_noDatabase};
    CFriendlyNames m_names{m_inventory, m_noDatabase};
};

TEST_F(FriendlyNames, AFilterIsRenamedInAllPlacesThatAreThere) {
    CreateFilterKeys();
    EXPECT_EQ(Rename(1, Category::DirectXEffects), L"VST New");
    ExpectFilterNames();
    const std::wstring mark = L"QtzSoftSynths\\" + IdText(1);
    EXPECT_FALSE(support::Exists(HKEY_CLASSES_ROOT, mark)) << "none is created";

    CreateFilterKeys();
    support::CreateKey(HKEY_CLASSES_ROOT, mark);
    Rename(1, Category::DirectXInstruments);
    ExpectFilterNames();
    ExpectText(mark, L"Description", L"VST New");

    for (const bool synth : {false, true}) {
        CreateFilterKeys();
        Wrap(synth, synth);
        Rename(1, synth ? Category::LegacyVstInstruments : Category::LegacyVstEffects);
        ExpectFilterNames();
        EXPECT_EQ(Text(HKEY_LOCAL_MACHINE, kAdapterEntry, L"FullName"), synth ? L"New" : L"VST New")
            << "the prefix is left to the host";
    }
}

TEST_F(FriendlyNames, AFilterThatRefusesItsNameKeepsItEverywhere) {
    CreateFilterKeys();
    Wrap(false, true);
    Enumerate();
    const PluginListItem item = ItemOf(1);
    const ReadOnlyKey readOnly(HKEY_CLASSES_ROOT, std::wstring(kInstances) + L"\\" + IdText(1));
    m_names.Rename(item, L"New");
    EXPECT_FALSE(Text(HKEY_CLASSES_ROOT, kInstances, L"FriendlyName"));
    ExpectText(L"Filter\\" + IdText(1), nullptr, L"Old");
    ExpectText(L"CLSID\\" + IdText(1), nullptr, L"Old");
    SetText(HKEY_CLASSES_ROOT, L"CLSID\\" + IdText(1), nullptr, L"New");
    Enumerate();
    ASSERT_EQ(ItemOf(1).category, Category::LegacyVstEffects);
    EXPECT_EQ(CFriendlyNames::CorrectWrapped(m_inventory), 0U) << "what is refused is no correction";
}

TEST_F(FriendlyNames, ALockedKeyKeepsItsNameAndTheOthersAreWritten) {
    CreateFilterKeys();
    AddVst();
    Enumerate();
    const ReadOnlyKey filter(HKEY_CLASSES_ROOT, L"Filter\\" + IdText(1));
    const ReadOnlyKey vst(HKEY_CURRENT_USER, kVstEntry);
    m_names.Rename(ItemOf(1), L"New");
    ExpectText(L"Filter\\" + IdText(1), nullptr, L"Old");
    ExpectText(L"CLSID\\" + IdText(1), nullptr, L"New");
    m_names.Rename(VstItem(), L"New");
    EXPECT_EQ(Text(HKEY_CURRENT_USER, kVstEntry, L"FullName"), L"Old");
    EXPECT_EQ(m_inventory.Vst().Find(Id(5))->name, L"Old") << "as it is stored";
}

TEST_F(FriendlyNames, ANameOfAnyKindIsFoundAgain) {
    support::RegisterAudioDmo(IdText(2), L"Old");
    SetText(HKEY_CLASSES_ROOT, L"CorvaneControlSurfaces\\" + IdText(3), L"Description", L"Old");
    AddVst();
    Enumerate();
    for (const std::wstring& name : {std::wstring(L"x"), std::wstring(L"  "), std::wstring(L"\x1\t\x7F"),
                                     std::wstring(L"\xD83C\xDFB9"), std::wstring(2000, L'x')}) {
        for (const unsigned number : {1U, 2U, 3U}) {
            const PluginListItem item = ItemOf(number);
            m_names.Rename(item, name);
            const auto listed = m_inventory.Entries()[item.sourceIndex].name;
            Enumerate();
            EXPECT_EQ(ItemOf(number).category, item.category) << number;
            EXPECT_EQ(m_inventory.Entries()[ItemOf(number).sourceIndex].name, listed) << number;
        }
        m_names.Rename(VstItem(), name);
        const std::wstring listed = m_inventory.Vst().Find(Id(5))->name;
        Enumerate();
        EXPECT_EQ(m_inventory.Vst().Find(Id(5))->name, listed);
        EXPECT_TRUE(name.starts_with(listed) && !listed.empty());
    }
}

TEST_F(FriendlyNames, OtherSourcesHaveTheirOwnPlaces) {
    support::RegisterAudioDmo(IdText(2), L"Old");
    EXPECT_EQ(Rename(2, Category::MediaObjects), L"VST New");
    const std::wstring bare = IdText(2).substr(1, 36);
    ExpectText(L"DirectShow\\MediaObjects\\" + bare, nullptr, L"VST New");

    SetText(HKEY_CLASSES_ROOT, L"CorvaneControlSurfaces\\" + IdText(3), L"Description", L"Old");
    EXPECT_EQ(Rename(3, Category::ControlSurfaces), L"VST New");
    ExpectText(L"CorvaneControlSurfaces\\" + IdText(3), L"Description", L"VST New");

    // Its name is read from the real registry, so it is no row here; the item stands for one.
    SetText(HKEY_LOCAL_MACHINE, kMidi + IdText(4), nullptr, L"Old");
    SetText(HKEY_CLASSES_ROOT, L"CLSID\\" + IdText(4), nullptr, L"Old");
    SetText(HKEY_CLASSES_ROOT, L"CorvanePlugIns\\" + IdText(4), L"Description", L"Old");
    m_names.Rename({.clsid = Id(4), .md5Clsid = {}, .category = Category::MidiEffects}, L"New");
    EXPECT_EQ(Text(HKEY_LOCAL_MACHINE, kMidi + IdText(4), nullptr), L"New");
    ExpectText(L"CLSID\\" + IdText(4), nullptr, L"New");
    ExpectText(L"CorvanePlugIns\\" + IdText(4), L"Description", L"New");
}

TEST_F(FriendlyNames, AVstIsRenamedInItsInventory) {
    AddVst();
    struct Case {
        Category category;
        unsigned row;
        DWORD prefix;
        const wchar_t* stored;
    };
    for (const auto& [category, row, prefix, stored] : {Case{Category::VstEffects, 5, 1, L"New"},
                                                        {Category::VstInstruments, 5, 0, L"VST New"},
                                                        {Category::Vst3Effects, 6, 2, L"New"},
                                                        {Category::Vst3Instruments, 6, 0, L"VST New"}}) {
        const bool vst3 = category == Category::Vst3Effects || category == Category::Vst3Instruments;
        SetDword(HKEY_CURRENT_USER, kVstEntry, L"isVst", !vst3);
        SetDword(HKEY_CURRENT_USER, kVstEntry, L"isVst3", vst3);
        SetDword(HKEY_CURRENT_USER, kVstEntry, L"addVstPrefix", prefix);
        SetText(HKEY_CURRENT_USER, kVstEntry, L"FullName", L"Old");
        Enumerate();
        m_names.Rename({.clsid = Id(row), .md5Clsid = Id(6), .fromInventory = true, .category = category},
                       L"VST New");
        EXPECT_EQ(Text(HKEY_CURRENT_USER, kVstEntry, L"FullName"), stored);
        for (const unsigned id : {5U, 6U}) EXPECT_EQ(m_inventory.Vst().Find(Id(id))->name, stored) << id;
    }
}

TEST_F(FriendlyNames, OfTwoCopiesOfAVstTheOneThatIsListedIsRenamed) {
    const std::wstring other = std::wstring(kVstEntry) + L"2";
    AddVst();
    AddVst(other, 7);
    Enumerate();
    ASSERT_EQ(m_inventory.Vst().Find(Id(5))->md5Clsid, Id(7));
    PluginListItem listed = VstItem();
    listed.md5Clsid = Id(7);
    m_names.Rename(listed, L"New");
    EXPECT_EQ(Text(HKEY_CURRENT_USER, other.c_str(), L"FullName"), L"New");
    EXPECT_EQ(m_inventory.Vst().Find(Id(6))->name, L"Old");
    Enumerate();
    EXPECT_EQ(m_inventory.Vst().Find(Id(5))->name, L"New");
}

TEST_F(FriendlyNames, WrappedPluginsFollowTheNameOfTheirClass) {
    CreateFilterKeys();
    Wrap(false, true);
    Enumerate();
    EXPECT_EQ(CFriendlyNames::CorrectWrapped(m_inventory), 0U);
    for (const std::wstring& unusable : {std::wstring(), std::wstring(128, L'x')}) {
        SetText(HKEY_CLASSES_ROOT, L"CLSID\\" + IdText(1), nullptr, unusable);
        EXPECT_EQ(CFriendlyNames::CorrectWrapped(m_inventory), 0U);
    }
    SetText(HKEY_CLASSES_ROOT, L"CLSID\\" + IdText(1), nullptr, L"VST New");
    EXPECT_EQ(CFriendlyNames::CorrectWrapped(m_inventory), 1U);
    ExpectFilterNames();
    EXPECT_EQ(Text(HKEY_LOCAL_MACHINE, kAdapterEntry, L"FullName"), L"New");
    EXPECT_EQ(CFriendlyNames::CorrectWrapped(m_inventory), 0U);
}

/// With a database of its own, which calls filter 1 "Of the database".
class FriendlyNamesWithDatabase : public FriendlyNames {
  protected:
    void SetUp() override {
        FriendlyNames::SetUp();
        m_files.Write(L"names.txt", support::Utf8(IdText(1)) + "\tOf the database\n");
        std::filesystem::copy_file(support::BesideTest(L"Database\\VrnDatabase.dll"), m_files.Path(L"d.dll"));
        m_database.Open(m_files.Path(L"d.dll"));
        m_inventory.ReadAdapterInventory();
        m_inventory.Enumerate(true);
    }
    support::FileSandbox m_files;
    CPluginDatabase m_database;
    CPluginInventory m_inventory{kDefaultVstKey, m_database};
    CFriendlyNames m_names{m_inventory, m_database};
};

TEST_F(FriendlyNamesWithDatabase, ItNamesThePluginsAndIsToldOfNewNamesAlone) {
    ASSERT_EQ(m_inventory.Entries().front().name, L"Of the database");
    const PluginListItem filter{.clsid = Id(1), .md5Clsid = {}, .category = Category::DirectXInstruments};
    m_names.Rename(filter, L"New");
    AddVst();
    m_names.Rename(VstItem(), L"refused");
    EXPECT_EQ(m_files.Read(L"calls.txt"), "fill\nset\t" + support::Utf8(IdText(1)) + "\t2\tNew\nset\t" +
                                              support::Utf8(IdText(6)) + "\t0\trefused\n");
    EXPECT_EQ(m_inventory.Entries().front().name, L"New");
    EXPECT_EQ(Text(HKEY_CURRENT_USER, kVstEntry, L"FullName"), L"Old");
    EXPECT_FALSE(Text(HKEY_CLASSES_ROOT, kInstances, L"FriendlyName"));
}

TEST_F(FriendlyNamesWithDatabase, ItsNamesAreNoReasonToCorrectAnything) {
    CreateFilterKeys();
    Wrap(false, false);
    m_inventory.ReadAdapterInventory();
    m_inventory.Enumerate(true);
    ASSERT_EQ(m_inventory.Entries().front().name, L"Of the database");
    ASSERT_EQ(m_inventory.Entries().front().category, Category::LegacyVstEffects);
    EXPECT_EQ(CFriendlyNames::CorrectWrapped(m_inventory), 0U);
    SetText(HKEY_CLASSES_ROOT, L"CLSID\\" + IdText(1), nullptr, L"VST New");
    EXPECT_EQ(CFriendlyNames::CorrectWrapped(m_inventory), 1U);
    m_inventory.Enumerate(true);
    EXPECT_EQ(CFriendlyNames::CorrectWrapped(m_inventory), 0U) << "once";
}

TEST(PluginDatabase, ALibraryThatIsNoneLeavesRegistryMode) {
    const support::FileSandbox files;
    std::filesystem::copy_file(support::BesideTest(L"Database\\VrnDatabase.dll"), files.Path(L"null.dll"));
    for (const std::wstring& library :
         {files.Path(L"missing.dll"), files.Path(L"null.dll"), files.Write(L"text.dll", "not a library"),
          std::wstring(L"C:\\windows\\system32\\version.dll")}) {
        CPluginDatabase database;
        database.Open(library);
        EXPECT_FALSE(database.IsOpen()) << support::Utf8(library);
        EXPECT_TRUE(database.Names().empty());
    }
}

}  // namespace
