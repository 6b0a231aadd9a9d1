#include "monkey/RandomUser.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <numeric>

#include "Backups.h"
#include "CorvaneKeys.h"
#include "FileStream.h"
#include "Resources.h"
#include "presets/PresetReading.h"
#include "support/SandboxImporter.h"

using namespace support;

namespace {

constexpr LANGID kLanguages[] = {
#define INTERFACE_LANGUAGE(name, identifier, installer, letters, font) identifier,
#include "Languages.inc"
#undef INTERFACE_LANGUAGE
};

/// Larger layouts only take time.
constexpr int kMostItems = 120;

struct Stroke {
    WORD key;
    BYTE held = 0;
};
constexpr Stroke kTreeKeys[] = {{VK_UP},
                                {VK_DOWN},
                                {VK_LEFT},
                                {VK_RIGHT},
                                {VK_HOME},
                                {VK_END},
                                {VK_NEXT},
                                {VK_DELETE},
                                {VK_F2},
                                {VK_APPS},
                                {VK_MULTIPLY},
                                {VK_SUBTRACT},
                                {VK_UP, VK_SHIFT},
                                {VK_END, VK_SHIFT},
                                {VK_DOWN, VK_SHIFT},
                                {'A', VK_CONTROL},
                                {'Z', VK_CONTROL},
                                {'Y', VK_CONTROL},
                                {'X', VK_CONTROL},
                                {'C', VK_CONTROL},
                                {'V', VK_CONTROL},
                                {VK_RETURN, VK_MENU}};
constexpr Stroke kListKeys[] = {{VK_UP},    {VK_DOWN},         {VK_HOME},           {VK_END},
                                {VK_SPACE}, {VK_F2},           {VK_DOWN, VK_SHIFT}, {VK_END, VK_SHIFT},
                                {'B'},      {'A', VK_CONTROL}, {'C', VK_CONTROL}};
constexpr Stroke kAnyKeys[] = {{VK_TAB},          {VK_TAB, VK_SHIFT}, {VK_ESCAPE}, {VK_RETURN}, {VK_SPACE},
                               {'S', VK_CONTROL}, {'F', VK_CONTROL},  {VK_F3},     {VK_DOWN},   {VK_F4},
                               {VK_MENU},         {'V', VK_CONTROL}};

constexpr WORD kTickTwo[] = {VK_END, VK_SPACE, VK_UP, VK_SPACE};

RandomUser* g_user = nullptr;

}  // namespace

const RandomUser::Action RandomUser::kActions[] = {
    {20, "press a button", &RandomUser::PressButton, true},
    {16, "select plug-ins", &RandomUser::SelectPlugins},
    {8, "choose a category", &RandomUser::ChooseCategory},
    {16, "key in the plug-in list", &RandomUser::PressListKey},
    {16, "find", &RandomUser::Find},
    {50, "click in the tree", &RandomUser::ClickItem},
    {50, "key in the tree", &RandomUser::PressTreeKey, true},
    {24, "edit a label", &RandomUser::EditLabel, true},
    {30, "drag", &RandomUser::Drag, true},
    {30, "command", &RandomUser::ChooseCommand, true},
    {2, "menu", &RandomUser::OpenMenu},
    {8, "undo and redo", &RandomUser::TravelSteps},
    {3, "pick a layout", &RandomUser::PickLayout},
    {4, "name of the layout", &RandomUser::TypeLayoutName},
    {12, "any key", &RandomUser::PressAnyKey},
    {2, "drop files", &RandomUser::DropFiles},
    {3, "resize", &RandomUser::Resize},
    {1, "other scale", &RandomUser::Rescale},
    {2, "other colours", &RandomUser::ChangeColours},
    {1, "a minute passes", &RandomUser::PassTime},
    {2, "float or dock", &RandomUser::Float},
    {1, "close", &RandomUser::Close},
    {1, "session ends", &RandomUser::EndSession},
    {1, "crash", &RandomUser::Crash},
    {1, "host closes", &RandomUser::CloseHost},
};

