// The texts of all languages, and the dialogs that they have to fit in.
#include <list>
#include <set>

#include "DialogFit.h"
#include "PluginCategory.h"
#include "Resources.h"
#include "TextFormat.h"
#include "TextRules.h"
#include "support/MainDialog.h"

namespace {

using namespace res_test;

constexpr const wchar_t* kDialogFace = L"MS Shell Dlg";

struct Language {
    const char* name;
    LANGID id;
    /// The letters that the system's own commands take in the system menu of this language.
    std::wstring_view systemMenuLetters;
    /// The face of a dialog on a system of this language, where it is not that of English.
    const wchar_t* dialogFace = kDialogFace;
};
void PrintTo(const Language& language, std::ostream* out) { *out << language.name; }

constexpr Language kLanguages[] = {
    {"English", 1033, L"RMSNXC"},
    {"German", 1031, L"WVGÄNXSC"},
    {"French", 1036, L"RDTUNAF"},
    {"Italian", 1040, L"RSDUNIC"},
    {"Japanese", 1041, L"RMSNXC", L"MS UI Gothic"},
    {"Portuguese", 1046, L"RMTNXF"},
    {"Russian", 1049, L"ВПРСЗ"},
    {"Chinese", 2052, L"RMSNXC", L"SimSun"},
    {"Spanish", 3082, L"RMTNXC"},
};
constexpr const Language& kEnglish = kLanguages[0];

/// Texts that are the same in some other language.
constexpr std::wstring_view kAlike =
    L"||spp|pgl|OK|CLSID:|CLSID: |VST ID: |&Options|&Wizard...|"
    L"Corvane Plug-in Manager|Corvane Plug-in &Manager|";

/// Texts that the program gives to controls at run time.
constexpr std::pair<int, UINT> kLaterTexts[] = {
    {IDC_EXCLUDE, IDS_EXCLUDE_PLUGIN},      {IDC_EXCLUDE, IDS_ENABLE_PLUGIN},
    {IDC_CLSID_LABEL, IDS_CLSID_LABEL},     {IDC_CLSID_LABEL, IDS_VENDOR_LABEL},
    {IDC_FILENAME, IDS_NO_PLUGIN_SELECTED}, {IDC_FILENAME, IDS_MULTIPLE_PLUGINS_SELECTED},
    {IDC_PLUGINS, IDS_NO_ENTRIES},          {IDC_PROP_ID_LABEL, IDS_CLSID_LABEL},
    {IDC_PROP_ID_LABEL, IDS_VENDOR_LABEL},
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
        for (const auto& [id, text] : kLaterTexts) {
            if (id == control.id) add(LoadText(text));
        }
        for (const auto& [id, count] : kCounts) {
            if (id == control.id) add(FormatText(L"%s (%d %s)", control.text, count, LoadText(IDS_FOUND)));
        }
        for (const PluginCategory& category : kCategories) {
            if (control.id == IDC_CATEGORIES) add(LoadText(category.captionId));
        }
        if (control.id == IDC_VST_GROUP || control.id == IDC_ADAPTER_GROUP)
            add(FormatText(LoadText(IDS_TOOL_RUNNING), control.text));
    }
    return shown;
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

/// What a context menu shows, by command.
std::vector<Caption> CommandsOf(UINT menuId) {
    const UniqueMenu menu = LoadMenuResource(menuId);
    const HMENU shown = ::GetSubMenu(menu.Get(), 0);
    std::vector<Caption> commands;
    for (int i = 0; i < ::GetMenuItemCount(shown); ++i) {
        wchar_t text[128] = {};
        ::GetMenuStringW(shown, static_cast<UINT>(i), text, 128, MF_BYPOSITION);
        commands.push_back({static_cast<int>(::GetMenuItemID(shown, i)), text});
    }
    return commands;
}

class Languages : public testing::TestWithParam<Language> {
  protected:
    void SetUp() override {
        EXPECT_TRUE(m_owner.CreateModeless(nullptr));
        SetResourceLanguage(GetParam().id);
    }
    void TearDown() override { SetResourceLanguage(kEnglish.id); }
    std::list<CDialog> Dialogs() const { return DialogsOf(m_owner); }
    /// All texts of a language, in the order of their ids.
    std::vector<Caption> TextsIn(const Language& language) const {
        SetResourceLanguage(language.id);
        std::vector<Caption> texts;
        for (UINT id = 1; id < kIds; ++id) texts.push_back({static_cast<int>(id), LoadText(id)});
        for (const CDialog& dialog : Dialogs()) {
            texts.push_back({0, dialog.Text()});
            for (const DialogControl& control : ControlsOf(dialog)) {
                if (control.id != IDC_ABOUT_ICON) texts.push_back({control.id, control.text});
            }
        }
        for (const UINT menu : ResourceIds(RT_MENU))
            std::ranges::move(CommandsOf(menu), std::back_inserter(texts));
        return texts;
    }

  private:
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
        EXPECT_EQ(id, english[i].owner);
        EXPECT_EQ(TextFaults(english[i].text, text), "") << id;
        EXPECT_TRUE(GetParam().id == kEnglish.id || text != english[i].text ||
                    kAlike.find(L"|" + text + L"|") != std::wstring::npos)
            << id << " is missing: " << support::Utf8(text);
        // A script without letters to underline names the key in brackets.
        EXPECT_TRUE(GetParam().dialogFace == kDialogFace || MnemonicOf(text) == 0 ||
                    text.find(L"(&") != std::wstring::npos)
            << support::Utf8(text);
    }
    EXPECT_EQ(LoadText(IDS_PRESET_EXTENSION), L"spp");
    EXPECT_EQ(LoadText(IDS_LAYOUT_EXTENSION), L"pgl");
    EXPECT_TRUE(LoadText(IDS_PRESET_FILTER).ends_with(L" (*.spp)"));
    EXPECT_TRUE(LoadText(IDS_LAYOUT_FILTER).ends_with(L" (*.pgl)"));
}

