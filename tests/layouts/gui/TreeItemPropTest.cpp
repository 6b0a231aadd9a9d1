// The properties of items of a layout: when they open, what they show, and what OK does with them.
#include "layouts/LayoutTreeDialog.h"

namespace {

using support::IdText;
using support::TextOf;
using Texts = std::vector<std::wstring>;

class TreeItemProp : public support::LayoutTreeDialog {
  protected:
    void SetUp() override {
        support::AddVst(1, L"Echo");
        for (const auto& [id, name] : Table<std::wstring, Line>{{IdText(1), L"Hall"},
                                                                {IdText(1), L"Room"},
                                                                {IdText(2), L"<None>"},
                                                                {ClsidText({}), L"Nobody's"}})
            support::AddPreset(id, name);
        Open();
    }
    /// The plug-in "a" of a layout as a file gives it, before a change.
    void BuildPlugin(const std::wstring& clsid, const std::wstring& preset = L"", Line tree = L"*a") {
        Build(tree);
        Layout().Change(Node(L"a"), [&](LayoutItem& plugin) {
            plugin.clsid = ParseClsid(clsid).value_or(Guid{});
            plugin.category = static_cast<int>(Category::VstEffects);
            plugin.defaultPreset = preset;
        });
        Layout().SetModified(false);
    }
    const LayoutItem& Plugin() { return *Layout().Find(Node(L"a")); }
    /// Opens the properties of the caret item by the keyboard, and ends them.
    void Work(const std::function<void(HWND dialog)>& work, int button = IDOK) {
        m_popups.Expect(L"Properties", [&work, button](HWND dialog) {
            work(dialog);
            ::PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
        });
        Type(VK_RETURN, VK_MENU);
    }
};

TEST_F(TreeItemProp, OpenByADoubleClickOnAPluginOrASeparatorsNever) {
    for (const auto& [item, from, opens, after] : Table<Line, LONG, bool, Line>{
             {L"abc", 0, true, L"*abc,F(b),-"},
             {L"abc", -20, true, L"*abc,F(b),-"},  // its icon
             {L"abc", 60, false, L"*abc,F(b),-"},
             {L"F", 0, false, L"*abc,F[b],-"},
             {kSeparatorText, 0, false, L"*abc,F(b),-"},
         }) {
        Build(L"*abc,F(b),-");
        if (opens) m_popups.Expect(L"Item Properties", IDCANCEL);
        const POINT label = PlaceOf(item);
        PutUnderPointer({label.x + from, label.y});
        PostMouse(WM_LBUTTONDBLCLK, {label.x + from, label.y}, MK_LBUTTON);
        Pump();
        EXPECT_EQ(Shape(), after);
        m_popups.ExpectNoMore();
    }
    Type(VK_RETURN);
    Tree().SelectOnly(Node(kSeparatorText));
    Type(VK_RETURN, VK_MENU);
}

TEST_F(TreeItemProp, ShowWhatIsKnownOfThePlugin) {
    Texts shown;
    const auto look = [&shown](HWND dialog) {
        shown.clear();
        for (const int id : {IDC_PROP_NAME, IDC_PROP_ID_LABEL, IDC_PROP_ID, IDC_PROP_FILE, IDC_PROP_CATEGORY,
                             IDC_PROP_FRIENDLY_NAME})
            shown.push_back(TextOf(::GetDlgItem(dialog, id)));
    };
    Choose(support::kVstEffects);
    SelectPlugins({L"Echo"});
    Press(IDC_ADD_PLUGIN);
    Work(look);
    EXPECT_EQ(shown,
              (Texts{L"Echo", L"Vendor:", L"Tarnwick", support::kSomeFile, support::kVstEffects, L"Echo"}));
    BuildPlugin(IdText(1));
    Work(look, IDCANCEL);
    EXPECT_EQ(shown, (Texts{L"a", L"CLSID:", IdText(1), support::kSomeFile, support::kVstEffects, L"Echo"}));
    EXPECT_EQ(Plugin().originalName, L"Echo") << "it is brought up to date";
    EXPECT_FALSE(Layout().IsModified()) << "though it was only looked at";
}

TEST_F(TreeItemProp, PresetsAreThoseOfTheClassIdAndNoneIsAChoice) {
    using Text = std::wstring;
    for (const auto& [clsid, preset, offered, chosen, given] : Table<Text, Text, Line, int, Text>{
             {IdText(1), L"room", L"<None>,Hall,Room,=Room", -1, L"room"},
             {IdText(101), L"room", L"<None>,Hall,Room,=Room", -1, L"room"},  // its other id
             {IdText(1), L"", L"<None>,Hall,Room,=<None>", -1, L""},
             {IdText(1), L"Away", L"<None>,Hall,Room,Away,=Away", -1, L"Away"},  // of another computer
             {IdText(1), L"Hall", L"<None>,Hall,Room,=Hall", 0, L""},
             {IdText(1), L"Hall", L"<None>,Hall,Room,=Hall", 2, L"Room"},
             {IdText(2), L"<None>", L"<None>,<None>,=<None>", -1, L"<None>"},
             {IdText(2), L"", L"<None>,<None>,=<None>", 1, L"<None>"},
             {L"", L"", L"<None>,Nobody's,=<None>", -1, L""},
         }) {
        BuildPlugin(clsid, preset);
        Work([expected = offered, row = chosen](HWND dialog) {
            const HWND list = ::GetDlgItem(dialog, IDC_PROP_PRESET);
            Text text;
            for (const Text& each : support::Rows(list)) text += each + L",";
            EXPECT_EQ(text + L"=" + TextOf(list), expected);
            if (row >= 0) support::SelectRows(list, {row});
        });
        EXPECT_EQ(Plugin().defaultPreset, given) << support::Utf8(clsid) << " " << support::Utf8(preset);
        EXPECT_EQ(Layout().IsModified(), given != preset);
        Type('Z', VK_CONTROL);
        EXPECT_EQ(Plugin().defaultPreset, preset);
    }
}

TEST_F(TreeItemProp, OkRenamesButToNothingOnlyAlongWithAnotherPreset) {
    for (const auto& [before, name, preset, after] : Table<Line, Line, int, Line>{
             {L"*a", L"b", 0, L"*b"},
             {L"*a", L"", 0, L"*a"},
             {L"*a", L"", 1, L"*"},
             {L"*F(a)", L"G", 0, L"*G(a)"},
             {L"*F(a)", L"", 0, L"*F(a)"},
             {L"*F(a)", L"F", 0, L"*F(a)"},
         }) {
        BuildPlugin(IdText(1), L"", before);
        Work([text = name, row = preset](HWND dialog) {
            const HWND list = ::GetDlgItem(dialog, IDC_PROP_PRESET);
            if (list) support::SelectRows(list, {row});
            support::EnterText(::GetDlgItem(dialog, list ? IDC_PROP_NAME : IDC_PROMPT_VALUE), text);
        });
        EXPECT_EQ(Shape(), after);
        EXPECT_EQ(Layout().IsModified(), Shape() != before);
    }
}

}  // namespace
