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
    /// Comes when no backup can be made.
    Popups& Refuse() { return m_refuses ? m_popups.Expect(L"No backup could be made", IDNO) : m_popups; }
    void Select(const wchar_t* category, const wchar_t* plugin) {
        Choose(category);
        SelectPlugins({plugin});
    }
    Popups& InManage(int button) {
        Select(kVstEffects, L"Hall");
        return m_popups.Expect(L"Manage Presets for Hall", [button](HWND dialog) {
            support::Select(GetDlgItem(dialog, IDC_PRESET_LIST), {L"b"});
            support::Press(GetDlgItem(dialog, button));
        });
    }
    void Export(const wchar_t* file) {
        Select(kVstEffects, L"Hall");
        m_popups.ExpectFile(L"Export Presets", m_files.Path(file));
        // The system asks in its own language whether to replace it.
        if (!m_files.Read(file).empty()) {
            m_popups.Expect(L"", IDYES);
            Refuse();
        }
        Press(IDC_EXPORT);
    }
    void Drop(int button) {
        Press(IDC_ADD_SEPARATOR);
        m_popups.Expect(L"Save changes", button);
    }

    bool m_refuses = false;
};

TEST_F(SafetyNet, HoldsWhatAStepTookAndWithoutItNoStepIsTaken) {
    OpenLayout();
    Export(L"new.spp");
    AddPreset(IdText(1), L"a", 2);
    struct Case {
        const wchar_t* left;
        std::function<void()> work;
    };
    const Case cases[] = {{L"Registry: Remove Gone\n",
                           [&] {
                               Select(L"DirectX Audio Effects (DX)", L"Gone");
                               m_popups.Expect(L"\"Gone\"", IDYES);
                               Refuse();
                               Press(IDC_EXCLUDE);
                           }},
                          {L"Presets: Delete presets of Hall\n",
                           [&] {
                               InManage(IDC_PRESET_DELETE).Expect(L"the selected presets", IDOK);
                               Refuse().Expect(L"Manage", IDCANCEL);
                               Press(IDC_MANAGE);
                           }},
                          {L"Presets: Rename a preset of Hall\n",
                           [&] {
                               InManage(IDC_PRESET_RENAME).ExpectPrompt(L"Rename Preset", L"c");
                               Refuse().Expect(L"Manage", IDCANCEL);
                               Press(IDC_MANAGE);
                           }},
                          {L"Presets: Import presets for Hall\n",
                           [&] {
                               Select(kVstEffects, L"Hall");
                               m_popups.ExpectFile(L"Import Presets", m_files.Path(L"new.spp"));
                               Refuse();
                               Press(IDC_IMPORT);
                           }},
                          {L"Presets: Replace old.spp\n", [&] { Export(L"old.spp"); }},
                          {L"Layouts: Save layout one.pgl\n",
                           [&] {
                               Press(IDC_ADD_SEPARATOR);
                               Refuse();
                               m_dialog->Send(WM_COMMAND, ID_SAVE_LAYOUT);
                           }},
                          {L"Layouts: Delete layout one.pgl\n", [&] {
                               m_popups.Expect(L"Are you sure", IDYES);
                               Refuse();
                               Press(IDC_LAYOUT_DELETE);
                           }}};
    for (const auto& [left, work] : cases) {
        SCOPED_TRACE(Utf8(left));
        const Snapshot before = State();
        // First where a file has the folder's name.
        for (const bool refuses : {true, false}) {
            m_refuses = refuses;
            std::filesystem::remove_all(m_data);
            if (refuses) {
                std::filesystem::create_directory(m_data);
                std::ofstream(m_data / L"Backups");
            }
            OpenLayout();
            work();
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
    for (const std::function<void()>& drop :
         std::initializer_list<std::function<void()>>{[&] {
                                                          Drop(IDNO);
                                                          Press(IDC_LAYOUT_NEW);
                                                      },
                                                      [&] {
                                                          Drop(IDYES);
                                                          ExpectFailedSave();
                                                          Press(IDC_LAYOUT_NEW);
                                                      },
                                                      [&] {
                                                          Press(IDC_ADD_SEPARATOR);
                                                          ::DestroyWindow(m_dialog->Handle());
                                                      },
                                                      [&] {
                                                          Drop(IDNO);
                                                          m_dialog->Send(WM_QUERYENDSESSION);
                                                          m_dialog->Send(WM_ENDSESSION, TRUE);
                                                      }}) {
        std::filesystem::remove_all(m_data);
        OpenLayout();
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
