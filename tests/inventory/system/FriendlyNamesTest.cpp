#include <windows.h>

#include <sddl.h>

#include "FriendlyNames.h"
#include "inventory/system/EnumeratedPlugins.h"
#include "support/FileSandbox.h"
#include "support/WindowDriver.h"

namespace {

using namespace support;

const std::wstring kVstEntry = std::wstring(kVstInventory) + L"Old";
const std::wstring kFilterBag = kFilterInstances + IdText(1);
const std::wstring kClass = L"CLSID\\" + IdText(1);

/// Everything is called "Old", and "VST New" or another name when it was renamed.
class FriendlyNames : public EnumeratedPlugins {
  protected:
    struct Place {
        const char* name;
        HKEY root;
        std::wstring key;
        const wchar_t* value;
        const wchar_t* renamed = L"VST New";
    };
    void SetUp() override { RegisterAudioFilter(IdText(1), L"Old"); }
    /// Whatever could be registered of plug-in 1, which is listed as a wrapped filter and as a VST.
    void FillPlaces() {
        Wrap(9, L"Another");
        Wrap(1, L"Old").Number(L"addVstPrefix", 1);
        AddVst(1, L"Old").Number(L"addVstPrefix", 2);
        for (const Place& place : m_places) SetText(place.root, place.key, place.value, L"Old");
        Enumerate();
    }
    /// The places with the new name.
    std::string Renamed() const {
        std::string names;
        for (const Place& place : m_places) {
            const auto text = Text(place.root, place.key, place.value);
            if (text == place.renamed) names += std::string(" ") + place.name;
        }
        return names;
    }
    /// Who may do what with the filter's own key, as the system writes such lists.
    static void SetRights(const wchar_t* rights) {
        UniqueHandle<PSECURITY_DESCRIPTOR, &LocalFree> list;
        ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1, list.Put(), nullptr);
        const auto bag = CRegKey::Open(HKEY_CLASSES_ROOT, kFilterBag, READ_CONTROL | WRITE_DAC);
        EXPECT_EQ(RegSetKeySecurity(bag->Handle(), DACL_SECURITY_INFORMATION, list.Get()), ERROR_SUCCESS);
    }
    /// As it is listed.
    PluginListItem Item(unsigned number, Category category) const {
        const auto* vst = IsVstCategory(category) ? m_inventory.Vst().Find(Id(number)) : nullptr;
        const auto index = vst ? 0 : Find(number) - m_inventory.Entries().data();
        return {.sourceIndex = static_cast<unsigned>(index),
                .clsid = Id(number),
                .md5Clsid = vst ? vst->md5Clsid : Guid{},
                .fromInventory = vst != nullptr,
                .category = category};
    }
    /// Renames plug-in 1 as one of that category; gives the places with the new name.
    std::string RenameAs(Category category) {
        m_names.Rename(Item(1, category), L"VST New");
        return Renamed();
    }
    std::wstring VstName(unsigned number = 1) const { return m_inventory.Vst().Find(Id(number))->name; }

    const std::vector<Place> m_places = {
        {"bag", HKEY_CLASSES_ROOT, kFilterBag, L"FriendlyName"},
        {"instances", HKEY_CLASSES_ROOT, L"CLSID\\{083863F1-70DE-11D0-BD40-00A0C911CE86}\\Instance",
         L"FriendlyName"},
        {"filter", HKEY_CLASSES_ROOT, L"Filter\\" + IdText(1), nullptr},
        {"synth", HKEY_CLASSES_ROOT, kSoftSynths + IdText(1), L"Description"},
        {"adapter", HKEY_LOCAL_MACHINE, std::wstring(kAdapterInventory) + L"Old", L"FullName", L"New"},
        {"class", HKEY_CLASSES_ROOT, kClass, nullptr},
        {"plug-in", HKEY_CLASSES_ROOT, L"CorvanePlugIns\\" + IdText(1), L"Description"},
        {"surface", HKEY_CLASSES_ROOT, kSurfaces + IdText(1), L"Description"},
        {"MIDI", HKEY_LOCAL_MACHINE, kMidiFilters + IdText(1), nullptr},
        {"VST", HKEY_CURRENT_USER, kVstEntry, L"FullName", L"New"},
    };
    CFriendlyNames m_names{m_inventory, m_database};
};

