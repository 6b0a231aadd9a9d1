#include "ExclusionList.h"
#include "MediaObjectRegister.h"
#include "inventory/system/EnumeratedPlugins.h"

namespace {

using namespace support;

using PluginInventory = EnumeratedPlugins;

TEST_F(PluginInventory, TheFirstRegistrationThatTellsTheKindCounts) {
    Enumerate();
    ASSERT_TRUE(m_inventory.Entries().empty()) << "nothing comes from the registry of the system";
    // Of filters 1 to 7 each is registered as what those before it are, and as one thing more.
    for (unsigned n = 1; n <= 7; ++n) RegisterAudioFilter(IdText(n), L"Filter");
    for (unsigned n = 2; n <= 7; ++n) AddSurface(n, L"Faders");
    for (unsigned n = 3; n <= 7; ++n) CreateKey(HKEY_LOCAL_MACHINE, kMidiFilters + IdText(n));
    for (unsigned n = 4; n <= 7; ++n) CreateKey(HKEY_CLASSES_ROOT, kSoftSynths + IdText(n));
    for (unsigned n = 5; n <= 7; ++n) Wrap(n, std::to_wstring(n)).Number(L"registerAsSynth", n != 5);
    for (const unsigned n : {7U, 9U}) RegisterAudioDmo(IdText(n), L"A media object");
    Wrap(8, L"no VST").Number(L"isVst", 0);
    ASSERT_TRUE(Enumerate());
    unsigned number = 0;
    for (const Category category :
         {Category::DirectXEffects, Category::ControlSurfaces, Category::MidiEffects,
          Category::DirectXInstruments, Category::LegacyVstEffects, Category::LegacyVstInstruments,
          Category::MediaObjects, Category::DirectXEffects, Category::MediaObjects}) {
        ASSERT_TRUE(Find(++number)) << number;
        EXPECT_EQ(Find(number)->category, category) << number;
    }
    EXPECT_EQ(Find(1)->name, L"Filter");
    EXPECT_EQ(Find(9)->name, L"A media object");
    const CMediaObjectRegister none(L"no such library.dll");
    EXPECT_FALSE(none.Contains(Id(9)) || none.AudioEffects()) << "as where the system has no media objects";
    Enumerate(false);
    EXPECT_FALSE(Find(1)->category) << "without a selected category nothing is classified";
}

TEST_F(PluginInventory, MidiEffectsAndSurfacesNeedAName) {
    CreateKey(HKEY_LOCAL_MACHINE, kMidiFilters + IdText(1));
    CreateKey(HKEY_CLASSES_ROOT, kSurfaces + IdText(2));
    AddSurface(3, std::wstring(127, L'x'));
    AddSurface(4, std::wstring(128, L'x'));
    ASSERT_TRUE(Enumerate());
    EXPECT_FALSE(Find(1) || Find(2) || Find(4));
    EXPECT_TRUE(Find(3)) << "256 bytes with the terminator";
}

TEST_F(PluginInventory, WhatIsNoClassIdEndsItThere) {
    for (const unsigned n : {1U, 5U}) RegisterAudioFilter(IdText(n), L"Filter");
    AddSurface(2, L"Before");
    AddVst(3, L"VST");
    const std::wstring filter = kFilterInstances + IdText(5);
    for (const auto& [root, stranger] : {std::pair(HKEY_CLASSES_ROOT, kSurfaces + std::wstring(L"{no id}")),
                                         {HKEY_LOCAL_MACHINE, kMidiFilters + std::wstring(L"{no id}")},
                                         {HKEY_CLASSES_ROOT, filter}}) {
        SetText(root, stranger, L"CLSID", L"{no id}");
        EXPECT_FALSE(Enumerate());
        EXPECT_TRUE(Find(1) || stranger == filter);
        EXPECT_EQ(Find(2) != nullptr, stranger.starts_with(kSurfaces)) << "surfaces come last";
        EXPECT_TRUE(m_inventory.Vst().Records().empty()) << "and the VST inventory after them";
        if (stranger != filter) DeleteTree(root, stranger);
    }
    EXPECT_EQ(m_inventory.Counts().filters, m_inventory.Entries().size()) << "two were found";
    DeleteTree(HKEY_CLASSES_ROOT, filter);
    EXPECT_TRUE(Enumerate());
    EXPECT_TRUE(Find(2) && m_inventory.Vst().Find(Id(3)));
}

TEST_F(PluginInventory, PathsComeFromTheRegistrationOfTheCategory) {
    Wrap(1, L"a").Text(L"FullPath", L"C:\\wrapped.dll");
    SetRaw(HKEY_CLASSES_ROOT, L"CLSID\\" + IdText(1) + L"\\InprocServer32", nullptr, REG_SZ,
           Bytes(L"C:\\unterminated.dll"));
    AddVst(2, L"b");
    Enumerate();
    EXPECT_EQ(m_inventory.PathOf(Id(1), Category::DirectXEffects), L"C:\\unterminated.dll");
    EXPECT_EQ(m_inventory.PathOf(Id(1), Category::LegacyVstEffects), L"C:\\wrapped.dll");
    EXPECT_EQ(m_inventory.PathOf(Id(102), Category::Vst3Effects), kSomeFile);
    EXPECT_FALSE(m_inventory.PathOf(Id(4), Category::DirectXEffects));
}

TEST_F(PluginInventory, TheFileThatTheSystemLoadsIsTheUsersOwnAndLookedForByItsName) {
    const std::wstring server = L"Software\\Classes\\CLSID\\" + IdText(1) + L"\\InprocServer32";
    AddFilter(1, L"a", L"C:\\of all.dll");
    const auto loaded = [&] { return m_inventory.LoadedFileOf(Id(1), Category::DirectXEffects); };
    EXPECT_EQ(loaded(), L"C:\\of all.dll");
    for (const auto& [name, file] : {std::pair(L"\"C:\\my own.dll\"", L"C:\\my own.dll"),
                                     {L"REGEDIT.EXE", L"C:\\windows\\regedit.exe"},
                                     {L"ole32", L"C:\\windows\\system32\\ole32.dll"},
                                     {L"none.dll", L"C:\\windows\\system32\\none.dll"}}) {
        SetText(HKEY_CURRENT_USER, server, nullptr, name);
        EXPECT_EQ(::lstrcmpiW(loaded().c_str(), file), 0) << name;
    }
    EXPECT_EQ(m_inventory.FileOf(Id(1), Category::DirectXEffects), L"C:\\of all.dll");
}

TEST_F(PluginInventory, NoMoreThan4096AreListedOrExcluded) {
    constexpr unsigned kLast = 4100;
    for (unsigned n = 1; n <= kLast; ++n) {
        AddSurface(n, L"Faders");
        CreateKey(HKEY_CURRENT_USER, kExcludedPlugins + IdText(n));
    }
    RegisterAudioFilter(IdText(5000), L"A filter, which comes first");
    Enumerate();
    EXPECT_EQ(m_inventory.Entries().size(), 4096U);
    EXPECT_TRUE(Find(5000));
    CExclusionList list;
    list.Load();
    EXPECT_TRUE(list.Contains(Id(4096)) && !list.Contains(Id(4097)));
    CreateKey(HKEY_CURRENT_USER, std::wstring(kExcludedPlugins) + L"{00000002}");
    list.Load();
    EXPECT_TRUE(list.Contains(Id(1)));
    EXPECT_FALSE(list.Contains(Id(3))) << "no class id ends it; the registry keeps its keys in order";
}

}  // namespace
