// What the dialog shows, taken away below it: the folders of layouts and backups, and the plug-ins' keys.
#include "Backups.h"
#include "layouts/LayoutTreeDialog.h"

namespace {

using namespace support;

class TakenAway : public LayoutTreeDialog {
  protected:
    void SetUp() override {
        AddVst(1, L"Hall");
        AddFilter(4, L"Plate", kSomeFile);
        AddPreset(IdText(1), L"a");
        for (const char* name : {"one", "two"})
            m_files.Write(std::wstring(name, name + 3) + L".pgl",
                          std::string("<PluginMenuLayout DocSchema='1' Name='") + name + "'/>");
    }
    const std::filesystem::path m_away = m_files.Folder().wstring() + L" away";
};

TEST_F(TakenAway, WithoutItsFolderALayoutIsNeitherLostNorSaved) {
    Open({m_files.Path(L"one.pgl")});
    Press(IDC_ADD_SEPARATOR);
    std::filesystem::rename(m_files.Folder(), m_away);
    m_popups.Expect(L"Could not save", IDOK);
    m_dialog->Send(WM_COMMAND, ID_SAVE_LAYOUT);
    m_popups.Expect(L"Save changes", IDNO).Expect(L"Not a valid", IDOK);
    Select(IDC_LAYOUTS, {L"two"});
    Pump();
    m_popups.Expect(L"Are you sure", IDYES).Expect(L"Save changes", IDCANCEL);
    Press(IDC_LAYOUT_DELETE);
    EXPECT_TRUE(Unmarked(Shape()) == L"-" && Layout().IsModified());
    std::filesystem::rename(m_away, m_files.Folder());
    EXPECT_EQ(m_files.Names().size(), 2U);
    m_popups.ExpectFile(L"Save Plug-In Menu", m_files.Path(L"one.pgl")).Expect(L"", IDYES);
    Press(IDC_LAYOUT_SAVE);
    EXPECT_NE(m_files.Read(L"one.pgl").find("<Separator"), std::string::npos);
}

TEST_F(TakenAway, WithoutTheirKeysPluginsAreNeitherRenamedNorBroughtBack) {
    Open();
    Choose(kVstEffects);
    SelectPlugins({L"Hall"});
    DeleteTree(HKEY_CURRENT_USER, L"Software\\Corvane Music Software");
    DeleteTree(HKEY_LOCAL_MACHINE, L"Software\\Classes");
    m_popups.Expect(L"Manage", IDCANCEL);
    Press(IDC_MANAGE);
    m_popups.ExpectPrompt(L"Friendly Name", L"New");
    m_dialog->Send(WM_COMMAND, ID_RENAME_PLUGIN);
    for (const int command : {ID_COPY_PLUGINS, IDC_ADD_PLUGIN, IDC_EXCLUDE, ID_SELECT_ALL})
        m_dialog->Send(WM_COMMAND, static_cast<WPARAM>(command));
    EXPECT_FALSE(Exists(HKEY_CURRENT_USER, kVstInventory + std::wstring(L"Hall")));
    Layout().SetModified(false);
}

}  // namespace