constexpr char kWrappedPlaces[] = " bag instances filter adapter class plug-in";

TEST_F(FriendlyNames, EachCategoryHasItsPlaces) {
    const std::pair<Category, const char*> cases[] = {
        {Category::DirectXEffects, " bag instances filter class plug-in"},
        {Category::DirectXInstruments, " bag instances filter synth class plug-in"},
        {Category::LegacyVstEffects, kWrappedPlaces},
        {Category::LegacyVstInstruments, kWrappedPlaces},
        {Category::MidiEffects, " class plug-in MIDI"},
        {Category::MediaObjects, ""},
        {Category::ControlSurfaces, " surface"},
        {Category::VstEffects, " VST"},
        {Category::VstInstruments, " VST"},
        {Category::Vst3Effects, " VST"},
        {Category::Vst3Instruments, " VST"},
    };
    Enumerate();
    for (const auto& [category, places] : cases)
        EXPECT_EQ(RenameAs(category), " bag instances") << "what is not there is not made";
    for (const auto& [category, places] : cases) {
        FillPlaces();
        EXPECT_EQ(RenameAs(category), places) << static_cast<int>(category);
        const bool vst = IsVstCategory(category);
        EXPECT_EQ(Find(1)->name, vst ? L"Old" : L"VST New");
        for (const unsigned id : {1U, 101U}) EXPECT_EQ(VstName(id), vst ? L"New" : L"Old");
    }
}

TEST_F(FriendlyNames, WithoutTheFiltersOwnNameNoneIsWritten) {
    FillPlaces();
    SetRights(L"D:(A;;KR;;;WD)");  // everyone may read
    EXPECT_EQ(RenameAs(Category::LegacyVstEffects), "");
    SetText(HKEY_CLASSES_ROOT, kClass, nullptr, L"New");
    Enumerate();
    ASSERT_EQ(Find(1)->category, Category::LegacyVstEffects);
    EXPECT_EQ(CFriendlyNames::CorrectWrapped(m_inventory), 0U) << "what is refused is no correction";
    SetRights(L"D:(A;;KA;;;WD)");
}

TEST_F(FriendlyNames, WrappedPluginsFollowTheNameOfTheirClass) {
    AddFilter(2, L"No wrapped one", kSomeFile);
    SetText(HKEY_CLASSES_ROOT, L"CLSID\\" + IdText(2), nullptr, L"Its class");
    FillPlaces();
    RenameAs(Category::LegacyVstEffects);
    EXPECT_EQ(CFriendlyNames::CorrectWrapped(m_inventory), 0U) << "what has its new name already";
    FillPlaces();
    for (const std::wstring& unusable : {std::wstring(L"Old"), std::wstring(), std::wstring(128, L'x')}) {
        SetText(HKEY_CLASSES_ROOT, kClass, nullptr, unusable);
        EXPECT_EQ(CFriendlyNames::CorrectWrapped(m_inventory), 0U);
    }
    SetText(HKEY_CLASSES_ROOT, kClass, nullptr, L"VST New");
    EXPECT_EQ(CFriendlyNames::CorrectWrapped(m_inventory), 1U);
    EXPECT_EQ(Renamed(), kWrappedPlaces);
    Enumerate();
    EXPECT_EQ(CFriendlyNames::CorrectWrapped(m_inventory), 0U);
}

TEST_F(FriendlyNames, ANameOfAnyKindIsFoundAgain) {
    RegisterAudioDmo(IdText(2), L"Old");
    AddSurface(3, L"Old");
    AddVst(4, L"Old");
    Enumerate();
    const auto nameOf = [this](unsigned number, Category category) -> std::wstring {
        if (category == Category::VstEffects) return VstName(number);
        return Find(number)->category == category ? Find(number)->name.value() : L"listed elsewhere";
    };
    for (const std::wstring& name : {std::wstring(L"x"), std::wstring(L"  "), std::wstring(L"\x1\t\x7F"),
                                     std::wstring(L"\xD83C\xDFB9"), std::wstring(2000, L'x')}) {
        for (const auto& [number, category] : {std::pair(1U, Category::DirectXEffects),
                                               {2U, Category::MediaObjects},
                                               {3U, Category::ControlSurfaces},
                                               {4U, Category::VstEffects}}) {
            m_names.Rename(Item(number, category), name);
            const std::wstring listed = nameOf(number, category);
            EXPECT_TRUE(name.starts_with(listed) && !listed.empty()) << number;
            Enumerate();
            EXPECT_EQ(nameOf(number, category), listed) << number;
            EXPECT_TRUE(number == 1 || m_inventory.RegisteredNameOf(Id(number), category) == listed)
                << number;
        }
    }
}