void RandomUser::SetUp() {
    g_user = this;
    m_popups.AnswerAll([this](HWND dialog) { Answer(dialog); });
    m_menuTimer = ::SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &OnMenu);
    std::filesystem::create_directories(m_current);
    std::filesystem::current_path(m_current);
    ::SetEnvironmentVariableW(L"CorvaneAppDataRoot", m_data.c_str());

    SetText(HKEY_CURRENT_USER, L"Software\\Wine\\Drivers", L"Audio", L"");
    unsigned id = 1;
    for (const wchar_t* name : {L"Hall", L"Room", L"Bellows", L"Ölkanne", L"VST Canyon"}) AddVst(id++, name);
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
    RegisterAudioDmo(IdText(id++), L"Echo");
    RegisterAudioDmo(IdText(id++), L"Flanger");
    AddSurface(id++, L"Desk");
    CreateKey(HKEY_LOCAL_MACHINE, kMidiFilters + IdText(id));
    RegisterAudioFilter(L"{52B63860-DC93-11CE-A099-00AA00479A58}", L"Hidden");
    for (const wchar_t* name : {L"a", L"b", L"Large"})
        SetRaw(HKEY_CURRENT_USER, kAudioPresetsKey + (L"\\" + IdText(1)), name, REG_BINARY, {1, 2});

    m_files.Write(L"one.pgl", "<PluginMenuLayout DocSchema='1' Name='One'><Separator/></PluginMenuLayout>");
    m_files.Write(L"two.pgl",
                  "<PluginMenuLayout DocSchema='1' Name='Two'><Folder Name='F'><Plugin CLSID='" +
                      Utf8(IdText(1)) +
                      "' Category='1' Name='Hall'/><Folder Name='G'/></Folder></PluginMenuLayout>");
    auto presets = CFileSink::Create(m_files.Path(L"one.spp"));
    CPresetFileWriter writer(*presets, kLatin1);
    writer.WriteHeader(2);
    for (const unsigned plugin : {1U, 2U}) {
        writer.WritePlugin(Id(plugin), RowOf(Category::VstEffects).guid, 2, L"P");
        writer.WritePreset(kPresetInRegistry, L"a", std::as_bytes(std::span("n", 1)));
        writer.WritePreset(kPresetInFile, L"in a file", std::as_bytes(std::span("n", 1)));
    }
    presets->Flush();
    presets.reset();
    // What is no layout stays so, and what is locked can't even be read.
    std::filesystem::create_directory(m_files.Path(L"folder"));
    for (const auto& [name, share] :
         {std::pair(L"bad", DWORD{FILE_SHARE_READ}), {L"folder\\locked", DWORD{0}}}) {
        for (const wchar_t* extension : {L".pgl", L".spp"}) {
            const std::wstring path = m_files.Write(name + std::wstring(extension), "neither");
            m_held.emplace_back(
                ::CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
        }
    }
    m_registry = Registry();
    m_elsewhere = Elsewhere();
}

void RandomUser::TearDown() {
    ::KillTimer(nullptr, m_menuTimer);
    m_held.clear();
    LayoutTreeDialog::TearDown();
    m_host.reset();
    std::filesystem::current_path(m_files.Folder().parent_path());
    std::filesystem::remove_all(m_current);
    SetResourceLanguage(kLanguages[0]);
    g_user = nullptr;
}

std::wstring RandomUser::AnyText() {
    static const std::wstring kTexts[] = {L"",       L" ",        L"Hall",  L"hall",  L"Ölkanne",
                                          L"100 %s", L"a & <b>",  L"日本",  L"a\x1c", std::wstring(300, L'x'),
                                          L"a.b ",   L"\\ / : *", L"Hall 2"};
    return Any(kTexts);
}

std::wstring RandomUser::AnyFile() {
    // The program waits a moment for those that somebody else has open.
    if (OneIn(20)) return m_files.Path(OneIn(2) ? L"bad" : L"folder\\locked");
    constexpr const wchar_t* kFiles[] = {L"one",  L"two", L"new",         L"new too",
                                         L"gone", L"a?b", L"no folder\\x"};
    return m_files.Path(Any(kFiles));
}

POINT RandomUser::AnyPlace() {
    const Rect client = Tree().ClientRect();
    const int rows = (TreeCount(Window()) + 1) * Tree().SendInt(TVM_GETITEMHEIGHT);
    return {static_cast<LONG>(Below(static_cast<std::size_t>(std::max(client.Width(), 1)))),
            static_cast<LONG>(Below(static_cast<std::size_t>(std::clamp(rows, 1, client.Height() + 1))))};
}

