// The layout files row of the main dialog, with the system's file dialogs.
#include "support/MainDialog.h"
#include "support/StandInHost.h"

namespace {

using support::EnterText;
using support::InFileDialog;
using support::Popups;
using support::Send;

constexpr wchar_t kSave[] = L"Save Plug-In Menu Layout";
constexpr wchar_t kOpen[] = L"Open Plug-In Menu Layout";
constexpr wchar_t kDoomed[] = L"no such folder\\x.pgl";

std::string Layout(const std::string& name, const std::string& content) {
    return "<PluginMenuLayout DocSchema='1' Name='" + name + "'>" + content + "</PluginMenuLayout>";
}
std::string Separators(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += "<Separator/>";
    return text;
}
const std::string kBroken = Layout("Two", "<Separator/><Folder/><Plugin/>");

Popups::Work Named(const std::wstring& name) {
    return [name](HWND dialog) { EnterText(InFileDialog(dialog, IDC_DISPLAY_NAME), name); };
}

class LayoutFiles : public support::MainDialog {
  protected:
    void SetUp() override {
        m_files.Write(L"one.pgl", Layout("One", Separators(1)));
        m_files.Write(L"two.pgl", Layout("Two", Separators(2)));
        ::CreateDirectoryW(m_files.Path(L"away").c_str(), nullptr);
        m_away = m_files.Write(L"away\\away.xml", Layout("Away", Separators(5)));
    }
    /// Display name, file name, number of items, and a plus when the file can be deleted.
    std::wstring Shown() const {
        return Text(IDC_LAYOUTS) + L"|" + Text(IDC_LAYOUT_FILE) + L"|" +
               std::to_wstring(support::TreeCount(Control(IDC_LAYOUT_TREE))) +
               (IsEnabled(IDC_LAYOUT_DELETE) ? L"+" : L"");
    }
    CTreeView Tree() const { return m_dialog->Control<CTreeView>(IDC_LAYOUT_TREE); }
    HWND List() const { return Control(IDC_LAYOUTS); }
    void Pick(const wchar_t* name) {
        Select(IDC_LAYOUTS, {name});
        Pump();
    }
    void Modify() { Press(IDC_ADD_SEPARATOR); }
    /// As when each question is answered so, and the dialog that follows.
    Popups& Answer(const wchar_t* name, int button) {
        return m_popups.Expect(L"Save changes to current menu layout, \"" + std::wstring(name) + L"\"",
                               button);
    }
    static bool TakeDirty() {
        const bool dirty =
            support::Dword(HKEY_CURRENT_USER, kManagerKey, L"MenuLayoutsDirty").value_or(0) == 1;
        support::SetDword(HKEY_CURRENT_USER, kManagerKey, L"MenuLayoutsDirty", 0);
        return dirty;
    }

