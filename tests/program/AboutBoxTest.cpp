// The about box of the real program.
#include <windows.h>

#include <cstdlib>
#include <gtest/gtest.h>
#include <vector>

#include "resource.h"
#include "support/WindowDriver.h"

namespace {

using namespace support;

constexpr UINT kAboutCommand = 0x10;

class AboutBox : public testing::Test {
  protected:
    void SetUp() override {
        if (!std::getenv("STUDIO")) GTEST_SKIP() << "needs a prefix of its own with the sample studio";
    }
};

HWND OpenAboutBox(const WindowDriver& program) {
    if (!program.WaitForWindow()) return nullptr;
    ::PostMessageW(program.Window(), WM_SYSCOMMAND, kAboutCommand, 0);
    return program.WaitForPopup();
}

/// What the program file says of itself in its version resource.
std::wstring VersionText(const wchar_t* name) {
    const std::wstring file = BesideTest(L"PluginManager.exe").wstring();
    std::vector<BYTE> bytes(::GetFileVersionInfoSizeW(file.c_str(), nullptr));
    if (!::GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(bytes.size()), bytes.data())) return {};
    void* text = nullptr;
    UINT length = 0;
    const std::wstring path = std::wstring(L"\\StringFileInfo\\040904B0\\") + name;
    if (!::VerQueryValueW(bytes.data(), path.c_str(), &text, &length)) return {};
    return static_cast<const wchar_t*>(text);
}

TEST_F(AboutBox, TellsTheVersionOfTheProgramFileAndTheKeyboardOpensTheLicence) {
    const std::wstring version = VersionText(L"ProductVersion");
    ASSERT_FALSE(version.empty());
    EXPECT_NE(VersionText(L"LegalCopyright").find(L"Copyright \u00A9 "), std::wstring::npos);
    const WindowDriver program;
    const HWND about = OpenAboutBox(program);
    ASSERT_TRUE(about) << program.OnScreen();
    const std::wstring line = TextOf(::GetDlgItem(about, IDC_ABOUT_VERSION));
    EXPECT_NE(line.find(version), std::wstring::npos) << Utf8(line);
    EXPECT_EQ(line.find(L'%'), std::wstring::npos) << "no date: " << Utf8(line);
    ::PostMessageW(::GetDlgItem(about, IDOK), WM_KEYDOWN, VK_TAB, 0);
    ::PostMessageW(::GetDlgItem(about, IDC_ABOUT_LICENCE), WM_KEYDOWN, VK_RETURN, 0);
    const auto viewer = [] { return ::FindWindowW(L"Notepad", nullptr); };
    ASSERT_TRUE(WaitFor([&] { return viewer() && TextOf(viewer()).starts_with(L"LICENSE"); }))
        << program.OnScreen();
    ::PostMessageW(viewer(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitFor([&] { return viewer() == nullptr; }));
}

}  // namespace