void RandomUser::Start() {
    m_dialog.reset();
    m_host.reset();
    m_ids.clear();
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

void RandomUser::Step(unsigned seed, int number) {
    std::seed_seq sequence{seed, static_cast<unsigned>(number)};
    m_random.seed(sequence);
    if (!IsOpen()) Start();
    const unsigned all = std::accumulate(std::begin(kActions), std::end(kActions), 0U,
                                         [](unsigned sum, const Action& a) { return sum + a.weight; });
    const Action* action = kActions;
    for (auto left = Below(all); left >= action->weight; ++action) left -= action->weight;
    std::printf("%d %s\n", number, action->name);
    std::fflush(stdout);
    const bool edits = action->edits && !View().IsEditingLabel() && !::GetCapture();
    const std::wstring before = Items();
    (this->*action->run)();
    if (!IsOpen()) return;
    Pump();
    if (edits && IsOpen() && OneIn(3)) ExpectOneStep(before);
    if (IsOpen() && TreeCount(Window()) > kMostItems) View().Run(ID_CLEAR_LAYOUT, nullptr);
}

// Dialogs and menus

bool RandomUser::IsPushButton(HWND control) {
    const auto type = ::GetWindowLongPtrW(control, GWL_STYLE) & BS_TYPEMASK;
    return ClassOf(control) == L"Button" &&
           (type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON || type == BS_OWNERDRAW);
}

std::vector<HWND> RandomUser::Controls(HWND dialog) {
    std::vector<HWND> controls;
    // Two buttons open windows of other programs: the help, and a folder.
    for (HWND child = ::GetWindow(dialog, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        const int id = ::GetDlgCtrlID(child);
        if (::IsWindowEnabled(child) && ::IsWindowVisible(child) && id != IDC_HELP_BUTTON &&
            id != IDC_REVIEW_ACTION)
            controls.push_back(child);
    }
    return controls;
}

void RandomUser::Work(HWND control) {
    const std::wstring type = ClassOf(control);
    const auto row = [&](UINT count) {
        return static_cast<int>(Below(static_cast<std::size_t>(Send(control, count))));
    };
    if (type == L"Edit" && (::GetWindowLongPtrW(control, GWL_STYLE) & ES_READONLY) == 0)
        EnterText(control, AnyText());
    else if (type == L"ListBox" && Send(control, LB_GETCOUNT) > 0)
        SelectRows(control, {row(LB_GETCOUNT), row(LB_GETCOUNT)});
    else if (type == L"ComboBox" && Send(control, CB_GETCOUNT) > 0)
        SelectRows(control, {row(CB_GETCOUNT)});
    else if (type == WC_LISTVIEWW)
        for (const WORD key : kTickTwo) PostKey(control, key);
}

void RandomUser::WorkFileDialog(HWND dialog) {
    EnterText(FileNameField(dialog), AnyFile());
    for (const int id : {IDC_DISPLAY_NAME, IDC_PRESET_LIST})
        if (const HWND control = InFileDialog(dialog, id); control && OneIn(2)) Work(control);
}

void RandomUser::Answer(HWND dialog) {
    m_looks = dialog == std::exchange(m_inFront, dialog) ? m_looks + 1 : 0;
    std::printf("   in \"%s\"\n", Describe(dialog).c_str());
    // The system's importer would bring the rest into the user's real registry.
    if (TextOf(dialog) == LoadText(IDS_BACKUPS)) {
        CBackups backups(BackupFolder(m_data.wstring()), L"1", &ImportIntoSandbox);
        for (const BackupEntry& backup : backups.List())
            if (backup.record.kind != BackupKind::Layouts) backups.Delete(backup);
    }
    int button = ::GetDlgItem(dialog, IDCANCEL) ? IDCANCEL : IDNO;
    if (FileNameField(dialog)) {
        WorkFileDialog(dialog);
        if (m_looks < 3 && !OneIn(4)) button = IDOK;
    } else {
        std::vector<HWND> buttons;
        for (const HWND control : Controls(dialog)) {
            if (IsPushButton(control))
                buttons.push_back(control);
            else if (OneIn(2))
                Work(control);
        }
        // Whoever gets nowhere leaves.
        if (m_looks < 6 && !buttons.empty()) button = ::GetDlgCtrlID(Any(buttons));
    }
    std::printf("   button %d\n", button);
    ::PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button),
                   reinterpret_cast<LPARAM>(::GetDlgItem(dialog, button)));
}

