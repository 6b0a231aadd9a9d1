// A user who does anything to the main dialog at random.
#pragma once

#include <commctrl.h>

#include <cstdio>
#include <map>
#include <random>
#include <unordered_set>

#include "Backups.h"
#include "CorvaneKeys.h"
#include "FileStream.h"
#include "Resources.h"
#include "layouts/LayoutTreeDialog.h"
#include "presets/PresetReading.h"
#include "support/SandboxImporter.h"
#include "support/StandInHost.h"

namespace support {

/// Each step has random numbers of its own, made of the seed and its number, so that a walk is the same again
/// whatever steps are left out. All that is done is told on the output.
class RandomUser : public LayoutTreeDialog {
  protected:
    /// A studio with plug-ins of every category, with presets, layouts, sets, and files that are none.
    void SetUp() override {
        s_user = this;
        m_popups.AnswerAll([this](HWND dialog) { Answer(dialog); });
        m_menuTimer = ::SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &OnMenu);
        std::filesystem::current_path(m_files.Folder().parent_path());
        ::SetEnvironmentVariableW(L"CorvaneAppDataRoot", m_data.c_str());
        SetText(HKEY_CURRENT_USER, L"Software\\Wine\\Drivers", L"Audio", L"");  // else beeps look for one
        InstallPlugins();
        WriteFiles();
    }
    void TearDown() override {
        ::KillTimer(nullptr, m_menuTimer);
        LayoutTreeDialog::TearDown();
        s_user = nullptr;
    }

    void Step(unsigned seed, int number) {
        using User = RandomUser;
        struct Action {
            int weight;
            bool edits;  // the layout, in one step at most
            const char* name;
            void (*run)(User& user);
        };
        static constexpr Action kActions[] = {
            {40, true, "work a control", [](User& user) { user.WorkAny(); }},
            {50, true, "click in the tree", [](User& user) { user.ClickIn(user.Window()); }},
            {50, true, "key in the tree", [](User& user) { user.PressAny(IDC_LAYOUT_TREE); }},
            {24, true, "edit a label", [](User& user) { user.EditLabel(); }},
            {30, true, "drag", [](User& user) { user.Drag(); }},
            {40, true, "command", [](User& user) { user.ChooseCommand(); }},
            {8, false, "undo and redo", [](User& user) { user.TravelSteps(); }},
            {8, false, "save", [](User& user) { user.Save(); }},
            {8, false, "choose a category", [](User& user) { user.Work(user.Control(IDC_CATEGORIES)); }},
            {14, false, "select plug-ins", [](User& user) { user.Work(user.Control(IDC_PLUGINS)); }},
            {6, false, "click in the list", [](User& user) { user.ClickIn(user.Control(IDC_PLUGINS)); }},
            {16, false, "key in the list", [](User& user) { user.PressAny(IDC_PLUGINS); }},
            {8, false, "words to find", [](User& user) { user.Work(user.Control(IDC_FIND)); }},
            {8, false, "key in the words", [](User& user) { user.PressAny(IDC_FIND); }},
            {4, false, "key in the layouts", [](User& user) { user.PressAny(IDC_LAYOUTS); }},
            {12, false, "any key", [](User& user) { user.PressAny(0); }},
            {3, false, "drop files", [](User& user) { user.DropFiles(); }},
            {3, false, "resize", [](User& user) { user.Resize(); }},
            {1, false, "other scale", [](User& user) { user.Rescale(); }},
            {1, false, "other colours", [](User& user) { user.m_dialog->Send(WM_SYSCOLORCHANGE); }},
            {1, false, "a minute passes", [](User& user) { user.m_dialog->Send(WM_TIMER, 2); }},
            {2, false, "system menu", [](User& user) { user.ChooseSystemCommand(); }},
            {1, false, "the session ends", [](User& user) { user.EndSession(); }},
            {1, false, "crash", [](User& user) { user.m_dialog.reset(); }},
            {1, false, "the host closes", [](User& user) { user.CloseHost(); }},
        };
        std::seed_seq sequence{seed, static_cast<unsigned>(number)};
        m_random.seed(sequence);
        if (!IsOpen()) Start();
        int all = 0;
        for (const Action& action : kActions) all += action.weight;
        const Action* action = kActions;
        for (int left = Below(all); left >= action->weight; ++action) left -= action->weight;
        std::printf("%d %s, focus %d\n", number, action->name, ::GetDlgCtrlID(::GetFocus()));
        std::fflush(stdout);
        const bool edits = action->edits && !View().IsEditingLabel() && !::GetCapture();
        const std::wstring before = Items();
        action->run(*this);
        if (!IsOpen()) return;
        Pump();
        if (edits && IsOpen() && OneIn(3)) ExpectOneStep(before);
        if (IsOpen() && Tree().SendInt(TVM_GETCOUNT) > kMostItems) View().Run(ID_CLEAR_LAYOUT, nullptr);
    }

