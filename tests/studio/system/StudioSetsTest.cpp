// Studio sets against a registry and folders of the test's own.
#include <gtest/gtest.h>

#include "AnsiText.h"
#include "PresetWriter.h"
#include "StudioSetFile.h"
#include "StudioSets.h"
#include "XmlDoc.h"
#include "support/SandboxImporter.h"
#include "support/Snapshot.h"
#include "support/TestPlugins.h"

namespace {

namespace fs = std::filesystem;
using namespace support;

const std::wstring kPresets = std::wstring(kAudioPresetsKey) + L"\\" + IdText(1);
/// Layouts as nobody's program writes them.
constexpr char kMixing[] =
    "<?xml version='1.0'?><!-- Mine -->\n<PluginMenuLayout Name='Mixing &amp; \xC3\xA9' Own='&#10;x'  "
    "DocSchema='1'>\n  <Folder\n Name='F'><!--c--><Separator/> </Folder>\n  <Note/>\n</PluginMenuLayout>\n";

class StudioSets : public testing::Test {
  protected:
    StudioSets() {
        ::SetEnvironmentVariableW(L"CorvaneAppDataRoot", m_files.Folder().c_str());
        fs::create_directory(m_layouts);
        AddVst(1, L"Hall").Number(L"addVstPrefix", 1);
        AddVst(2, L"Room", true);
        SetText(HKEY_CURRENT_USER, kExcludedPlugins + IdText(2), nullptr, L"Room");
        SetText(HKEY_CURRENT_USER, kExcludedPlugins + IdText(9), nullptr, L"Else & \"<where>\"\n");
        SetDword(HKEY_CURRENT_USER, kManagerKey, L"MenuLayoutsDirty", 1);
        m_files.Write(L"Layouts\\Mixing.pgl", kMixing);
        Store(L"small", 9);
        Store(L"large", 2000);
        m_inventory.Enumerate(true);
    }
    static void Store(const std::wstring& name, std::size_t size) {
        const CPresetListMgr plugin(Id(1), RowOf(Category::VstEffects).guid, L"Hall");
        const std::vector<std::byte> data(size, std::byte{'d'});
        EXPECT_TRUE(CPresetWriter(plugin).StoreImportedPreset({.type = 3, .name = name, .data = data}));
    }
    /// Everything is another studio's then.
    void Wipe() {
        DeleteTree(HKEY_CURRENT_USER, kExclusionKey);
        SetText(HKEY_CURRENT_USER, kExcludedPlugins + IdText(5), nullptr, L"Surplus");
        SetRaw(HKEY_CURRENT_USER, kPresets, L"small", REG_BINARY, {'x'});
        CRegKey::Open(HKEY_CURRENT_USER, kPresets, KEY_WRITE)->DeleteValue(L"large");
        SetText(HKEY_CURRENT_USER, std::wstring(kVstInventory) + L"Hall", L"FullName", L"Other");
        fs::remove_all(m_files.Path(L"Shared Presets"));
        fs::remove_all(m_layouts);
        m_inventory.Enumerate(true);
    }

    Snapshot Now() const {
        Snapshot now;
        AddKey(now, HKEY_CURRENT_USER, kCompanyKey);
        for (const wchar_t* folder : {L"Layouts", L"Shared Presets"}) AddFiles(now, m_files.Path(folder));
        return now;
    }
    void SaveAll() {
        SetToSave save;
        EXPECT_EQ(m_sets.Gather(save, true, {}).result, SetResult::Done);
        EXPECT_EQ(m_sets.Save(save, m_set, L"Save", {}).result, SetResult::Done);
    }
    SetToLoad Planned(SetMode mode) {
        SetToLoad load;
        EXPECT_EQ(m_sets.Plan(m_set, mode, true, load, {}).result, SetResult::Done);
        return load;
    }
    SetResult Load(SetMode mode, const SetEvents& events = {}) {
        return m_sets.Load(Planned(mode), L"Load", CWindow(), events).result;
    }

