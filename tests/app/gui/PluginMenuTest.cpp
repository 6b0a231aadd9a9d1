// The menu of the plug-in list.
#include <atomic>
#include <thread>

#include "PluginMenu.h"
#include "support/MainDialog.h"
#include "support/TestPlugins.h"
#include "support/WaitFor.h"

namespace {

using namespace support;
using Texts = std::vector<std::wstring>;

POINT g_corner;

/// While a menu is shown, only timers come through.
void CALLBACK LeaveMenu(HWND, UINT, UINT_PTR, DWORD) {
    const HWND menu = ::FindWindowW(L"#32768", nullptr);
    if (!menu || !::IsWindowVisible(menu)) return;
    g_corner = {RectOf(menu).left, RectOf(menu).top};
    ::EndMenu();
}

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
        Item(IDC_PLUGINS).Focus();
    }
    CPluginMenu& Commands() { return m_dialog->View<CPluginMenu>(); }
    /// A letter for each entry (exclude, rename, add; import, export, manage; all, new; copy, file), "-"
    /// where it can't be chosen.
    std::wstring Entries() {
        const UniqueMenu menu = Commands().Menu();
        std::wstring entries;
        for (const int id : {IDC_EXCLUDE, ID_RENAME_PLUGIN, IDC_ADD_PLUGIN, IDC_IMPORT, IDC_EXPORT,
                             IDC_MANAGE, ID_SELECT_ALL, ID_SELECT_NEW, ID_COPY_PLUGINS, ID_FILE_LOCATION}) {
            const bool can = ::GetMenuState(menu.Get(), static_cast<UINT>(id), MF_BYCOMMAND) == MF_ENABLED;
            entries += can ? L"xraiemANcf"[entries.size()] : L'-';
        }
        return entries;
    }
    /// Opens the menu there and leaves it.
    void Ask(POINT screen) {
        g_corner = {};
        const UINT_PTR timer = ::SetTimer(nullptr, 0, 10, &LeaveMenu);
        Item(IDC_PLUGINS).Send(WM_CONTEXTMENU, Control(IDC_PLUGINS), MAKELPARAM(screen.x, screen.y));
        ::KillTimer(nullptr, timer);
    }
    POINT MiddleOf(int row) const {
        const RECT place = m_dialog->Control<CListBox>(IDC_PLUGINS).PlaceOf(row);
        POINT middle{20, (place.top + place.bottom) / 2};
        ::ClientToScreen(Control(IDC_PLUGINS), &middle);
        return middle;
    }
    void ControlAnd(WORD key) {
        BYTE keys[256]{};
        keys[VK_CONTROL] = 0x80;
        ::SetKeyboardState(keys);
        MSG message{};
        message.hwnd = Control(IDC_PLUGINS);
        message.message = WM_KEYDOWN;
        message.wParam = key;
        EXPECT_TRUE(m_dialog->Translate(message)) << key;
        keys[VK_CONTROL] = 0;
        ::SetKeyboardState(keys);
    }
    static std::wstring Copied() {
        std::wstring text;
        if (!::OpenClipboard(nullptr)) return L"held";
        if (const HANDLE data = ::GetClipboardData(CF_UNICODETEXT)) {
            text = static_cast<const wchar_t*>(::GlobalLock(data));
            ::GlobalUnlock(data);
        }
        ::CloseClipboard();
        return text;
    }
};

TEST_F(PluginMenu, EntriesCanBeChosenAsTheirButtonsCan) {
    EXPECT_EQ(Entries(), L"------AN--");
    SelectPlugins({L"Anvil"});
    EXPECT_EQ(Entries(), L"xrai--ANcf");
    ControlAnd('A');
    EXPECT_EQ(Selected().size(), 3U);
    EXPECT_EQ(Entries(), L"x-ai--ANc-");
    Press(IDC_ADD_PLUGIN);
    EXPECT_EQ(Entries(), L"x-ai--A-c-") << "the layout holds all";
    wchar_t text[64] = L"";
    Press(IDC_SHOW_EXCLUDED);
    ::GetMenuStringW(Commands().Menu().Get(), IDC_EXCLUDE, text, 64, MF_BYCOMMAND);
    EXPECT_STREQ(text, L"Enable Plug-in");
    Choose(L"VST Instruments (VSTi)");  // has one row, which says so
    SelectRows(Control(IDC_PLUGINS), {0});
    m_dialog->Send(WM_COMMAND, ID_SELECT_NEW);
    EXPECT_EQ(Entries().substr(6), L"----");
}

TEST_F(PluginMenu, OpensForTheSelectionAndAtTheCaret) {
    SelectPlugins({L"Anvil"});
    Item(IDC_CATEGORIES).Focus();
    Ask(MiddleOf(2));
    EXPECT_EQ(Selected(), Texts{L"Gone"});
    EXPECT_EQ(Text(IDC_FILENAME), L"C:\\no such.dll");
    EXPECT_TRUE(Item(IDC_PLUGINS).HasFocus());
    ControlAnd('A');
    Ask(MiddleOf(1));
    EXPECT_EQ(Selected().size(), 3U) << "a row that was selected";
    SelectPlugins({L"Anvil"});
    Ask(MiddleOf(4));
    EXPECT_EQ(Selected(), Texts{L"Anvil"}) << "below all rows";
    m_dialog->Control<CListBox>(IDC_PLUGINS).SetCaretRow(1);
    Ask({-1, -1});
    EXPECT_GT(g_corner.y, MiddleOf(1).y);
    EXPECT_LT(g_corner.y, MiddleOf(2).y);
}

TEST_F(PluginMenu, SelectsWhatTheLayoutLacksUnderEitherId) {
    LayoutItem bell = NewPlugin();
    bell.clsid = Id(102);
    m_dialog->View<CLayoutTreeView>().Layout().Append(nullptr, bell);
    SelectPlugins({L"Anvil"});
    Press(IDC_ADD_PLUGIN);
    m_dialog->Send(WM_COMMAND, ID_SELECT_NEW);
    EXPECT_EQ(Selected(), Texts{L"Gone"});
    m_popups.Expect(L"This file is not there:\nC:\\no such.dll", IDOK);
    m_dialog->Send(WM_COMMAND, ID_FILE_LOCATION);
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
    const std::wstring rest = L"\tTarnwick\tVST Audio Effects (VST)\t";
    EXPECT_EQ(Copied(),
              L"Name\tVendor\tCategory\tCLSID\tFile\r\n"
              L"Anvil" +
                  rest + IdText(1) + L'\t' + kSomeFile + L"\r\n" + L"Bell and  \"Bow\"" + rest + IdText(2) +
                  L'\t' + kSomeFile + L"\r\n");
}

}  // namespace
