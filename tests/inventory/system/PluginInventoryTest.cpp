#include <algorithm>
#include <gtest/gtest.h>

#include "ClsidText.h"
#include "ExclusionList.h"
#include "PluginInventory.h"
#include "PluginRemoval.h"
#include "support/RegistrySandbox.h"

namespace {

using support::Exists;
using support::SetDword;
using support::SetText;

constexpr wchar_t kAdapterEntry[] = L"Software\\Corvane Music Software\\Corvane VST Adapter\\Inventory\\";
constexpr wchar_t kMidi[] = L"SOFTWARE\\Corvane Music Software\\MIDI Filters\\";
constexpr wchar_t kSurfaces[] = L"CorvaneControlSurfaces\\";
constexpr wchar_t kSynths[] = L"QtzSoftSynths\\";
constexpr wchar_t kExcluded[] = L"Software\\Corvane Music Software\\ExcludedPlugIns\\";

/// {00000007-...}: the class id number 7.
Guid Id(unsigned number) { return {number, 0xABCD, 0x1234, {1, 2, 3, 4, 5, 6, 7, 8}}; }
std::wstring IdText(unsigned number) { return ClsidText(Id(number)); }

class PluginInventory : public testing::Test {
  protected:
    void Enumerate(bool classified = true) {
        m_inventory.ReadAdapterInventory();
        m_inventory.Enumerate(classified);
    }
    const PluginEntry* Find(unsigned number) const {
        const auto found = std::ranges::find(m_inventory.Entries(), Id(number), &PluginEntry::clsid);
        return found == m_inventory.Entries().end() ? nullptr : &*found;
    }
    std::optional<Category> CategoryOf(unsigned number) const {
        const PluginEntry* entry = Find(number);
        return entry ? entry->category : std::nullopt;
    }

