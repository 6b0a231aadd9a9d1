// The menu of the plug-in list.
#include <atomic>
#include <thread>

#include "PluginMenu.h"
#include "support/MainDialog.h"
#include "support/ShownMenu.h"
#include "support/TestPlugins.h"

namespace {

using namespace support;

class PluginMenu : public support::MainDialog {
  protected:
    void SetUp() override {
        RegisterAudioFilter(IdText(9), L"Filter");  // without any, no VST can be renamed
        AddVst(1, L"Anvil");
        AddVst(2, L"Bell\tand\r\n\"Bow\"");
        AddVst(3, L"Gone").Text(L"FullPath", L"C:\\no such.dll");
        Open();
        Show();
        Choose(kVstEffects);
    }
    UniqueMenu Menu() { return m_dialog->View<CPluginMenu>().Menu(); }
    /// A letter for each entry (exclude, rename, add; import, export, manage; all, new; copy, file), "-"
    /// where it can't be chosen.
    std::wstring Entries() {
        const UniqueMenu menu = Menu();
        std::wstring entries = L"xra|iem|AN|cf";
        for (UINT i = 0; i < entries.size(); ++i) {
            if (::GetMenuState(::GetSubMenu(menu.Get(), 0), i, MF_BYPOSITION) == MF_GRAYED) entries[i] = L'-';
        }
        return entries;
    }
    /// Opens the menu there and leaves it.
    POINT Ask(POINT at) {
        const auto menu = WorkMenu([this, at] {
            Item(IDC_PLUGINS).Send(WM_CONTEXTMENU, Control(IDC_PLUGINS), MAKELPARAM(at.x, at.y));
        });
        return menu ? menu->corner : POINT{};
    }
    POINT MiddleOf(int row) const {
        const RECT place = m_dialog->Control<CListBox>(IDC_PLUGINS).PlaceOf(row);
        POINT middle{20, (place.top + place.bottom) / 2};
        ::ClientToScreen(Control(IDC_PLUGINS), &middle);
        return middle;
    }
    void ControlAnd(WORD key) {
        Item(IDC_PLUGINS).Focus();
        Key(IDC_PLUGINS, key, VK_CONTROL);
    }
};

TEST_F(PluginMenu, EntriesCanBeChosenAsTheirButtonsCan) {
    EXPECT_EQ(Entries(), L"---|---|AN|--");
    SelectPlugins({L"Anvil"});
    EXPECT_EQ(Entries(), L"xra|i--|AN|cf");
    Press(IDC_ADD_PLUGIN);
    LayoutItem bell = NewPlugin();
    bell.clsid = Id(102);  // the second of its ids
    m_dialog->View<CLayoutTreeView>().Layout().Append(nullptr, bell);
    m_dialog->Send(WM_COMMAND, ID_SELECT_NEW);
    EXPECT_EQ(Selected(), std::vector<std::wstring>{L"Gone"});
    m_popups.Expect(L"This file is not there:\nC:\\no such.dll", IDOK);
    m_dialog->Send(WM_COMMAND, ID_FILE_LOCATION);
    Press(IDC_ADD_PLUGIN);
    ControlAnd('A');
    EXPECT_EQ(Entries(), L"x-a|i--|A-|c-") << "the layout holds all";
    wchar_t text[64] = L"";
    Press(IDC_SHOW_EXCLUDED);
    ::GetMenuStringW(Menu().Get(), IDC_EXCLUDE, text, 64, MF_BYCOMMAND);
    EXPECT_STREQ(text, L"Enable Plug-in");
    Choose(L"VST Instruments (VSTi)");  // has one row, which says so
    SelectRows(Control(IDC_PLUGINS), {0});
    EXPECT_EQ(Entries().substr(8), L"--|--");
}

TEST_F(PluginMenu, OpensForTheSelectionAndAtTheCaret) {
    Item(IDC_CATEGORIES).Focus();
    Ask(MiddleOf(2));
    EXPECT_EQ(Text(IDC_FILENAME), L"C:\\no such.dll");
    EXPECT_TRUE(Item(IDC_PLUGINS).HasFocus());
    ControlAnd('A');
    Ask(MiddleOf(1));
    EXPECT_EQ(Selected().size(), 3U) << "a row that was selected";
    m_dialog->Control<CListBox>(IDC_PLUGINS).SetCaretRow(1);
    const POINT corner = Ask({-1, -1});
    EXPECT_TRUE(corner.y > MiddleOf(1).y && corner.y < MiddleOf(2).y) << corner.y;
}

TEST_F(PluginMenu, WithoutTheirKeysPluginsAreNeitherRenamedNorBroughtBack) {
    AddPreset(IdText(1), L"a");
    SelectPlugins({L"Anvil"});
    DeleteTree(HKEY_CURRENT_USER, L"Software\\Corvane Music Software");
    DeleteTree(HKEY_LOCAL_MACHINE, L"Software\\Classes");
    m_popups.Expect(L"Manage", IDCANCEL);
    Press(IDC_MANAGE);
    m_popups.ExpectPrompt(L"Friendly Name", L"New");
    for (const int command : {ID_RENAME_PLUGIN, ID_COPY_PLUGINS, IDC_ADD_PLUGIN, IDC_EXCLUDE, ID_SELECT_ALL})
        m_dialog->Send(WM_COMMAND, static_cast<WPARAM>(command));
    EXPECT_FALSE(Exists(HKEY_CURRENT_USER, kVstInventory + std::wstring(L"Anvil")));
}

TEST_F(PluginMenu, CopiesATableThatNoNameBreaks) {
    SelectRows(Control(IDC_PLUGINS), {0, 1});
    std::atomic_bool holds = false;
    std::jthread other([&holds] {
        holds = ::OpenClipboard(nullptr) != FALSE;
        ::Sleep(300);
        ::CloseClipboard();
    });
    EXPECT_TRUE(WaitFor([&] { return holds.load(); }));
    ControlAnd('C');
    ASSERT_TRUE(::OpenClipboard(nullptr));
    const auto* copied = static_cast<const wchar_t*>(::GlobalLock(::GetClipboardData(CF_UNICODETEXT)));
    const std::wstring rest = L"\tTarnwick\tVST Audio Effects (VST)\t";
    EXPECT_EQ(copied ? copied : std::wstring(), L"Name\tVendor\tCategory\tCLSID\tFile\r\nAnvil" + rest +
                                                    IdText(1) + L'\t' + kSomeFile + L"\r\nBell and  \"Bow\"" +
                                                    rest + IdText(2) + L'\t' + kSomeFile + L"\r\n");
    ::CloseClipboard();
}

}  // namespace