    /// The layout without what is open and selected, a line for each item, as far in as it is deep.
    static std::wstring LineOf(const LayoutItem& record, std::size_t depth) {
        return std::wstring(depth, L' ') + record.name + L'|' + record.defaultPreset + L'\n';
    }
    std::wstring Items() {
        std::wstring items;
        for (HTREEITEM item = Tree().Root(); item; item = Tree().NextInOrder(item)) {
            std::size_t depth = 0;
            for (HTREEITEM parent = Tree().Parent(item); parent; parent = Tree().Parent(parent)) ++depth;
            if (const LayoutItem* record = Layout().Find(item)) items += LineOf(*record, depth);
        }
        return items;
    }

    static constexpr const wchar_t* kExtensions[] = {L".pgl", L".spp", L".pgset"};
    std::optional<StandInHost> m_host;
    std::unordered_set<LayoutItemId> m_ids;  // of the step before
    std::map<int, std::wstring> m_captions;  // without counts, as they were seen first

  private:
    static constexpr int kMostItems = 120;  // more only take time
    static constexpr WORD kKeys[] = {VK_UP,       VK_DOWN,     VK_DOWN,   VK_LEFT, VK_RIGHT,  VK_HOME,
                                     VK_END,      VK_NEXT,     VK_DELETE, VK_F2,   VK_F3,     VK_F4,
                                     VK_MULTIPLY, VK_SUBTRACT, VK_SPACE,  VK_TAB,  VK_RETURN, VK_ESCAPE,
                                     VK_APPS,     VK_MENU,     'B'};
    static constexpr WORD kWithShift[] = {VK_UP, VK_DOWN, VK_END, VK_TAB, VK_F3};
    static constexpr WORD kWithControl[] = {'A', 'C', 'F', 'S', 'V', 'X', 'Y', 'Z'};

    int Below(std::ptrdiff_t limit) {
        return limit <= 0 ? 0 : static_cast<int>(m_random() % static_cast<unsigned>(limit));
    }
    bool OneIn(int chances) { return Below(chances) == 0; }
    template <typename TAll>
    const auto& Any(const TAll& all) {
        return std::data(all)[Below(std::ssize(all))];
    }
    /// To find, and as names.
    std::wstring AnyText() {
        constexpr const wchar_t* kTexts[] = {
            L"",     L" ",       L"h",       L"ha ll", L"olk",    L"regedit", L"{0000",  L"Hall",
            L"hall", L"Ölkanne", L"a & <b>", L"日本",  L"100 %s", L"a.b ",    L"\\ / *", L"a\x1c"};
        return OneIn(16) ? std::wstring(300, L'x') : Any(kTexts);
    }
    /// Without its extension.
    std::wstring AnyFile() {
        // The program waits a moment for those that somebody else has open.
        if (OneIn(20)) return m_files.Path(OneIn(2) ? L"bad" : L"folder\\locked");
        constexpr const wchar_t* kFiles[] = {L"one",  L"two", L"new",         L"new too",
                                             L"gone", L"a?b", L"no folder\\x"};
        return m_files.Path(Any(kFiles));
    }
    POINT AnyPlace(HWND control) {
        const bool isTree = control == Window();
        const LRESULT rows = Send(control, isTree ? TVM_GETCOUNT : LB_GETCOUNT) + 1;
        const LRESULT height = rows * Send(control, isTree ? TVM_GETITEMHEIGHT : LB_GETITEMHEIGHT);
        const Rect client = CWindow(control).ClientRect();
        return {Below(client.Width()), Below(std::min<LRESULT>(height, client.Height()))};
    }