TEST_F(FriendlyNames, OfTwoCopiesOfAVstTheOneThatIsListedIsRenamed) {
    AddVst(1, L"a");
    AddVst(1, L"b").Text(L"clsidPlugMD5", IdText(102));
    for (const unsigned n : {3U, 4U}) AddVst(n, std::to_wstring(n)).Number(L"clsidPlugMD5", 0);
    Enumerate();
    ASSERT_EQ(m_inventory.Vst().Find(Id(1))->md5Clsid, Id(102));
    m_names.Rename(Item(1, Category::VstEffects), L"VST New");
    m_names.Rename(Item(101, Category::Vst3Effects), L"The other");
    m_names.Rename(Item(4, Category::VstEffects), L"New");
    for (const bool read : {false, true}) {
        if (read) Enumerate();
        for (const auto& [number, name] :
             {std::pair(1U, L"VST New"), {101U, L"The other"}, {3U, L"3"}, {4U, L"New"}})
            EXPECT_EQ(VstName(number), name) << read;
    }
}

TEST_F(FriendlyNames, ADatabaseNamesThePluginsAndIsToldOfNewNamesAlone) {
    const FileSandbox files;
    const auto line = [](unsigned id, const char* name) { return Utf8(IdText(id)) + '\t' + name + '\n'; };
    files.Write(L"names.txt", line(1, "Of the database") + line(101, "A VST") + line(102, "") +
                                  line(3, "No object") + line(4, "A MIDI effect") + line(5, "No surface"));
    std::filesystem::copy_file(BesideTest(L"Database\\VrnDatabase.dll"), files.Path(L"d.dll"));
    m_database.Open(files.Path(L"d.dll"));
    AddVst(2, L"b");
    RegisterAudioDmo(IdText(3), L"Object");
    CreateKey(HKEY_LOCAL_MACHINE, kMidiFilters + IdText(4));
    AddSurface(5, L"Faders");
    FillPlaces();
    EXPECT_EQ(Find(1)->name, L"Of the database");
    EXPECT_EQ(VstName(1), L"A VST") << "it is known by its MD5 id";
    EXPECT_EQ(VstName(2), L"b") << "not by an empty name";
    EXPECT_EQ(Find(3)->name, L"Object");
    EXPECT_EQ(Find(5)->name, L"Faders");
    EXPECT_EQ(Find(4)->name, L"A MIDI effect");
    EXPECT_EQ(CFriendlyNames::CorrectWrapped(m_inventory), 0U) << "its own name is that of its class";
    m_names.Rename(Item(1, Category::DirectXInstruments), L"VST New");
    m_names.Rename(Item(1, Category::VstEffects), L"refused");
    EXPECT_EQ(files.Read(L"calls.txt"),
              "fill\nset\t" + line(1, "2\tVST New") + "set\t" + line(101, "0\trefused"));
    EXPECT_EQ(Find(1)->name, L"VST New");
    EXPECT_EQ(Renamed(), "");
    SetText(HKEY_CLASSES_ROOT, kClass, nullptr, L"VST New");
    EXPECT_EQ(CFriendlyNames::CorrectWrapped(m_inventory), 1U) << "whatever the database calls it";
    Enumerate();
    EXPECT_EQ(CFriendlyNames::CorrectWrapped(m_inventory), 0U);
    m_database.Close();
}

TEST(PluginDatabase, ALibraryThatIsNoneLeavesRegistryMode) {
    const FileSandbox files;
    std::filesystem::copy_file(BesideTest(L"Database\\VrnDatabase.dll"), files.Path(L"null.dll"));
    for (const std::wstring& library : {files.Path(L"missing.dll"), files.Path(L"null.dll"),
                                        std::wstring(L"C:\\windows\\system32\\version.dll")}) {
        CPluginDatabase database;
        database.Open(library);
        EXPECT_FALSE(database.IsOpen()) << Utf8(library);
        EXPECT_TRUE(database.Names().empty());
    }
}

}  // namespace
