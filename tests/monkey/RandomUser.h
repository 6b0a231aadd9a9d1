// A user who does anything to the main dialog at random.
#pragma once

#include <commctrl.h>

#include <array>
#include <cstdio>
#include <map>
#include <random>
#include <span>
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
    /// A studio with plug-ins of every category, with presets, layouts, and files that are none.
    void SetUp() override {
        s_user = this;
        m_popups.AnswerAll([this](HWND dialog) { Answer(dialog); });
        m_menuTimer = ::SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &OnMenu);
        std::filesystem::create_directories(m_current);
        std::filesystem::current_path(m_current);
        ::SetEnvironmentVariableW(L"CorvaneAppDataRoot", m_data.c_str());
        SetText(HKEY_CURRENT_USER, L"Software\\Wine\\Drivers", L"Audio", L"");  // else beeps look for one

        unsigned id = 1;
        for (const wchar_t* name : {L"Hall", L"Room", L"Bellows", L"Ölkanne", L"VST Canyon"})
            AddVst(id++, name);
        AddVst(id++, L"Organ").Number(L"isSynth", 1);
        AddVst(id++, L"Gate", true);
        AddVst(id++, L"Grand", true).Number(L"isSynth", 1);
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

        m_files.Write(L"one.pgl",
                      "<PluginMenuLayout DocSchema='1' Name='One'><Separator/></PluginMenuLayout>");
        m_files.Write(L"two.pgl",
                      "<PluginMenuLayout DocSchema='1' Name='Two'><Folder Name='F'><Plugin CLSID='" +
                          Utf8(IdText(1)) +
                          "' Category='1' Name='Hall'/><Folder Name='G'/></Folder></PluginMenuLayout>");
        auto presets = CFileSink::Create(m_files.Path(L"one.spp"));
        CPresetFileWriter writer(*presets, kLatin1);
        writer.WriteHeader(1);
        writer.WritePlugin(Id(1), RowOf(Category::VstEffects).guid, 2, L"P");
        writer.WritePreset(kPresetInRegistry, L"a", std::as_bytes(std::span("n", 1)));
        writer.WritePreset(kPresetInFile, L"in a file", std::as_bytes(std::span("n", 1)));
        presets->Flush();
        // What is no layout stays so, and what is locked can't even be read.
        std::filesystem::create_directory(m_files.Path(L"folder"));
        for (const wchar_t* extension : {L".pgl", L".spp"}) {
            Hold(L"bad" + std::wstring(extension), FILE_SHARE_READ);
            Hold(L"folder\\locked" + std::wstring(extension), 0);
        }
    }
    void TearDown() override {
        ::KillTimer(nullptr, m_menuTimer);
        m_held.clear();
        LayoutTreeDialog::TearDown();
        m_host.reset();
        std::filesystem::current_path(m_files.Folder().parent_path());
        std::filesystem::remove_all(m_current);
        s_user = nullptr;
    }

    void Step(unsigned seed, int number) {
        using User = RandomUser;
        struct Action {
            unsigned weight;
            bool edits;  // the layout, in one step at most
            const char* name;
            void (*run)(User& user);
        };
        static constexpr Action kActions[] = {
            {20, true, "press a button", [](User& user) { user.PressButton(); }},
            {50, true, "click in the tree", [](User& user) { user.ClickItem(); }},
            {50, true, "key in the tree", [](User& user) { user.PressAny(IDC_LAYOUT_TREE, kTreeKeys); }},
            {24, true, "edit a label", [](User& user) { user.EditLabel(); }},
            {30, true, "drag", [](User& user) { user.Drag(); }},
            {30, true, "command", [](User& user) { user.ChooseCommand(); }},
            {8, false, "undo and redo", [](User& user) { user.TravelSteps(); }},
            {8, false, "choose a category", [](User& user) { user.Work(user.Control(IDC_CATEGORIES)); }},
            {16, false, "select plug-ins", [](User& user) { user.SelectPlugins(); }},
            {16, false, "key in the list", [](User& user) { user.PressAny(IDC_PLUGINS, kListKeys); }},
            {16, false, "find", [](User& user) { user.Find(); }},
            {12, false, "any key", [](User& user) { user.PressAny(0, kAnyKeys); }},
            {3, false, "pick a layout", [](User& user) { user.PickLayout(); }},
            {4, false, "name the layout",
             [](User& user) { EnterText(user.Control(IDC_LAYOUTS), user.AnyText()); }},
            {2, false, "menu", [](User& user) { user.OpenMenu(); }},
            {2, false, "drop files", [](User& user) { user.DropFiles(); }},
            {3, false, "resize", [](User& user) { user.Resize(); }},
            {1, false, "other scale", [](User& user) { user.Rescale(); }},
            {1, false, "other colours", [](User& user) { user.m_dialog->Send(WM_SYSCOLORCHANGE); }},
            {1, false, "a minute passes", [](User& user) { user.m_dialog->Send(WM_TIMER, 2); }},
            {2, false, "system menu", [](User& user) { user.ChooseSystemCommand(); }},
            {2, false, "close", [](User& user) { user.Close(); }},
            {1, false, "crash", [](User& user) { user.m_dialog.reset(); }},
            {1, false, "host closes", [](User& user) { user.CloseHost(); }},
        };
        std::seed_seq sequence{seed, static_cast<unsigned>(number)};
        m_random.seed(sequence);
        if (!IsOpen()) Start();
        unsigned all = 0;
        for (const Action& action : kActions) all += action.weight;
        const Action* action = kActions;
        for (auto left = Below(all); left >= action->weight; ++action) left -= action->weight;
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

    /// The layout without what is open and selected.
    static std::wstring ItemsOf(const CTreeCtrlWrapper& layout) {
        std::wstring items;
        const CTreeCtrlEx& tree = layout.Tree();
        for (HTREEITEM item = tree.Root(); item; item = tree.NextInOrder(item)) {
            for (HTREEITEM parent = tree.Parent(item); parent; parent = tree.Parent(parent)) items += L' ';
            const LayoutItem* record = layout.Find(item);
            if (record) items += record->name + L'|' + record->defaultPreset + L'\n';
        }
        return items;
    }
    std::wstring Items() { return ItemsOf(Layout()); }

    std::optional<StandInHost> m_host;
    std::unordered_set<LayoutItemId> m_ids;  // of the step before
    std::map<int, std::wstring> m_captions;  // without counts
    /// The current folder, where nothing has to be.
    const std::filesystem::path m_current = m_files.Folder().wstring() + L" current";

  private:
    static constexpr int kMostItems = 120;  // more only take time
    struct Stroke {
        WORD key;
        BYTE held;
    };
    static constexpr Stroke kTreeKeys[] = {
        {VK_UP, 0},          {VK_DOWN, 0},      {VK_LEFT, 0},      {VK_RIGHT, 0},     {VK_HOME, 0},
        {VK_END, 0},         {VK_NEXT, 0},      {VK_DELETE, 0},    {VK_F2, 0},        {VK_APPS, 0},
        {VK_MULTIPLY, 0},    {VK_SUBTRACT, 0},  {VK_F3, 0},        {VK_UP, VK_SHIFT}, {VK_END, VK_SHIFT},
        {VK_DOWN, VK_SHIFT}, {'A', VK_CONTROL}, {'Z', VK_CONTROL}, {'Y', VK_CONTROL}, {'X', VK_CONTROL},
        {'C', VK_CONTROL},   {'V', VK_CONTROL}};
    static constexpr Stroke kListKeys[] = {{VK_UP, 0},         {VK_DOWN, 0},  {VK_HOME, 0},
                                           {VK_END, 0},        {VK_SPACE, 0}, {VK_DOWN, VK_SHIFT},
                                           {VK_END, VK_SHIFT}, {'B', 0},      {'A', VK_CONTROL},
                                           {'C', VK_CONTROL},  {VK_F2, 0}};
    static constexpr Stroke kAnyKeys[] = {{VK_TAB, 0},       {VK_TAB, VK_SHIFT}, {VK_ESCAPE, 0},
                                          {VK_RETURN, 0},    {VK_SPACE, 0},      {'S', VK_CONTROL},
                                          {'F', VK_CONTROL}, {VK_F3, 0},         {VK_DOWN, 0},
                                          {VK_F4, 0},        {VK_MENU, 0},       {'V', VK_CONTROL}};

    std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : m_random() % limit; }
    int IntBelow(LRESULT limit) { return static_cast<int>(Below(static_cast<std::size_t>(limit))); }
    bool OneIn(std::size_t chances) { return Below(chances) == 0; }
    template <typename TAll>
    const auto& Any(const TAll& all) {
        return std::data(all)[Below(std::size(all))];
    }
    std::wstring AnyText() {
        static const std::wstring kTexts[] = {L"",        L" ",      L"Hall",    L"hall",
                                              L"Ölkanne", L"100 %s", L"a & <b>", L"日本",
                                              L"a\x1c",   L"a.b ",   L"\\ / *",  std::wstring(300, L'x')};
        return Any(kTexts);
    }
    std::wstring AnyFile() {
        // The program waits a moment for those that somebody else has open.
        if (OneIn(20)) return m_files.Path(OneIn(2) ? L"bad" : L"folder\\locked");
        constexpr const wchar_t* kFiles[] = {L"one",  L"two", L"new",         L"new too",
                                             L"gone", L"a?b", L"no folder\\x"};
        return m_files.Path(Any(kFiles));
    }
    /// Of the tree.
    POINT AnyPlace() {
        const Rect client = Tree().ClientRect();
        const int rows = (Tree().SendInt(TVM_GETCOUNT) + 1) * Tree().SendInt(TVM_GETITEMHEIGHT);
        return {IntBelow(client.Width()), IntBelow(std::min(rows, client.Height()))};
    }
    void Hold(const std::wstring& name, DWORD share) {
        m_held.emplace_back(::CreateFileW(m_files.Write(name, "neither").c_str(), GENERIC_READ, share,
                                          nullptr, OPEN_EXISTING, 0, nullptr));
    }

    void Start() {
        m_dialog.reset();
        m_host.reset();
        m_ids.clear();
        constexpr LANGID kLanguages[] = {
#define INTERFACE_LANGUAGE(name, identifier, installer, letters, font) identifier,
#include "Languages.inc"
#undef INTERFACE_LANGUAGE
        };
        const LANGID language = Any(kLanguages);
        SetResourceLanguage(language);
        std::vector<std::wstring> arguments;
        const auto place = Below(3);
        if (place > 0) {
            m_host.emplace(OneIn(2) ? StandInHost::Size::Large : StandInHost::Size::Small);
            arguments = {L"/ParentWnd", m_host->HandleText()};
        }
        if (place > 1) arguments.emplace_back(L"/Float");
        if (OneIn(4)) arguments.push_back(AnyFile() + L".pgl");
        std::printf("starts in language %u%s%s\n", unsigned{language}, place > 0 ? ", hosted" : "",
                    place > 1 ? ", floating" : "");
        Open(arguments);
        m_dialog->Show();
        ::SetForegroundWindow(::GetAncestor(m_dialog->Handle(), GA_ROOT));
        for (const int id : {IDC_PLUGINS_LABEL, IDC_CATEGORIES_LABEL, IDC_PRESETS_GROUP, IDC_EXCLUSION_GROUP,
                             IDC_VST_GROUP, IDC_ADAPTER_GROUP})
            m_captions[id] = Text(id).substr(0, Text(id).rfind(L" ("));
    }

    /// What can be worked now, but two buttons that open windows of other programs: the help, and a folder.
    static std::vector<HWND> Controls(HWND dialog) {
        std::vector<HWND> controls;
        for (HWND child = ::GetWindow(dialog, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
            const int id = ::GetDlgCtrlID(child);
            if (::IsWindowEnabled(child) && ::IsWindowVisible(child) && id != IDC_HELP_BUTTON &&
                id != IDC_REVIEW_ACTION)
                controls.push_back(child);
        }
        return controls;
    }
    std::vector<HWND> Buttons(HWND dialog) {
        auto buttons = Controls(dialog);
        std::erase_if(buttons, [](HWND control) {
            return ClassOf(control) != L"Button" ||
                   (::GetWindowLongPtrW(control, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
        });
        return buttons;
    }
    void Work(HWND control) {
        const std::wstring type = ClassOf(control);
        const UINT count = type == L"ListBox" ? LB_GETCOUNT : type == L"ComboBox" ? CB_GETCOUNT : WM_NULL;
        const LRESULT rows = Send(control, count);
        constexpr WORD kTickTwo[] = {VK_END, VK_SPACE, VK_UP, VK_SPACE};
        if (rows > 0)
            SelectRows(control, {IntBelow(rows), IntBelow(rows)});
        else if (type == L"Edit" && (::GetWindowLongPtrW(control, GWL_STYLE) & ES_READONLY) == 0)
            EnterText(control, AnyText());
        else if (type == WC_LISTVIEWW)
            for (const WORD key : kTickTwo) PostKey(control, key);
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
        int button = ::GetDlgItem(dialog, IDCANCEL) ? IDCANCEL : IDNO;  // whoever gets nowhere leaves
        if (const HWND name = FileNameField(dialog)) {
            EnterText(name, AnyFile());
            for (const int id : {IDC_DISPLAY_NAME, IDC_PRESET_LIST})
                if (const HWND control = InFileDialog(dialog, id); control && OneIn(2)) Work(control);
            if (m_looks < 3 && !OneIn(4)) button = IDOK;
        } else {
            for (const HWND control : Controls(dialog))
                if (OneIn(2)) Work(control);
            const auto buttons = Buttons(dialog);
            if (m_looks < 6 && !buttons.empty()) button = ::GetDlgCtrlID(Any(buttons));
        }
        std::printf("   button %d in \"%s\"\n", button, Describe(dialog).c_str());
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
        for (int down = s_user->IntBelow(::GetMenuItemCount(items) + 2); down > 0; --down)
            PostKey(dialog, VK_DOWN);
        for (const WORD key : {WORD{VK_RETURN}, WORD{VK_ESCAPE}}) PostKey(dialog, key);
    }
    void PressKey(HWND window, Stroke stroke) {
        std::printf("   key %x, held %x\n", unsigned{stroke.key}, unsigned{stroke.held});
        if (Item(IDC_HELP_BUTTON).HasFocus()) Tree().Focus();
        std::array<BYTE, 256> keys{};
        keys[stroke.held] = stroke.held ? 0x80 : 0;
        ::SetKeyboardState(keys.data());
        Key(window, stroke.key);
        ::SetKeyboardState(std::array<BYTE, 256>{}.data());
    }
    /// In a control, or with 0 where the keyboard is.
    void PressAny(int id, std::span<const Stroke> strokes) {
        if (id != 0) Item(id).Focus();
        const HWND focus = ::GetFocus();
        PressKey(focus && ::IsChild(m_dialog->Handle(), focus) ? focus : Window(), Any(strokes));
    }

    void PressButton() {
        const HWND button = Any(Buttons(m_dialog->Handle()));
        std::printf("   \"%s\"\n", Utf8(TextOf(button)).c_str());
        Send(button, BM_CLICK);
    }
    void ClickItem() {
        constexpr WPARAM kHeld[] = {0, 0, MK_SHIFT, MK_CONTROL};
        const POINT place = AnyPlace();
        if (!OneIn(8)) return Click(Window(), place, Any(kHeld));
        PostMouse(WM_RBUTTONDOWN, place, MK_RBUTTON);
        PostMouse(WM_RBUTTONUP, place);
    }
    void EditLabel() {
        if (!View().IsEditingLabel()) Type(VK_F2);
        if (!View().IsEditingLabel()) return;
        EnterText(Tree().LabelEdit().Handle(), AnyText());
        constexpr Stroke kKeys[] = {{VK_RETURN, 0}, {VK_RETURN, 0}, {VK_ESCAPE, 0}};
        if (!OneIn(4)) PressKey(Tree().LabelEdit().Handle(), Any(kKeys));
    }
    void Drag() {
        const POINT start = AnyPlace();
        PostMouse(WM_LBUTTONDOWN, start, MK_LBUTTON);
        PostMouse(WM_MOUSEMOVE, {start.x + 30, start.y}, MK_LBUTTON);
        PostMouse(WM_LBUTTONUP, start);  // ends what is no drag
        Pump();
        LPARAM at = 0;
        for (auto moves = 1 + Below(3); moves > 0; --moves) {
            POINT place = AnyPlace();
            ::MapWindowPoints(Window(), m_dialog->Handle(), &place, 1);
            at = MAKELPARAM(place.x, place.y);
            m_dialog->Send(WM_MOUSEMOVE, MK_LBUTTON, at);
        }
        const auto end = Below(8);
        if (end == 0) return;  // it goes on
        if (end == 1) return PressKey(Window(), {VK_ESCAPE, 0});
        if (end == 2) ::ReleaseCapture();
        m_dialog->Send(end == 3 ? WM_RBUTTONDOWN : WM_LBUTTONUP, 0, at);
    }
    void ChooseCommand() {
        const HTREEITEM caret = Tree().Caret();
        const LayoutItem* record = caret ? Layout().Find(caret) : nullptr;
        const UINT ofCaret = !record || record->kind == LayoutKind::Separator ? IDM_LAYOUT
                             : record->kind == LayoutKind::Folder             ? IDM_LAYOUT_FOLDER
                                                                              : IDM_LAYOUT_PLUGIN;
        const UINT menus[] = {IDM_TASKS, IDM_PLUGINS, ofCaret, ofCaret};
        const UINT menuId = Any(menus);
        const UniqueMenu menu = LoadMenuResource(menuId);
        const HMENU entries = ::GetSubMenu(menu.Get(), 0);
        const UINT id = ::GetMenuItemID(entries, IntBelow(::GetMenuItemCount(entries)));
        const HWND button = ::GetDlgItem(m_dialog->Handle(), static_cast<int>(id));
        if (id == 0 || id == ID_FILE_LOCATION || (button && !::IsWindowEnabled(button))) return;
        std::printf("   %u\n", id);
        if (menuId == ofCaret)
            View().Run(id, caret ? caret : Tree().Root());
        else
            m_dialog->Send(WM_COMMAND, id);
    }
    void Undo() { m_dialog->Send(WM_COMMAND, ID_UNDO); }
    void ExpectRedo(const std::wstring& items) {
        m_dialog->Send(WM_COMMAND, ID_REDO);
        EXPECT_EQ(Items(), items) << "done again";
    }
    void ExpectOneStep(const std::wstring& before) {
        if (View().IsEditingLabel()) View().EndLabelEdit(true);
        const std::wstring after = Items();
        // What can be done again was no new step.
        if (after == before || !View().CanUndo() || View().CanRedo()) return;
        Undo();
        EXPECT_EQ(Items(), before) << "undone";
        ExpectRedo(after);
    }
    void TravelSteps() {
        if (View().IsEditingLabel()) View().EndLabelEdit(true);
        std::vector<std::wstring> states;
        for (auto steps = Below(6); steps > 0 && View().CanUndo(); --steps) {
            states.push_back(Items());
            Undo();
        }
        for (; !states.empty(); states.pop_back()) ExpectRedo(states.back());
        for (auto steps = Below(4); steps > 0; --steps) Undo();
    }
    void SelectPlugins() {
        const LRESULT count = Send(Control(IDC_PLUGINS), LB_GETCOUNT);
        std::vector<int> rows;
        for (auto i = count == 0 ? 0 : 1 + Below(4); i > 0; --i) rows.push_back(IntBelow(count));
        if (!OneIn(3)) return SelectRows(Control(IDC_PLUGINS), rows);
        constexpr WPARAM kHeld[] = {0, MK_SHIFT, MK_CONTROL};
        for (const int row : rows) ClickRow(IDC_PLUGINS, row, Any(kHeld));
    }
    void Find() {
        constexpr const wchar_t* kWords[] = {L"",    L"h",       L"ha ll", L"olk",
                                             L"vst", L"regedit", L"{0000", L"zzz"};
        constexpr Stroke kKeys[] = {{VK_RETURN, 0}, {VK_DOWN, 0}, {VK_F3, 0}, {VK_ESCAPE, 0}, {VK_TAB, 0}};
        if (OneIn(3)) {
            Tree().Focus();
            PressKey(Window(), {'F', VK_CONTROL});
        }
        if (!OneIn(4)) EnterText(Control(IDC_FIND), Any(kWords));
        if (OneIn(2)) PressKey(Control(IDC_FIND), Any(kKeys));
    }
    void PickLayout() {
        const HWND list = Control(IDC_LAYOUTS);
        if (OneIn(2)) return Work(list);
        Send(list, CB_SHOWDROPDOWN, TRUE);
        constexpr Stroke kKeys[] = {{VK_DOWN, 0}, {VK_RETURN, 0}, {VK_ESCAPE, 0}};
        for (const Stroke key : {kKeys[0], kKeys[0], Any(kKeys)}) PressKey(list, key);
    }
    void OpenMenu() {
        if (OneIn(3)) return PressKey(Window(), {VK_APPS, 0});
        constexpr int kIds[] = {IDC_PLUGINS, IDC_PLUGINS, IDC_CATEGORIES};
        Item(Any(kIds)).Send(WM_CONTEXTMENU, Control(IDC_PLUGINS), -1);
    }
    void DropFiles() {
        std::wstring drop = {20, 0, 0, 0, 0, 0, 0, 0, 1, 0};  // a DROPFILES of 20 bytes, with wide names
        for (auto files = 1 + Below(3); files > 0; --files)
            drop += AnyFile() + (OneIn(2) ? L".pgl" : L".spp") + L'\0';
        const HGLOBAL memory = ::GlobalAlloc(GHND, (drop.size() + 1) * sizeof(wchar_t));
        std::ranges::copy(drop, static_cast<wchar_t*>(::GlobalLock(memory)));
        ::GlobalUnlock(memory);
        m_dialog->Send(WM_DROPFILES, memory);
    }
    void Resize() {
        ::SetWindowPos(m_dialog->Handle(), nullptr, IntBelow(400), IntBelow(300), 300 + IntBelow(1200),
                       200 + IntBelow(900), SWP_NOZORDER | SWP_NOACTIVATE);
    }
    void Rescale() {
        constexpr UINT kScales[] = {96, 120, 144, 192};
        const UINT dpi = Any(kScales);
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
    void Close() {
        if (OneIn(2)) {
            constexpr Stroke kKeys[] = {{VK_RETURN, 0}, {VK_SPACE, 0}};
            return PressAny(IDC_CLOSE, kKeys);
        }
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
