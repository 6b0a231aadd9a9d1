// The preset commands of the main dialog, with their own and the system's dialogs.
#include <windows.h>

#include <commdlg.h>

#include <thread>

#include "presets/StoredPresets.h"
#include "support/MainDialog.h"
#include "support/TestPlugins.h"

namespace {

using namespace support;
using Names = std::vector<std::wstring>;
using Presets = std::set<std::wstring>;

const std::wstring kHallKey = kPresets + IdText(1), kRoomKey = kPresets + IdText(2);

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
    /// Among them is a value with a name too long to be listed, so that the rows don't count the store.
    static void Fill(const Names& presets) {
        DeleteTree(HKEY_CURRENT_USER, kHallKey);
        for (const auto& name : presets) {
            AddPreset(IdText(1), name, static_cast<BYTE>(name[0]));
            AddPreset(IdText(1), std::wstring(520, L'a'));
        }
    }
    static HWND List(HWND dialog) { return InFileDialog(dialog, IDC_PRESET_LIST); }
    static Names Selected(HWND dialog) {
        Names names;
        for (const int row : SelectedRows(List(dialog)))
            names.push_back(support::Rows(List(dialog))[static_cast<std::size_t>(row)]);
        return names;
    }
    /// `before` works the file dialog, `messages` are what comes after it.
    void ExportTo(const std::wstring& path, Popups::Work before = {}, const Names& messages = {}) {
        InFileDialogOf(IDC_EXPORT, L"Export Presets For: ", path, std::move(before), messages);
    }
    void ImportFrom(const std::wstring& path, Popups::Work before = {}, const Names& messages = {}) {
        InFileDialogOf(IDC_IMPORT, L"Import Presets For: ", path, std::move(before), messages);
    }
    void InFileDialogOf(int button, const wchar_t* title, const std::wstring& path, Popups::Work before,
                        const Names& messages) {
        m_popups.ExpectFile(title, path, std::move(before));
        for (const auto& message : messages) m_popups.Expect(message, IDOK);
        Press(button);
    }
    /// While the caption begins so, and as long as the thread lives.
    std::jthread HoldEscape(const wchar_t* caption) const {
        return std::jthread([window = Control(IDC_PRESETS_GROUP), caption](const std::stop_token& over) {
            for (; !over.stop_requested(); ::Sleep(10)) {
                wchar_t text[32] = L"";  // not asked for: the dialog's thread may be waiting for this one
                ::InternalGetWindowText(window, text, 32);
                const std::wstring_view shown(text);
                if (shown.starts_with(caption) && shown.ends_with(L" of 4,000"))
                    ::PostMessageW(window, WM_KEYDOWN, VK_ESCAPE, 0);
            }
        });
    }
    /// A step in the dialog for managing presets.
    Popups& InManage(Popups::Work work) {
        return m_popups.Expect(L"Manage Presets for Hall", std::move(work));
    }

    const std::wstring m_file = m_files.Path(L"all.spp");
};

