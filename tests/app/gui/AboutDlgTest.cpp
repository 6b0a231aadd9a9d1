// The about box, opened from the system menu.
#include "Version.h"
#include "support/MainDialog.h"
#include "support/Surroundings.h"
#include "support/WaitFor.h"

namespace {

using AboutDlg = support::MainDialog;

TEST_F(AboutDlg, TellsTheVersionAndTheKeyboardOpensTheLicence) {
    if (!support::OnWine()) GTEST_SKIP() << "the editor that opens may be one that the user is working in";
    Open();
    m_popups.Expect(std::wstring(kProductVersion), [](HWND about) {
        const auto line = support::TextOf(::GetDlgItem(about, IDC_ABOUT_VERSION));
        EXPECT_NE(line.find(kBuildDate), std::wstring::npos) << support::Utf8(line);
        support::PostKey(::GetDlgItem(about, IDOK), VK_TAB);
        support::PostKey(::GetDlgItem(about, IDC_ABOUT_LICENCE), VK_RETURN);
        const auto viewer = [about] {
            MSG message;  // only the dialog's own loop knows what Tab means
            while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                if (!::IsDialogMessageW(about, &message)) ::DispatchMessageW(&message);
            return ::FindWindowW(L"Notepad", nullptr);
        };
        EXPECT_TRUE(support::WaitFor(
            [&] { return viewer() && support::TextOf(viewer()).starts_with(L"PluginManager-LICENSE"); }));
        ::PostMessageW(viewer(), WM_CLOSE, 0, 0);
        EXPECT_TRUE(support::WaitFor([&] { return viewer() == nullptr; }));
        support::Press(::GetDlgItem(about, IDOK));
    });
    m_dialog->Send(WM_SYSCOMMAND, 0x10);
}

}  // namespace