/// While a menu is shown, only timers come through.
void CALLBACK RandomUser::OnMenu(HWND, UINT, UINT_PTR, DWORD) {
    const HWND menu = ::FindWindowW(L"#32768", nullptr);
    if (!g_user || !menu || !::IsWindowVisible(menu)) return;
    const auto items = reinterpret_cast<HMENU>(Send(menu, MN_GETHMENU));
    // These open a window of another program, and wait for the mouse.
    for (const UINT id : {UINT{ID_FILE_LOCATION}, UINT{SC_SIZE}, UINT{SC_MOVE}})
        ::EnableMenuItem(items, id, MF_BYCOMMAND | MF_GRAYED);
    const HWND dialog = g_user->m_dialog->Handle();
    for (auto down = g_user->Below(static_cast<std::size_t>(::GetMenuItemCount(items)) + 2); down > 0; --down)
        PostKey(dialog, VK_DOWN);
    PostKey(dialog, VK_RETURN);
    PostKey(dialog, VK_ESCAPE);
}

void RandomUser::PressKey(HWND window, WORD key, BYTE held) {
    std::printf("   key %x, held %x\n", unsigned{key}, unsigned{held});
    if (Item(IDC_HELP_BUTTON).HasFocus()) Tree().Focus();
    std::array<BYTE, 256> keys{};
    keys[held] = held ? 0x80 : 0;
    ::SetKeyboardState(keys.data());
    Key(window, key);
    ::SetKeyboardState(std::array<BYTE, 256>{}.data());
}

// Actions

