// The texts of all languages, and the dialogs that they have to fit in.
#include <list>
#include <map>
#include <set>

#include "DialogFit.h"
#include "PluginCategory.h"
#include "Resources.h"
#include "SinglePropDlg.h"
#include "TextFormat.h"
#include "support/MainDialog.h"

namespace {

using namespace res_test;

struct Language {
    const char* name;
    LANGID id;
    std::wstring_view systemMenuLetters;
    const wchar_t* dialogFont;
};

#define INTERFACE_LANGUAGE(name, id, installer, letters, font) {#name, id, letters, font},
constexpr Language kLanguages[] = {
#include "Languages.inc"
};
#undef INTERFACE_LANGUAGE
constexpr const Language& kEnglish = kLanguages[0];

/// Texts that are the same in some other language.
constexpr std::wstring_view kAlike =
    L"||spp|pgl|OK|CLSID:|CLSID: |VST ID: "
    L"|&Options|&Wizard...|Backups|&Backups...|Plug-in|Presets|Name|Exclusions|"
    L"Corvane Plug-in Manager|Corvane Plug-in &Manager|Name: %s -> %s|Layout: %s|Presets: %s|";

/// Texts that the program gives to controls at run time.
const std::map<int, std::vector<UINT>> kLaterTexts = {
    {IDC_EXCLUDE, {IDS_EXCLUDE_PLUGIN, IDS_ENABLE_PLUGIN}},
    {IDC_CLSID_LABEL, {IDS_CLSID_LABEL, IDS_VENDOR_LABEL}},
    {IDC_FILENAME, {IDS_NO_PLUGIN_SELECTED, IDS_MULTIPLE_PLUGINS_SELECTED}},
    {IDC_PLUGINS, {IDS_NO_ENTRIES, IDS_FOUND_ELSEWHERE}},
    {IDC_PROP_ID_LABEL, {IDS_CLSID_LABEL, IDS_VENDOR_LABEL}},
    {IDC_FIND, {IDS_FIND_CUE, IDS_FIND_IN_LAYOUT_CUE}},
    {IDC_REVIEW_HEADING,
     {IDS_BACKUPS_HEADING, IDS_IMPORT_FILE_HEADING, IDS_TIDY_HEADING, IDS_SAVE_SET_HEADING,
      IDS_LOAD_SET_HEADING}},
    {IDC_REVIEW_ACTION, {IDS_MAKE_SAME, IDS_OPEN_BACKUP_FOLDER}},
    {IDC_REVIEW_ACTION_2, {IDS_DELETE_BACKUPS}},
    {IDC_PRESETS_GROUP, {IDS_EXPORTING, IDS_IMPORTING, IDS_BACKING_UP, IDS_LOADING_SET}},
    {IDC_EXCLUSION_GROUP, {IDS_EXCLUDING, IDS_ENABLING, IDS_TIDY_LOOKING, IDS_TIDYING}},
};
/// Controls that count behind their caption, with a count that is high for them.
constexpr std::pair<int, int> kCounts[] = {
    {IDC_CATEGORIES_LABEL, 11}, {IDC_PLUGINS_LABEL, 4096}, {IDC_PRESETS_GROUP, 9999}};

/// A dialog's controls, each with every text that it shows at one time or another.
std::vector<DialogControl> ShownIn(const CDialog& dialog) {
    std::vector<DialogControl> shown;
    for (const DialogControl& control : ControlsOf(dialog)) {
        const auto add = [&](const std::wstring& text) { shown.emplace_back(control).text = text; };
        // The about box fills in version and date.
        add(FormatText(control.text, L"10.20.30", L"2026-12-31"));
        const auto later = kLaterTexts.find(control.id);
        if (later != kLaterTexts.end())
            for (const UINT text : later->second) add(FormatText(LoadText(text), L"4,096", L"4,096"));
        for (const auto& [id, count] : kCounts) {
            if (id == control.id) add(FormatText(L"%s (%d %s)", control.text, count, LoadText(IDS_FOUND)));
        }
        for (const PluginCategory& category : kCategories) {
            if (control.id == IDC_CATEGORIES) add(LoadText(category.captionId));
        }
        if (control.id == IDC_VST_GROUP || control.id == IDC_ADAPTER_GROUP)
            add(FormatText(LoadText(IDS_TOOL_RUNNING), control.text));
        if (control.id == IDOK && dialog.Item(IDC_REVIEW_LIST).IsLive())
            for (const int text :
                 {IDS_RESTORE_BACKUPS, IDS_IMPORT_TICKED, IDS_TIDY_TICKED, IDS_SAVE_SET, IDS_LOAD_TICKED})
                add(FormatText(LoadText(static_cast<UINT>(text)), text == IDS_TIDY_TICKED ? 3000 : 300));
    }
    return shown;
}

/// The letter that works a control or a command, in upper case; 0 when there is none.
wchar_t MnemonicOf(const std::wstring& text) {
    const std::size_t mark = text.find(L'&');
    wchar_t letter = mark == std::wstring::npos ? L'\0' : text[mark + 1];
    ::CharUpperBuffW(&letter, 1);
    return letter;
}

struct Caption {
    int owner;  // one with several texts shows one of them at a time
    std::wstring text;
};
/// Letters that work two owners, in words.
std::string SharedMnemonics(const std::vector<Caption>& captions) {
    std::string faults;
    std::map<wchar_t, Caption> owners;
    for (const Caption& caption : captions) {
        const auto [first, isNew] = owners.try_emplace(MnemonicOf(caption.text), caption);
        if (first->first != L'\0' && first->second.owner != caption.owner)
            faults += support::Utf8(first->second.text + L" and " + caption.text) + "\n";
    }
    return faults;
}

/// What a translation has to keep: the blanks at both ends, and placeholders and line breaks in their order.
std::wstring FormOf(const std::wstring& text) {
    std::wstring form = text.substr(0, text.find_first_not_of(L' '));
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'\r' || text[i] == L'\n') form += text[i];
        if (text[i] == L'%') form += text.substr(i++, 2);
    }
    return form + text.substr(text.find_last_not_of(L' ') + 1);
}