    static void InstallPlugins() {
        unsigned id = 1;
        for (const wchar_t* name : {L"Hall", L"Room", L"Bellows", L"Ölkanne", L"VST Canyon"})
            AddVst(id++, name);
        AddVst(id++, L"Organ").Number(L"isSynth", 1);
        AddVst(id++, L"Gate", true);
        AddVst(id++, L"Hall", true).Number(L"isSynth", 1);
        AddVst(id++, L"Lost").Text(L"FullPath", L"C:\\no such.dll");
        AddFilter(id++, L"Chorus", kSomeFile);
        AddFilter(id++, L"Gone", L"C:\\no such.dll");
        AddFilter(id, L"Old Synth", kSomeFile);
        SetText(HKEY_CLASSES_ROOT, kSoftSynths + IdText(id++), L"Description", L"Old Synth");
        Wrap(id++, L"Wrapped");
        Wrap(id++, L"Wrapped Synth").Number(L"isSynth", 1);
        for (const wchar_t* name : {L"Echo", L"Flanger"}) RegisterAudioDmo(IdText(id++), name);
        AddSurface(id, L"Desk");
        RegisterAudioFilter(L"{52B63860-DC93-11CE-A099-00AA00479A58}", L"Excluded for ever");
        for (const wchar_t* name : {L"a", L"b", L"Large"})
            SetRaw(HKEY_CURRENT_USER, kAudioPresetsKey + (L"\\" + IdText(1)), name, REG_BINARY, {1, 2});
    }
    void WriteFiles() {
        const std::string hall = " CLSID='" + Utf8(IdText(1)) + "' Name='Hall'";
        const std::string two = "<PluginMenuLayout DocSchema='1' Name='Two'><Folder Name='F'><Plugin" + hall +
                                " Category='1'/><Folder Name='G'/></Folder></PluginMenuLayout>";
        m_files.Write(L"one.pgl", "<PluginMenuLayout DocSchema='1' Name='1'><Separator/></PluginMenuLayout>");
        m_files.Write(L"two.pgl", two);
        m_files.Write(L"one.pgset", "<StudioSet Schema='1'><Exclusion" + hall + "/><PluginName" + hall +
                                        "/><Layout File='new.pgl'>" + two + "</Layout></StudioSet>");
        auto presets = CFileSink::Create(m_files.Path(L"one.spp"));
        CPresetFileWriter writer(*presets, kLatin1);
        writer.WriteHeader(1);
        writer.WritePlugin(Id(1), RowOf(Category::VstEffects).guid, 2, L"P");
        writer.WritePreset(kPresetInRegistry, L"a", std::as_bytes(std::span("n", 1)));
        writer.WritePreset(kPresetInFile, L"in a file", std::as_bytes(std::span("n", 1)));
        presets->Flush();
        // What is no layout stays so, and what is locked can't even be read.
        std::filesystem::create_directory(m_files.Path(L"folder"));
        for (const std::wstring extension : kExtensions)
            for (const auto& [name, share] :
                 Table<Line, DWORD>{{L"bad", FILE_SHARE_READ}, {L"folder\\locked", 0}})
                m_held.emplace_back(::CreateFileW(m_files.Write(name + extension, "neither").c_str(),
                                                  GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
    }

    void Start() {
        m_dialog.reset();
        m_host.reset();
        m_ids.clear();
        m_captions.clear();
        constexpr LANGID kLanguages[] = {
#define INTERFACE_LANGUAGE(name, identifier, installer, letters, font) identifier,
#include "Languages.inc"
#undef INTERFACE_LANGUAGE
        };
        const LANGID language = Any(kLanguages);
        SetResourceLanguage(language);
        std::vector<std::wstring> arguments;
        const int place = Below(3);
        if (place > 0) {
            m_host.emplace(OneIn(2) ? StandInHost::Size::Large : StandInHost::Size::Small);
            arguments = {L"/ParentWnd", m_host->HandleText()};
        }
        if (place > 1) arguments.emplace_back(L"/Float");
        if (OneIn(4)) arguments.push_back(AnyFile() + L".pgl");
        Open(arguments);
        m_dialog->Show();
        ::SetForegroundWindow(::GetAncestor(m_dialog->Handle(), GA_ROOT));
    }

    /// What can be worked now, but two buttons that open windows of other programs: the help, and a folder.
    static std::vector<HWND> Controls(HWND dialog) {
        std::vector<HWND> controls;
        const bool opensFolder = TextOf(dialog) == LoadText(IDS_BACKUPS);
        for (HWND child = ::GetWindow(dialog, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
            const int id = ::GetDlgCtrlID(child);
            if (::IsWindowEnabled(child) && ::IsWindowVisible(child) && id != IDC_HELP_BUTTON &&
                !(id == IDC_REVIEW_ACTION && opensFolder))
                controls.push_back(child);
        }
        return controls;
    }
    static bool IsButton(HWND control) {
        return ClassOf(control) == L"Button" &&
               (::GetWindowLongPtrW(control, GWL_STYLE) & BS_TYPEMASK) != BS_GROUPBOX;
    }
    void WorkAny() {
        const HWND control = Any(Controls(m_dialog->Handle()));
        std::printf("   \"%s\"\n", Utf8(TextOf(control)).c_str());
        IsButton(control) ? void(Send(control, BM_CLICK)) : Work(control);
    }
    void Work(HWND control) {
        const std::wstring type = ClassOf(control);
        const LONG_PTR style = ::GetWindowLongPtrW(control, GWL_STYLE);
        const bool isCombo = type == L"ComboBox", isList = isCombo || type == L"ListBox";
        const LRESULT rows = isList ? Send(control, isCombo ? CB_GETCOUNT : LB_GETCOUNT) : 0;
        const bool isField = type == L"Edit" ? (style & ES_READONLY) == 0
                                             : isCombo && (style & CBS_DROPDOWNLIST) == CBS_DROPDOWN;
        if (isField && (rows == 0 || OneIn(2)))
            EnterText(control, AnyText());
        else if (rows > 0)
            SelectRows(control, {Below(rows), Below(rows)});
        else if (type == WC_LISTVIEWW)
            WorkTicks(control);
    }
    /// Sorts by a column, ticks two rows.
    static void WorkTicks(HWND list) {
        const auto header = reinterpret_cast<HWND>(Send(list, LVM_GETHEADER));
        const LPARAM at = MAKELPARAM(s_user->Below(CWindow(header).ClientRect().Width()), 3);
        ::PostMessageW(header, WM_LBUTTONDOWN, 0, at);
        ::PostMessageW(header, WM_LBUTTONUP, 0, at);
        constexpr WORD kTickTwo[] = {VK_END, VK_SPACE, VK_UP, VK_SPACE};
        for (const WORD key : kTickTwo) PostKey(list, key);
    }
    /// A dialog is in front.
    void Answer(HWND dialog) {
        m_looks = dialog == std::exchange(m_inFront, dialog) ? m_looks + 1 : 0;
        // The system's importer would bring other backups into the user's real registry.
        if (TextOf(dialog) == LoadText(IDS_BACKUPS)) {
            CBackups backups(BackupFolder(m_data.wstring()), L"1", &ImportIntoSandbox);
            for (const BackupEntry& backup : backups.List())
                if (backup.record.kind != BackupKind::Layouts) backups.Delete(backup);
        }
        const HWND name = FileNameField(dialog);
        auto controls = Controls(dialog);
        if (name) {
            controls = {InFileDialog(dialog, IDC_DISPLAY_NAME), InFileDialog(dialog, IDC_PRESET_LIST)};
            EnterText(name, AnyFile());
        }
        for (const HWND control : controls)
            if (control && OneIn(2)) Work(control);
        std::erase_if(controls, [](HWND control) { return !IsButton(control); });
        int button = ::GetDlgItem(dialog, IDCANCEL) ? IDCANCEL : IDNO;  // whoever gets nowhere leaves
        if (name && m_looks < 3 && !OneIn(4)) button = IDOK;
        if (!controls.empty() && m_looks < 6) button = ::GetDlgCtrlID(Any(controls));
        std::printf("   button %d in \"%s\"\n", button, Describe(dialog).c_str());
        if (!name && OneIn(8)) return PostKey(::GetFocus(), VK_ESCAPE);
        ::PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button),
                       reinterpret_cast<LPARAM>(::GetDlgItem(dialog, button)));
    }
    /// While a menu is shown, only timers come through.
    static void CALLBACK OnMenu(HWND, UINT, UINT_PTR, DWORD) {
        const HWND menu = ::FindWindowW(L"#32768", nullptr);
        if (!s_user || !menu || !::IsWindowVisible(menu)) return;
        const auto items = reinterpret_cast<HMENU>(Send(menu, MN_GETHMENU));
        // These open a window of another program, or wait for the mouse.
        for (const UINT id : {UINT{ID_FILE_LOCATION}, UINT{SC_SIZE}, UINT{SC_MOVE}})
            ::EnableMenuItem(items, id, MF_BYCOMMAND | MF_GRAYED);
        const HWND dialog = s_user->m_dialog->Handle();
        for (int down = s_user->Below(::GetMenuItemCount(items) + 2); down > 0; --down)
            PostKey(dialog, VK_DOWN);
        PostKey(dialog, VK_RETURN);
        PostKey(dialog, VK_ESCAPE);
    }

    /// In a control, or with 0 where the keyboard is.
    void PressAny(int id) {
        if (id != 0) Item(id).Focus();
        if (id == 0 && Item(IDC_HELP_BUTTON).HasFocus()) Tree().Focus();
        const HWND focus = ::GetFocus();
        const HWND window = focus && ::IsChild(m_dialog->Handle(), focus) ? focus : Window();
        const int held = Below(6);
        const WORD key = held == 0 ? Any(kWithShift) : held == 1 ? Any(kWithControl) : Any(kKeys);
        std::printf("   key %x, %d\n", unsigned{key}, held);
        Key(window, key, held == 0 ? VK_SHIFT : held == 1 ? VK_CONTROL : 0);
    }
    void ClickIn(HWND control) {
        constexpr WPARAM kHeld[] = {0, 0, MK_SHIFT, MK_CONTROL};
        const POINT place = AnyPlace(control);
        if (!OneIn(8)) return Click(control, place, Any(kHeld));
        ::PostMessageW(control, WM_RBUTTONDOWN, 0, MAKELPARAM(place.x, place.y));
        ::PostMessageW(control, WM_RBUTTONUP, 0, MAKELPARAM(place.x, place.y));
    }
    void EditLabel() {
        if (!View().IsEditingLabel()) Type(VK_F2);
        if (!View().IsEditingLabel()) return;
        EnterText(Tree().LabelEdit().Handle(), AnyText());
        if (!OneIn(4)) Key(Tree().LabelEdit().Handle(), OneIn(3) ? VK_ESCAPE : VK_RETURN);
    }
    void Drag() {
        Pull(AnyPlace(Window()), {30, 0});
        LPARAM at = 0;
        for (int moves = 1 + Below(3); moves > 0; --moves) at = DragTo(AnyPlace(Window()));
        const int end = Below(8);
        if (end == 0) return;  // it goes on
        if (end == 1) return Key(Window(), VK_ESCAPE);
        if (end == 2) ::ReleaseCapture();
        m_dialog->Send(end == 3 ? WM_RBUTTONDOWN : WM_LBUTTONUP, 0, at);
    }
    UINT AnyCommand(HMENU menu) {
        const int place = Below(::GetMenuItemCount(menu));
        const HMENU below = ::GetSubMenu(menu, place);
        return below ? AnyCommand(below) : ::GetMenuItemID(menu, place);
    }
    void ChooseCommand() {
        constexpr UINT kMenuOfKind[] = {IDM_LAYOUT_FOLDER, IDM_LAYOUT_PLUGIN, IDM_LAYOUT};
        const HTREEITEM caret = Tree().Caret();
        const LayoutItem* record = caret ? Layout().Find(caret) : nullptr;
        const auto kind = record ? record->kind : LayoutKind::Separator;
        constexpr UINT kMenus[] = {IDM_TASKS, IDM_TASKS, IDM_PLUGINS, 0, 0};  // 0: that of the caret
        const UINT menu = Any(kMenus);
        const UINT id = AnyCommand(LoadMenuResource(menu ? menu : kMenuOfKind[static_cast<int>(kind)]).Get());
        const HWND button = Control(static_cast<int>(id));
        if (id == 0 || id == ID_FILE_LOCATION || (button && !::IsWindowEnabled(button))) return;
        std::printf("   command %u\n", id);
        menu ? void(m_dialog->Send(WM_COMMAND, id)) : View().Run(id, caret ? caret : Tree().Root());
    }
    void Travel(UINT command, const std::wstring& items) {
        m_dialog->Send(WM_COMMAND, command);
        EXPECT_EQ(Items(), items) << "after command " << command;
    }
    /// What is read again, or was not saved, is the same layout.
    void Save() {
        View().EndInput();
        // What can't be saved would end all saving for the rest of the walk.
        while (View().CanUndo() && Items().find(L'\x1c') != std::wstring::npos)
            m_dialog->Send(WM_COMMAND, ID_UNDO);
        if (Text(IDC_LAYOUTS).empty()) EnterText(Control(IDC_LAYOUTS), L"Mine");
        Travel(ID_SAVE_LAYOUT, Items());
    }
    void ExpectOneStep(const std::wstring& before) {
        if (View().IsEditingLabel()) View().EndLabelEdit(true);
        const std::wstring after = Items();
        // What can be done again was no new step.
        if (after == before || !View().CanUndo() || View().CanRedo()) return;
        Travel(ID_UNDO, before);
        Travel(ID_REDO, after);
    }
    void TravelSteps() {
        if (View().IsEditingLabel()) View().EndLabelEdit(true);
        std::vector<std::wstring> states;
        for (int steps = Below(8); steps > 0 && View().CanUndo(); --steps) {
            states.push_back(Items());
            m_dialog->Send(WM_COMMAND, ID_UNDO);
        }
        for (; !states.empty() && !OneIn(8); states.pop_back()) Travel(ID_REDO, states.back());
    }
    void DropFiles() {
        std::vector<std::wstring> files;
        for (int count = 1 + Below(3); count > 0; --count) files.push_back(AnyFile() + Any(kExtensions));
        Drop(files);
    }
    void Resize() {
        ::SetWindowPos(m_dialog->Handle(), nullptr, Below(400), Below(300), 300 + Below(1200),
                       200 + Below(900), SWP_NOZORDER | SWP_NOACTIVATE);
    }
    void Rescale() {
        const UINT dpi = 96 + 24 * static_cast<UINT>(Below(5));
        const RECT place = ToSystem(m_dialog->WindowRect());
        m_dialog->Send(WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
    }
    void ChooseSystemCommand() {
        constexpr UINT kAbout = 0x10, kDock = 0x20, kFloat = 0x30;
        constexpr UINT kCommands[] = {kAbout, kDock, kFloat, SC_MAXIMIZE, SC_MINIMIZE, SC_RESTORE};
        const UINT command = Any(kCommands);
        const HMENU menu = ::GetSystemMenu(m_dialog->Handle(), FALSE);
        if (::GetMenuState(menu, command, MF_BYCOMMAND) != UINT(-1)) m_dialog->Send(WM_SYSCOMMAND, command);
    }
    void EndSession() {
        const bool ends = m_dialog->Send(WM_QUERYENDSESSION) != 0 && OneIn(2);
        if (IsOpen()) m_dialog->Send(WM_ENDSESSION, ends);
        if (ends) m_dialog.reset();
    }
    void CloseHost() {
        if (!m_host) return;
        m_popups.m_ownersMatter = false;  // one that is being destroyed gets no box
        ::PostMessageW(m_host->Window(), WM_CLOSE, 0, 0);
        EXPECT_TRUE(WaitFor([&] { return !::IsWindow(m_host->Window()); })) << "the host does not close";
        m_host.reset();
        m_popups.m_ownersMatter = true;
    }

    static inline RandomUser* s_user = nullptr;
    std::mt19937 m_random;
    HWND m_inFront = nullptr;
    int m_looks = 0;
    std::vector<UniqueFile> m_held;
    UINT_PTR m_menuTimer = 0;
};

}  // namespace support