void RandomUser::PressButton() {
    std::vector<HWND> buttons = Controls(m_dialog->Handle());
    std::erase_if(buttons, [](HWND control) {
        const bool isGroup = (::GetWindowLongPtrW(control, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
        return ClassOf(control) != L"Button" || isGroup;
    });
    const HWND button = Any(buttons);
    std::printf("   \"%s\"\n", Utf8(TextOf(button)).c_str());
    Send(button, BM_CLICK);
}

void RandomUser::SelectPlugins() {
    const auto count = static_cast<std::size_t>(Send(Control(IDC_PLUGINS), LB_GETCOUNT));
    std::vector<int> rows;
    for (std::size_t i = count == 0 ? 0 : 1 + Below(4); i > 0; --i)
        rows.push_back(static_cast<int>(Below(count)));
    if (!OneIn(3)) return SelectRows(Control(IDC_PLUGINS), rows);
    constexpr WPARAM kHeld[] = {0, MK_SHIFT, MK_CONTROL};
    for (const int row : rows) ClickRow(IDC_PLUGINS, row, Any(kHeld));
}

void RandomUser::ChooseCategory() { Work(Control(IDC_CATEGORIES)); }

void RandomUser::PressListKey() {
    Item(IDC_PLUGINS).Focus();
    const auto [key, held] = Any(kListKeys);
    PressKey(Control(IDC_PLUGINS), key, held);
}

void RandomUser::Find() {
    constexpr const wchar_t* kWords[] = {L"", L"h", L"ha ll", L"olk", L"vst", L"regedit", L"{0000", L"zzz"};
    if (OneIn(3)) {
        Tree().Focus();
        PressKey(Window(), 'F', VK_CONTROL);
    }
    if (!OneIn(4)) EnterText(Control(IDC_FIND), Any(kWords));
    constexpr WORD kKeys[] = {VK_RETURN, VK_DOWN, VK_F3, VK_ESCAPE, VK_TAB};
    if (OneIn(2)) PressKey(Control(IDC_FIND), Any(kKeys));
}

void RandomUser::ClickItem() {
    constexpr WPARAM kHeld[] = {0, 0, MK_SHIFT, MK_CONTROL};
    const POINT place = AnyPlace();
    if (!OneIn(8)) return Click(Window(), place, Any(kHeld));
    PostMouse(WM_RBUTTONDOWN, place, MK_RBUTTON);
    PostMouse(WM_RBUTTONUP, place);
    Pump();
}

void RandomUser::PressTreeKey() {
    const auto [key, held] = Any(kTreeKeys);
    std::printf("   key %x, held %x\n", unsigned{key}, unsigned{held});
    Tree().Focus();
    Type(key, held);
}

void RandomUser::EditLabel() {
    if (!View().IsEditingLabel()) Type(VK_F2);
    if (!View().IsEditingLabel()) return;
    EnterText(Tree().LabelEdit().Handle(), AnyText());
    constexpr WORD kKeys[] = {VK_RETURN, VK_RETURN, VK_ESCAPE};
    if (!OneIn(4)) PressKey(Tree().LabelEdit().Handle(), Any(kKeys));
}

void RandomUser::Drag() {
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
    switch (Below(8)) {
        case 0:
            m_dialog->Send(WM_RBUTTONDOWN, 0, at);
            break;
        case 1:
            PressKey(Window(), VK_ESCAPE);
            break;
        case 2:
            ::ReleaseCapture();
            break;
        case 3:  // goes on
            break;
        default:
            m_dialog->Send(WM_LBUTTONUP, 0, at);
            break;
    }
}

void RandomUser::ChooseCommand() {
    const HTREEITEM caret = Tree().Caret();
    const LayoutItem* record = caret ? Layout().Find(caret) : nullptr;
    const UINT ofCaret = !record || record->kind == LayoutKind::Separator ? IDM_LAYOUT
                         : record->kind == LayoutKind::Folder             ? IDM_LAYOUT_FOLDER
                                                                          : IDM_LAYOUT_PLUGIN;
    const UINT menus[] = {IDM_TASKS, IDM_PLUGINS, ofCaret, ofCaret};
    const UINT menuId = Any(menus);
    const UniqueMenu menu = LoadMenuResource(menuId);
    const HMENU entries = ::GetSubMenu(menu.Get(), 0);
    const UINT id = ::GetMenuItemID(
        entries, static_cast<int>(Below(static_cast<std::size_t>(::GetMenuItemCount(entries)))));
    const HWND button = ::GetDlgItem(m_dialog->Handle(), static_cast<int>(id));
    if (id == 0 || id == ID_FILE_LOCATION || (button && !::IsWindowEnabled(button))) return;
    std::printf("   %u\n", id);
    if (menuId == ofCaret)
        View().Run(id, caret ? caret : Tree().Root());
    else
        m_dialog->Send(WM_COMMAND, id);
}

void RandomUser::OpenMenu() {
    if (OneIn(3)) return PressKey(Window(), VK_APPS);
    constexpr int kIds[] = {IDC_PLUGINS, IDC_PLUGINS, IDC_CATEGORIES};
    Item(Any(kIds)).Send(WM_CONTEXTMENU, Control(IDC_PLUGINS), -1);
}

void RandomUser::TravelSteps() {
    if (View().IsEditingLabel()) View().EndLabelEdit(true);
    View().CancelDrag();
    std::vector<std::wstring> states{Items()};
    for (auto steps = Below(6); steps > 0 && View().CanUndo(); --steps) {
        m_dialog->Send(WM_COMMAND, ID_UNDO);
        states.push_back(Items());
    }
    for (states.pop_back(); !states.empty(); states.pop_back()) {
        m_dialog->Send(WM_COMMAND, ID_REDO);
        EXPECT_EQ(Items(), states.back()) << "done again";
    }
    for (auto steps = Below(4); steps > 0; --steps) m_dialog->Send(WM_COMMAND, ID_UNDO);
}

void RandomUser::ExpectOneStep(const std::wstring& before) {
    if (View().IsEditingLabel()) View().EndLabelEdit(true);
    const std::wstring after = Items();
    // What can be done again was no new step.
    if (after == before || !View().CanUndo() || View().CanRedo()) return;
    m_dialog->Send(WM_COMMAND, ID_UNDO);
    EXPECT_EQ(Items(), before) << "undone";
    m_dialog->Send(WM_COMMAND, ID_REDO);
    EXPECT_EQ(Items(), after) << "done again";
}

void RandomUser::PickLayout() {
    const HWND list = Control(IDC_LAYOUTS);
    if (OneIn(2)) return Work(list);
    Send(list, CB_SHOWDROPDOWN, TRUE);
    constexpr WORD kKeys[] = {VK_RETURN, VK_ESCAPE, VK_DOWN};
    for (const WORD key : {WORD{VK_DOWN}, WORD{VK_DOWN}, Any(kKeys)}) PressKey(list, key);
}

void RandomUser::TypeLayoutName() { EnterText(Control(IDC_LAYOUTS), AnyText()); }

void RandomUser::PressAnyKey() {
    const auto [key, held] = Any(kAnyKeys);
    const HWND focus = ::GetFocus();
    PressKey(focus && ::IsChild(m_dialog->Handle(), focus) ? focus : Window(), key, held);
}

void RandomUser::DropFiles() {
    std::wstring drop = {20, 0, 0, 0, 0, 0, 0, 0, 1, 0};  // a DROPFILES of 20 bytes, with wide names
    for (auto files = 1 + Below(3); files > 0; --files)
        drop += AnyFile() + (OneIn(2) ? L".pgl" : L".spp") + L'\0';
    const HGLOBAL memory = ::GlobalAlloc(GHND, (drop.size() + 1) * sizeof(wchar_t));
    std::ranges::copy(drop, static_cast<wchar_t*>(::GlobalLock(memory)));
    ::GlobalUnlock(memory);
    m_dialog->Send(WM_DROPFILES, memory);
}

void RandomUser::Resize() {
    constexpr WPARAM kCommands[] = {SC_MAXIMIZE, SC_RESTORE, SC_MINIMIZE, SC_RESTORE};
    if (!m_host && OneIn(2)) {
        m_dialog->Send(WM_SYSCOMMAND, Any(kCommands));
        return;
    }
    ::SetWindowPos(m_dialog->Handle(), nullptr, static_cast<int>(Below(400)), static_cast<int>(Below(300)),
                   static_cast<int>(300 + Below(1200)), static_cast<int>(200 + Below(900)),
                   SWP_NOZORDER | SWP_NOACTIVATE);
}

void RandomUser::Rescale() {
    constexpr UINT kScales[] = {96, 120, 144, 192};
    const UINT dpi = Any(kScales);
    const RECT place = ToSystem(m_dialog->WindowRect());
    m_dialog->Send(WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
}

void RandomUser::ChangeColours() {
    constexpr UINT kMessages[] = {WM_SYSCOLORCHANGE, WM_THEMECHANGED, WM_SETTINGCHANGE};
    m_dialog->Send(Any(kMessages));
}

void RandomUser::PassTime() { m_dialog->Send(WM_TIMER, 2); }

void RandomUser::Float() {
    constexpr WPARAM kAbout = 0x10, kDock = 0x20, kFloat = 0x30;
    const HMENU menu = ::GetSystemMenu(m_dialog->Handle(), FALSE);
    constexpr WPARAM kCommands[] = {kAbout, kDock, kFloat};
    const WPARAM command = Any(kCommands);
    if (::GetMenuState(menu, static_cast<UINT>(command), MF_BYCOMMAND) != UINT(-1))
        m_dialog->Send(WM_SYSCOMMAND, command);
}

void RandomUser::Close() {
    if (OneIn(2)) {
        Item(IDC_CLOSE).Focus();
        PressKey(Control(IDC_CLOSE), VK_RETURN);
    } else {
        ::PostMessageW(m_dialog->Handle(), WM_CLOSE, 0, 0);
    }
}

void RandomUser::EndSession() {
    const bool ends = m_dialog->Send(WM_QUERYENDSESSION) != 0 && OneIn(2);
    if (!IsOpen()) return;
    m_dialog->Send(WM_ENDSESSION, ends);
    if (ends) m_dialog.reset();
}

void RandomUser::Crash() { m_dialog.reset(); }

void RandomUser::CloseHost() {
    if (!m_host) return;
    m_popups.m_ownersMatter = false;  // one that is being destroyed gets no box
    ::PostMessageW(m_host->Window(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitFor([&] { return !::IsWindow(m_host->Window()); })) << "the host does not close";
    m_host.reset();
    m_popups.m_ownersMatter = true;
}