TEST_F(PresetView, PresetsGoOutAreDeletedAndComeBackTheSame) {
    const auto before = StoredPresets(kHallKey);
    ExportTo(m_file, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog), L"Export Presets For: Hall");
        EXPECT_EQ(Selected(dialog), (Names{L"a", L"b", L"c"}));
    });
    InManage([](HWND dialog) {
        support::Select(List(dialog), {L"b"});
        PostKey(List(dialog), VK_DELETE);
    }).Expect(L"the selected presets for 'Hall' ?", IDOK);
    InManage([](HWND dialog) {
        EXPECT_EQ(support::Rows(List(dialog)), (Names{L"a", L"c"}));
        EXPECT_EQ(Selected(dialog), Names{L"c"});
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, IDC_PRESET_RENAME)));
        // Without a selection there is nothing to ask about.
        support::Select(List(dialog), {});
        support::Press(GetDlgItem(dialog, IDC_PRESET_DELETE));
        support::Press(GetDlgItem(dialog, IDC_PRESET_SELECT_ALL));
        support::Press(GetDlgItem(dialog, IDC_PRESET_DELETE));
    }).Expect(L"the selected presets", IDOK);
    // Of a plug-in without presets, all are selected; it has no key.
    m_popups.Expect(L"Manage", IDC_PRESET_DELETE).Expect(L"the selected presets", IDOK);
    m_popups.Expect(L"An error occured while deleting the presets.", IDOK).Expect(L"Manage", IDCANCEL);
    Press(IDC_MANAGE);
    EXPECT_FALSE(Exists(HKEY_CURRENT_USER, kHallKey));
    EXPECT_FALSE(IsEnabled(IDC_MANAGE));
    ImportFrom(m_file);
    EXPECT_EQ(StoredPresets(kHallKey), before);
    EXPECT_TRUE(IsEnabled(IDC_MANAGE));

    SelectPlugins({L"Room"});
    for (const std::wstring& file : {m_files.Write(L"other.spp", "no preset file"), m_file})
        ImportFrom(file, {}, {L"does not contain valid presets"});
}

TEST_F(PresetView, ARenamedPresetStaysSelected) {
    const auto rename = [this](const std::wstring& from, const std::wstring& to, int button,
                               const std::wstring& selected) {
        InManage([from](HWND dialog) {
            support::Select(List(dialog), {from});
            PostKey(List(dialog), VK_F2);
        }).Expect(L"Rename Preset", [=](HWND prompt) {
            const HWND value = GetDlgItem(prompt, IDC_PROMPT_VALUE);
            EXPECT_EQ(TextOf(value), from);
            EnterText(value, to);
            support::Press(GetDlgItem(prompt, button));
        });
        if (to == L"C") m_popups.Expect(L"An error occured while renaming the presets.", IDOK);
        InManage([selected](HWND dialog) {
            EXPECT_EQ(Selected(dialog), Names{selected});
            EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, IDC_PRESET_RENAME)));
            support::Press(GetDlgItem(dialog, IDCANCEL));
        });
        Press(IDC_MANAGE);
    };
    const std::wstring longest(519, L'W');  // that is read back
    rename(L"b", L"never mind", IDCANCEL, L"b");
    rename(L"b", L"C", IDOK, L"b");
    EXPECT_EQ(StoredPresets(kHallKey), (Presets{L"a=1a", L"b=1b", L"c=1c"}));
    rename(L"b", longest, IDOK, longest);
    rename(longest, L"z", IDOK, L"z");
    EXPECT_EQ(StoredPresets(kHallKey), (Presets{L"a=1a", L"c=1c", L"z=1b"}));
}

TEST_F(PresetView, ThePreviewIsThatOfTheFileThatIsNamed) {
    ExportTo(m_file);
    const std::wstring two = m_files.Path(L"two.spp");
    ExportTo(two, [](HWND dialog) { support::Select(List(dialog), {L"a", L"c"}); });
    // As typed into the field: a combo box tells of nothing else.
    const auto type = [](HWND dialog, const std::wstring& name, std::size_t presets) {
        HWND field = FileNameField(dialog);
        for (const wchar_t* within : {L"ComboBox", L"Edit"}) {
            if (const HWND child = FindWindowExW(field, nullptr, within, nullptr)) field = child;
        }
        EnterText(field, name);
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
    EXPECT_EQ(StoredPresets(kHallKey), Presets{L"c=1c"});
    SelectPlugins({L"Room"});
    ImportFrom({}, [&](HWND dialog) {
        wchar_t folder[MAX_PATH] = L"";
        Send(dialog, CDM_GETFOLDERPATH, MAX_PATH, reinterpret_cast<LPARAM>(folder));
        EXPECT_EQ(m_files.Folder(), folder) << "that of the last file";
        type(dialog, m_file, 4);
        EXPECT_EQ(support::Rows(List(dialog)), (Names{L"<<Hall>>", L"a", L"b", L"c"}));
    });
}

TEST_F(PresetView, SeveralPluginsAreNotChosenFrom) {
    SetRaw(HKEY_CURRENT_USER, kRoomKey, L"large", REG_BINARY, std::vector<BYTE>(1000, 'x'));
    SelectPlugins({L"Empty", L"Hall", L"Room"});
    ExportTo(m_file, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog), L"Export Presets For: <Multiple plug-ins selected>");
        EXPECT_EQ(support::Rows(List(dialog)), Names{L"<Multiple plug-ins selected>"});
        EXPECT_FALSE(IsWindowEnabled(List(dialog)) ||
                     IsWindowEnabled(InFileDialog(dialog, IDC_PRESET_SELECT_ALL)));
    });
    const auto hall = StoredPresets(kHallKey), room = StoredPresets(kRoomKey);
    Fill({});
    DeleteTree(HKEY_CURRENT_USER, kRoomKey);
    ImportFrom(m_file, [](HWND dialog) { EXPECT_EQ(support::Rows(List(dialog)).size(), 1U); });
    EXPECT_EQ(StoredPresets(kHallKey), hall);
    EXPECT_EQ(StoredPresets(kRoomKey), room);
}

