// Two managers, one of them docked, the console companion and a host at work on the same keys at once.

#include "resource.h"
#include "support/RegistrySandbox.h"
#include "support/StandInHost.h"
#include "support/WindowDriver.h"

namespace {

using namespace support;

constexpr wchar_t kVst[] = L"VST Audio Effects (VST)", kOther[] = L"VST3 Audio Effects (VST3)";

using Together = ProgramTest;

TEST_F(Together, NoneOfThemLosesAnEntryOrShowsOneThatIsNotThere) {
    const StandInHost host;
    const WindowDriver docked(L"/ParentWnd " + host.HandleText(), host.Window());
    const WindowDriver floating;
    const auto choose = [](const WindowDriver& program, const wchar_t* category) {
        program.Select(IDC_CATEGORIES, {category});
        return program.Rows(IDC_PLUGINS).size();
    };
    ASSERT_GT(choose(docked, kVst), 10U);
    for (int round = 0; round < 5; ++round) {
        SCOPED_TRACE(round);
        // One excludes what the other enables; both have the same plug-ins in their lists at first.
        for (const WindowDriver* program : {&docked, &floating}) {
            Press(program->Control(program == &docked ? IDC_SHOW_ENABLED : IDC_SHOW_EXCLUDED));
            choose(*program, kVst);
            // All at once: a list that scrolls while it is docked can hang where the host is another process.
            Send(program->Control(IDC_PLUGINS), LB_SETSEL, TRUE, -1);
            Send(program->Window(), WM_COMMAND, MAKEWPARAM(IDC_PLUGINS, LBN_SELCHANGE));
        }
        const UniqueProcess console =
            StartProgram(L"exclude {486D4B72-5653-5400-8A01-5A3C1E90B764}", L"PluginManagerCmd.exe");
        for (const WindowDriver* program : {&docked, &floating})
            ::PostMessageW(program->Control(IDC_EXCLUDE), BM_CLICK, 0, 0);
        // The host reads them meanwhile.
        while (WaitForSingleObject(console.Get(), 0) == WAIT_TIMEOUT)
            for (const std::wstring& id : Subkeys(HKEY_CURRENT_USER, kExclusions)) EXPECT_EQ(id.size(), 38U);
        EXPECT_EQ(WaitForExit(console), 0U);
        for (const WindowDriver* program : {&docked, &floating}) Send(program->Window(), WM_NULL);
    }
    // What one has done, the other knows with its own next step.
    const auto doFirst = [&](const WindowDriver& program, int mode) {
        Send(program.Control(mode), BM_CLICK);
        choose(program, kOther);
        std::wstring name = program.Rows(IDC_PLUGINS).front();
        program.Select(IDC_PLUGINS, {name});
        Send(program.Control(IDC_EXCLUDE), BM_CLICK);
        return name;
    };
    const std::wstring first = doFirst(docked, IDC_SHOW_ENABLED);
    EXPECT_NE(doFirst(floating, IDC_SHOW_ENABLED), L"");
    const auto rows = floating.Rows(IDC_PLUGINS);
    EXPECT_EQ(std::ranges::count(rows, first), 0);
    // Each entry is whole, with the plug-in's name.
    for (const std::wstring& id : Subkeys(HKEY_CURRENT_USER, kExclusions))
        EXPECT_TRUE(Text(HKEY_CURRENT_USER, kExclusions + (L"\\" + id), nullptr)) << Utf8(id);
    EXPECT_GT(host.MessageCount(kPluginsChanged), 0U);
    for (const WindowDriver* program : {&docked, &floating}) EXPECT_EQ(program->Close(), 0U);
    DeleteTree(HKEY_CURRENT_USER, kExclusions);
}

}  // namespace
