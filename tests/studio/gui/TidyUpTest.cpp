// The command Tidy Up of the main dialog.
#include "layouts/LayoutTreeDialog.h"
#include "support/ReviewRows.h"
#include "support/StandInHost.h"

namespace {

using namespace support;

class TidyUp : public LayoutTreeDialog {
  protected:
    void SetUp() override {
        AddVst(1, L"Hall").Text(L"FullPath", L"C:\\no such.dll");
        AddVst(2, L"Room");
        AddVst(3, L"Room, newer", true).Text(L"FullName", L"room ");
        AddVst(4, L"Stays");
        AddFilter(5, L"Plate", L"C:\\no such.dll");
        AddFilter(6, L"Far", L"Q:\\far.dll");
        AddSurface(7, L"Desk");
    }
    void Tidy() { m_dialog->Send(WM_COMMAND, ID_TIDY_UP); }
    Popups& Confirm() { return m_popups.Expect(L"Tidy Up", IDOK); }
    std::vector<std::wstring> Excluded() const {
        return Subkeys(HKEY_CURRENT_USER, L"Software\\Corvane Music Software\\ExcludedPlugIns");
    }
    std::optional<StandInHost> m_host;  // outlives the dialog in it
    static bool HasPlate() { return Exists(HKEY_CLASSES_ROOT, kFilterInstances + IdText(5)); }
};

TEST_F(TidyUp, PutsAwayWhatIsTicked) {
    m_host.emplace();
    Open({L"/ParentWnd", m_host->HandleText()});
    Choose(kVstEffects);
    SelectPlugins({L"Stays"});
    Build(L"F(a,b),G()");
    ExpectReview(m_popups, L"Tidy Up", {0, 3},
                 L"[x]a,In the layout, but missing,\n"
                 L"[x]b,In the layout, but missing,\n"
                 L"[ ]Far,Its drive is not there,\n"
                 L"[x]Hall,File is gone,\n[x]Plate,File is gone,\n"
                 L"[x]Room,Also there as VST3,\n&Tidy up (5)",
                 IDOK)
        .Expect(L"The next scan", IDOK);
    Tidy();
    EXPECT_FALSE(HasPlate());
    EXPECT_EQ(Excluded(), (std::vector{IdText(1), IdText(2)}));
    EXPECT_EQ(Listed(), std::vector<std::wstring>{L"Stays"});
    EXPECT_EQ(Selected(), std::vector<std::wstring>{L"Stays"});
    EXPECT_EQ(Unmarked(Shape()), L"F(),G()");
    ExpectReview(m_popups, L"Tidy Up", {0}, L"[ ]Far,\n&Tidy up (0)", IDCANCEL);
    Tidy();
    m_dialog->Send(WM_COMMAND, ID_UNDO);
    EXPECT_EQ(Unmarked(Shape()), L"F(a,b),G()");
    EXPECT_TRUE(m_host->WaitForMessage(support::kPluginsChanged));
    EXPECT_EQ(m_host->MessageCount(support::kPluginsChanged), 1U);
    const auto backups = CBackups(BackupFolder(m_data.wstring()), L"1").List();
    ASSERT_EQ(backups.size(), 1U);
    EXPECT_EQ(backups[0].record.step, L"Tidy Up");
    Layout().SetModified(false);
}

TEST_F(TidyUp, DoesNothingWithoutABackupOrRoomForItsExclusions) {
    std::filesystem::create_directory(m_data);
    std::ofstream(m_data / L"Backups") << "no folder";
    Open();
    Confirm().Expect(L"No backup could be made", IDNO);
    Tidy();
    for (unsigned i = 0; i < kMaxEntries - 1; ++i)
        CreateKey(HKEY_CURRENT_USER, kExcludedPlugins + IdText(1000 + i));
    Confirm().Expect(L"4096 entries at most, and would have 4097", IDOK);
    Tidy();
    EXPECT_TRUE(HasPlate());
    EXPECT_EQ(Excluded().size(), kMaxEntries - 1);
}

TEST_F(TidyUp, NamesWhatItCouldNotRemoveAndDoesTheRest) {
    RegisterAudioDmo(IdText(5), L"Plate");  // as which it is removed, and stays as a filter
    Open();
    Confirm().Expect(L"rights may be missing.\n\nPlate\n", IDOK).Expect(L"The next scan", IDOK);
    Tidy();
    EXPECT_EQ(Excluded().size(), 2U);
}

using TidyUpOfNothing = LayoutTreeDialog;

TEST_F(TidyUpOfNothing, SaysSoAndTicksNoEntryOfALayoutWhenTheEnumerationBrokeOff) {
    Open();
    m_popups.Expect(L"nothing to tidy up", IDOK);
    m_dialog->Send(WM_COMMAND, ID_TIDY_UP);
    CreateKey(HKEY_CLASSES_ROOT, std::wstring(kSurfaces) + L"no id");
    Open();
    Build(L"a");
    ExpectReview(m_popups, L"Tidy Up", {0}, L"[ ]a,\n&Tidy up (0)", IDCANCEL);
    m_dialog->Send(WM_COMMAND, ID_TIDY_UP);
    Layout().SetModified(false);
}

}  // namespace
