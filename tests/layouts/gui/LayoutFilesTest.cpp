// The layout files row of the main dialog, with the system's file dialogs.
#include "layouts/LayoutTreeDialog.h"
#include "support/StandInHost.h"

namespace {

using namespace support;
using Texts = std::vector<std::wstring>;

constexpr wchar_t kSave[] = L"Save Plug-In Menu Layout";
constexpr wchar_t kOpen[] = L"Open Plug-In Menu Layout";
constexpr wchar_t kNoLayout[] = L"Not a valid";

HWND NameField(HWND dialog) { return InFileDialog(dialog, IDC_DISPLAY_NAME); }
Popups::Work Named(const std::wstring& name) {
    return [name](HWND dialog) { EnterText(NameField(dialog), name); };
}

class LayoutFiles : public support::LayoutTreeDialog {
  protected:
    void SetUp() override {
        WriteLayout(L"one.pgl", "One", 1);
        WriteLayout(L"two.pgl", "Two", 2);
    }
    std::wstring WriteLayout(const wchar_t* file, const std::string& name, int separators) {
        return m_files.Write(file, "<PluginMenuLayout DocSchema='1' Name='" + name + "'>" +
                                       Times(separators, "<Separator/>") + "</PluginMenuLayout>");
    }
    HWND List() const { return Control(IDC_LAYOUTS); }

