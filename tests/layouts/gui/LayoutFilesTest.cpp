// The layout files row of the main dialog, with the system's file dialogs.
#include "support/MainDialog.h"

namespace {

class LayoutFiles : public support::MainDialog {};

TEST_F(LayoutFiles, ASaveWithoutADisplayNameIsAskedForOne) {
    m_popups.Expect(L"Not a valid", IDOK);
    Open({L"C:\\no such file.pgl"});
    Press(IDC_ADD_SEPARATOR);
    m_popups.Expect(L"<Unnamed Layout>", IDYES)
        .ExpectFile(
            L"Save Plug-In Menu Layout", m_files.Path(L"a"),
            [](HWND dialog) { support::EnterText(support::InFileDialog(dialog, IDC_DISPLAY_NAME), L""); })
        .Expect(L"Please enter a display name", IDOK)
        .ExpectFile(L"Save Plug-In Menu Layout", m_files.Path(L"b"), [](HWND dialog) {
            support::EnterText(support::InFileDialog(dialog, IDC_DISPLAY_NAME), L"Shown");
        });
    Press(IDC_LAYOUT_NEW);
    EXPECT_EQ(m_files.Names(), std::vector<std::wstring>{L"b.pgl"});
}

}  // namespace
