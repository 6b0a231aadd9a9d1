// Whatever takes something away, done by the main dialog: the backup that it leaves, and what that brings
// back.
#include "Backups.h"
#include "CorvaneKeys.h"
#include "layouts/LayoutTreeDialog.h"
#include "support/SandboxImporter.h"
#include "support/Snapshot.h"

namespace {

using namespace support;

class SafetyNet : public LayoutTreeDialog {
  protected:
    void SetUp() override {
        AddVst(1, L"Hall");
        AddFilter(2, L"Gone", L"C:\\no such.dll");
        for (const wchar_t* name : {L"a", L"b"}) AddPreset(IdText(1), name);
        m_files.Write(L"one.pgl", "<PluginMenuLayout DocSchema='1' Name='One'/>");
        m_files.Write(L"old.spp", "old");
    }
    /// What can be taken away, but layouts that have no file.
    Snapshot State() const {
        Snapshot state;
        AddKey(state, HKEY_CURRENT_USER, kAudioPresetsKey);
        AddKey(state, HKEY_LOCAL_MACHINE, L"Software\\Classes");
        AddFiles(state, m_files.Folder());
        return state;
    }
    CBackups Store() const { return {BackupFolder(m_data.wstring()), L"1", &ImportIntoSandbox}; }
    std::wstring Steps() const {
        std::wstring steps;
        for (const auto& backup : Store().List())
            steps += BackupKindWord(backup.record.kind).data() + (L": " + backup.record.step) + L"\n";
        return steps;
    }
    void OpenLayout() { Open({m_files.Path(L"one.pgl")}); }
    Popups& InManage(int button) {
        return m_popups.Expect(L"Manage Presets for Hall", [button](HWND dialog) {
            support::Select(GetDlgItem(dialog, IDC_PRESET_LIST), {L"b"});
            support::Press(GetDlgItem(dialog, button));
        });
    }
    void EndSession() {
        m_dialog->Send(WM_QUERYENDSESSION);
        m_dialog->Send(WM_ENDSESSION, TRUE);
    }
    Popups& InExport(const wchar_t* file) {
        return m_popups.ExpectFile(L"Export Presets", m_files.Path(file));
    }
};

TEST_F(SafetyNet, HoldsWhatAStepTookAndWithoutItNoStepIsTaken) {
    OpenLayout();
    Choose(kVstEffects);
    SelectPlugins({L"Hall"});
    InExport(L"new.spp");
    Press(IDC_EXPORT);
    AddPreset(IdText(1), L"a", 2);
    struct Case {
        const wchar_t* left;
        int command;
        std::function<void()> prepare;
    };
    // The system asks in its own language whether to replace a file.
    const Case cases[] = {
        {L"Registry: Remove Gone\n", IDC_EXCLUDE, [&] { m_popups.Expect(L"\"Gone\"", IDYES); }},
        {L"Presets: Delete presets of Hall\n", IDC_MANAGE,
         [&] { InManage(IDC_PRESET_DELETE).Expect(L"the selected presets", IDOK); }},
        {L"Presets: Rename a preset of Hall\n", IDC_MANAGE,
         [&] { InManage(IDC_PRESET_RENAME).ExpectPrompt(L"Rename Preset", L"c"); }},
        {L"Presets: Import presets for Hall\n", IDC_IMPORT,
         [&] { m_popups.ExpectFile(L"Import Presets", m_files.Path(L"new.spp")); }},
        {L"Presets: Replace old.spp\n", IDC_EXPORT, [&] { InExport(L"old.spp").Expect(L"", IDYES); }},
        {L"Layouts: Save layout one.pgl\n", ID_SAVE_LAYOUT, [&] { Press(IDC_ADD_SEPARATOR); }},
        {L"Layouts: Delete layout one.pgl\n", IDC_LAYOUT_DELETE,
         [&] { m_popups.Expect(L"Are you sure", IDYES); }},
    };
    for (const auto& [left, command, prepare] : cases) {
        SCOPED_TRACE(Utf8(left));
        const Snapshot before = State();
        // First where a file has the folder's name.
        for (const bool refuses : {true, false}) {
            std::filesystem::remove_all(m_data);
            if (refuses) {
                std::filesystem::create_directory(m_data);
                std::ofstream(m_data / L"Backups");
            }
            OpenLayout();
            const bool ofFilter = command == IDC_EXCLUDE;
            Choose(ofFilter ? L"DirectX Audio Effects (DX)" : kVstEffects);
            SelectPlugins({ofFilter ? L"Gone" : L"Hall"});
            prepare();
            if (refuses) m_popups.Expect(L"No backup could be made", IDNO);
            if (command == IDC_MANAGE) m_popups.Expect(L"Manage", IDCANCEL);
            m_dialog->Send(WM_COMMAND, static_cast<WPARAM>(command));
            m_popups.ExpectNoMore();
            EXPECT_TRUE(!refuses || State() == before);
        }
        EXPECT_EQ(Steps(), left);
        if (Steps() != left) continue;
        EXPECT_NE(State(), before);
        CBackups store = Store();
        EXPECT_EQ(store.Restore(store.List().at(0), L"Back", CWindow(), [](DWORD) { return false; }), 0U);
        EXPECT_EQ(State(), before);
    }
}

TEST_F(SafetyNet, HoldsALayoutThatWasNotSaved) {
    const auto makeNew = [&] { Press(IDC_LAYOUT_NEW); };
    for (const auto& [answer, drop] : Table<int, std::function<void()>>{
             {IDNO, makeNew},
             {IDYES, makeNew},
             {0, [&] { ::DestroyWindow(m_dialog->Handle()); }},
             {IDNO, [&] { EndSession(); }},
         }) {
        std::filesystem::remove_all(m_data);
        OpenLayout();
        Press(IDC_ADD_SEPARATOR);
        if (answer != 0) m_popups.Expect(L"Save changes", answer);
        if (answer == IDYES) ExpectFailedSave();
        drop();
        EXPECT_EQ(Steps(), L"Layouts: Unsaved layout One\n");
        OpenLayout();
        m_popups.Expect(L"Backups", [](HWND dialog) {
            PostKey(GetDlgItem(dialog, IDC_REVIEW_LIST), VK_SPACE);
            for (const WPARAM button : {WPARAM{IDOK}, WPARAM{IDCANCEL}})
                PostMessageW(dialog, WM_COMMAND, button, 0);
        });
        m_dialog->Send(WM_COMMAND, ID_BACKUPS);
        EXPECT_EQ(Unmarked(Shape()) + Text(IDC_LAYOUTS), L"-One");
        EXPECT_TRUE(Layout().IsModified());
        Layout().SetModified(false);
    }
}

}  // namespace