    RegistrySandbox m_registry;
    const FileSandbox m_files;
    const std::wstring m_layouts = m_files.Path(L"Layouts"), m_set = m_files.Path(L"my.studio.pgset");
    CPluginDatabase m_database;
    CPluginInventory m_inventory{kDefaultVstKey, m_database};
    CFriendlyNames m_names{m_inventory, m_database};
    CBackups m_backups{m_files.Path(L"Backups"), L"1", &ImportIntoSandbox};
    CStudioSets m_sets{m_inventory, m_names, m_backups, m_layouts};
};

TEST_F(StudioSets, BringBackWhatTheyWereSavedFromAndCanBeTakenBack) {
    SaveAll();
    EXPECT_TRUE(fs::exists(m_files.Path(L"my.studio.spp")));
    EXPECT_EQ(PresetFileOf(L"C:\\a.spp"), L"C:\\a.spp.spp");
    const StudioSet first = Planned(SetMode::Add).set;
    Snapshot before = Now();
    Wipe();
    const Snapshot wiped = Now();
    EXPECT_EQ(Load(SetMode::Same), SetResult::Done);
    // The file has a heading of its own; what counts is the layout in it.
    EXPECT_EQ(Planned(SetMode::Same).CountChosen(), 0U);
    const std::wstring layout = m_files.Path(L"Layouts\\Mixing.pgl");
    Snapshot after = Now();
    std::string written = after[layout];
    std::erase(written, '\r');
    EXPECT_EQ(written,
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PluginMenuLayout Name=\"Mixing &amp; \xC3\xA9\" "
              "Own=\"&#10;x\" DocSchema=\"1\">\n  <Folder Name=\"F\"><!--c--><Separator/> </Folder>\n"
              "  <Note/>\n</PluginMenuLayout>\n");
    before.erase(layout);
    after.erase(layout);
    EXPECT_EQ(after, before);
    EXPECT_EQ(Load(SetMode::Same), SetResult::NothingToDo);
    SaveAll();
    EXPECT_EQ(Planned(SetMode::Same).set, first);

    EXPECT_EQ(m_backups.List().size(), 1U + 1U) << "of the load and of the set that was saved over";
    EXPECT_EQ(m_backups.Restore(m_backups.List().back(), L"Back", CWindow(), {}), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(Now(), wiped);
}

TEST_F(StudioSets, ALoadThatFailsOrIsEndedChangesNothing) {
    SaveAll();
    Wipe();
    SetDword(HKEY_CURRENT_USER, kManagerKey, L"MenuLayoutsDirty", 0);
    const Snapshot wiped = Now();
    SetResult result = SetResult::Ended;
    for (int items = 0; result == SetResult::Ended; ++items) {
        EXPECT_EQ(Now(), wiped) << items;
        int left = items;
        result = Load(SetMode::Same, {.goOn = [&] { return left-- > 0; }, .withoutBackup = {}});
    }
    EXPECT_EQ(result, SetResult::Done);
    m_backups.Restore(m_backups.List().front(), L"Back", CWindow(), {});
    SetDword(HKEY_CURRENT_USER, kManagerKey, L"MenuLayoutsDirty", 0);
    ASSERT_EQ(Now(), wiped);
    m_inventory.Enumerate(true);

    const SetToLoad load = Planned(SetMode::Same);
    m_files.Write(L"Layouts\\Mixing.pgl", "somebody was faster");
    const Snapshot taken = Now();
    EXPECT_EQ(m_sets.Load(load, L"Load", CWindow(), {}).result, SetResult::InputOutput);
    EXPECT_EQ(Now(), taken);
}

TEST_F(StudioSets, TakeTheLastOfSeveralPresetsOfOneNameAlsoFromOldFiles) {
    SaveAll();
    const std::wstring path = m_files.Path(L"my.studio.spp");
    {
        auto file = CFileSink::Create(path);
        CPresetFileWriter writer(*file, AnsiText());
        writer.WriteHeader(1);
        writer.WritePlugin(Id(1), RowOf(Category::VstEffects).guid, 2, L"Hall");
        for (const wchar_t* name : {L"small", L"SMALL"})
            writer.WritePreset(3, name, std::as_bytes(std::span(name, 5)));
        file->Flush();
    }
    EXPECT_EQ(Load(SetMode::Add), SetResult::Done);
    EXPECT_EQ(Load(SetMode::Add), SetResult::NothingToDo);
    // They have neither a category nor a count of plug-ins.
    std::string bytes = m_files.Read(path);
    bytes.erase(24, 16).erase(4, 4);
    bytes[2] = '\0';
    m_files.Write(L"my.studio.spp", bytes);
    Wipe();
    EXPECT_EQ(Load(SetMode::Add), SetResult::Done);
    EXPECT_EQ(CRegKey::Open(HKEY_CURRENT_USER, kPresets)->ReadValue(L"small")->data.size(), 10U);
}

TEST_F(StudioSets, ExcludeAVst3UnderTheIdThatItHasHere) {
    const std::wstring room = std::wstring(kVstInventory) + L"Room";
    for (const unsigned excluded : {2U, 102U}) {
        DeleteTree(HKEY_CURRENT_USER, kExclusionKey);
        SetText(HKEY_CURRENT_USER, kExcludedPlugins + IdText(excluded), nullptr, L"Room");
        SetText(HKEY_CURRENT_USER, room, L"clsidPlugMD5", IdText(102));
        m_inventory.Enumerate(true);
        SaveAll();
        SetText(HKEY_CURRENT_USER, room, L"clsidPlugMD5", IdText(202));
        m_inventory.Enumerate(true);
        EXPECT_EQ(Load(SetMode::Add), SetResult::Done);
        EXPECT_TRUE(Exists(HKEY_CURRENT_USER, kExcludedPlugins + IdText(202))) << excluded;
        EXPECT_EQ(Load(SetMode::Same), SetResult::NothingToDo);
    }
}

TEST_F(StudioSets, WithoutPresetsLeaveNoOlderOnesBesideThem) {
    SaveAll();
    const std::wstring presets = m_files.Path(L"my.studio.spp"), other = m_files.Write(L"other.spp", "mine");
    const std::string before = m_files.Read(m_set);
    fs::remove(m_files.Path(L"Layouts\\Mixing.pgl"));
    SetToSave save;
    m_sets.Gather(save, false, {});
    ::SetFileAttributesW(presets.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(m_sets.Save(save, m_set, L"Save", {}).result, SetResult::NoRights);
    EXPECT_EQ(m_files.Read(m_set), before);
    ::SetFileAttributesW(presets.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(m_sets.Save(save, m_set, L"Save", {}).result, SetResult::Done);
    EXPECT_FALSE(fs::exists(presets));
    EXPECT_EQ(m_backups.Restore(m_backups.List().front(), L"Back", CWindow(), {}), DWORD{ERROR_SUCCESS});
    EXPECT_TRUE(fs::exists(presets));
    EXPECT_EQ(m_sets.Save(save, m_files.Path(L"other.pgset"), L"Save", {}).result, SetResult::Done);
    EXPECT_TRUE(fs::exists(other)) << "of no set";
}

TEST_F(StudioSets, NameWhatTheirPresetFileCanNotHold) {
    SetText(HKEY_CURRENT_USER, kPresets, L"lost", m_files.Path(L"gone"));
    SetRaw(HKEY_CURRENT_USER, kPresets, L"empty", REG_BINARY, {});
    SetDword(HKEY_CURRENT_USER, kPresets, L"number", 5);
    SetRaw(HKEY_CURRENT_USER, kPresets, L"\xD800", REG_BINARY, {'h'});
    SetRaw(HKEY_CURRENT_USER, kPresets, L"a/b", REG_BINARY, std::vector<BYTE>(2000, 'l'));
    SetRaw(HKEY_CURRENT_USER, kPresets, L"large.", REG_BINARY, std::vector<BYTE>(2000, 'l'));
    m_files.Write(L"Layouts\\bad.pgl", "<PluginMenuLayout DocSchema='1' Name='n'>");
    SetToSave save;
    m_sets.Gather(save, true, {});
    std::map<std::wstring, SetTrouble> left;
    for (const auto& [plugin, preset, trouble] : save.leftOut) left[preset] = trouble;
    using enum SetTrouble;
    EXPECT_EQ(left, (std::map<std::wstring, SetTrouble>{{L"lost", FileLost},
                                                        {L"empty", NoData},
                                                        {L"number", OtherType},
                                                        {L"\xD800", NameNotInCodePage},
                                                        {L"a/b", NameNotForFile},
                                                        {L"large.", NameNotForFile},
                                                        {L"", LayoutUnreadable}}));
    EXPECT_EQ(save.CountPresets(), 2U);
    EXPECT_EQ(m_sets.Save(save, m_set, L"Save", {}).result, SetResult::Done);
    EXPECT_EQ(Planned(SetMode::Same).CountChosen(), 0U) << "the others can be read again";
}

TEST_F(StudioSets, OfStrangersAreReadWithCare) {
    const std::string id = "CLSID='{00000007-0001-0002-0000-000000000000}'";
    const std::string begin = "<StudioSet Schema='1'>", end = "</StudioSet>";
    const std::string layout = "<PluginMenuLayout DocSchema='1' Name='n'/>";
    std::string many;
    for (int i = 0; i < 20'001; ++i)
        many += "<Exclusion CLSID='" + std::string("{") + std::to_string(10'000'000 + i) +
                "-0001-0002-0000-000000000000}'/>";
    const auto ofFile = [&](const std::string& file) {
        return begin + "<Layout File='" + file + "'>" + layout + "</Layout>" + end;
    };
    constexpr int kMalformed = -1, kNewer = -2;
    const struct {
        std::string bytes;
        int passedOver;
        std::size_t taken = 0;
    } kSets[] = {
        {"", kMalformed},
        {"<StudioSet Schema='1'>", kMalformed},
        {"<!DOCTYPE StudioSet SYSTEM 'file:///c:/windows/win.ini'>" + begin + end, kMalformed},
        {"<studioset Schema='1'/>", kMalformed},
        {"<StudioSet/>", kMalformed},
        {"<StudioSet Schema='0'/>", kMalformed},
        {"<StudioSet Schema='1x'/>", kMalformed},
        {"<StudioSet Schema='2'><Exclusion/></StudioSet>", kNewer},
        {"<StudioSet Schema='99999999999999999999'/>", kNewer},
        {begin + many + end, kMalformed},
        {std::string(CXmlDoc::kLargestFile + 1, ' '), kMalformed},
        // The number of entries that are passed over.
        {begin + "text<!--c--><?p i?>" + end, 0},
        {begin + "<Exclusion Name='n'/>" + end, 1},
        {begin + "<Exclusion CLSID=''/><Exclusion CLSID='{0}'/>" + end, 2},
        {begin + "<Exclusion CLSID='htmlfile'/>" + end, 1},
        {begin + "<Exclusion CLSID='{00000000-0000-0000-0000-000000000000}'/>" + end, 1},
        {begin + "<Exclusion " + id + " Name='" + std::string(2000, 'n') + "'/>" + end, 1},
        {begin + "<Unknown/><exclusion " + id + "/>" + end, 2},
        {begin + "<PluginName Name='n'/><PluginName " + id + " Name=' '/>" + end, 2},
        {begin + "<PluginName " + id + "/>" + end, 1},
        {ofFile("..\\a.pgl"), 1},
        {begin + "<Layout File='a.pgl'/>" + end, 1},
        {begin + "<Layout File='a.pgl'>text</Layout><Layout File='b.pgl'><Other/></Layout>" + end, 2},
        {begin + "<Layout File='a.pgl'>" + layout + layout + "</Layout>" + end, 1},
        {begin + "<Exclusion " + id + "/><Exclusion " + id + "/>" + end, 1, 1},
        {begin + "<PluginName " + id + " Name='n'/><PluginName " + id + " Name='m'/>" + end, 1, 1},
        {begin + "<Layout File='a.pgl'>" + layout + "</Layout><Layout File='A.PGL'>" + layout + "</Layout>" +
             end,
         1, 1},
    };
    const Snapshot before = Now();
    for (const auto& [bytes, expected, taken] : kSets) {
        SCOPED_TRACE(bytes.substr(0, 120));
        StudioSet set;
        m_files.Write(L"hostile.pgset", bytes);
        const SetFileRead read = ReadStudioSet(m_files.Path(L"hostile.pgset"), set);
        EXPECT_EQ(read, expected == kMalformed ? SetFileRead::Malformed
                        : expected == kNewer   ? SetFileRead::Newer
                                               : SetFileRead::Read);
        if (expected < 0) continue;
        EXPECT_EQ(set.passedOver, static_cast<std::size_t>(expected));
        EXPECT_EQ(set.exclusions.size() + set.names.size() + set.layouts.size(), taken);
    }
    // Presets that break off are left out, and the set is not.
    m_files.Write(L"hostile.spp", "PS\1");
    SetToLoad load;
    EXPECT_EQ(m_sets.Plan(m_files.Path(L"hostile.pgset"), SetMode::Add, true, load, {}).result,
              SetResult::Done);
    EXPECT_TRUE(load.presetsUnreadable);
    EXPECT_EQ(m_sets.Plan(m_files.Path(L"gone.pgset"), SetMode::Add, true, load, {}).result,
              SetResult::InputOutput);
    EXPECT_EQ(Now(), before);
}

}  // namespace
