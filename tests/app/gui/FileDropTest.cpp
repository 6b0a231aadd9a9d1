// Files dropped on the main dialog.
#include "FileStream.h"
#include "PresetTransfer.h"
#include "ReviewDlg.h"
#include "layouts/LayoutTreeDialog.h"
#include "presets/StoredPresets.h"
#include "support/StandInHost.h"
#include "support/TestPlugins.h"

namespace {

using namespace support;
using Paths = std::vector<std::wstring>;

/// The system's DROPFILES, whose header knows other folders than ours.
struct DropHead {
    DWORD names = sizeof(DropHead);  // where they begin
    POINT place{};
    BOOL outsideClient = FALSE;
    BOOL wide = TRUE;
};

const std::wstring kPresets = L"Software\\Corvane Music Software\\ActiveMovie\\Presets\\";
const std::wstring kHallKey = kPresets + IdText(1), kRoomKey = kPresets + IdText(2);

class FileDrop : public LayoutTreeDialog {
  protected:
    void SetUp() override {
        AddVst(1, L"Hall");
        AddVst(2, L"Room");
        Open();
    }
    void Drop(const Paths& paths) {
        std::wstring names;
        for (const std::wstring& path : paths) names += path + L'\0';
        names += L'\0';
        const HGLOBAL drop = ::GlobalAlloc(GHND, sizeof(DropHead) + names.size() * sizeof(wchar_t));
        auto* head = static_cast<DropHead*>(::GlobalLock(drop));
        *head = DropHead{};
        std::ranges::copy(names, reinterpret_cast<wchar_t*>(head + 1));
        ::GlobalUnlock(drop);
        m_dialog->Send(WM_DROPFILES, drop);
    }
    std::wstring WriteLayout(const wchar_t* file, const std::string& name) const {
        return m_files.Write(file, "<PluginMenuLayout DocSchema='1' Name='" + name + "'/>");
    }
    /// Presets "a" and "b" each, of Hall, of a plug-in that is not there, and of Room.
    std::wstring PresetFile() const {
        std::vector<CPresetListMgr> plugins;
        for (const unsigned id : {1U, 9U, 2U}) {
            for (const wchar_t* name : {L"a", L"b"})
                SetRaw(HKEY_CURRENT_USER, kPresets + IdText(id), name, REG_BINARY, {'n'});
            plugins.emplace_back(Id(id), RowOf(Category::VstEffects).guid, L"P" + std::to_wstring(id));
        }
        auto file = CFileSink::Create(m_files.Path(L"three.spp"));
        EXPECT_EQ(ExportPresetsOfPlugins(*file, plugins), 6);
        for (const unsigned id : {1U, 9U, 2U}) DeleteTree(HKEY_CURRENT_USER, kPresets + IdText(id));
        SetRaw(HKEY_CURRENT_USER, kHallKey, L"B", REG_BINARY, {'o'});
        return m_files.Path(L"three.spp");
    }
    /// The cells of a row, with a plus where it is ticked and a minus where it has no box.
    static std::wstring Row(HWND dialog, int item) {
        const CWindow list(::GetDlgItem(dialog, IDC_REVIEW_LIST));
        const auto box = list.Send(LVM_GETITEMSTATE, item, LVIS_STATEIMAGEMASK);
        std::wstring row = box == INDEXTOSTATEIMAGEMASK(2) ? L"+" : box == 0 ? L"-" : L"";
        for (const int column : {0, 2, 3}) {
            wchar_t text[64] = L"";
            LVITEMW cell{};
            cell.iSubItem = column;
            cell.pszText = text;
            cell.cchTextMax = 64;
            list.Send(LVM_GETITEMTEXTW, item, &cell);
            row += text + std::wstring(L"|");
        }
        return row;
    }
    static void Tick(HWND dialog, int item, UINT image) {
        LVITEMW state{};
        state.state = INDEXTOSTATEIMAGEMASK(image);
        state.stateMask = LVIS_STATEIMAGEMASK;
        CWindow(::GetDlgItem(dialog, IDC_REVIEW_LIST)).Send(LVM_SETITEMSTATE, item, &state);
    }

    std::optional<StandInHost> m_host;
};

TEST_F(FileDrop, TheLastLayoutOpensAfterTheQuestion) {
    const Paths two = {WriteLayout(L"one.pgl", "One"), WriteLayout(L"two.PGL", "Two")};
    Press(IDC_ADD_SEPARATOR);
    m_popups.Expect(L"Save changes", IDCANCEL);
    Drop(two);
    EXPECT_EQ(Text(IDC_LAYOUT_FILE), L"");
    Press(IDC_ADD_SEPARATOR);
    m_popups.Expect(L"Save changes", IDNO);
    Drop(two);
    EXPECT_EQ(Text(IDC_LAYOUTS) + Text(IDC_LAYOUT_FILE), L"Twotwo.PGL");
    Press(IDC_NEW_FOLDER);  // its name is being edited
    EnterText(Tree().LabelEdit().Handle(), L"Mine");
    m_popups.Expect(L"Save changes", [this](HWND question) {
        EXPECT_NE(ItemNamed(Layout(), L"Mine"), nullptr)
            << "a drop ends the edit, and is for one who can see it";
        Drop({L"C:\\no question.txt"});
        ::EndDialog(question, IDNO);
    });
    Drop({two[0]});
    EXPECT_EQ(Text(IDC_LAYOUT_FILE), L"one.pgl");
}

TEST_F(FileDrop, PresetsGoToTheInstalledPluginsThatAreTicked) {
    const Paths file = {PresetFile(), m_files.Write(L"broken.spp", "PS\1")};
    SelectPlugins({});
    m_popups.Expect(L"Import Presets From three.spp", [](HWND dialog) {
        Tick(dialog, 1, 2);
        EXPECT_EQ(Row(dialog, 0), L"+Hall|2|1|");
        EXPECT_EQ(Row(dialog, 1), L"-P9 (not installed)|2|0|");
        EXPECT_EQ(Row(dialog, 2), L"+Room|2|0|");
        support::Press(::GetDlgItem(dialog, IDCANCEL));
    });
    Drop(file);
    EXPECT_EQ(StoredPresets(kHallKey), std::set<std::wstring>{L"B=1o"});
    m_popups.Expect(L"Import Presets From", [](HWND dialog) {
        Tick(dialog, 2, 1);
        support::Press(::GetDlgItem(dialog, IDOK));
    });
    m_popups.Expect(L"broken.spp", IDOK);
    Drop(file);
    EXPECT_EQ(StoredPresets(kHallKey), (std::set<std::wstring>{L"a=1n", L"B=1n"}));
    EXPECT_TRUE(StoredPresets(kRoomKey).empty());
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
    m_popups.Expect(L"\n... and 9,995 more\n", IDOK);
    Drop(many);
}

}  // namespace
