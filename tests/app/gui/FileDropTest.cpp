// Files dropped on the main dialog.
#include "FileStream.h"
#include "HelpContext.h"
#include "layouts/LayoutTreeDialog.h"
#include "presets/PresetReading.h"
#include "presets/StoredPresets.h"
#include "support/ReviewRows.h"
#include "support/StandInHost.h"

namespace {

using namespace support;
using Paths = std::vector<std::wstring>;
using Presets = std::set<std::wstring>;

const std::wstring kHallKey = kPresets + IdText(1), kRoomKey = kPresets + IdText(2);

class FileDrop : public LayoutTreeDialog {
  protected:
    void SetUp() override {
        AddVst(1, L"Hall");
        AddVst(2, L"Room");
        AddPreset(IdText(1), L"B", 'o');
        Open();
    }
    /// Presets "a" and "b" each, of Hall, of a plug-in that is not there, of Room, and of Hall without a
    /// category.
    std::wstring PresetFile() const {
        auto file = CFileSink::Create(m_files.Path(L"three.spp"));
        CPresetFileWriter writer(*file, kLatin1);
        writer.WriteHeader(4);
        Guid category = RowOf(Category::VstEffects).guid;
        for (const unsigned id : {1U, 9U, 2U, 1U}) {
            writer.WritePlugin(Id(id), category, 2, L"P" + std::to_wstring(id));
            if (id == 2) category = {};
            for (const wchar_t* name : {L"a", L"b"})
                writer.WritePreset(kPresetInRegistry, name, std::as_bytes(std::span("n", 1)));
        }
        file->Flush();
        return m_files.Path(L"three.spp");
    }

    std::optional<StandInHost> m_host;
};

TEST_F(FileDrop, TheLastLayoutOpensAfterTheQuestion) {
    Paths files;
    for (const wchar_t* file : {L"one.pgl", L"two.PGL"})
        files.push_back(m_files.Write(file, "<PluginMenuLayout DocSchema='1' Name='Any'/>"));
    Press(IDC_NEW_FOLDER);  // its name is being edited
    EnterText(Tree().LabelEdit().Handle(), L"Mine");
    m_popups.Expect(L"Save changes", [&](HWND question) {
        EXPECT_NE(Node(L"Mine"), nullptr);
        Drop(files);  // not below a question
        ::EndDialog(question, IDCANCEL);
    });
    Drop(files);
    EXPECT_EQ(Text(IDC_LAYOUT_FILE), L"");
    m_popups.Expect(L"Save changes", IDNO);
    Drop(files);
    EXPECT_EQ(Text(IDC_LAYOUT_FILE), L"two.PGL");
}

TEST_F(FileDrop, PresetsGoToTheInstalledPluginsThatAreTicked) {
    const Paths files = {PresetFile(), m_files.Write(L"broken.spp", "PS\1")};
    ExpectReview(m_popups, L"Import Presets From three.spp", {0, 2, 3},
                 L"[x]Hall,2,1,\nP1 (not installed),2,0,\nP9 (not installed),2,0,\n[x]Room,2,0,\n&Import (2)",
                 IDCANCEL);
    Drop(files);
    m_popups.Expect(L"Import Presets From", [](HWND dialog) {
        PostKey(::GetDlgItem(dialog, IDC_REVIEW_LIST), VK_SPACE);
        support::Press(::GetDlgItem(dialog, IDOK));
    });
    m_popups.Expect(L"broken.spp (not a readable preset file)", IDOK);
    Drop(files);
    EXPECT_EQ(StoredPresets(kHallKey), Presets{L"B=1o"});
    EXPECT_EQ(StoredPresets(kRoomKey), (Presets{L"a=1n", L"b=1n"}));
}

TEST_F(FileDrop, StudioSetsAreSavedReviewedAndMadeTheSame) {
    const std::wstring excluded = kExcludedPlugins + IdText(1);
    SetText(HKEY_CURRENT_USER, excluded, nullptr, L"Hall");
    m_files.Write(L"one.pgl", "<PluginMenuLayout DocSchema='1' Name='One'/>");
    m_popups.Expect(L"Save Studio Set", IDOK).ExpectFile(L"Save Studio Set", m_files.Path(L"my.pgset"));
    m_dialog->Send(WM_COMMAND, ID_SAVE_STUDIO_SET);
    EXPECT_NE(m_files.Read(L"my.pgset").find("DocSchema=\"1\" Name=\"One\""), std::string::npos);
    EXPECT_NE(m_files.Read(L"my.spp"), "");

    support::DeleteTree(HKEY_CURRENT_USER, excluded);
    SetText(HKEY_CURRENT_USER, kExcludedPlugins + IdText(2), nullptr, L"Room");
    m_popups.ExpectFile(L"Load Studio Set", m_files.Path(L"my.pgset"));
    m_popups.Expect(L"Load Studio Set: my.pgset", [](HWND dialog) {
        EXPECT_EQ(support::TextOf(::GetDlgItem(dialog, IDOK)), L"&Load (1)");
        EXPECT_EQ(::GetWindowContextHelpId(dialog), kHelpOfSets);
        Send(::GetDlgItem(dialog, IDC_REVIEW_ACTION), BM_CLICK);
        EXPECT_EQ(support::TextOf(::GetDlgItem(dialog, IDOK)), L"&Load (2)");
        support::Press(::GetDlgItem(dialog, IDOK));
    });
    m_dialog->Send(WM_COMMAND, ID_LOAD_STUDIO_SET);
    EXPECT_TRUE(Exists(HKEY_CURRENT_USER, excluded));
    EXPECT_FALSE(Exists(HKEY_CURRENT_USER, kExcludedPlugins + IdText(2)));
    Choose(kVstEffects);
    EXPECT_EQ(Listed(), std::vector<std::wstring>{L"Room"});

    Press(IDC_ADD_SEPARATOR);
    m_popups.Expect(L"Save changes", IDYES);
    ExpectFailedSave();
    m_dialog->Send(WM_COMMAND, ID_SAVE_STUDIO_SET);  // no set without what could not be saved
    Layout().SetModified(false);

    m_files.Write(L"newer.pgset", "<StudioSet Schema='2'/>");
    m_popups.Expect(L"newer.pgset\n\nIt was made by a newer version", IDOK);
    Drop({m_files.Path(L"newer.pgset")});
}

TEST_F(FileDrop, WhatCannotBeOpenedIsNamedInOneMessage) {
    ::CreateDirectoryW(m_files.Path(L"folder.pgl").c_str(), nullptr);
    Paths many = {m_files.Path(L"folder.pgl"), m_files.Path(L"gone.spp")};
    m_popups.Expect(L"opened:\n\nfolder.pgl\ngone.spp\n\nMenu layouts", IDOK);
    Drop(many);
    many.resize(10'000, L"C:\\some other file that somebody drops.txt");
    m_dialog.reset();
    m_host.emplace();
    Open({L"/ParentWnd", m_host->HandleText()});
    EXPECT_NE(::GetWindowLongPtrW(m_dialog->Handle(), GWL_EXSTYLE) & WS_EX_ACCEPTFILES, 0);
    ::EnableWindow(m_host->Window(), FALSE);
    Drop(many);  // the host asks something
    ::EnableWindow(m_host->Window(), TRUE);
    m_popups.Expect(L"\n... and 1,995 more\n", [](HWND box) {
        EXPECT_NE(Describe(box).find("Only the first 2,000 of 10,000 files"), std::string::npos);
        ::PostMessageW(box, WM_COMMAND, IDOK, 0);
    });
    Drop(many);
}

}  // namespace
