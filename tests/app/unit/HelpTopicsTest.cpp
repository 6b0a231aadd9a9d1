#include <gtest/gtest.h>

#include "HelpContext.h"
#include "HelpTopics.h"
#include "resource.h"

namespace {

TEST(HelpTopics, ControlsLeadToTheirPaneAndDialogsToTheirPage) {
    const struct {
        unsigned context;
        std::wstring_view page;
    } cases[] = {
        {HelpOfDialog(IDD_PLUGIN_MANAGER), L"window.htm"},
        {HelpOfDialog(IDD_PRESET_FILE), L"preset-files.htm"},
        {HelpOfControl(IDC_SHOW_PERMANENT), L"exclusion.htm"},
        {HelpOfControl(IDC_LAYOUTS), L"layout-files.htm"},
        {HelpOfControl(IDC_PROMOTE), L"layout-editing.htm"},
        {HelpOfControl(IDC_ADAPTER_WIZARD), L"adapter.htm"},
        // What a prompt for a name carries is the number of another dialog's template.
        {130, L"name-prompt.htm"},
    };
    for (const auto& c : cases) EXPECT_EQ(HelpPageOf(c.context), c.page) << c.context;
}

TEST(HelpTopics, NumbersOfNothingHaveNoPage) {
    for (const unsigned context : {0U, unsigned{IDD_ABOUT}, HelpOfDialog(0), HelpOfControl(IDD_ABOUT)}) {
        EXPECT_EQ(HelpPageOf(context), std::nullopt) << context;
    }
}

}  // namespace