TEST_P(Languages, NoLetterWorksTwo) {
    for (const CDialog& dialog : Dialogs()) {
        std::vector<Caption> captions;
        for (const DialogControl& control : ShownIn(dialog))
            captions.push_back({control.number, control.text});
        EXPECT_EQ(SharedMnemonics(captions), "") << support::Utf8(dialog.Text());
    }
    for (const UINT menu : ResourceIds(RT_MENU)) EXPECT_EQ(SharedMnemonics(CommandsOf(menu)), "") << menu;
    std::vector<Caption> systemMenu = {{1, LoadText(IDS_ABOUT_COMMAND)},
                                       {2, LoadText(IDS_ENABLE_FLOATING)},
                                       {2, LoadText(IDS_DISABLE_FLOATING)}};
    for (const wchar_t letter : GetParam().systemMenuLetters) systemMenu.push_back({0, {L'&', letter}});
    EXPECT_EQ(SharedMnemonics(systemMenu), "");
}

// A scale of 125, 150 or 200 % is a larger font; rounding lets text and control grow apart.
TEST_P(Languages, EveryTextIsShownInWhole) {
    const std::list<CDialog> dialogs = Dialogs();
    for (const std::wstring& face : std::set<std::wstring>{kDialogFace, GetParam().dialogFace}) {
        for (const int points : {8, 10, 12, 16}) {
            const CDialogFont font(face, points);
            for (const CDialog& dialog : dialogs) {
                for (const DialogControl& control : ShownIn(dialog))
                    EXPECT_EQ(font.CutOff(control), "") << points << " points, " << support::Utf8(face);
            }
        }
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

// The rules themselves, on faults planted here.

TEST(LanguageRules, FindATextThatLostItsForm) {
    EXPECT_EQ(TextFaults(L"%s has %d.\n", L"%s hat %d.\n") + TextFaults(L"&Name: ", L"名前(&N): "), "");
    for (const wchar_t* text :
         {L"%d hat %s.\n", L"%s hat.\n", L"%s hat %d.", L" %s hat %d.\n", L"%s  hat %d.\n", L"%s hat %d.\n "})
        EXPECT_NE(TextFaults(L"%s has %d.\n", text), "") << support::Utf8(text);
    for (const wchar_t* text : {L"&Na&me: ", L"Na& me: ", L"&Name:", L"Name: "})
        EXPECT_NE(TextFaults(L"&Name: ", text), "") << support::Utf8(text);
}

TEST(LanguageRules, FindALetterThatWorksTwo) {
    EXPECT_EQ(SharedMnemonics({{1, L"Exc&lude"}, {1, L"Enab&le"}, {2, L"E&xport"}, {3, L"None"}, {4, L""}}),
              "");
    EXPECT_NE(SharedMnemonics({{1, L"Пр&авка"}, {2, L"&Аудио"}}), "");
}

TEST_F(ControlPlaces, FindATextThatIsCutOffAndAControlInAnothersWay) {
    Open();
    const CDialogFont font(kDialogFace,
                           ::MulDiv(8, static_cast<int>(::GetDpiForWindow(m_dialog->Handle())), 96));
    EXPECT_EQ(font.Units(), UnitsOf(*m_dialog)) << "as the system has measured it";
    for (const int id : {IDC_EXCLUDE, IDC_SHOW_ENABLED, IDC_SHOW_PERMANENT, IDC_VST_GROUP, IDC_FILENAME,
                         IDC_PLUGINS, IDC_PLUGINS_LABEL}) {
        auto controls = ControlsOf(*m_dialog);
        DialogControl& control = *std::ranges::find(controls, id, &DialogControl::id);
        control.text = L"MMM";
        EXPECT_EQ(font.CutOff(control), "");
        control.place.bottom = control.place.top + 5;
        EXPECT_NE(font.CutOff(control), "") << id << " is too low";
        control.place.bottom += 20;
        control.text.append(100, L'M');
        EXPECT_NE(font.CutOff(control), "") << id << " is too narrow";
    }
    const auto isFoundAt = [this](int id, int x, int y) {
        auto controls = ControlsOf(*m_dialog);
        Rect& place = std::ranges::find(controls, id, &DialogControl::id)->place;
        place = {place.left + x, place.top + y, place.right + x, place.bottom + y};
        return !PlacementFaults(*m_dialog, controls).empty();
    };
    EXPECT_FALSE(isFoundAt(IDC_EXCLUDE, 0, 1));
    EXPECT_TRUE(isFoundAt(IDC_EXCLUDE, 0, -12)) << "over its group's caption";
    EXPECT_TRUE(isFoundAt(IDC_EXCLUDE, -10, 0)) << "over its group's frame";
    EXPECT_TRUE(isFoundAt(IDC_PLUGINS, -10, 0)) << "over another list";
    EXPECT_TRUE(isFoundAt(IDC_CLOSE, 10, 0)) << "out of the dialog";
}

}  // namespace
