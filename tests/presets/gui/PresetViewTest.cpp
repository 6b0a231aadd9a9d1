// The preset commands of the main dialog, with their own and the system's dialogs.
#include <windows.h>

#include <commdlg.h>

#include "presets/StoredPresets.h"
#include "support/MainDialog.h"
#include "support/TestPlugins.h"
#include "support/WaitFor.h"

namespace {

using namespace support;
using Names = std::vector<std::wstring>;

const std::wstring kRoot = L"Software\\Corvane Music Software\\ActiveMovie\\Presets\\";
const std::wstring kHallKey = kRoot + IdText(1), kRoomKey = kRoot + IdText(2);

class PresetView : public MainDialog {
  protected:
    /// Hall has the presets "a", "b" and "c", Room has none; Hall is selected.
    void SetUp() override {
        AddVst(1, L"Hall");
        AddVst(2, L"Room");
        AddVst(3, L"Empty");
        Fill({L"a", L"b", L"c"});
        Open();
        Choose(kVstEffects);
        SelectPlugins({L"Hall"});
    }
    static void Fill(const Names& presets) {
        DeleteTree(HKEY_CURRENT_USER, kHallKey);
        for (const auto& name : presets)
            SetRaw(HKEY_CURRENT_USER, kHallKey, name.c_str(), REG_BINARY, Bytes(name));
    }
    static HWND List(HWND dialog) { return InFileDialog(dialog, IDC_PRESET_LIST); }
    static Names Selected(HWND dialog) {
        Names names;
        for (const int row : SelectedRows(List(dialog)))
            names.push_back(support::Rows(List(dialog))[static_cast<std::size_t>(row)]);
        return names;
    }
    void ExportTo(const std::wstring& path, Popups::Work before = {}) {
        m_popups.ExpectFile(L"Export Presets For: Hall", path, std::move(before));
        Press(IDC_EXPORT);
    }
    void ImportFrom(const std::wstring& path, Popups::Work before = {}) {
        m_popups.ExpectFile(L"Import Presets For: ", path, std::move(before));
        Press(IDC_IMPORT);
    }
    /// A step in the dialog for managing presets.
    Popups& InManage(Popups::Work work) {
        return m_popups.Expect(L"Manage Presets for Hall", std::move(work));
    }
    static auto PressIn(int id) {
        return [id](HWND dialog) { support::Press(GetDlgItem(dialog, id)); };
    }

    const std::wstring m_file = m_files.Path(L"all.spp");
};

TEST_F(PresetView, PresetsGoOutAreDeletedAndComeBackTheSame) {
    const auto before = StoredPresets(kHallKey);
    ExportTo(m_file, [](HWND dialog) { EXPECT_EQ(Selected(dialog), (Names{L"a", L"b", L"c"})); });
    InManage([](HWND dialog) {
        support::Select(List(dialog), {L"a", L"b"});
        support::Press(GetDlgItem(dialog, IDC_PRESET_DELETE));
    }).Expect(L"the selected presets for 'Hall' ?", IDOK);
    InManage([](HWND dialog) {
        EXPECT_EQ(support::Rows(List(dialog)), Names{L"c"});
        EXPECT_EQ(Selected(dialog), Names{L"c"});
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, IDC_PRESET_RENAME)));
        // Without a selection there is nothing to ask about.
        support::Select(List(dialog), {});
        support::Press(GetDlgItem(dialog, IDC_PRESET_DELETE));
        support::Press(GetDlgItem(dialog, IDC_PRESET_SELECT_ALL));
        support::Press(GetDlgItem(dialog, IDC_PRESET_DELETE));
    }).Expect(L"the selected presets", IDOK);
    // Of a plug-in without presets, all are selected; it has no key.
    InManage(PressIn(IDC_PRESET_DELETE)).Expect(L"the selected presets", IDOK);
    m_popups.Expect(L"An error occured while deleting the presets.", IDOK);
    InManage(PressIn(IDCANCEL));
    Press(IDC_MANAGE);
    EXPECT_FALSE(Exists(HKEY_CURRENT_USER, kHallKey));
    EXPECT_FALSE(IsEnabled(IDC_MANAGE));
    ImportFrom(m_file);
    EXPECT_EQ(StoredPresets(kHallKey), before);
    EXPECT_TRUE(IsEnabled(IDC_MANAGE));

    SelectPlugins({L"Room"});
    for (const std::wstring& file : {m_file, m_files.Write(L"other.spp", "no preset file")}) {
        m_popups.ExpectFile(L"Import Presets For: Room", file)
            .Expect(L"does not contain valid presets", IDOK);
        Press(IDC_IMPORT);
    }
}

TEST_F(PresetView, ARenamedPresetStaysSelected) {
    const auto before = StoredPresets(kHallKey);
    const auto renameTo = [this](const std::wstring& to) {
        InManage([](HWND dialog) {
            support::Select(List(dialog), {L"b"});
            PostKey(List(dialog), VK_F2);
        }).Expect(L"Rename Preset", [to](HWND prompt) {
            EXPECT_EQ(TextOf(GetDlgItem(prompt, IDC_PROMPT_VALUE)), L"b");
            EnterText(GetDlgItem(prompt, IDC_PROMPT_VALUE), to);
            support::Press(GetDlgItem(prompt, IDOK));
        });
    };
    const auto expectSelected = [](HWND dialog, const std::wstring& name) {
        EXPECT_EQ(Selected(dialog), Names{name});
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, IDC_PRESET_RENAME)));
        support::Press(GetDlgItem(dialog, IDCANCEL));
    };
    renameTo(L"C");
    m_popups.Expect(L"An error occured while renaming the presets.", IDOK);
    InManage([&](HWND dialog) { expectSelected(dialog, L"b"); });
    Press(IDC_MANAGE);
    EXPECT_EQ(StoredPresets(kHallKey), before);
    renameTo(L"z");
    InManage([&](HWND dialog) { expectSelected(dialog, L"z"); });
    Press(IDC_MANAGE);
    EXPECT_TRUE(StoredPresets(kHallKey).contains(std::wstring(L"z:3:b\0", 6)));
}

