// The layout files row of the real program, with the system's file dialogs.
#include <windows.h>

#include <commctrl.h>

#include <cstdlib>
#include <gtest/gtest.h>

#include "resource.h"
#include "support/FileSandbox.h"
#include "support/RegistrySandbox.h"
#include "support/StandInHost.h"
#include "support/WindowDriver.h"

namespace {

using namespace support;

constexpr wchar_t kManager[] = L"Software\\Corvane Music Software\\Corvane Plugin Manager";
constexpr wchar_t kCaption[] = L"Plug-in Manager";
constexpr wchar_t kSaveTitle[] = L"Save Plug-In Menu Layout";
constexpr wchar_t kOpenTitle[] = L"Open Plug-In Menu Layout";
constexpr int kFileNameField = 0x47C;  // cmb13 of the system's file dialogs

std::string Layout(const std::string& name, int separators) {
    std::string text = "<PluginMenuLayout DocSchema='1' Name='" + name + "'>";
    for (int i = 0; i < separators; ++i) text += "<Separator/>";
    return text + "</PluginMenuLayout>";
}

/// These tests write to the real registry: they run only where the sample studio was loaded for them.
class LayoutFiles : public testing::Test {
  protected:
    void SetUp() override {
        if (!std::getenv("STUDIO")) GTEST_SKIP() << "needs a prefix of its own with the sample studio";
        m_oldFolder = Text(HKEY_CURRENT_USER, kManager, L"MenuLayoutsPath").value_or(L"");
        SetText(HKEY_CURRENT_USER, kManager, L"MenuLayoutsPath", m_files.Path(L"."));
        m_files.Write(L"one.pgl", Layout("One", 1));
        m_files.Write(L"two.pgl", Layout("Two", 2));
    }
    void TearDown() override {
        if (std::getenv("STUDIO")) SetText(HKEY_CURRENT_USER, kManager, L"MenuLayoutsPath", m_oldFolder);
    }
    void Start(const std::wstring& arguments = {}) {
        m_program.emplace(arguments);
        ASSERT_TRUE(m_program->WaitForWindow() && WaitFor([&] { return !Listed().empty(); })) << Screen();
        SetDword(HKEY_CURRENT_USER, kManager, L"MenuLayoutsDirty", 0);
    }
    std::string Screen() const { return m_program->OnScreen(); }
    std::vector<std::wstring> Listed() const { return m_program->Rows(IDC_LAYOUTS); }
    std::wstring Name() const { return m_program->TextOf(IDC_LAYOUTS); }
    std::wstring File() const { return m_program->TextOf(IDC_LAYOUT_FILE); }
    int Items() const { return TreeCount(m_program->Control(IDC_LAYOUT_TREE)); }
    bool HasItems(int count) const {
        return WaitFor([&] { return Items() == count; });
    }
    bool IsDirty() const {
        return WaitFor([] { return Dword(HKEY_CURRENT_USER, kManager, L"MenuLayoutsDirty") == 1U; });
    }
    void Pick(const wchar_t* name) const {
        const HWND list = m_program->Control(IDC_LAYOUTS);
        Send(list, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(name));
        PostNotification(list, CBN_SELCHANGE);
    }
    /// Adds a separator, which makes the layout modified.
    void Modify() const {
        const int before = Items();
        m_program->Press(IDC_ADD_SEPARATOR);
        ASSERT_TRUE(HasItems(before + 1)) << Screen();
    }
    /// The button of the message box that says so.
    void Answer(const wchar_t* text, int button) const {
        const HWND box = m_program->WaitForPopup(kCaption);
        ASSERT_TRUE(box) << Screen();
        EXPECT_NE(LabelsOf(box).find(text), std::wstring::npos) << Utf8(LabelsOf(box));
        Press(::GetDlgItem(box, button));
        ASSERT_TRUE(WaitFor([&] { return !::IsWindow(box); }));
    }
    static HWND Within(HWND parent, int id) {
        HWND found = ::GetDlgItem(parent, id);
        for (HWND child = nullptr;
             !found && (child = ::FindWindowExW(parent, child, L"#32770", nullptr)) != nullptr;)
            found = ::GetDlgItem(child, id);
        return found;
    }
    HWND FileDialog(const wchar_t* title) const {
        const HWND dialog = m_program->WaitForPopup(title);
        EXPECT_TRUE(dialog && WaitFor([&] { return Within(dialog, kFileNameField) != nullptr; })) << Screen();
        return dialog;
    }
    static void Confirm(HWND dialog, const std::wstring& path) {
        EnterText(Within(dialog, kFileNameField), path);
        ::PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    }
    bool IsClosed(HWND dialog) const {
        return WaitFor([&] { return !::IsWindow(dialog); });
    }

