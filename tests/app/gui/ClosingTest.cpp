// What is asked before the main dialog closes, and what Enter on Close does to the selection.
#include "support/MainDialog.h"
#include "support/StandInHost.h"
#include "support/TestPlugins.h"

namespace {

constexpr wchar_t kQuestion[] = L"Save changes";

class Closing : public support::MainDialog {
  protected:
    void OpenModified(const std::vector<std::wstring>& arguments) {
        Open(arguments);
        Show();
        Press(IDC_ADD_SEPARATOR);
    }
    std::vector<std::wstring> Hosted() const { return {L"/Float", L"/ParentWnd", m_host.HandleText()}; }
    void Post(UINT message) {
        ::PostMessageW(m_dialog->Handle(), message, 0, 0);
        Pump();
    }
    void EnterOnClose() {
        Item(IDC_CLOSE).Focus();
        Key(IDC_CLOSE, VK_RETURN);
    }

    support::StandInHost m_host;
};

TEST_F(Closing, AsksOnceAndKeepsWhatWasNotSaved) {
    OpenModified(Hosted());
    m_popups.Expect(kQuestion, [this](HWND box) {
        EXPECT_FALSE(m_dialog->Send(WM_QUERYENDSESSION)) << "what is open already is not asked again";
        ::PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
    });
    Post(WM_CLOSE);
    ASSERT_TRUE(IsOpen());
    m_popups.Expect(kQuestion, IDYES);
    ExpectFailedSave();
    EnterOnClose();
    ASSERT_TRUE(IsOpen()) << "it could not be saved";
    m_popups.Expect(kQuestion, IDNO);
    Post(WM_CLOSE);
    EXPECT_FALSE(IsOpen());
}

TEST_F(Closing, AQuestionThatOutlivesTheWindowLeadsNowhere) {
    Open({L"/ParentWnd", m_host.HandleText()});
    Press(IDC_ADD_SEPARATOR);
    HWND orphan = nullptr;
    m_popups.Expect(kQuestion, [&](HWND box) {
        orphan = box;
        ::PostMessageW(m_host.Window(), WM_CLOSE, 0, 0);
    });
    m_popups.Expect(kQuestion, [&](HWND box) {
        ::PostMessageW(box, WM_COMMAND, IDNO, 0);
        ::PostMessageW(orphan, WM_COMMAND, IDNO, 0);
    });
    Press(IDC_LAYOUT_OPEN);  // a file dialog would fail the test
    EXPECT_TRUE(support::WaitFor([&] {
        Pump();
        return !IsOpen();
    }));
}

TEST_F(Closing, NothingIsDoneWhenTheWindowGoesDuringItsQuestion) {
    m_files.Write(L"one.pgl", "<PluginMenuLayout DocSchema='1' Name='One'/>");
    support::AddFilter(1, L"Gone", L"C:\\no such.dll");
    for (const auto& [control, question] : {std::pair(IDC_LAYOUT_OPEN, kQuestion),
                                            {IDC_LAYOUTS, kQuestion},
                                            {IDC_EXCLUDE, L"\"Gone\""},
                                            {ID_TIDY_UP, L"Tidy Up"}}) {
        OpenModified(Hosted());
        Choose(L"DirectX Audio Effects (DX)");
        SelectPlugins({L"Gone"});
        m_popups.Expect(question, [this](HWND) { ::DestroyWindow(m_dialog->Handle()); });
        m_popups.Expect(kQuestion, IDNO);  // as there is no way back
        control == IDC_LAYOUTS ? Select(control, {L"One"}) : void(m_dialog->Send(WM_COMMAND, control));
        Pump();
        EXPECT_FALSE(IsOpen());
    }
    EXPECT_TRUE(support::Exists(HKEY_CLASSES_ROOT, support::kFilterInstances + support::IdText(1)));
    EXPECT_EQ(m_host.MessageCount(support::kPluginsChanged), 0U);
}

/// As for an owner that is being destroyed.
LRESULT CALLBACK RefuseOwnedBoxes(int code, WPARAM, LPARAM created) {
    const auto& window = *reinterpret_cast<const CBT_CREATEWNDW*>(created);
    return code == HCBT_CREATEWND && ::GetDlgItem(window.lpcs->hwndParent, IDC_LAYOUT_TREE);
}

TEST_F(Closing, ASessionThatGoesOnBringsBackWhatWasThrownAwayUntilTheHostTakesTheWindow) {
    OpenModified(Hosted());
    m_popups.Expect(kQuestion, IDNO);
    EXPECT_TRUE(m_dialog->Send(WM_QUERYENDSESSION));
    EXPECT_TRUE(m_dialog->Send(WM_QUERYENDSESSION)) << "nothing asks again";
    m_dialog->Send(WM_ENDSESSION, FALSE);
    m_popups.Expect(kQuestion, IDCANCEL);
    EXPECT_FALSE(m_dialog->Send(WM_QUERYENDSESSION));
    const HHOOK hook = ::SetWindowsHookExW(WH_CBT, &RefuseOwnedBoxes, nullptr, ::GetCurrentThreadId());
    m_popups.m_ownersMatter = false;
    m_popups.Expect(kQuestion, IDNO);
    ::DestroyWindow(m_dialog->Handle());
    ::UnhookWindowsHookEx(hook);
    EXPECT_FALSE(IsOpen());
}

TEST_F(Closing, EnterOnCloseDoesWhatTheExcludeButtonCouldDo) {
    support::AddSurface(3, L"Desk");
    support::AddVst(1, L"Bellows");
    for (const auto& [category, plugin, excluded] :
         {std::tuple(L"Control Surfaces", L"Desk", 0U), std::tuple(support::kVstEffects, L"Bellows", 1U)}) {
        Open(Hosted());
        Show();
        Choose(category);
        SelectPlugins({plugin});
        for (const int id : {IDC_CATEGORIES, IDC_PLUGINS, IDC_CLOSE}) Key(id, VK_ESCAPE);
        Item(IDC_CATEGORIES).Focus();
        Key(IDC_CATEGORIES, VK_RETURN);
        ASSERT_TRUE(IsOpen());
        EnterOnClose();
        EXPECT_FALSE(IsOpen());
        EXPECT_EQ(support::Subkeys(HKEY_CURRENT_USER, support::kExcludedPlugins).size(), excluded);
    }
    EXPECT_TRUE(support::WaitFor([&] { return m_host.MessageCount(support::kLayoutsChanged) == 2; }));
    EXPECT_EQ(m_host.MessageCount(support::kPluginsChanged), 0U) << "without the button's message";
}

}  // namespace
