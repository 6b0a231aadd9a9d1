// The properties of items of a layout, and what OK does with them.
#include "layouts/LayoutTreeDialog.h"

namespace {

using support::IdText;
using Texts = std::vector<std::wstring>;

class TreeItemProp : public support::LayoutTreeDialog {
  protected:
    void SetUp() override {
        support::AddVst(1, L"Echo");
        for (const wchar_t* preset : {L"Hall", L"Room"}) StorePreset(IdText(1), preset);
        StorePreset(IdText(2), L"<None>");
        StorePreset(ClsidText({}), L"Nobody's");
        Open();
    }
    static void StorePreset(const std::wstring& id, const wchar_t* name) {
        support::SetRaw(HKEY_CURRENT_USER, L"SOFTWARE\\Corvane Music Software\\ActiveMovie\\Presets\\" + id,
                        name, REG_BINARY, {1});
    }
    /// An item of that plug-in in a layout, before a change.
    HTREEITEM AddPlugin(const std::wstring& clsid, const std::wstring& preset = L"") {
        Build(L"*a");
        Layout().Change(Node(L"a"), [&](LayoutItem& plugin) {
            plugin.clsid = ParseClsid(clsid).value_or(Guid{});
            plugin.category = static_cast<int>(Category::VstEffects);
            plugin.defaultPreset = preset;
            plugin.originalName = L"Old";
        });
        Layout().SetModified(false);
        return Node(L"a");
    }
    /// Opens the properties of the caret item, and ends them.
    void Work(const wchar_t* title, const std::function<void(HWND dialog)>& work, int button = IDOK) {
        m_popups.Expect(title, [&work, button](HWND dialog) {
            work(dialog);
            ::PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
        });
        Type(VK_RETURN, VK_MENU);
    }
};

TEST_F(TreeItemProp, OpenByADoubleClickOnAPluginAndByAltEnter) {
    struct Case {
        const wchar_t* item;
        LONG from;  // the middle of the label
        const wchar_t* title;
        const wchar_t* after;
    };
    for (const Case& c : {
             Case{L"abc", 0, L"Item Properties", L"*abc,F(b),-"},
             Case{L"abc", -20, L"Item Properties", L"*abc,F(b),-"},  // its icon
             Case{L"abc", 60, nullptr, L"*abc,F(b),-"},
             Case{L"F", 0, nullptr, L"*abc,F[b],-"},
             Case{kSeparatorText, 0, nullptr, L"*abc,F(b),-"},
         }) {
        Build(L"*abc,F(b),-");
        if (c.title) m_popups.Expect(c.title, IDCANCEL);
        const POINT label = PlaceOf(c.item);
        const POINT place{label.x + c.from, label.y};
        PutUnderPointer(place);
        PostMouse(WM_LBUTTONDBLCLK, place, MK_LBUTTON);
        Pump();
        EXPECT_EQ(Shape(), c.after);
        m_popups.ExpectNoMore();
    }
    for (const wchar_t* text : {L"*a", L"*F()", L"*-"}) {
        Build(text);
        Type(VK_RETURN);
        if (text[1] != L'-') m_popups.Expect(text[1] == L'a' ? L"Item Properties" : L"Folder Name", IDCANCEL);
        Type(VK_RETURN, VK_MENU);
        m_popups.ExpectNoMore();
    }
}

TEST_F(TreeItemProp, ShowWhatIsKnownOfThePlugin) {
    Texts shown;
    const auto look = [&shown](HWND dialog) {
        shown.clear();
        for (const int id : {IDC_PROP_NAME, IDC_PROP_ID_LABEL, IDC_PROP_ID, IDC_PROP_FILE, IDC_PROP_CATEGORY,
                             IDC_PROP_FRIENDLY_NAME})
            shown.push_back(support::TextOf(::GetDlgItem(dialog, id)));
    };
    Choose(support::kVstEffects);
    SelectPlugins({L"Echo"});
    Press(IDC_ADD_PLUGIN);
    Work(L"Item Properties", look);
    EXPECT_EQ(shown, (Texts{L"Echo", L"Vendor:", L"Tarnwick", L"C:\\windows\\regedit.exe",
                            support::kVstEffects, L"Echo"}));
    const HTREEITEM item = AddPlugin(IdText(1));
    Work(L"Item Properties", look, IDCANCEL);
    EXPECT_EQ(shown, (Texts{L"a", L"CLSID:", IdText(1), L"C:\\windows\\regedit.exe", support::kVstEffects,
                            L"Echo"}));
    EXPECT_EQ(Layout().Find(item)->originalName, L"Echo") << "it is brought up to date";
    EXPECT_FALSE(Layout().IsModified()) << "though it was only looked at";
}

TEST_F(TreeItemProp, PresetsAreThoseOfTheClassIdAndNoneIsAChoice) {
    struct Case {
        std::wstring clsid;
        std::wstring preset;
        const wchar_t* offered;
        int chosen;
        std::wstring given;
    };
    for (const Case& c : {
             Case{IdText(1), L"room", L"<None>,Hall,*Room", -1, L"room"},
             Case{IdText(101), L"room", L"<None>,Hall,*Room", -1, L"room"},  // its other id
             Case{IdText(1), L"", L"*<None>,Hall,Room", -1, L""},
             Case{IdText(1), L"Away", L"<None>,Hall,Room,*Away", -1, L"Away"},  // of another computer
             Case{IdText(1), L"Hall", L"<None>,*Hall,Room", 0, L""},
             Case{IdText(1), L"Hall", L"<None>,*Hall,Room", 2, L"Room"},
             Case{IdText(2), L"<None>", L"<None>,*<None>", -1, L"<None>"},
             Case{IdText(2), L"", L"*<None>,<None>", 1, L"<None>"},
             Case{L"", L"", L"*<None>,Nobody's", -1, L""},
         }) {
        SCOPED_TRACE(support::Utf8(c.clsid + L" " + c.preset));
        const HTREEITEM item = AddPlugin(c.clsid, c.preset);
        Work(L"Item Properties", [&](HWND dialog) {
            const HWND list = ::GetDlgItem(dialog, IDC_PROP_PRESET);
            Texts rows = support::Rows(list);
            for (const int row : support::SelectedRows(list))
                rows[static_cast<std::size_t>(row)].insert(0, L"*");
            std::wstring offered;
            for (const std::wstring& row : rows) offered += (offered.empty() ? L"" : L",") + row;
            EXPECT_EQ(offered, c.offered);
            if (c.chosen >= 0) support::SelectRows(list, {c.chosen});
        });
        EXPECT_EQ(Layout().Find(item)->defaultPreset, c.given);
        EXPECT_EQ(Layout().IsModified(), c.given != c.preset);
    }
}

TEST_F(TreeItemProp, RenameButToNothingOnlyWithAnotherPreset) {
    struct Case {
        const wchar_t* name;
        int preset;
        const wchar_t* after;
    };
    for (const Case& c : {Case{L"b", 0, L"*b"}, Case{L"", 0, L"*a"}, Case{L"", 1, L"*"}}) {
        AddPlugin(IdText(1));
        Work(L"Item Properties", [&](HWND dialog) {
            support::EnterText(::GetDlgItem(dialog, IDC_PROP_NAME), c.name);
            support::SelectRows(::GetDlgItem(dialog, IDC_PROP_PRESET), {c.preset});
        });
        EXPECT_EQ(Shape(), c.after);
        EXPECT_EQ(Layout().IsModified(), Shape() != L"*a");
    }
    for (const wchar_t* name : {L"G", L"F", L""}) {
        Build(L"*F(a)");
        Work(L"Folder Properties",
             [&](HWND dialog) { support::EnterText(::GetDlgItem(dialog, IDC_PROMPT_VALUE), name); });
        EXPECT_EQ(Shape(), *name == L'G' ? L"*G(a)" : L"*F(a)");
        EXPECT_EQ(Layout().IsModified(), *name == L'G');
    }
}

}  // namespace
