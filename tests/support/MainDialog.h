// The real main dialog in the test's own process, over a registry and a layouts folder of the test's own.
#pragma once

#include <gtest/gtest.h>

#include "PluginManagerDlg.h"
#include "support/FileSandbox.h"
#include "support/Popups.h"
#include "support/RegistrySandbox.h"
#include "support/WaitFor.h"
#include "support/WindowActions.h"

namespace support {

/// Nothing is shown before Open, so that a test can fill the registry first; its boxes are answered by
/// m_popups.
class MainDialog : public testing::Test {
  protected:
    /// Makes the dialog, hidden, and fills it as its timer does.
    void Open(const std::vector<std::wstring>& arguments = {}) {
        SetText(HKEY_CURRENT_USER, kManagerKey, L"MenuLayoutsPath", m_files.Path(L""));
        m_dialog.emplace(CPluginManagerCmdLine::Parse(arguments), m_data.wstring());
        ASSERT_TRUE(m_dialog->CreateModeless(nullptr));
        m_dialog->Send(WM_TIMER, 1);
    }
    /// Back to front, so that focus and caret are those of a user.
    void Show() {
        m_dialog->Show();
        // Only who had the last input may come to the front: an empty one will do.
        INPUT nothing{};
        SendInput(1, &nothing, sizeof nothing);
        const HWND top = GetAncestor(m_dialog->Handle(), GA_ROOT);
        SetForegroundWindow(top);
        EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == top; }));
    }
    /// The dialog goes before a host that the test made.
    void TearDown() override {
        m_dialog.reset();
        std::filesystem::remove_all(m_data);
    }
    bool IsOpen() const { return m_dialog && m_dialog->IsLive(); }

    CWindow Item(int id) const { return m_dialog->Item(id); }
    HWND Control(int id) const { return Item(id).Handle(); }
    std::wstring Text(int id) const { return Item(id).Text(); }
    std::vector<std::wstring> Rows(int id) const { return support::Rows(Control(id)); }
    std::vector<std::wstring> Listed() const { return Rows(IDC_PLUGINS); }
    bool IsEnabled(int id) const { return Item(id).IsEnabled(); }
    /// The texts of the selected rows of the plug-in list.
    std::vector<std::wstring> Selected() const {
        const auto rows = Listed();
        std::vector<std::wstring> texts;
        for (const int row : SelectedRows(Control(IDC_PLUGINS)))
            texts.push_back(rows[static_cast<std::size_t>(row)]);
        return texts;
    }

    /// Returns when all that the click leads to is over, the boxes answered.
    void Press(int id) const {
        ASSERT_TRUE(IsEnabled(id)) << id;
        Send(Control(id), BM_CLICK);
    }
    void Choose(const wchar_t* category) const { Select(IDC_CATEGORIES, {category}); }
    void Select(int list, const std::vector<std::wstring>& rows) const {
        support::Select(Control(list), rows);
    }
    void SelectPlugins(const std::vector<std::wstring>& rows) const { Select(IDC_PLUGINS, rows); }

    /// A save under a new name, and where it can't be written.
    Popups& ExpectFailedSave() {
        return m_popups
            .ExpectFile(L"Save Plug-In Menu Layout", m_files.Path(L"no such folder\\x.pgl"),
                        [](HWND dialog) { EnterText(InFileDialog(dialog, IDC_DISPLAY_NAME), L"X"); })
            .Expect(L"Could not save Plug-In Menu Layout!\n\n", IDOK);  // and why
    }

    /// As the dialog's loop passes it on; a box that it opens is answered meanwhile.
    void Key(HWND control, WORD virtualKey, WORD held = 0) {
        BYTE keys[256]{};
        keys[held] = held ? 0x80 : 0;
        SetKeyboardState(keys);
        PostKey(control, virtualKey);
        Pump();
        keys[held] = 0;
        SetKeyboardState(keys);
    }
    void Key(int id, WORD virtualKey, WORD held = 0) { Key(Control(id), virtualKey, held); }
    void Click(HWND control, POINT place, WPARAM keys = 0) {
        const LPARAM at = MAKELPARAM(place.x, place.y);
        PostMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON | keys, at);
        PostMessageW(control, WM_LBUTTONUP, keys, at);
        Pump();
    }
    void ClickRow(int list, int row, WPARAM keys = 0) {
        RECT place{};
        Send(Control(list), LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
        Click(Control(list), {place.left + 5, (place.top + place.bottom) / 2}, keys);
    }
    /// Files, with their paths.
    void Drop(const std::vector<std::wstring>& paths) const {
        std::wstring drop = {20, 0, 0, 0, 0, 0, 0, 0, 1, 0};  // a DROPFILES of 20 bytes, with wide names
        for (const std::wstring& path : paths) drop += path + L'\0';
        const HGLOBAL memory = ::GlobalAlloc(GHND, (drop.size() + 1) * sizeof(wchar_t));
        std::ranges::copy(drop, static_cast<wchar_t*>(::GlobalLock(memory)));
        ::GlobalUnlock(memory);
        m_dialog->Send(WM_DROPFILES, memory);
    }
    void Pump() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (m_dialog->Translate(message)) continue;
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }

    RegistrySandbox m_sandbox;
    FileSandbox m_files;
    /// Not among the layouts.
    const std::filesystem::path m_data = m_files.Folder().wstring() + L" data";
    Popups m_popups;
    std::optional<CPluginManagerDlg> m_dialog;
};

}  // namespace support
