#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <numeric>

#include "DialogOnScreen.h"
#include "LanguageResources.h"
#include "ResourceRules.h"
#include "TextFormat.h"
#include "resource.h"
#include "support/WindowActions.h"

namespace {

using namespace res_test;
using testing::IsEmpty;

constexpr UINT kDialogs[] = {IDD_ABOUT,       IDD_PLUGIN_MANAGER, IDD_LAYOUT_NAME,         IDD_SINGLE_PROP,
                             IDD_PRESET_FILE, IDD_MANAGE_PRESETS, IDD_TREE_ITEM_PROPERTIES};
constexpr UINT kMenus[] = {IDM_LAYOUT, IDM_LAYOUT_PLUGIN, IDM_LAYOUT_ROOT, IDM_LAYOUT_FOLDER};
constexpr UINT kFirstText = IDS_ABOUT_COMMAND;
constexpr UINT kLastText = 199;

/// Behind the first block of texts not every number is taken.
bool IsText(UINT id) { return id <= IDS_DATABASE_MODE_QUESTION || TextIn(kEnglish, id); }

/// Texts that the program gives to a control at run time, or to the rows of a list.
struct LaterText {
    UINT dialog;
    int control;
    UINT text;
};
constexpr LaterText kLaterTexts[] = {
    {IDD_PLUGIN_MANAGER, IDC_EXCLUDE, IDS_EXCLUDE_PLUGIN},
    {IDD_PLUGIN_MANAGER, IDC_EXCLUDE, IDS_ENABLE_PLUGIN},
    {IDD_PLUGIN_MANAGER, IDC_CLSID_LABEL, IDS_CLSID_LABEL},
    {IDD_PLUGIN_MANAGER, IDC_CLSID_LABEL, IDS_VENDOR_LABEL},
    {IDD_PLUGIN_MANAGER, IDC_FILENAME, IDS_NO_PLUGIN_SELECTED},
    {IDD_PLUGIN_MANAGER, IDC_FILENAME, IDS_MULTIPLE_PLUGINS_SELECTED},
    {IDD_PLUGIN_MANAGER, IDC_PLUGINS, IDS_NO_ENTRIES},
    {IDD_PLUGIN_MANAGER, IDC_CATEGORIES, IDS_CATEGORY_DX},
    {IDD_PLUGIN_MANAGER, IDC_CATEGORIES, IDS_CATEGORY_VST},
    {IDD_PLUGIN_MANAGER, IDC_CATEGORIES, IDS_CATEGORY_MIDI_EFFECTS},
    {IDD_PLUGIN_MANAGER, IDC_CATEGORIES, IDS_CATEGORY_DXI},
    {IDD_PLUGIN_MANAGER, IDC_CATEGORIES, IDS_CATEGORY_VSTI},
    {IDD_PLUGIN_MANAGER, IDC_CATEGORIES, IDS_CATEGORY_DMO},
    {IDD_PLUGIN_MANAGER, IDC_CATEGORIES, IDS_CATEGORY_CONTROL_SURFACES},
    {IDD_PLUGIN_MANAGER, IDC_CATEGORIES, IDS_CATEGORY_LEGACY_VST},
    {IDD_PLUGIN_MANAGER, IDC_CATEGORIES, IDS_CATEGORY_LEGACY_VSTI},
    {IDD_PLUGIN_MANAGER, IDC_CATEGORIES, IDS_CATEGORY_VST3},
    {IDD_PLUGIN_MANAGER, IDC_CATEGORIES, IDS_CATEGORY_VST3I},
    {IDD_TREE_ITEM_PROPERTIES, IDC_PROP_ID_LABEL, IDS_CLSID_LABEL},
    {IDD_TREE_ITEM_PROPERTIES, IDC_PROP_ID_LABEL, IDS_VENDOR_LABEL},
};

/// Controls of the main dialog that count behind their caption, with a count that is high for them.
const std::map<int, int> kCounts = {
    {IDC_CATEGORIES_LABEL, 11}, {IDC_PLUGINS_LABEL, 4096}, {IDC_PRESETS_GROUP, 9999}};

/// The adapter's buttons take the place of the VST buttons, a VST plug-in's details that of the class id.
constexpr Alternative kAlternatives[] = {
    {IDC_VST_GROUP, IDC_ADAPTER_GROUP},
    {IDC_VST_GROUP, IDC_ADAPTER_WIZARD},
    {IDC_VST_GROUP, IDC_ADAPTER_PROPERTIES},
    {IDC_ADAPTER_GROUP, IDC_VST_OPTIONS},
    {IDC_ADAPTER_GROUP, IDC_VST_PROPERTIES},
    {IDC_ADAPTER_GROUP, IDC_VST_SCAN},
    {IDC_VST_OPTIONS, IDC_ADAPTER_WIZARD},
    {IDC_VST_PROPERTIES, IDC_ADAPTER_PROPERTIES},
    {IDC_CLSID, IDC_VENDOR},
    {IDC_CLSID, IDC_VST_ID_LABEL},
    {IDC_CLSID, IDC_VST_ID},
};

/// All that a control shows at one time or another.
std::vector<std::wstring> TextsOf(const Language& language, UINT dialog, const DialogControl& control) {
    // The about box fills in version and date.
    std::vector<std::wstring> texts = {FormatText(control.text, L"10.20.30", L"2026-12-31")};
    for (const LaterText& later : kLaterTexts) {
        if (later.dialog == dialog && later.control == control.id)
            texts.push_back(TextIn(language, later.text).value_or(L""));
    }
    const auto count = kCounts.find(control.id);
    if (dialog == IDD_PLUGIN_MANAGER && count != kCounts.end()) {
        const std::wstring found = TextIn(language, IDS_FOUND).value_or(L"");
        texts.push_back(FormatText(L"%s (%d %s)", control.text, count->second, found));
    }
    if (control.id == IDC_VST_GROUP || control.id == IDC_ADAPTER_GROUP)
        texts.push_back(FormatText(TextIn(language, IDS_TOOL_RUNNING).value_or(L""), control.text));
    return texts;
}

std::string Told(const Faults& faults) {
    return support::Utf8(std::accumulate(faults.begin(), faults.end(), std::wstring(),
                                         [](auto all, const auto& one) { return all + L"\n  " + one; }));
}

class Languages : public testing::TestWithParam<Language> {
  protected:
    static CDialogOnScreen Open(UINT dialog, const DialogFont& font = {}) {
        return {ResourceIn(GetParam(), RT_DIALOG, dialog), font};
    }
};

INSTANTIATE_TEST_SUITE_P(Nine, Languages, testing::ValuesIn(kLanguages),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(Languages, HaveEveryResource) {
    EXPECT_THAT(ResourceIds(RT_DIALOG), testing::UnorderedElementsAreArray(kDialogs));
    EXPECT_THAT(ResourceIds(RT_MENU), testing::UnorderedElementsAreArray(kMenus));
    for (const UINT id : kDialogs) EXPECT_FALSE(ResourceIn(GetParam(), RT_DIALOG, id).empty()) << id;
    for (const UINT id : kMenus) EXPECT_FALSE(ResourceIn(GetParam(), RT_MENU, id).empty()) << id;
    for (UINT id = kFirstText; id <= kLastText; ++id)
        EXPECT_EQ(TextIn(GetParam(), id).has_value(), IsText(id)) << id;
}

TEST_P(Languages, KeepTheFormOfTheEnglishTexts) {
    for (UINT id = kFirstText; id <= kLastText; ++id) {
        const std::wstring english = TextIn(kEnglish, id).value_or(L"");
        const std::wstring text = TextIn(GetParam(), id).value_or(english);
        const Faults faults = TextFaults(english, text);
        EXPECT_THAT(faults, IsEmpty()) << id << Told(faults);
        EXPECT_TRUE(GetParam().id == kEnglish.id || text.find(L"  ") == std::wstring::npos) << id;
    }
    EXPECT_EQ(TextIn(GetParam(), IDS_PRESET_EXTENSION), L"spp");
    EXPECT_EQ(TextIn(GetParam(), IDS_LAYOUT_EXTENSION), L"pgl");
    EXPECT_TRUE(TextIn(GetParam(), IDS_PRESET_FILTER).value_or(L"").ends_with(L" (*.spp)"));
    EXPECT_TRUE(TextIn(GetParam(), IDS_LAYOUT_FILTER).value_or(L"").ends_with(L" (*.pgl)"));
}

TEST_P(Languages, DialogsHaveTheEnglishControls) {
    for (const UINT id : kDialogs) {
        const auto dialog = Open(id);
        const CDialogOnScreen english(ResourceIn(kEnglish, RT_DIALOG, id), {});
        ASSERT_TRUE(dialog.IsThere() && english.IsThere()) << id;
        const auto controls = dialog.Controls();
        const auto expected = english.Controls();
        ASSERT_EQ(controls.size(), expected.size()) << id;
        for (std::size_t i = 0; i < controls.size(); ++i) {
            EXPECT_EQ(controls[i].id, expected[i].id) << id;
            EXPECT_EQ(controls[i].className, expected[i].className) << id << ' ' << controls[i].id;
            EXPECT_EQ(controls[i].style, expected[i].style) << id << ' ' << controls[i].id;
            const Faults faults = TextFaults(expected[i].text, controls[i].text);
            EXPECT_THAT(faults, IsEmpty()) << id << Told(faults);
            // A script without letters to underline names the key in brackets.
            const bool hasMark = controls[i].text.find(L'&') != std::wstring::npos;
            EXPECT_TRUE(!GetParam().dialogFace || !hasMark ||
                        controls[i].text.find(L"(&") != std::wstring::npos)
                << id << ' ' << controls[i].id;
            EXPECT_TRUE(MnemonicOf(controls[i].text) != 0 || MnemonicOf(expected[i].text) == 0)
                << id << ' ' << controls[i].id << " has lost its mnemonic";
        }
    }
}

TEST_P(Languages, NoMnemonicWorksTwoControls) {
    for (const UINT id : kDialogs) {
        std::vector<Caption> captions;
        const auto controls = Open(id).Controls();
        for (std::size_t i = 0; i < controls.size(); ++i) {
            for (const std::wstring& text : TextsOf(GetParam(), id, controls[i]))
                captions.push_back({std::to_wstring(i), text});
        }
        const Faults faults = SharedMnemonics(captions);
        EXPECT_THAT(faults, IsEmpty()) << id << Told(faults);
    }
}

TEST_P(Languages, MenusHaveTheEnglishCommands) {
    for (const UINT id : kMenus) {
        const auto commands = MenuIn(GetParam(), id);
        const auto english = MenuIn(kEnglish, id);
        ASSERT_EQ(commands.size(), english.size()) << id;
        std::vector<Caption> captions;
        for (std::size_t i = 0; i < commands.size(); ++i) {
            EXPECT_EQ(commands[i].id, english[i].id) << id;
            EXPECT_EQ(commands[i].text.empty(), english[i].text.empty()) << id << ' ' << commands[i].id;
            captions.push_back({std::to_wstring(commands[i].id), commands[i].text});
        }
        const Faults faults = SharedMnemonics(captions);
        EXPECT_THAT(faults, IsEmpty()) << id << Told(faults);
    }
}

TEST_P(Languages, SystemMenuKeepsTheSystemsLetters) {
    std::vector<Caption> captions;
    for (const wchar_t letter : GetParam().systemMenuLetters)
        captions.push_back({L"system", std::wstring{L'&', letter}});
    captions.push_back({L"about", TextIn(GetParam(), IDS_ABOUT_COMMAND).value_or(L"")});
    for (const UINT id : {UINT{IDS_ENABLE_FLOATING}, UINT{IDS_DISABLE_FLOATING}})
        captions.push_back({L"floating", TextIn(GetParam(), id).value_or(L"")});
    const Faults faults = SharedMnemonics(captions);
    EXPECT_THAT(faults, IsEmpty()) << Told(faults);
}

/// What is cut off in the dialogs of a language.
Faults CutTexts(const Language& language, const DialogFont& font) {
    Faults faults;
    for (const UINT id : kDialogs) {
        const CDialogOnScreen dialog(ResourceIn(language, RT_DIALOG, id), font);
        for (DialogControl control : dialog.Controls()) {
            for (std::wstring& text : TextsOf(language, id, control)) {
                control.text = std::move(text);
                const auto cut = dialog.CutOff(control);
                if (cut)
                    faults.push_back(std::to_wstring(id) + L", " + std::to_wstring(control.id) + L": " +
                                     *cut);
            }
        }
    }
    return faults;
}

// A scale of 125, 150 or 200 % is a larger font; rounding lets text and control grow apart. A system whose
// own script it is has another dialog font.
TEST_P(Languages, EveryTextIsShownInWhole) {
    std::vector<const wchar_t*> faces = {nullptr};
    if (GetParam().dialogFace) faces.push_back(GetParam().dialogFace);
    for (const wchar_t* face : faces) {
        for (const WORD points : {WORD{8}, WORD{10}, WORD{12}, WORD{16}}) {
            const Faults faults = CutTexts(GetParam(), {points, face});
            EXPECT_THAT(faults, IsEmpty())
                << points << " points" << (face ? ", own face" : "") << Told(faults);
        }
    }
}

TEST_P(Languages, ControlsStandClear) {
    for (const UINT id : kDialogs) {
        const auto dialog = Open(id);
        const Faults faults = PlacementFaults(dialog.ClientSize(), dialog.Controls(), kAlternatives);
        EXPECT_THAT(faults, IsEmpty()) << id << Told(faults);
    }
}

// The rules themselves, on faults planted here.

TEST(ResourceRules, FindAMissingText) {
    EXPECT_TRUE(TextIn(kEnglish, kFirstText));
    EXPECT_FALSE(TextIn(kEnglish, kLastText + 1));
    EXPECT_FALSE(TextIn({"Dutch", 1043, L""}, kFirstText));
    EXPECT_TRUE(ResourceIn({"Dutch", 1043, L""}, RT_DIALOG, IDD_ABOUT).empty());
}

TEST(ResourceRules, FindATextThatLostItsForm) {
    EXPECT_THAT(TextFaults(L"%s has %d.\n", L"%s hat %d.\n"), IsEmpty());
    for (const wchar_t* text : {L"%d hat %s.\n", L"%s hat.\n", L"%s hat %d, %d.\n", L"%s hat %x.\n",
                                L"%s hat %d.", L" %s hat %d.\n", L"%s hat %d.\n "})
        EXPECT_EQ(TextFaults(L"%s has %d.\n", text).size(), 1U) << support::Utf8(text);
    EXPECT_THAT(TextFaults(L"&Name: ", L"名前(&N): "), IsEmpty());
    for (const wchar_t* text : {L"&Na&me: ", L"Na& me: ", L"&Name:"})
        EXPECT_EQ(TextFaults(L"&Name: ", text).size(), 1U) << support::Utf8(text);
}

TEST(ResourceRules, FindALetterThatWorksTwo) {
    EXPECT_THAT(SharedMnemonics(std::vector<Caption>{{L"1", L"&Import"}, {L"2", L"E&xport"}}), IsEmpty());
    EXPECT_THAT(SharedMnemonics(std::vector<Caption>{{L"1", L"Exc&lude"}, {L"1", L"Enab&le"}}), IsEmpty());
    EXPECT_THAT(SharedMnemonics(std::vector<Caption>{{L"1", L"Drag && Drop"}, {L"2", L"&Drop"}}), IsEmpty());
    EXPECT_EQ(SharedMnemonics(std::vector<Caption>{{L"1", L"Пр&авка"}, {L"2", L"&Аудио"}}).size(), 1U);
    EXPECT_EQ(SharedMnemonics(std::vector<Caption>{{L"1", L"E&xport"}, {L"2", L"&Import"}, {L"3", L"X(&X)"}})
                  .size(),
              1U);
}

TEST(ResourceRules, FindATextThatIsCutOff) {
    const CDialogOnScreen dialog(ResourceIn(kEnglish, RT_DIALOG, IDD_MANAGE_PRESETS), {});
    ASSERT_TRUE(dialog.IsThere());
    const auto cuts = [&dialog](const wchar_t* className, DWORD style, int width, int height) {
        return dialog.CutOff({1, className, style, {0, 0, width, height}, L"MMMMMMMMM MMMMMMMMM"})
            .has_value();
    };
    constexpr int kFits = 250;
    constexpr int kTooNarrow = 100;
    const std::pair<const wchar_t*, DWORD> kinds[] = {
        {L"Button", BS_PUSHBUTTON}, {L"Button", BS_AUTOCHECKBOX}, {L"Button", BS_GROUPBOX},
        {L"Static", SS_LEFT},       {L"ListBox", LBS_NOTIFY},     {L"Edit", ES_READONLY}};
    for (const auto& [className, style] : kinds) {
        EXPECT_FALSE(cuts(className, style, kFits, 22)) << support::Utf8(className) << style;
        EXPECT_TRUE(cuts(className, style, kTooNarrow, 22)) << support::Utf8(className) << style;
        EXPECT_TRUE(cuts(className, style, kFits, 10)) << support::Utf8(className) << style;
    }
    EXPECT_FALSE(cuts(L"Static", SS_LEFT, kTooNarrow, 26)) << "two lines have room";
    EXPECT_FALSE(cuts(L"Button", BS_OWNERDRAW, 1, 1)) << "a picture";
}

TEST(ResourceRules, FindControlsInOneAnothersWay) {
    const DialogControl box{1, L"Button", BS_GROUPBOX, {0, 0, 100, 50}, L"Box"};
    const auto faults = [&box](RECT place) {
        const DialogControl controls[] = {box, {2, L"Button", BS_PUSHBUTTON, place, L"Button"}};
        return PlacementFaults({100, 100}, controls, std::vector<Alternative>{}).size();
    };
    EXPECT_EQ(faults({10, 20, 60, 40}), 0U);
    EXPECT_EQ(faults({10, 60, 60, 80}), 0U);
    EXPECT_EQ(faults({10, 5, 60, 40}), 1U) << "over the caption";
    EXPECT_EQ(faults({10, 20, 60, 60}), 1U) << "over the frame";
    EXPECT_EQ(faults({10, 60, 110, 80}), 1U) << "out of the dialog";
    const DialogControl twice[] = {{1, L"Edit", 0, {0, 0, 50, 20}, L""},
                                   {2, L"Edit", 0, {40, 0, 90, 20}, L""}};
    EXPECT_EQ(PlacementFaults({100, 100}, twice, std::vector<Alternative>{}).size(), 1U);
    EXPECT_THAT(PlacementFaults({100, 100}, twice, std::vector<Alternative>{{2, 1}}), IsEmpty());
}

}  // namespace