constexpr UINT kIds = 1000;  // all of the program's dialogs, menus and texts have lower ones

std::vector<UINT> ResourceIds(const wchar_t* type) {
    std::vector<UINT> ids;
    for (UINT id = 1; id < kIds; ++id) {
        if (!LoadResourceBytes(type, id).empty()) ids.push_back(id);
    }
    EXPECT_FALSE(ids.empty());
    return ids;
}

/// In the language in force, hidden. Some are made to stand within another window.
std::list<CDialog> DialogsOf(const CDialog& owner) {
    std::list<CDialog> dialogs;
    for (const UINT id : ResourceIds(RT_DIALOG))
        EXPECT_TRUE(dialogs.emplace_back(id).CreateModeless(owner.Handle())) << id;
    return dialogs;
}

/// What the context menus show, by command; a menu within a menu is one of its own.
std::vector<std::vector<Caption>> MenusOf(HMENU shown) {
    std::vector<std::vector<Caption>> menus(1);
    for (int i = 0; i < ::GetMenuItemCount(shown); ++i) {
        wchar_t text[128] = {};
        ::GetMenuStringW(shown, static_cast<UINT>(i), text, 128, MF_BYPOSITION);
        menus[0].push_back({i, text});
        if (const HMENU below = ::GetSubMenu(shown, i))
            std::ranges::move(MenusOf(below), std::back_inserter(menus));
    }
    return menus;
}
std::vector<std::vector<Caption>> AllMenus() {
    std::vector<std::vector<Caption>> menus;
    for (const UINT id : ResourceIds(RT_MENU)) {
        const UniqueMenu menu = LoadMenuResource(id);
        std::ranges::move(MenusOf(::GetSubMenu(menu.Get(), 0)), std::back_inserter(menus));
    }
    return menus;
}

class Languages : public testing::TestWithParam<Language> {
  protected:
    void SetUp() override {
        EXPECT_TRUE(m_owner.CreateModeless(nullptr));
        SetResourceLanguage(GetParam().id);
    }
    void TearDown() override { SetResourceLanguage(kEnglish.id); }
    /// All texts of a language, in the order of their ids.
    std::vector<Caption> TextsIn(const Language& language) const {
        SetResourceLanguage(language.id);
        std::vector<Caption> texts;
        for (UINT id = 1; id < kIds; ++id) texts.push_back({static_cast<int>(id), LoadText(id)});
        for (const CDialog& dialog : DialogsOf(m_owner)) {
            texts.push_back({0, dialog.Text()});
            for (const DialogControl& control : ControlsOf(dialog)) {
                if (control.id != IDC_ABOUT_ICON) texts.push_back({control.id, control.text});
            }
        }
        for (const auto& menu : AllMenus()) texts.insert(texts.end(), menu.begin(), menu.end());
        return texts;
    }

    CDialog m_owner{IDD_MANAGE_PRESETS};
};

INSTANTIATE_TEST_SUITE_P(Nine, Languages, testing::ValuesIn(kLanguages),
                         [](const auto& test) { return std::string(test.param.name); });

