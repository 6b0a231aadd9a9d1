// The preset commands of the real program, through its own and the system's dialogs.
#include <windows.h>

#include <commdlg.h>
#include <dlgs.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

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

using Values = std::map<std::wstring, std::string>;

/// Type and data of each preset in the registry; of one in a file, the file's.
Values StoredPresets() {
    Values values;
    HKEY key = nullptr;
    if (::RegOpenKeyExW(HKEY_CURRENT_USER, kReverbKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return values;
    for (DWORD index = 0;; ++index) {
        wchar_t name[520];
        char data[2048];
        DWORD length = 520, type = 0, size = sizeof data;
        if (::RegEnumValueW(key, index, name, &length, nullptr, &type, reinterpret_cast<BYTE*>(data),
                            &size) != ERROR_SUCCESS)
            break;
        std::string bytes(data, size);
        if (type == REG_SZ) {
            std::ifstream file(fs::path(reinterpret_cast<const wchar_t*>(data)), std::ios::binary);
            std::ostringstream text;
            text << file.rdbuf();
            bytes = text.str();
        }
        values[name] = std::to_string(type) + ":" + bytes;
    }
    ::RegCloseKey(key);
    return values;
}

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
    const Values before = StoredPresets();
    ASSERT_EQ(before.size(), 4U);
    const HWND saving = Open(IDC_EXPORT, L"Export Presets For: Kammer Reverb");
    EXPECT_EQ(Rows(PresetList(saving)).size(), 4U);
    EXPECT_EQ(SelectedRows(PresetList(saving)).size(), 4U);
    Confirm(saving);
    WaitForFile();

    const HWND managing = Open(IDC_MANAGE, L"Manage Presets for Kammer Reverb");
    Press(::GetDlgItem(managing, IDC_PRESET_SELECT_ALL));
    ASSERT_TRUE(WaitFor([&] { return SelectedRows(::GetDlgItem(managing, IDC_PRESET_LIST)).size() == 4; }));
    EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(managing, IDC_PRESET_RENAME)));
    Press(::GetDlgItem(managing, IDC_PRESET_DELETE));
    Answer(L"the selected presets for 'Kammer Reverb' ?");
    ASSERT_TRUE(WaitFor([&] { return Rows(::GetDlgItem(managing, IDC_PRESET_LIST)).empty(); }));
    EXPECT_FALSE(Exists(HKEY_CURRENT_USER, kReverbKey));
    Press(::GetDlgItem(managing, IDC_PRESET_DELETE));
    Answer(L"the selected presets");
    Answer(L"An error occured while deleting the presets.");
    Finish(managing, IDCANCEL);
    EXPECT_TRUE(WaitFor([&] { return !m_program->IsEnabled(IDC_MANAGE); }));

    Confirm(Open(IDC_IMPORT, L"Import Presets For: Kammer Reverb"));
    EXPECT_TRUE(WaitFor([&] { return StoredPresets() == before; })) << m_program->OnScreen();
    EXPECT_TRUE(WaitFor([&] { return m_program->IsEnabled(IDC_MANAGE); }));

    m_program->Select(IDC_PLUGINS, {kWithoutPresets});
    Confirm(Open(IDC_IMPORT, L"Import Presets For: "));
    Answer(L"This file does not contain valid presets");
    EXPECT_EQ(m_program->Close(), 0U);
}

TEST_F(ProgramPresets, AreRenamedUnlessTheNameIsTaken) {
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
    EXPECT_EQ(StoredPresets().size(), 4U);
    const std::string data = StoredPresets()[L"Large Chamber"];
    rename(L"Large Chamber", L"Chamber, large");
    EXPECT_TRUE(WaitFor([&] { return StoredPresets()[L"Chamber, large"] == data; }));
    rename(L"Chamber, large", L"Large Chamber");
    EXPECT_TRUE(WaitFor([&] { return StoredPresets()[L"Large Chamber"] == data; }));
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
    const Values before = StoredPresets();
    DeleteTree(HKEY_CURRENT_USER, kReverbKey);
    Confirm(Open(IDC_IMPORT, L"Import Presets For: <Multiple plug-ins selected>"));
    EXPECT_TRUE(WaitFor([&] { return StoredPresets() == before; })) << m_program->OnScreen();

    std::ofstream(m_file) << "no preset file";
    m_program->Select(IDC_PLUGINS, {kReverb});
    const HWND opening = Open(IDC_IMPORT, L"Import Presets For: ");
    Confirm(opening);
    Answer(L"This file does not contain valid presets");
    EXPECT_EQ(m_program->Close(), 0U);
}

}  // namespace