    support::RegistrySandbox m_sandbox;
    CPluginDatabase m_noDatabase;
    CPluginInventory m_inventory{kDefaultVstKey, m_noDatabase};
};

TEST_F(PluginInventory, FiltersAreClassifiedByWhatElseIsRegistered) {
    for (unsigned n = 1; n <= 6; ++n)
        support::RegisterAudioFilter(IdText(n), L"Filter " + std::to_wstring(n));
    support::RegisterAudioDmo(IdText(2), L"Also a media object");
    support::RegisterAudioDmo(IdText(7), L"A media object");
    support::CreateKey(HKEY_CLASSES_ROOT, kSynths + IdText(3));
    support::CreateKey(HKEY_LOCAL_MACHINE, kMidi + IdText(3));
    SetText(HKEY_LOCAL_MACHINE, std::wstring(kAdapterEntry) + L"a", L"clsidPlug", IdText(4));
    SetDword(HKEY_LOCAL_MACHINE, std::wstring(kAdapterEntry) + L"a", L"isVst", 1);
    SetText(HKEY_LOCAL_MACHINE, std::wstring(kAdapterEntry) + L"b", L"clsidPlug", IdText(5));
    SetDword(HKEY_LOCAL_MACHINE, std::wstring(kAdapterEntry) + L"b", L"isVst", 1);
    SetDword(HKEY_LOCAL_MACHINE, std::wstring(kAdapterEntry) + L"b", L"registerAsSynth", 1);
    // Not a VST: the filter is an ordinary one.
    SetText(HKEY_LOCAL_MACHINE, std::wstring(kAdapterEntry) + L"c", L"clsidPlug", IdText(6));

    EXPECT_TRUE(m_inventory.ReadAdapterInventory());
    Enumerate();
    EXPECT_EQ(CategoryOf(1), Category::DirectXEffects);
    EXPECT_EQ(CategoryOf(2), Category::MediaObjects);
    EXPECT_EQ(CategoryOf(3), Category::DirectXInstruments);
    EXPECT_EQ(CategoryOf(4), Category::LegacyVstEffects);
    EXPECT_EQ(CategoryOf(5), Category::LegacyVstInstruments);
    EXPECT_EQ(CategoryOf(6), Category::DirectXEffects);
    EXPECT_EQ(CategoryOf(7), Category::MediaObjects);
    EXPECT_EQ(Find(1)->name, L"Filter 1");
    EXPECT_EQ(Find(7)->name, L"A media object");

    Enumerate(false);
    EXPECT_TRUE(Find(1));
    EXPECT_FALSE(CategoryOf(1)) << "without a selected category nothing is classified";
}

TEST_F(PluginInventory, MidiEffectsAndSurfacesNeedAName) {
    support::CreateKey(HKEY_LOCAL_MACHINE, kMidi + IdText(1));
    support::CreateKey(HKEY_CLASSES_ROOT, kSurfaces + IdText(2));
    SetText(HKEY_CLASSES_ROOT, kSurfaces + IdText(3), L"Description", L"Faders");
    SetText(HKEY_CLASSES_ROOT, kSurfaces + IdText(4), L"Description", std::wstring(127, L'x'));
    SetText(HKEY_CLASSES_ROOT, kSurfaces + IdText(5), L"Description", std::wstring(128, L'x'));
    Enumerate();
    EXPECT_FALSE(Find(1) || Find(2) || Find(5));
    EXPECT_EQ(CategoryOf(3), Category::ControlSurfaces);
    EXPECT_TRUE(Find(4)) << "256 bytes with the terminator";
}

TEST_F(PluginInventory, AKeyThatIsNoClassIdEndsItThere) {
    SetText(HKEY_CLASSES_ROOT, kSurfaces + IdText(1), L"Description", L"Before");
    SetText(HKEY_CLASSES_ROOT, std::wstring(kSurfaces) + L"{nonsense}", L"Description", L"Nonsense");
    SetText(HKEY_CLASSES_ROOT, std::wstring(kDefaultVstKey), L"unused", L"");
    const std::wstring vst = std::wstring(kDefaultVstKey) + L"\\Inventory\\a";
    SetDword(HKEY_CURRENT_USER, vst, L"isVst", 1);
    SetText(HKEY_CURRENT_USER, vst, L"clsidPlug", IdText(9));
    SetText(HKEY_CURRENT_USER, vst, L"FullPath", L"C:\\a.dll");
    Enumerate();
    EXPECT_TRUE(Find(1));
    EXPECT_TRUE(m_inventory.Vst().Records().empty()) << "the VST inventory comes after the break";
    support::DeleteTree(HKEY_CLASSES_ROOT, std::wstring(kSurfaces) + L"{nonsense}");
    Enumerate();
    EXPECT_TRUE(m_inventory.Vst().Find(Id(9)));
}

TEST_F(PluginInventory, NoMoreThan4096Entries) {
    for (unsigned n = 1; n <= 4100; ++n)
        SetText(HKEY_CLASSES_ROOT, kSurfaces + IdText(n), L"Description", L"Faders");
    support::RegisterAudioFilter(IdText(5000), L"A filter, which comes first");
    Enumerate();
    EXPECT_EQ(m_inventory.Entries().size(), kMaxEntries);
    EXPECT_TRUE(Find(5000));
}

TEST_F(PluginInventory, PathsComeFromTheRegistrationOfTheCategory) {
    SetText(HKEY_LOCAL_MACHINE, std::wstring(kAdapterEntry) + L"a", L"clsidPlug", IdText(1));
    SetText(HKEY_LOCAL_MACHINE, std::wstring(kAdapterEntry) + L"a", L"FullPath", L"C:\\wrapped.dll");
    SetText(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID\\" + IdText(1) + L"\\InprocServer32", nullptr,
            L"C:\\server.dll");
    const std::wstring vst = std::wstring(kDefaultVstKey) + L"\\Inventory\\a";
    SetText(HKEY_CURRENT_USER, vst, L"clsidPlugMD5", IdText(2));
    SetText(HKEY_CURRENT_USER, vst, L"FullPath", L"C:\\unusable.vst3");
    Enumerate();
    EXPECT_EQ(m_inventory.PathOf(Id(1), Category::DirectXEffects), L"C:\\server.dll");
    EXPECT_EQ(m_inventory.PathOf(Id(1), Category::LegacyVstEffects), L"C:\\wrapped.dll");
    EXPECT_EQ(m_inventory.PathOf(Id(2), Category::Vst3Effects), L"C:\\unusable.vst3");
    EXPECT_FALSE(m_inventory.PathOf(Id(3), Category::DirectXEffects));
    support::SetRaw(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID\\" + IdText(3) + L"\\InprocServer32",
                    nullptr, REG_SZ, support::Bytes(L"C:\\server.dll"));
    EXPECT_EQ(m_inventory.PathOf(Id(3), Category::DirectXEffects), L"C:\\server.dll") << "unterminated";
}

TEST_F(PluginInventory, AMissingPluginIsTakenOutOfItsRegistration) {
    support::RegisterAudioFilter(IdText(1), L"Synth");
    support::RegisterAudioDmo(IdText(2), L"Media object");
    support::CreateKey(HKEY_CLASSES_ROOT, kSynths + IdText(1) + L"\\below");
    UnregisterPlugin(Id(1), Category::DirectXInstruments);
    UnregisterPlugin(Id(2), Category::MediaObjects);
    UnregisterPlugin(Id(3), Category::DirectXEffects);  // registered nowhere
    Enumerate();
    EXPECT_FALSE(Find(1) || Find(2));
    EXPECT_FALSE(Exists(HKEY_CLASSES_ROOT, kSynths + IdText(1)));
}

class ExclusionList : public PluginInventory {};

TEST_F(ExclusionList, EntriesAreNamedByClassIdAndHoldTheName) {
    CExclusionList::Exclude(Id(1), L"Hall");
    CExclusionList::Exclude(Id(2), L"");
    EXPECT_EQ(support::Text(HKEY_CURRENT_USER, kExcluded + IdText(1), nullptr), L"Hall");
    CExclusionList list;
    list.Load();
    EXPECT_TRUE(list.Contains(Id(1)) && list.Contains(Id(2)));
    support::CreateKey(HKEY_CURRENT_USER, kExcluded + IdText(1) + L"\\below");
    CExclusionList::Enable(Id(1));
    list.Load();
    EXPECT_FALSE(list.Contains(Id(1)));
    EXPECT_FALSE(Exists(HKEY_CURRENT_USER, kExcluded + IdText(1)));
}

TEST_F(ExclusionList, ANameThatIsNoClassIdEndsTheLoading) {
    for (unsigned n = 1; n <= 3; ++n) CExclusionList::Exclude(Id(n), L"x");
    support::CreateKey(HKEY_CURRENT_USER, std::wstring(kExcluded) + L"zzz");
    CExclusionList list;
    list.Load();
    // The registry enumerates in its own order; what comes after the stranger does not count.
    const auto names =
        support::Subkeys(HKEY_CURRENT_USER, L"Software\\Corvane Music Software\\ExcludedPlugIns");
    bool reached = true;
    for (const std::wstring& name : names) {
        const auto clsid = ParseClsid(name);
        reached = reached && clsid;
        EXPECT_EQ(clsid && list.Contains(*clsid), reached);
    }
    EXPECT_EQ(names.size(), 4U);
}

TEST_F(ExclusionList, NoMoreThan4096) {
    for (unsigned n = 1; n <= 4100; ++n) support::CreateKey(HKEY_CURRENT_USER, kExcluded + IdText(n));
    CExclusionList list;
    list.Load();
    unsigned count = 0;
    for (unsigned n = 1; n <= 4100; ++n) count += list.Contains(Id(n));
    EXPECT_EQ(count, 4096U);
}

}  // namespace