// What a language does not have would be shown in English.
TEST_P(Languages, SayAllThatEnglishSaysInItsForm) {
    const auto english = TextsIn(kEnglish), texts = TextsIn(GetParam());
    ASSERT_EQ(texts.size(), english.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const auto& [id, text] = texts[i];
        const std::wstring& original = english[i].text;
        SCOPED_TRACE(std::to_string(id) + ": " + support::Utf8(text));
        EXPECT_EQ(id, english[i].owner);
        EXPECT_EQ(FormOf(text), FormOf(original));
        EXPECT_TRUE(text == original || text.find(L"  ") == std::wstring::npos) << "two blanks in a row";
        EXPECT_TRUE(GetParam().id == kEnglish.id || text != original ||
                    kAlike.find(L"|" + text + L"|") != std::wstring::npos)
            << "it is missing";
        const auto marks = std::ranges::count(text, L'&');
        EXPECT_TRUE(marks == 0 ? MnemonicOf(original) == L'\0'
                               : marks == 1 && ::IsCharAlphaNumericW(MnemonicOf(text)))
            << "a & too many or lost";
        // A script without letters to underline names the key in brackets.
        EXPECT_TRUE(std::wstring_view(GetParam().dialogFont) == kEnglish.dialogFont ||
                    MnemonicOf(text) == 0 || text.find(L"(&") != std::wstring::npos);
    }
    EXPECT_EQ(LoadText(IDS_PRESET_EXTENSION), L"spp");
    EXPECT_EQ(LoadText(IDS_LAYOUT_EXTENSION), L"pgl");
    EXPECT_TRUE(LoadText(IDS_PRESET_FILTER).ends_with(L" (*.spp)"));
    EXPECT_TRUE(LoadText(IDS_LAYOUT_FILTER).ends_with(L" (*.pgl)"));
}

TEST_P(Languages, NoLetterWorksTwo) {
    for (const CDialog& dialog : DialogsOf(m_owner)) {
        std::vector<Caption> captions;
        for (const DialogControl& control : ShownIn(dialog))
            captions.push_back({control.number, control.text});
        EXPECT_EQ(SharedMnemonics(captions), "") << support::Utf8(dialog.Text());
    }
    for (const auto& menu : AllMenus()) EXPECT_EQ(SharedMnemonics(menu), "");
    std::vector<Caption> systemMenu = {{1, LoadText(IDS_ABOUT_COMMAND)},
                                       {2, LoadText(IDS_ENABLE_FLOATING)},
                                       {2, LoadText(IDS_DISABLE_FLOATING)},
                                       {3, LoadText(IDS_RUN_ELEVATED)}};
    for (const wchar_t letter : GetParam().systemMenuLetters) systemMenu.push_back({0, {L'&', letter}});
    EXPECT_EQ(SharedMnemonics(systemMenu), "");
}

// A scale of 125, 150 or 200 % is a larger font; rounding lets text and control grow apart.
TEST_P(Languages, EveryTextIsShownInWhole) {
    const std::list<CDialog> dialogs = DialogsOf(m_owner);
    for (const std::wstring& face : std::set<std::wstring>{kEnglish.dialogFont, GetParam().dialogFont}) {
        for (const int points : {8, 10, 12, 16}) {
            const CDialogFont font(face, points);
            for (const CDialog& dialog : dialogs) {
                for (const DialogControl& control : ShownIn(dialog))
                    EXPECT_FALSE(font.CutsOff(control)) << support::Utf8(control.text) << ", " << points
                                                        << " points, " << support::Utf8(face);
            }
        }
    }
}

TEST_P(Languages, APromptShowsItsLabelInWholeAndStaysOnTheScreen) {
    std::wstring longest(519, L'W');  // of the names that are read back
    for (const int label : {IDS_FRIENDLY_NAME_PROMPT, IDS_RENAME_PRESET_PROMPT, IDS_FOLDER_NAME_PROMPT}) {
        CSinglePropDlg prompt(IDS_TITLE, static_cast<UINT>(label), longest);
        ASSERT_TRUE(prompt.CreateModeless(m_owner.Handle()));
        EXPECT_EQ(PlacementFaults(prompt, ControlsOf(prompt)), "");
        EXPECT_LE(prompt.WindowRect().Width(), ::GetSystemMetrics(SM_CXSCREEN));
        const CWindow control = prompt.Item(IDC_PROMPT_LABEL);
        const CClientDC dc(control);
        const CSelectedObject font(dc.Get(), control.Font());
        EXPECT_GT(control.ClientRect().Width(), TextExtent(dc.Get(), control.Text()).width) << label;
    }
}

// All languages have the same controls in the same places.
class ControlPlaces : public support::MainDialog {};

TEST_F(ControlPlaces, NoneIsInAnothersWay) {
    support::CreateKey(HKEY_LOCAL_MACHINE,
                       L"Software\\Corvane Music Software\\Corvane VST Adapter\\Inventory");
    Open();
    ASSERT_EQ(Rows(IDC_CATEGORIES).size(), kCategories.size());
    for (const std::wstring& category : Rows(IDC_CATEGORIES)) {
        Choose(category.c_str());
        EXPECT_EQ(PlacementFaults(*m_dialog, ControlsOf(*m_dialog)), "") << support::Utf8(category);
    }
    for (const CDialog& dialog : DialogsOf(*m_dialog))
        EXPECT_EQ(PlacementFaults(dialog, ControlsOf(dialog)), "") << support::Utf8(dialog.Text());
}

}  // namespace