TEST_F(PresetView, ThePreviewIsThatOfTheFileThatIsNamed) {
    ExportTo(m_file);
    const std::wstring two = m_files.Path(L"two.spp");
    ExportTo(two, [](HWND dialog) { support::Select(List(dialog), {L"a", L"c"}); });
    // As typed into the field: a combo box tells of nothing else.
    const auto type = [](HWND dialog, const std::wstring& name, std::size_t presets) {
        const HWND combo = FindWindowExW(InFileDialog(dialog, kFileNameField), nullptr, L"ComboBox", nullptr);
        EnterText(FindWindowExW(combo, nullptr, L"Edit", nullptr), name);
        EXPECT_TRUE(WaitFor([&] { return Selected(dialog).size() == presets; })) << Describe(dialog);
    };
    const auto onlyC = [](HWND dialog) { support::Select(List(dialog), {L"c"}); };
    Fill({});
    ImportFrom(m_file, [&](HWND dialog) {
        type(dialog, two, 2);
        onlyC(dialog);
    });
    EXPECT_EQ(StoredPresets(kHallKey).size(), 3U) << "what was chosen of one file is not chosen of another";
    Fill({});
    ImportFrom(two, [&](HWND dialog) {
        type(dialog, m_file, 3);
        type(dialog, L"no such file", 0);
        type(dialog, L"two", 2);
        onlyC(dialog);
    });
    EXPECT_EQ(StoredPresets(kHallKey), std::set<std::wstring>{std::wstring(L"c:3:c\0", 6)});
}

TEST_F(PresetView, TheNextDialogBeginsInTheFolderOfTheLastFile) {
    CreateDirectoryW(m_files.Path(L"folder").c_str(), nullptr);
    ExportTo(m_files.Path(L"folder\\a.spp"));
    const auto expectFolder = [this](HWND dialog) {
        wchar_t folder[MAX_PATH] = L"";
        Send(dialog, CDM_GETFOLDERPATH, MAX_PATH, reinterpret_cast<LPARAM>(folder));
        EXPECT_EQ(folder, m_files.Path(L"folder"));
    };
    ExportTo(m_file, expectFolder);
    ImportFrom(m_files.Path(L"folder\\a.spp"));
    ImportFrom({}, expectFolder);
}

TEST_F(PresetView, SeveralPluginsAreNotChosenFrom) {
    SetRaw(HKEY_CURRENT_USER, kRoomKey, L"large", REG_BINARY, std::vector<BYTE>(1000, 'x'));
    SelectPlugins({L"Empty", L"Hall", L"Room"});
    m_popups.ExpectFile(L"Export Presets For: <Multiple plug-ins selected>", m_file, [](HWND dialog) {
        EXPECT_EQ(support::Rows(List(dialog)), Names{L"<Multiple plug-ins selected>"});
        EXPECT_FALSE(IsWindowEnabled(List(dialog)));
    });
    Press(IDC_EXPORT);
    const auto hall = StoredPresets(kHallKey), room = StoredPresets(kRoomKey);
    Fill({});
    DeleteTree(HKEY_CURRENT_USER, kRoomKey);
    ImportFrom(m_file, [](HWND dialog) { EXPECT_EQ(support::Rows(List(dialog)).size(), 1U); });
    EXPECT_EQ(StoredPresets(kHallKey), hall);
    EXPECT_EQ(StoredPresets(kRoomKey), room);
}

TEST_F(PresetView, AFailureIsReportedAndLosesNothing) {
    const wchar_t* const notSaved = L"An I/O error occured while saving the presets. (1)";
    m_popups
        .ExpectFile(L"Export Presets For: ", m_file, [](HWND dialog) { support::Select(List(dialog), {}); })
        .Expect(notSaved, IDOK);
    Press(IDC_EXPORT);
    SetText(HKEY_CURRENT_USER, kHallKey, L"Without a file", L"C:\\no such folder\\x");
    m_popups.ExpectFile(L"Export Presets For: ", m_file)
        .Expect(L"The preset  'Without a file' may be invalid.", IDOK)
        .Expect(notSaved, IDOK);
    Press(IDC_EXPORT);
    EXPECT_TRUE(m_files.Names().empty());
    // A file that ends too early gives what comes before its end.
    Fill({L"a", L"b"});
    ExportTo(m_file);
    Fill({});
    const std::string whole = m_files.Read(L"all.spp");
    m_popups.ExpectFile(L"Import Presets For: ", m_files.Write(L"cut.spp", whole.substr(0, whole.size() - 1)))
        .Expect(L"An I/O error occured while loading the presets. (1)", IDOK);
    Press(IDC_IMPORT);
    EXPECT_EQ(StoredPresets(kHallKey).size(), 1U);
}

}  // namespace