    FileSandbox m_files;
    std::wstring m_oldFolder;
    std::optional<WindowDriver> m_program;
};

TEST_F(LayoutFiles, PicksLayoutsAndTakesAPickBack) {
    Start();
    EXPECT_EQ(Listed(), (std::vector<std::wstring>{L"One", L"Two"}));
    EXPECT_FALSE(m_program->IsEnabled(IDC_LAYOUT_DELETE));
    EXPECT_EQ(Name() + File(), L"");
    Pick(L"Two");
    ASSERT_TRUE(HasItems(2)) << Screen();
    EXPECT_EQ(File(), L"two.pgl");
    EXPECT_TRUE(WaitFor([&] { return m_program->IsEnabled(IDC_LAYOUT_DELETE); }));
    Modify();
    EnterText(m_program->Control(IDC_LAYOUTS), L"Renamed");
    Pick(L"One");
    Answer(L"\"Renamed\"", IDCANCEL);
    EXPECT_TRUE(WaitFor([&] { return Name() == L"Renamed"; })) << Screen();
    EXPECT_EQ(Send(m_program->Control(IDC_LAYOUTS), CB_GETCURSEL), 1);
    EXPECT_EQ(Items(), 3);
    Pick(L"One");
    Answer(L"\"Renamed\"", IDNO);
    ASSERT_TRUE(HasItems(1)) << Screen();
    EXPECT_EQ(Name() + File(), L"Oneone.pgl");
    m_files.Write(L"two.pgl", "broken");
    Pick(L"Two");
    Answer(L"Not a valid", IDOK);
    EXPECT_EQ(m_program->Close(), 0U);
}

TEST_F(LayoutFiles, SavesUnderADisplayNameAndTellsTheHost) {
    const StandInHost host;
    Start(L"/Float /ParentWnd " + host.HandleText());
    Modify();
    EnterText(m_program->Control(IDC_LAYOUTS), L"A/B: live?");
    m_program->Press(IDC_LAYOUT_SAVE);
    HWND dialog = FileDialog(kSaveTitle);
    EXPECT_EQ(TextOf(Within(dialog, kFileNameField)), L"AB live");
    const HWND name = Within(dialog, IDC_DISPLAY_NAME);
    ASSERT_TRUE(name) << Screen();
    EXPECT_EQ(TextOf(Within(dialog, IDC_DISPLAY_NAME_LABEL)), L"Display name:");
    EXPECT_EQ(TextOf(name), L"A/B: live?");
    EXPECT_EQ(Rows(name), Listed());
    EnterText(name, L"");
    Confirm(dialog, m_files.Path(L"new"));
    Answer(L"Please enter a display name", IDOK);
    EXPECT_TRUE(::IsWindow(dialog));
    EnterText(name, L"Both & \x00FC\x266B");
    Confirm(dialog, m_files.Path(L"new"));
    ASSERT_TRUE(IsClosed(dialog)) << Screen();
    ASSERT_TRUE(host.WaitForMessage(kLayoutsChanged));
    EXPECT_TRUE(IsDirty());
    EXPECT_EQ(File() + Name(), L"new.pglBoth & \x00FC\x266B");
    EXPECT_EQ(Listed().size(), 3U);
    EXPECT_NE(m_files.Read(L"new.pgl").find("Name=\"Both &amp; \xC3\xBC\xE2\x99\xAB\"><Separator/></"),
              std::string::npos);

    Modify();
    m_program->Press(IDC_LAYOUT_SAVE);
    dialog = FileDialog(kSaveTitle);
    ::PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    ASSERT_TRUE(IsClosed(dialog)) << Screen();
    EXPECT_EQ(host.MessageCount(kLayoutsChanged), 1U) << "a save that was left is none";
    m_program->Press(IDC_LAYOUT_NEW);
    Answer(L"Both", IDNO);
    EXPECT_TRUE(HasItems(0)) << Screen();
    Pick(L"One");
    EXPECT_TRUE(HasItems(1)) << "a new layout is not modified\n" << Screen();
    EXPECT_EQ(m_program->Close(), 0U);
}

TEST_F(LayoutFiles, AFailedSaveIsReportedAndTheFlowThatAskedGoesOn) {
    Start();
    Modify();
    m_program->Press(IDC_LAYOUT_NEW);
    Answer(L"\"<Unnamed Layout>\"", IDYES);
    HWND dialog = FileDialog(kSaveTitle);
    ::PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    ASSERT_TRUE(IsClosed(dialog));
    EXPECT_EQ(Items(), 1) << "leaving the save dialog stops New, too";
    m_program->Press(IDC_LAYOUT_NEW);
    Answer(L"\"<Unnamed Layout>\"", IDYES);
    dialog = FileDialog(kSaveTitle);
    EnterText(Within(dialog, IDC_DISPLAY_NAME), L"Doomed");
    Confirm(dialog, m_files.Path(L"no such folder\\x.pgl"));
    Answer(L"Could not save", IDOK);
    EXPECT_TRUE(HasItems(0)) << Screen();
    EXPECT_TRUE(IsDirty());
    EXPECT_EQ(m_program->Close(), 0U);
}

TEST_F(LayoutFiles, SavingBeforeAPickStillShowsWhatWasPicked) {
    ::CreateDirectoryW(m_files.Path(L"elsewhere").c_str(), nullptr);
    const std::wstring away = m_files.Write(L"elsewhere\\away.pgl", Layout("Away", 5));
    Start(L"\"" + away + L"\"");
    ASSERT_TRUE(HasItems(5)) << Screen();
    EXPECT_FALSE(m_program->IsEnabled(IDC_LAYOUT_DELETE)) << "only for layouts that were listed";
    Pick(L"One");
    ASSERT_TRUE(HasItems(1));
    Modify();
    const auto saveAndPick = [&](const wchar_t* picked, const wchar_t* file) {
        Pick(picked);
        Answer(L"Save changes", IDYES);
        const HWND dialog = FileDialog(kSaveTitle);
        EnterText(Within(dialog, IDC_DISPLAY_NAME), L"Zero");  // moves it behind the picked one
        Confirm(dialog, m_files.Path(file));
    };
    saveAndPick(L"Two", L"zero.pgl");
    EXPECT_TRUE(WaitFor([&] { return File() == L"two.pgl"; })) << Screen();
    EXPECT_EQ(Name(), L"Two");
    EXPECT_EQ(Items(), 2);
    EXPECT_NE(m_files.Read(L"zero.pgl").find("<Separator/><Separator/>"), std::string::npos);
    m_program->Press(IDC_LAYOUT_OPEN);
    Confirm(FileDialog(kOpenTitle), away);
    ASSERT_TRUE(HasItems(5)) << Screen();
    Pick(L"Two");
    ASSERT_TRUE(HasItems(2)) << Screen();
    Modify();
    saveAndPick(L"Away", L"more.pgl");
    EXPECT_TRUE(WaitFor([&] { return Name() + File() == L"Awayaway.pgl"; })) << Screen();
    EXPECT_EQ(Items(), 5);
    EXPECT_EQ(m_program->Close(), 0U);
}

TEST_F(LayoutFiles, OpensFilesByDialogAndByCommandLine) {
    m_files.Write(L"far.pgl", Layout("Far", 4));
    ::CreateDirectoryW(m_files.Path(L"elsewhere").c_str(), nullptr);
    const std::wstring away = m_files.Write(L"elsewhere\\away.xml", Layout("Away", 5));
    Start(L"\"" + m_files.Path(L"TWO.pgl") + L"\"");
    ASSERT_TRUE(HasItems(2)) << Screen();
    EXPECT_EQ(Name(), L"Two");
    EXPECT_EQ(Listed().size(), 3U) << "found in the list in spite of its case";
    m_program->Press(IDC_LAYOUT_OPEN);
    HWND dialog = FileDialog(kOpenTitle);
    Confirm(dialog, away);
    ASSERT_TRUE(HasItems(5)) << Screen();
    EXPECT_EQ(Name() + File(), L"Awayaway.xml");
    EXPECT_EQ(Listed().size(), 4U);
    m_program->Press(IDC_LAYOUT_OPEN);
    dialog = FileDialog(kOpenTitle);
    Confirm(dialog, m_files.Write(L"elsewhere\\bad.pgl", "<!DOCTYPE a><PluginMenuLayout DocSchema='1'/>"));
    Answer(L"Not a valid", IDOK);
    EXPECT_EQ(Items(), 5);
    EXPECT_EQ(m_program->Close(), 0U);

    Start(L"\"" + m_files.Write(L"handed over.TMP", Layout("Handed", 3)) + L"\"");
    ASSERT_TRUE(HasItems(3)) << Screen();
    EXPECT_EQ(Name() + File(), L"") << "it counts as unnamed";
    m_program->Press(IDC_LAYOUT_SAVE);
    dialog = FileDialog(kSaveTitle);
    EXPECT_TRUE(TextOf(Within(dialog, kFileNameField)).ends_with(L"handed over.TMP")) << Screen();
    EnterText(Within(dialog, IDC_DISPLAY_NAME), std::wstring(400, L'n'));
    Confirm(dialog, m_files.Path(L"back.tmp"));
    ASSERT_TRUE(IsClosed(dialog));
    m_program->Press(IDC_LAYOUT_SAVE);
    dialog = FileDialog(kSaveTitle);
    EXPECT_TRUE(TextOf(Within(dialog, kFileNameField)).ends_with(L"back.tmp")) << Screen();
    ::PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    ASSERT_TRUE(IsClosed(dialog));
    EXPECT_EQ(m_program->Close(), 0U);
}

TEST_F(LayoutFiles, ClosingAsksAboutAnUnsavedLayout) {
    Start();
    Modify();
    m_program->Press(IDC_CLOSE);
    Answer(L"\"<Unnamed Layout>\"", IDCANCEL);
    EXPECT_TRUE(m_program->IsRunning());
    EXPECT_EQ(Items(), 1);
    m_program->Press(IDC_CLOSE);
    Answer(L"\"<Unnamed Layout>\"", IDYES);
    const HWND dialog = FileDialog(kSaveTitle);
    EnterText(Within(dialog, IDC_DISPLAY_NAME), L"Doomed");
    Confirm(dialog, m_files.Path(L"no such folder\\x.pgl"));
    Answer(L"Could not save", IDOK);
    EXPECT_EQ(Items(), 1) << "what could not be saved is kept";
    m_program->Press(IDC_CLOSE);
    Answer(L"\"<Unnamed Layout>\"", IDNO);
    EXPECT_EQ(m_program->WaitForExit(), 0U);
}

TEST_F(LayoutFiles, DeletesTheFileAndStartsANewLayout) {
    Start();
    Pick(L"One");
    ASSERT_TRUE(HasItems(1));
    m_program->Press(IDC_LAYOUT_DELETE);
    Answer(L"Are you sure", IDNO);
    EXPECT_TRUE(IsDirty()) << "even then";
    EXPECT_EQ(m_files.Names().size(), 2U);
    m_program->Press(IDC_LAYOUT_DELETE);
    Answer(L"Are you sure", IDYES);
    ASSERT_TRUE(HasItems(0)) << Screen();
    EXPECT_EQ(m_files.Names(), std::vector<std::wstring>{L"two.pgl"});
    EXPECT_EQ(Listed(), std::vector<std::wstring>{L"Two"});
    EXPECT_EQ(Name() + File(), L"");
    EXPECT_EQ(Send(m_program->Control(IDC_LAYOUTS), CB_GETCURSEL), CB_ERR);
    EXPECT_FALSE(m_program->IsEnabled(IDC_LAYOUT_DELETE));
    EXPECT_EQ(m_program->Close(), 0U);
}

}  // namespace