TEST_F(PresetView, EscapeEndsBetweenTwoPresetsWithoutAWord) {
    constexpr std::size_t kMany = 4000;
    ::SetEnvironmentVariableW(L"CorvaneAppDataRoot", m_files.Folder().c_str());
    const std::wstring data = m_files.Write(L"data", std::string(2000, 'x'));
    for (std::size_t i = 0; i < kMany; ++i)
        support::SetText(HKEY_CURRENT_USER, kRoomKey, std::to_wstring(i).c_str(), data);
    SelectPlugins({L"Room"});
    ExportTo(m_file);
    const std::string whole = m_files.Read(L"all.spp");
    {
        const std::jthread escape = HoldEscape(L"Exporting");
        ExportTo(m_files.Path(L"new.spp"));
        m_popups.ExpectFile(L"Export Presets For: ", m_file).Expect(L"already exists", IDYES);
        Press(IDC_EXPORT);
    }
    EXPECT_EQ(m_files.Names(), (Names{L"all.spp", L"data"}));
    EXPECT_TRUE(m_files.Read(L"all.spp") == whole) << "the old file is back";
    EXPECT_TRUE(std::filesystem::is_empty(m_data / L"Backups")) << "and its backup is of no more use";
    DeleteTree(HKEY_CURRENT_USER, kRoomKey);
    {
        const std::jthread escape = HoldEscape(L"Importing");
        ImportFrom(m_file);
    }
    const std::size_t stored = StoredPresets(kRoomKey).size();
    EXPECT_TRUE(stored > 0 && stored < kMany) << stored;
    EXPECT_EQ(Text(IDC_PRESETS_GROUP), L"Corvane Plug-in Presets (" + std::to_wstring(stored) + L" found)");
}

TEST_F(PresetView, AFailureIsReportedAndLosesNothing) {
    const wchar_t* const notSaved = L"An I/O error occured while saving the presets. (1)";
    ExportTo(m_file, [](HWND dialog) { support::Select(List(dialog), {}); }, {notSaved});
    SetText(HKEY_CURRENT_USER, kHallKey, L"Without a file", L"C:\\no such folder\\x");
    ExportTo(m_file, {}, {L"The preset  'Without a file' may be invalid.", notSaved});
    EXPECT_TRUE(m_files.Names().empty()) << "what was written before it is no preset file";
    // A file that ends too early gives what comes before its end.
    Fill({L"a", L"b"});
    ExportTo(m_file);
    Fill({});
    const std::string whole = m_files.Read(L"all.spp");
    ImportFrom(m_files.Write(L"cut.spp", whole.substr(0, whole.size() - 1)), {},
               {L"An I/O error occured while loading the presets. (1)"});
    EXPECT_EQ(StoredPresets(kHallKey), Presets{L"a=1a"});
}

}  // namespace