    std::wstring m_away;
};

TEST_F(LayoutFiles, ALayoutIsPickedOrThePickTakenBack) {
    Open();
    EXPECT_EQ(Rows(IDC_LAYOUTS), (std::vector<std::wstring>{L"One", L"Two"}));
    EXPECT_EQ(Shown(), L"||0");
    Pick(L"Two");
    EXPECT_EQ(Shown(), L"Two|two.pgl|2+");
    Modify();
    EnterText(List(), L"Renamed");
    Answer(L"Renamed", IDCANCEL);
    Pick(L"One");
    EXPECT_EQ(Shown(), L"Renamed|two.pgl|3+");
    EXPECT_EQ(Send(List(), CB_GETCURSEL), 1);
    Answer(L"Renamed", IDNO);
    Pick(L"One");
    EXPECT_EQ(Shown(), L"One|one.pgl|1+");
}

TEST_F(LayoutFiles, AFileThatIsNoLayoutChangesNothing) {
    m_popups.Expect(L"Not a valid", IDOK);
    Open({L"C:\\no such file.pgl"});
    EXPECT_EQ(Shown(), L"||0");
    m_files.Write(L"two.pgl", kBroken);
    m_popups.Expect(L"Not a valid", IDOK);
    Pick(L"Two");
    EXPECT_EQ(Shown(), L"||0") << "no file of its own, which could be deleted";
    Pick(L"One");
    Modify();
    Answer(L"One", IDNO).Expect(L"Not a valid", IDOK);
    Pick(L"Two");
    EXPECT_EQ(Shown(), L"One|one.pgl|2+");
    EXPECT_EQ(Send(List(), CB_GETCURSEL), 0);
    Answer(L"One", IDNO).ExpectFile(kOpen, m_files.Path(L"two.pgl")).Expect(L"Not a valid", IDOK);
    Press(IDC_LAYOUT_OPEN);
    EXPECT_EQ(Shown(), L"One|one.pgl|2+");
    Answer(L"One", IDCANCEL);  // still modified
    Press(IDC_LAYOUT_NEW);
}

TEST_F(LayoutFiles, InTheListThatIsDownOnlyTheChosenRowIsPicked) {
    Open({m_files.Path(L"one.pgl")});
    Show();
    const HWND field = ::GetWindow(List(), GW_CHILD);
    const auto drop = [&](bool down) { Send(List(), CB_SHOWDROPDOWN, down); };
    ::SetFocus(field);
    for (const bool chosen : {false, true}) {
        drop(true);
        Key(field, VK_DOWN);
        EXPECT_TRUE(Send(List(), CB_GETDROPPEDSTATE)) << "an arrow key picks nothing yet";
        EXPECT_EQ(support::TreeCount(Control(IDC_LAYOUT_TREE)), 1);
        if (chosen) Key(field, VK_RETURN);
        drop(false);
        Pump();
        EXPECT_EQ(Shown(), chosen ? L"Two|two.pgl|2+" : L"One|one.pgl|1+");
    }
    ::SetFocus(field);
    ::PostMessageW(List(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    Pump();
    EXPECT_EQ(Shown(), L"Two|two.pgl|2+") << "the wheel picks nothing";
    Key(field, VK_UP);
    EXPECT_EQ(Shown(), L"One|one.pgl|1+") << "in the closed list an arrow key picks";
}

TEST_F(LayoutFiles, ASaveTakesADisplayNameAndTellsTheHost) {
    const support::StandInHost host;
    Open({L"/Float", L"/ParentWnd", host.HandleText()});
    Modify();
    TakeDirty();
    Send(List(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"A/B: live?"));  // as the list completes a text
    m_popups
        .ExpectFile(kSave, m_files.Path(L"new"),
                    [&](HWND dialog) {
                        const HWND name = InFileDialog(dialog, IDC_DISPLAY_NAME);
                        EXPECT_EQ(support::TextOf(InFileDialog(dialog, support::kFileNameField)), L"AB live");
                        EXPECT_EQ(support::TextOf(name), L"A/B: live?");
                        EXPECT_EQ(support::Rows(name), Rows(IDC_LAYOUTS));
                        EnterText(name, L"");
                    })
        .Expect(L"Please enter a display name", IDOK)
        .ExpectFile(kSave, m_files.Path(L"new"), Named(L"Both & \x00FC\x266B"));
    Press(IDC_LAYOUT_SAVE);
    EXPECT_TRUE(host.WaitForMessage(support::kLayoutsChanged) && TakeDirty());
    EXPECT_EQ(Shown(), L"Both & \x00FC\x266B|new.pgl|1+");
    EXPECT_NE(m_files.Read(L"new.pgl").find("Name=\"Both &amp; \xC3\xBC\xE2\x99\xAB\"><Separator/></"),
              std::string::npos);
    Modify();
    m_popups.ExpectFile(kSave, L"");
    Press(IDC_LAYOUT_SAVE);
    EXPECT_EQ(host.MessageCount(support::kLayoutsChanged), 1U) << "a save that was left is none";
    Answer(L"Both & \x00FC\x266B", IDNO);
    Press(IDC_LAYOUT_NEW);
    EXPECT_EQ(Shown(), L"||0");
    Pick(L"One");  // a new layout is not modified
    EXPECT_EQ(Shown(), L"One|one.pgl|1+");
}

TEST_F(LayoutFiles, ANewLayoutIsSavedByItsDisplayNameAlone) {
    Open();
    Modify();
    m_popups.Expect(kSave, [](HWND dialog) {
        const HWND file = InFileDialog(dialog, support::kFileNameField);
        const auto proposed = [&](const wchar_t* name) {
            EnterText(InFileDialog(dialog, IDC_DISPLAY_NAME), name);
            return support::TextOf(file);
        };
        EXPECT_EQ(proposed(L"Live"), L"Live");
        EnterText(file, L"own");
        EXPECT_EQ(proposed(L"Live?"), L"own");
        EnterText(file, L"");
        EXPECT_EQ(proposed(L"Live: 2"), L"Live 2");
        ::PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    Press(IDC_LAYOUT_SAVE);
    EXPECT_EQ(Shown(), L"Live: 2|Live 2.pgl|1+");
}

TEST_F(LayoutFiles, WhatCouldNotBeSavedStopsOnlyClosing) {
    Open();
    Modify();
    TakeDirty();
    Answer(L"<Unnamed Layout>", IDYES).ExpectFile(kSave, L"");
    Press(IDC_LAYOUT_NEW);
    EXPECT_FALSE(TakeDirty());
    EXPECT_EQ(Shown(), L"||1") << "leaving the save dialog stops New, too";
    const auto fail = [&](int control) {
        Answer(L"<Unnamed Layout>", IDYES)
            .ExpectFile(kSave, m_files.Path(kDoomed), Named(L"Doomed"))
            .Expect(L"Could not save Plug-In Menu Layout!\n\n", IDOK);  // and why
        Press(control);
        EXPECT_TRUE(TakeDirty());
    };
    Answer(L"<Unnamed Layout>", IDCANCEL);
    Press(IDC_CLOSE);
    fail(IDC_CLOSE);
    EXPECT_EQ(Shown(), L"||1");
    fail(IDC_LAYOUT_NEW);
    EXPECT_EQ(Shown(), L"||0");
    Modify();
    Answer(L"<Unnamed Layout>", IDNO);
    Press(IDC_CLOSE);
    EXPECT_FALSE(IsOpen());
}

TEST_F(LayoutFiles, NothingGoesOnWhenTheWindowIsTakenAwayDuringTheQuestion) {
    for (const int control : {IDC_LAYOUT_OPEN, IDC_LAYOUTS}) {
        Open();
        Modify();
        m_popups.Expect(L"Save changes", [this](HWND) { ::DestroyWindow(m_dialog->Handle()); });
        control == IDC_LAYOUTS ? Pick(L"Two") : Press(control);
        EXPECT_FALSE(IsOpen());
    }
}

TEST_F(LayoutFiles, SavingBeforeAPickStillShowsWhatWasPicked) {
    Open({m_away});
    EXPECT_EQ(Shown(), L"Away|away.xml|5") << "only layouts that were listed can be deleted";
    const auto saveAndPick = [&](const wchar_t* old, const wchar_t* picked, const wchar_t* file) {
        Modify();
        // The name moves the row behind the picked one.
        Answer(old, IDYES).ExpectFile(kSave, m_files.Path(file), Named(L"Zero"));
        Pick(picked);
    };
    Pick(L"One");
    saveAndPick(L"One", L"Two", L"zero.pgl");
    EXPECT_EQ(Shown(), L"Two|two.pgl|2+");
    EXPECT_NE(m_files.Read(L"zero.pgl").find("<Separator/><Separator/>"), std::string::npos);
    m_popups.ExpectFile(kOpen, m_away);
    Press(IDC_LAYOUT_OPEN);
    Pick(L"Two");
    saveAndPick(L"Two", L"Away", L"more.pgl");
    EXPECT_EQ(Shown(), L"Away|away.xml|5+");
}

TEST_F(LayoutFiles, AFileIsFoundInTheListInSpiteOfItsCaseAndATemporaryOneCountsAsUnnamed) {
    Open({m_files.Path(L"TWO.pgl")});
    EXPECT_EQ(Shown(), L"Two|TWO.pgl|2+");
    EXPECT_EQ(Rows(IDC_LAYOUTS).size(), 2U);
    m_popups.ExpectFile(kOpen, m_away);
    Press(IDC_LAYOUT_OPEN);
    EXPECT_EQ(Shown(), L"Away|away.xml|5+");
    EXPECT_EQ(Rows(IDC_LAYOUTS).size(), 3U);

    const auto opensWith = [](const wchar_t* file) {
        return [file](HWND dialog) {
            EXPECT_TRUE(support::TextOf(InFileDialog(dialog, support::kFileNameField)).ends_with(file));
            EnterText(InFileDialog(dialog, IDC_DISPLAY_NAME), std::wstring(400, L'n'));
        };
    };
    Open({m_files.Write(L"handed over.TMP", Layout("Handed", Separators(3)))});
    EXPECT_EQ(Shown(), L"||3");
    m_popups.ExpectFile(kSave, m_files.Path(L"back.tmp"), opensWith(L"handed over.TMP"));
    Press(IDC_LAYOUT_SAVE);
    m_popups.ExpectFile(kSave, L"", opensWith(L"back.tmp"));
    Press(IDC_LAYOUT_SAVE);
}

TEST_F(LayoutFiles, ADeletedFileIsForgottenEvenWhenNewIsLeft) {
    Open({m_files.Path(L"one.pgl")});
    const auto remove = [&](int answer) -> Popups& { return m_popups.Expect(L"Are you sure", answer); };
    TakeDirty();
    remove(IDNO);
    Press(IDC_LAYOUT_DELETE);
    EXPECT_TRUE(TakeDirty()) << "even then";
    EXPECT_EQ(Shown(), L"One|one.pgl|1+");
    remove(IDYES);
    Press(IDC_LAYOUT_DELETE);
    EXPECT_EQ(Shown(), L"||0");
    EXPECT_EQ(Rows(IDC_LAYOUTS), std::vector<std::wstring>{L"Two"});
    Pick(L"Two");
    Modify();
    remove(IDYES);
    Answer(L"Two", IDCANCEL);
    Press(IDC_LAYOUT_DELETE);
    EXPECT_EQ(Shown(), L"Two||3");
    EXPECT_EQ(m_files.Names(), std::vector<std::wstring>{L"away"});
    Answer(L"Two", IDCANCEL);  // it is work that was not saved
    Press(IDC_LAYOUT_NEW);
}

TEST_F(LayoutFiles, AfterASaveTheTreeLooksAsBefore) {
    const std::wstring path =
        m_files.Write(L"one.pgl", Layout("One", "<Folder Name='a'><Folder Name='b'>" + Separators(9) +
                                                    "</Folder></Folder>" +
                                                    "<Folder Name='c'><Folder/></Folder>" + Separators(60)));
    Open({path});
    Pick(L"One");
    Modify();
    const auto look = [&] {
        std::wstring text;
        for (HTREEITEM item = Tree().Root(); item; item = Tree().NextVisible(item)) {
            const bool selected =
                Tree().Send(TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_SELECTED) & TVIS_SELECTED;
            text += selected ? L's' : L'.';
            if (item == Tree().Caret()) text += L'c';
            if (item == Tree().FirstVisible()) text += L'v';
        }
        return text;
    };
    const HTREEITEM outer = Tree().Root();
    Tree().Expand(outer, true);
    Tree().Expand(Tree().Child(outer), true);
    HTREEITEM item = outer;
    for (int row = 0; row < 15; ++row) item = Tree().NextVisible(item);
    Tree().Select(item);
    TVITEMW change{};
    change.mask = TVIF_STATE;
    change.hItem = Tree().NextVisible(item);
    change.state = change.stateMask = TVIS_SELECTED;
    Tree().Send(TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&change));
    Tree().ScrollToTop(Tree().Child(outer));
    const std::wstring before = look();
    EXPECT_EQ(before.substr(0, 20), L"..v.............scs.");
    m_popups.ExpectFile(kSave, path).Expect(L"exist", IDYES);
    Press(IDC_LAYOUT_SAVE);
    EXPECT_EQ(look(), before);
    EXPECT_TRUE(IsEnabled(IDC_REMOVE));
}

}  // namespace
