// The preset commands of the real program, through its own and the system's dialogs.
#include <windows.h>

#include <commdlg.h>
#include <dlgs.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "presets/StoredPresets.h"
#include "resource.h"
#include "support/RegistrySandbox.h"
#include "support/WindowDriver.h"

namespace {

using namespace support;
namespace fs = std::filesystem;

constexpr wchar_t kReverb[] = L"Kammer Reverb";
constexpr wchar_t kReverbKey[] =
    L"Software\\Corvane Music Software\\ActiveMovie\\Presets\\{486D4B72-5653-5400-8A01-5A3C1E90B764}";
constexpr wchar_t kWithoutPresets[] = L"Blechplatte";

class ProgramPresets : public testing::Test {
  protected:
    void SetUp() override {
        if (!std::getenv("STUDIO")) GTEST_SKIP() << "needs a prefix of its own with the sample studio";
        fs::remove(m_file);
        ASSERT_TRUE(m_program.emplace().WaitForWindow());
        ASSERT_TRUE(WaitFor([&] { return !m_program->Rows(IDC_PLUGINS).empty(); })) << m_program->OnScreen();
        m_program->Select(IDC_CATEGORIES, {L"VST Audio Effects (VST)"});
        m_program->Select(IDC_PLUGINS, {kReverb});
    }
    HWND Open(int button, const std::wstring& title) const {
        m_program->Press(button);
        const HWND dialog = m_program->WaitForPopup(title);
        EXPECT_TRUE(dialog) << m_program->OnScreen();
        return dialog;
    }
    /// The list that the program adds to a file dialog.
    static HWND PresetList(HWND fileDialog) {
        return ::GetDlgItem(::FindWindowExW(fileDialog, nullptr, L"#32770", nullptr), IDC_PRESET_LIST);
    }
    static void Finish(HWND dialog, int button) {
        Press(::GetDlgItem(dialog, button));
        EXPECT_TRUE(WaitFor([&] { return !::IsWindow(dialog); })) << Describe(dialog);
    }
    void Confirm(HWND fileDialog) const {
        const HWND name = ::GetDlgItem(fileDialog, cmb13);
        EnterText(
            ::FindWindowExW(::FindWindowExW(name, nullptr, L"ComboBox", nullptr), nullptr, L"Edit", nullptr),
            m_file.wstring());
        Finish(fileDialog, IDOK);
    }
    /// The dialog goes before the file is written; a small file is written in one go.
    void WaitForFile() const {
        std::error_code notYet;
        ASSERT_TRUE(WaitFor([&] { return fs::file_size(m_file, notYet) > 0 && !notYet; }))
            << m_program->OnScreen();
    }
    /// A file that could not be written whole is deleted after the message about it.
    bool WaitForNoFile() const {
        return WaitFor([&] { return !fs::exists(m_file); });
    }
    /// A message box of the program with this text in it, answered.
    void Answer(const std::wstring& text, int button = IDOK) const {
        const HWND box = m_program->WaitForPopup(L"Plug-in Manager");
        ASSERT_TRUE(box) << m_program->OnScreen();
        EXPECT_NE(LabelsOf(box).find(text), std::wstring::npos) << Describe(box);
        Finish(box, button == IDOK && !::GetDlgItem(box, IDOK) ? IDCANCEL : button);
    }

    const fs::path m_file = fs::temp_directory_path() / L"program test.spp";
    std::optional<WindowDriver> m_program;
};

TEST_F(ProgramPresets, GoOutAreDeletedAndComeBackTheSame) {
    const auto before = StoredPresets(kReverbKey);
    ASSERT_EQ(before.size(), 4U);
    const HWND saving = Open(IDC_EXPORT, L"Export Presets For: Kammer Reverb");
    EXPECT_EQ(Rows(PresetList(saving)).size(), 4U);
    EXPECT_EQ(SelectedRows(PresetList(saving)).size(), 4U);
    Confirm(saving);
    WaitForFile();

    const HWND managing = Open(IDC_MANAGE, L"Manage Presets for Kammer Reverb");
    const HWND list = ::GetDlgItem(managing, IDC_PRESET_LIST);
    Select(list, {L"Cathedral", L"Vocal Booth"});
    Press(::GetDlgItem(managing, IDC_PRESET_DELETE));
    Answer(L"the selected presets for 'Kammer Reverb' ?");
    ASSERT_TRUE(WaitFor([&] { return Rows(list).size() == 2; }));
    Press(::GetDlgItem(managing, IDC_PRESET_SELECT_ALL));
    ASSERT_TRUE(WaitFor([&] { return SelectedRows(list).size() == 2; }));
    EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(managing, IDC_PRESET_RENAME)));
    Press(::GetDlgItem(managing, IDC_PRESET_DELETE));
    Answer(L"the selected presets");
    ASSERT_TRUE(WaitFor([&] { return Rows(list).empty(); }));
    EXPECT_FALSE(Exists(HKEY_CURRENT_USER, kReverbKey));
    Press(::GetDlgItem(managing, IDC_PRESET_DELETE));
    Answer(L"the selected presets");
    Answer(L"An error occured while deleting the presets.");
    Finish(managing, IDCANCEL);
    EXPECT_TRUE(WaitFor([&] { return !m_program->IsEnabled(IDC_MANAGE); }));

    Confirm(Open(IDC_IMPORT, L"Import Presets For: Kammer Reverb"));
    EXPECT_TRUE(WaitFor([&] { return StoredPresets(kReverbKey) == before; })) << m_program->OnScreen();
    EXPECT_TRUE(WaitFor([&] { return m_program->IsEnabled(IDC_MANAGE); }));

    m_program->Select(IDC_PLUGINS, {kWithoutPresets});
    Confirm(Open(IDC_IMPORT, L"Import Presets For: "));
    Answer(L"This file does not contain valid presets");
    EXPECT_EQ(m_program->Close(), 0U);
}