    /// The list's row, the display name, the file's name, the number of items, and a plus when the file can
    /// be deleted.
    void Shows(const wchar_t* expected) {
        std::wstring shown;
        for (const int row : support::SelectedRows(List())) shown += std::to_wstring(row) + L":";
        shown += Text(IDC_LAYOUTS) + L"|" + Text(IDC_LAYOUT_FILE) + L"|" + std::to_wstring(Tree().Count());
        EXPECT_EQ(shown + (IsEnabled(IDC_LAYOUT_DELETE) ? L"+" : L""), expected);
    }
    using MainDialog::Press;
    /// `answer` is that to the question about a modified layout.
    void Press(int button, const wchar_t* shows, int answer = 0) {
        if (answer != 0) Answer(answer);
        Press(button);
        Shows(shows);
    }
    void Pick(const wchar_t* name, const wchar_t* shows, int answer = 0) {
        if (answer != 0) Answer(answer);
        Select(IDC_LAYOUTS, {name});
        Pump();
        Shows(shows);
    }
    void Modify() { Press(IDC_ADD_SEPARATOR); }
    /// As typed in any control.
    void TypeControlS(int control) { Key(control, 'S', VK_CONTROL); }
    Popups& Answer(int button) {
        const std::wstring name = Text(IDC_LAYOUTS).empty() ? L"<Unnamed Layout>" : Text(IDC_LAYOUTS);
        return m_popups.Expect(L"Save changes to current menu layout, \"" + name + L"\"", button);
    }
    /// Whether the registry says that layouts have changed, since it was asked last.
    static bool TakeDirty() {
        const auto dirty = support::Dword(HKEY_CURRENT_USER, kManagerKey, L"MenuLayoutsDirty");
        support::SetDword(HKEY_CURRENT_USER, kManagerKey, L"MenuLayoutsDirty", 0);
        return dirty == 1U;
    }
};

TEST_F(LayoutFiles, ALayoutIsPickedOrThePickTakenBack) {
    Open();
    EXPECT_EQ(Rows(IDC_LAYOUTS), (Texts{L"One", L"Two"}));
    Shows(L"||0");
    Pick(L"Two", L"1:Two|two.pgl|2+");
    Build(L"*a,b");
    Type(VK_F2);
    Tree().LabelEdit().SetText(L"c");
    EnterText(List(), L"Renamed");
    Pick(L"One", L"1:Renamed|two.pgl|2+", IDCANCEL);
    EXPECT_EQ(Shape(), L"*c,b") << "what was being typed is a change, too";
    Pick(L"One", L"0:One|one.pgl|1+", IDNO);
}

TEST_F(LayoutFiles, AFileThatIsNoLayoutChangesNothing) {
    m_popups.Expect(kNoLayout, IDOK);
    Open({L"C:\\no such file.pgl"});
    Shows(L"||0");
    m_files.Write(L"two.pgl", "<PluginMenuLayout DocSchema='1' Name='Two'><Plugin/></PluginMenuLayout>");
    m_popups.Expect(kNoLayout, IDOK);
    Pick(L"Two", L"||0");  // no file of its own, which could be deleted
    Pick(L"One", L"0:One|one.pgl|1+");
    Modify();
    Answer(IDNO).Expect(kNoLayout, IDOK);
    Pick(L"Two", L"0:One|one.pgl|2+");
    Answer(IDNO).ExpectFile(kOpen, m_files.Path(L"two.pgl")).Expect(kNoLayout, IDOK);
    Press(IDC_LAYOUT_OPEN, L"0:One|one.pgl|2+");
    Press(IDC_LAYOUT_NEW, L"0:One|one.pgl|2+", IDCANCEL);  // still modified
}

TEST_F(LayoutFiles, WithoutItsFolderALayoutIsNeitherLostNorSaved) {
    Open({m_files.Path(L"one.pgl")});
    Modify();
    const std::filesystem::path away = m_files.Folder().wstring() + L" away";
    std::filesystem::rename(m_files.Folder(), away);
    m_popups.Expect(L"Could not save", IDOK);
    TypeControlS(IDC_LAYOUT_TREE);
    Answer(IDNO).Expect(kNoLayout, IDOK);
    Pick(L"Two", L"0:One|one.pgl|2+");
    m_popups.Expect(L"Are you sure", IDYES);
    Press(IDC_LAYOUT_DELETE, L"One||2", IDCANCEL);
    EXPECT_TRUE(Layout().IsModified());
    std::filesystem::rename(away, m_files.Folder());
    EXPECT_EQ(m_files.Names().size(), 2U);
}

TEST_F(LayoutFiles, InTheListThatIsDownOnlyTheChosenRowIsPicked) {
    Open({m_files.Path(L"one.pgl")});
    Show();
    const HWND field = ::GetWindow(List(), GW_CHILD);
    ::SetFocus(field);
    for (const bool chosen : {false, true}) {
        Send(List(), CB_SHOWDROPDOWN, TRUE);
        Key(field, VK_DOWN);
        EXPECT_TRUE(Send(List(), CB_GETDROPPEDSTATE));
        EXPECT_EQ(Tree().Count(), 1) << "an arrow key picks nothing yet";
        Key(field, chosen ? VK_RETURN : VK_ESCAPE);
        EXPECT_TRUE(IsOpen() && !Send(List(), CB_GETDROPPEDSTATE));
        Shows(chosen ? L"1:Two|two.pgl|2+" : L"0:One|one.pgl|1+");
    }
    ::SetFocus(field);
    ::PostMessageW(List(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    Pump();
    Shows(L"1:Two|two.pgl|2+");  // the wheel picks nothing
    Key(field, VK_UP);
    Shows(L"0:One|one.pgl|1+");  // in the closed list an arrow key does
}

TEST_F(LayoutFiles, ASaveTakesADisplayNameAndTellsTheHost) {
    const support::StandInHost host;
    Open({L"/Float", L"/ParentWnd", host.HandleText()});
    Modify();
    TakeDirty();
    Send(List(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"A/B: live?"));  // as the list completes a text
    const auto proposed = [](HWND dialog, const wchar_t* name) {
        EnterText(NameField(dialog), name);
        return TextOf(FileNameField(dialog));
    };
    m_popups
        .ExpectFile(kSave, m_files.Path(L"new"),
                    [&](HWND dialog) {
                        EXPECT_EQ(TextOf(FileNameField(dialog)), L"AB live");
                        EXPECT_EQ(TextOf(NameField(dialog)), L"A/B: live?");
                        EXPECT_EQ(support::Rows(NameField(dialog)), Rows(IDC_LAYOUTS));
                        EXPECT_EQ(proposed(dialog, L"Live"), L"AB live");
                        EnterText(NameField(dialog), L"");
                    })
        .Expect(L"Please enter a display name", IDOK)
        .Expect(kSave, [&](HWND dialog) {
            EnterText(FileNameField(dialog), L"");
            // A pick is told of before the text follows it.
            Send(NameField(dialog), CB_SETCURSEL, 0);
            ::SetWindowTextW(NameField(dialog), L"of before");
            Send(::GetParent(NameField(dialog)), WM_COMMAND, MAKEWPARAM(IDC_DISPLAY_NAME, CBN_SELCHANGE));
            EXPECT_EQ(TextOf(FileNameField(dialog)), support::Rows(NameField(dialog))[0]);
            EXPECT_EQ(proposed(dialog, L"<Both> & \x00FC"), L"Both & \x00FC");
            ::PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        });
    Press(IDC_LAYOUT_SAVE, L"0:<Both> & \x00FC|Both & \x00FC.pgl|1+");
    EXPECT_TRUE(host.WaitForMessage(support::kLayoutsChanged) && TakeDirty());
    EXPECT_NE(m_files.Read(L"Both & \x00FC.pgl").find("Name=\"&lt;Both&gt; &amp; \xC3\xBC\"><Separator/></"),
              std::string::npos);
    Modify();
    Press(IDC_LAYOUT_NEW, L"||0", IDNO);
    EXPECT_FALSE(View().CanUndo());
    Pick(L"One", L"1:One|one.pgl|1+");  // a new layout is not modified
}

TEST_F(LayoutFiles, WhatCouldNotBeSavedIsShown) {
    Open();
    Build(L"+a,*b");
    Layout().Change(Node(L"b"), [](LayoutItem& record) { record.defaultPreset = L"\x01"; });
    TakeDirty();
    Answer(IDYES).ExpectFile(kSave, L"");
    Press(IDC_LAYOUT_NEW, L"||2");  // but not when the save dialog was left
    EXPECT_FALSE(TakeDirty());
    m_popups.ExpectFile(kSave, m_files.Path(L"x"), Named(L"Odd")).Expect(L"contains a character", IDOK);
    Press(IDC_LAYOUT_SAVE, L"||2");
    EXPECT_TRUE(TakeDirty());
    EXPECT_EQ(Shape(), L"a,*b") << "the item that can't be written";
}

TEST_F(LayoutFiles, AnOpenedFileIsFoundInTheListAndSavingBeforeAPickStillShowsWhatWasPicked) {
    ::CreateDirectoryW(m_files.Path(L"away").c_str(), nullptr);
    const std::wstring away = WriteLayout(L"away\\away.xml", "Away", 5);
    Open({away});
    Shows(L"0:Away|away.xml|5");  // only layouts that were listed can be deleted
    m_popups.ExpectFile(kOpen, m_files.Path(L"TWO.pgl"), [](HWND dialog) {
        EXPECT_FALSE(::FindWindowExW(dialog, nullptr, L"#32770", nullptr)) << "there is a hook";
    });
    Press(IDC_LAYOUT_OPEN, L"2:Two|TWO.pgl|2+");
    Pick(L"One", L"1:One|one.pgl|1+");
    const auto saveAndPick = [&](const wchar_t* file, const wchar_t* picked, const wchar_t* shows) {
        Modify();
        // The name moves the row behind the picked one.
        Answer(IDYES).ExpectFile(kSave, m_files.Path(file), Named(L"Zero"));
        Pick(picked, shows);
    };
    saveAndPick(L"zero.pgl", L"Two", L"1:Two|two.pgl|2+");
    EXPECT_NE(m_files.Read(L"zero.pgl").find("<Separator/><Separator/>"), std::string::npos);
    m_popups.ExpectFile(kOpen, away);
    Press(IDC_LAYOUT_OPEN, L"0:Away|away.xml|5+");
    Pick(L"Two", L"2:Two|two.pgl|2+");
    saveAndPick(L"more.pgl", L"Away", L"0:Away|away.xml|5+");
}

TEST_F(LayoutFiles, ATemporaryFileCountsAsUnnamed) {
    const auto opensWith = [](const wchar_t* file) {
        return [file](HWND dialog) {
            EXPECT_TRUE(TextOf(FileNameField(dialog)).ends_with(file));
            EnterText(NameField(dialog), std::wstring(400, L'n'));
        };
    };
    Open({WriteLayout(L"handed over.TMP", "Handed", 3)});
    Shows(L"||3");
    m_popups.ExpectFile(kSave, m_files.Path(L"back.tmp"), opensWith(L"handed over.TMP"));
    Press(IDC_LAYOUT_SAVE);
    m_popups.ExpectFile(kSave, L"", opensWith(L"back.tmp"));
    TypeControlS(IDC_LAYOUT_TREE);
}

TEST_F(LayoutFiles, ADeletedFileIsForgottenEvenWhenNewIsLeft) {
    Open({m_files.Path(L"one.pgl")});
    const auto remove = [&](int answer) -> Popups& { return m_popups.Expect(L"Are you sure", answer); };
    TakeDirty();
    remove(IDNO);
    Press(IDC_LAYOUT_DELETE, L"0:One|one.pgl|1+");
    EXPECT_TRUE(TakeDirty()) << "even then";
    remove(IDYES);
    Press(IDC_LAYOUT_DELETE, L"||0");
    EXPECT_EQ(Rows(IDC_LAYOUTS), Texts{L"Two"});
    Pick(L"Two", L"0:Two|two.pgl|2+");
    Modify();
    remove(IDYES);
    Press(IDC_LAYOUT_DELETE, L"Two||3", IDCANCEL);
    EXPECT_EQ(m_files.Names(), Texts{});
    Press(IDC_LAYOUT_NEW, L"Two||3", IDCANCEL);  // it is work that was not saved
}

TEST_F(LayoutFiles, ARestoredFileIsReadAgainAndNothingElseIs) {
    Open();
    for (const wchar_t* name : {L"One", L"Two"}) {
        Select(IDC_LAYOUTS, {name});
        Pump();
        Modify();
        TypeControlS(IDC_LAYOUT_TREE);
    }
    // The second row is that of the first layout, and later that of the second: a restore leaves one, too.
    for (const auto& [shows, keepsSteps] :
         {std::pair{L"1:Two|two.pgl|3+", true}, {L"1:Two|two.pgl|2+", false}}) {
        m_popups.Expect(L"What is ticked", [](HWND backups) {
            for (const int key : {VK_DOWN, VK_SPACE, VK_RETURN})
                PostKey(::GetDlgItem(backups, IDC_REVIEW_LIST), static_cast<WORD>(key));
        });
        m_dialog->Send(WM_COMMAND, ID_BACKUPS);
        Shows(shows);
        EXPECT_EQ(View().CanUndo(), keepsSteps);
    }
}

TEST_F(LayoutFiles, AfterASaveTheTreeLooksAsBefore) {
    Open({m_files.Path(L"one.pgl")});
    Build(L"F(G(" + Times(9, L"a,") + L"*b,+c)),H[I()],J(d)" + Times(60, L",-"));
    const std::wstring built = Shape();
    View().Run(ID_MOVE_TO_TOP, nullptr);
    Tree().ScrollToTop(Node(L"G"));
    const std::wstring before = Shape();
    // The system asks in its own language whether to replace the file.
    m_popups.ExpectFile(kSave, m_files.Path(L"one.pgl")).Expect(L"", IDYES);
    Press(IDC_LAYOUT_SAVE, L"0:One|one.pgl|77+");
    EXPECT_EQ(Shape(), before);
    EXPECT_EQ(Tree().FirstVisible(), Node(L"G"));
    EXPECT_TRUE(IsEnabled(IDC_REMOVE));
    Type('Z', VK_CONTROL);
    EXPECT_EQ(Shape(), built);
    EXPECT_TRUE(Layout().IsModified()) << "the file holds what came after";
}

TEST_F(LayoutFiles, ControlSSavesInPlaceWhereTheLayoutHasANameAndAFile) {
    Open({m_files.Path(L"one.pgl")});
    for (const wchar_t* name : {L"One", L"Zwei"}) {
        Modify();
        const HTREEITEM first = Tree().Root();
        EnterText(List(), name);
        TakeDirty();
        TypeControlS(IDC_PLUGINS);
        EXPECT_TRUE(TakeDirty() && !Layout().IsModified());
        EXPECT_EQ(Tree().Root(), first) << "the tree is left alone";
    }
    Shows(L"1:Zwei|one.pgl|3+");
    EXPECT_NE(m_files.Read(L"one.pgl").find("Name=\"Zwei\"><Separator/><Separator/><S"), std::string::npos);
    Pick(L"Two", L"0:Two|two.pgl|2+");
    EXPECT_FALSE(View().CanUndo()) << "it is another layout";
    Pick(L"Zwei", L"1:Zwei|one.pgl|3+");
    EnterText(List(), L"");
    m_popups.ExpectFile(kSave, L"");
    TypeControlS(IDC_LAYOUT_TREE);
    Press(IDC_LAYOUT_NEW);
    EnterText(List(), L"No file yet");
    m_popups.ExpectFile(kSave, L"");
    TypeControlS(IDC_LAYOUT_TREE);
}

}  // namespace