TEST_F(ProgramPresets, AreRenamedUnlessTheNameIsTaken) {
    const auto before = StoredPresets(kReverbKey);
    const HWND managing = Open(IDC_MANAGE, L"Manage Presets for");
    const HWND list = ::GetDlgItem(managing, IDC_PRESET_LIST);
    const auto rename = [&](const std::wstring& from, const std::wstring& to) {
        Select(list, {from});
        PostKey(list, VK_F2);
        const HWND prompt = m_program->WaitForPopup(L"Rename Preset");
        ASSERT_TRUE(prompt) << m_program->OnScreen();
        EXPECT_EQ(TextOf(::GetDlgItem(prompt, IDC_PROMPT_VALUE)), from);
        EnterText(::GetDlgItem(prompt, IDC_PROMPT_VALUE), to);
        Finish(prompt, IDOK);
    };
    rename(L"Large Chamber", L"Small Chamber");
    Answer(L"An error occured while renaming the presets.");
    EXPECT_EQ(StoredPresets(kReverbKey), before);
    rename(L"Large Chamber", L"Chamber, large");
    EXPECT_TRUE(WaitFor([&] {
        return StoredPresets(kReverbKey).contains(L"Chamber, large:3:size=0.75;decay=2.4;mix=0.30");
    }));
    rename(L"Chamber, large", L"Large Chamber");
    EXPECT_TRUE(WaitFor([&] { return StoredPresets(kReverbKey) == before; }));
    Finish(managing, IDCANCEL);
    EXPECT_EQ(m_program->Close(), 0U);
}

TEST_F(ProgramPresets, SeveralPluginsAreNotChosenFrom) {
    m_program->Select(IDC_PLUGINS, {kReverb, kWithoutPresets});
    const HWND saving = Open(IDC_EXPORT, L"Export Presets For: <Multiple plug-ins selected>");
    EXPECT_EQ(Rows(PresetList(saving)), std::vector<std::wstring>{L"<Multiple plug-ins selected>"});
    EXPECT_FALSE(::IsWindowEnabled(PresetList(saving)));
    Confirm(saving);
    WaitForFile();
    const auto before = StoredPresets(kReverbKey);
    DeleteTree(HKEY_CURRENT_USER, kReverbKey);
    Confirm(Open(IDC_IMPORT, L"Import Presets For: <Multiple plug-ins selected>"));
    EXPECT_TRUE(WaitFor([&] { return StoredPresets(kReverbKey) == before; })) << m_program->OnScreen();

    std::ofstream(m_file) << "no preset file";
    m_program->Select(IDC_PLUGINS, {kReverb});
    Confirm(Open(IDC_IMPORT, L"Import Presets For: "));
    Answer(L"This file does not contain valid presets");
    EXPECT_EQ(m_program->Close(), 0U);
}

TEST_F(ProgramPresets, AFailureIsReportedAndLosesNothing) {
    const auto before = StoredPresets(kReverbKey);
    const HWND saving = Open(IDC_EXPORT, L"Export Presets For: ");
    Select(PresetList(saving), {});
    Confirm(saving);
    Answer(L"An I/O error occured while saving the presets. (1)");
    EXPECT_TRUE(WaitForNoFile()) << "no preset was chosen";
    SetText(HKEY_CURRENT_USER, kReverbKey, L"Without a file", L"C:\\no such folder\\x");
    Confirm(Open(IDC_EXPORT, L"Export Presets For: "));
    Answer(L"The preset  'Without a file' may be invalid.");
    Answer(L"An I/O error occured while saving the presets. (1)");
    EXPECT_TRUE(WaitForNoFile());
    CRegKey::Open(HKEY_CURRENT_USER, kReverbKey, KEY_WRITE)->DeleteValue(L"Without a file");
    Confirm(Open(IDC_EXPORT, L"Export Presets For: "));
    WaitForFile();

    const HWND managing = Open(IDC_MANAGE, L"Manage Presets for");
    {
        const ReadOnlyKey locked(HKEY_CURRENT_USER, kReverbKey);
        Press(::GetDlgItem(managing, IDC_PRESET_DELETE));
        Answer(L"the selected presets");
        Answer(L"An error occured while deleting the presets.");
        Finish(managing, IDCANCEL);
        Confirm(Open(IDC_IMPORT, L"Import Presets For: "));
        Answer(L"An I/O error occured while loading the presets. (1)");
    }
    EXPECT_EQ(StoredPresets(kReverbKey), before);
    EXPECT_EQ(m_program->Close(), 0U);
}

}  // namespace
