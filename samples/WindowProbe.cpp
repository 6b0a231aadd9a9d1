// Works the program's main window from a script:
//   --wait SECONDS     until the plug-in list is filled; then its first row is selected, so that the details
//   show
//   --category ROW     chooses a row of the category list (and again the first plug-in)
//   --plugin NAME      selects this plug-in of the category
//   --press ID         clicks a button; what it opens is not waited for
//   --command ID       sends the window a menu's command; what it opens is not waited for
//   --leave-menu       closes a menu that is open
//   --menu ID          opens the control's menu as the keyboard does; that it opens is not waited for
//   --type ID TEXT     writes the text into an edit control
//   --drop FILE        drops this file on the window; what it opens is not waited for
//   --key ID KEY       presses the key of this number in the control
//   --open-item ROW    double-clicks this visible row of the layout tree
//   --popup TITLE      waits for a dialog whose title begins so; the options after it go for that dialog
//   --dialog           waits for a dialog of the main window; the options after it go for that dialog
//   --first-file       chooses the first file of a file dialog
//   --size WxH         gives the window this size
//   --geometry         waits until all is painted and prints the window's place as WIDTHxHEIGHT+LEFT+TOP
//   --toolbar          prints the place of the layout buttons in the same way
//   --focus ID         gives the control the keyboard focus
//   --hover ID         puts the mouse over the control
//   --close            closes it and waits until it is gone
//   --load NAME        loads a library, looked for as the system does when nobody says where
//   --sleep            only keeps the Windows session alive
#include <windows.h>

#include <commctrl.h>
#include <shlobj.h>

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "resource.h"

namespace {

constexpr wchar_t kTitle[] = L"Corvane Plug-in Manager x64";
constexpr DWORD kPollInterval = 100;
constexpr UINT kAnswerLimit = 20000;
constexpr DWORD kActionLimit = 20000;

std::optional<LRESULT> Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    DWORD_PTR answer = 0;
    if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kAnswerLimit, &answer) == 0)
        return std::nullopt;
    return static_cast<LRESULT>(answer);
}

template <typename Condition>
bool WaitFor(DWORD milliseconds, Condition condition) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    while (!condition()) {
        if (GetTickCount64() >= end) return false;
        Sleep(kPollInterval);
    }
    return true;
}

HWND g_popup = nullptr;

HWND MainWindow() { return g_popup != nullptr ? g_popup : FindWindowW(nullptr, kTitle); }

HWND Control(int id) { return GetDlgItem(MainWindow(), id); }

/// A control that was added to a file dialog stands in a child dialog.
HWND AddedControl(int id) { return GetDlgItem(FindWindowExW(g_popup, nullptr, L"#32770", nullptr), id); }

LRESULT RowCount(int list) { return Send(Control(list), LB_GETCOUNT).value_or(0); }

void Notify(int list) {
    Send(MainWindow(), WM_COMMAND, MAKEWPARAM(list, LBN_SELCHANGE), reinterpret_cast<LPARAM>(Control(list)));
}

// A list that is still being filled has another count a moment later.
bool IsFilled() {
    static LRESULT seen = 0;
    const LRESULT rows = RowCount(IDC_CATEGORIES) > 0 ? RowCount(IDC_PLUGINS) : 0;
    const bool settled = rows > 0 && rows == seen;
    seen = rows;
    return settled;
}

bool SelectFirstPlugin() {
    Send(Control(IDC_PLUGINS), LB_SETSEL, FALSE, -1);
    if (Send(Control(IDC_PLUGINS), LB_SETSEL, TRUE, 0).value_or(LB_ERR) == LB_ERR) return false;
    Notify(IDC_PLUGINS);
    return true;
}

bool Wait(const std::wstring& seconds) {
    if (!WaitFor(std::stoul(seconds) * 1000, IsFilled)) return false;
    // Without a window manager Wine leaves the caption of the active window painted as inactive.
    Send(MainWindow(), WM_NCACTIVATE, TRUE);
    return SelectFirstPlugin();
}

bool ChooseCategory(const std::wstring& row) {
    if (Send(Control(IDC_CATEGORIES), LB_SETCURSEL, std::stoul(row)).value_or(LB_ERR) == LB_ERR) return false;
    Notify(IDC_CATEGORIES);
    return SelectFirstPlugin();
}

bool SelectPlugin(const std::wstring& name) {
    Send(Control(IDC_PLUGINS), LB_SETSEL, FALSE, -1);
    const auto row = Send(Control(IDC_PLUGINS), LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                          reinterpret_cast<LPARAM>(name.c_str()));
    if (!row || Send(Control(IDC_PLUGINS), LB_SETSEL, TRUE, *row).value_or(LB_ERR) == LB_ERR) return false;
    Notify(IDC_PLUGINS);
    return true;
}

bool Press(const std::wstring& id) { return PostMessageW(Control(std::stoi(id)), BM_CLICK, 0, 0) != FALSE; }

bool Command(const std::wstring& id) {
    return PostMessageW(MainWindow(), WM_COMMAND, std::stoul(id), 0) != FALSE;
}

bool Key(const std::wstring& id, const std::wstring& key) {
    return PostMessageW(Control(std::stoi(id)), WM_KEYDOWN, std::stoul(key), 0) != FALSE;
}

bool OpenMenu(const std::wstring& id) {
    const HWND control = Control(std::stoi(id));
    return PostMessageW(MainWindow(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(control), -1) != FALSE;
}

bool Type(const std::wstring& id, const std::wstring& text) {
    return Send(Control(std::stoi(id)), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str())).has_value();
}

HANDLE ProcessOf(HWND window) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    return OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
}

/// The names stand in memory of the program, as if a folder window had handed them over.
bool Drop(const std::wstring& file) {
    struct {
        DROPFILES head{.pFiles = sizeof(DROPFILES), .pt = {}, .fNC = FALSE, .fWide = TRUE};
        wchar_t names[MAX_PATH] = {};
    } drop;
    file.copy(drop.names, MAX_PATH - 2);
    const HANDLE process = ProcessOf(MainWindow());
    void* const memory = VirtualAllocEx(process, nullptr, sizeof drop, MEM_COMMIT, PAGE_READWRITE);
    const bool written = WriteProcessMemory(process, memory, &drop, sizeof drop, nullptr) != FALSE;
    CloseHandle(process);
    return written && PostMessageW(MainWindow(), WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0) != FALSE;
}

/// The place of a tree item's text within the tree; the control fills it in its own process.
std::optional<RECT> PlaceOfTreeItem(HWND tree, LRESULT item) {
    const HANDLE process = ProcessOf(tree);
    void* const memory = VirtualAllocEx(process, nullptr, sizeof(RECT), MEM_COMMIT, PAGE_READWRITE);
    RECT place{};
    const bool told =
        WriteProcessMemory(process, memory, &item, sizeof item, nullptr) != FALSE &&
        Send(tree, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(memory)).value_or(FALSE) != FALSE &&
        ReadProcessMemory(process, memory, &place, sizeof place, nullptr) != FALSE;
    VirtualFreeEx(process, memory, 0, MEM_RELEASE);
    CloseHandle(process);
    return told ? std::optional(place) : std::nullopt;
}

bool OpenItem(const std::wstring& row) {
    const HWND tree = Control(IDC_LAYOUT_TREE);
    LRESULT item = Send(tree, TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE).value_or(0);
    for (int left = std::stoi(row); left > 0; --left)
        item = Send(tree, TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, item).value_or(0);
    const auto place = PlaceOfTreeItem(tree, item);
    if (!place) return false;
    const POINT inside{place->left + 4, (place->top + place->bottom) / 2};
    POINT screen = inside;
    // The program asks where the mouse is.
    return ClientToScreen(tree, &screen) != FALSE && SetCursorPos(screen.x, screen.y) != FALSE &&
           PostMessageW(tree, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(inside.x, inside.y)) != FALSE;
}

bool WaitForDialog() {
    const HWND main = MainWindow();
    const auto isIt = [](HWND window, LPARAM lParam) -> BOOL {
        if (!IsWindowVisible(window) || GetWindow(window, GW_OWNER) != reinterpret_cast<HWND>(lParam))
            return TRUE;
        g_popup = window;
        return FALSE;
    };
    return WaitFor(kActionLimit,
                   [&] { return EnumWindows(isIt, reinterpret_cast<LPARAM>(main)) == FALSE; }) &&
           Send(g_popup, WM_NCACTIVATE, TRUE).has_value();
}

bool WaitForPopup(const std::wstring& title) {
    const auto isIt = [](HWND window, LPARAM lParam) -> BOOL {
        const auto& wanted = *reinterpret_cast<const std::wstring*>(lParam);
        wchar_t text[256] = {};
        GetWindowTextW(window, text, 256);
        if (!IsWindowVisible(window) || !std::wstring_view(text).starts_with(wanted)) return TRUE;
        g_popup = window;
        return FALSE;
    };
    const auto parameter = reinterpret_cast<LPARAM>(&title);
    return WaitFor(kActionLimit,
                   [&] { return EnumWindows(isIt, parameter) == FALSE && g_popup != nullptr; }) &&
           Send(g_popup, WM_NCACTIVATE, TRUE).has_value();
}

bool ChooseFirstFile() {
    HWND files = nullptr;
    const auto isList = [](HWND window, LPARAM lParam) -> BOOL {
        wchar_t name[64] = {};
        GetClassNameW(window, name, 64);
        if (std::wstring_view(name) != L"SysListView32") return TRUE;
        *reinterpret_cast<HWND*>(lParam) = window;
        return FALSE;
    };
    EnumChildWindows(g_popup, isList, reinterpret_cast<LPARAM>(&files));
    return PostMessageW(files, WM_KEYDOWN, VK_DOWN, 0) != FALSE &&
           PostMessageW(files, WM_KEYDOWN, VK_HOME, 0) != FALSE && WaitFor(kActionLimit, [] {
               return Send(AddedControl(IDC_PRESET_LIST), LB_GETCOUNT).value_or(0) > 0;
           });
}

bool Resize(const std::wstring& size) {
    const size_t times = size.find(L'x');
    if (times == std::wstring::npos) return false;
    return SetWindowPos(MainWindow(), nullptr, 20, 20, std::stoi(size), std::stoi(size.substr(times + 1)),
                        SWP_NOZORDER | SWP_NOACTIVATE) != FALSE &&
           Send(MainWindow(), WM_NULL).has_value();
}

bool Print(const RECT& place) {
    return std::printf("%ldx%ld+%ld+%ld\n", place.right - place.left, place.bottom - place.top, place.left,
                       place.top) > 0;
}

bool IsPainted(HWND window) {
    const auto isPainted = [](HWND child, LPARAM) -> BOOL {
        return !IsWindowVisible(child) || GetUpdateRect(child, nullptr, FALSE) == FALSE;
    };
    return isPainted(window, 0) != FALSE && EnumChildWindows(window, isPainted, 0) != FALSE;
}

bool PrintGeometry() {
    const HWND window = MainWindow();
    RECT place{};
    SetCursorPos(0, 0);  // nothing is to look as if the mouse were over it
    if (!WaitFor(kActionLimit, [window] { return Send(window, WM_NULL) && IsPainted(window); })) return false;
    return GetWindowRect(window, &place) != FALSE && Print(place);
}

bool PrintToolbar() {
    constexpr int kMargin = 4;
    RECT first{};
    RECT last{};
    if (GetWindowRect(Control(IDC_LAYOUT_NEW), &first) == FALSE) return false;
    if (GetWindowRect(Control(IDC_LAYOUT_DELETE), &last) == FALSE) return false;
    return Print({first.left - kMargin, first.top - kMargin, last.right + kMargin, last.bottom + kMargin});
}

bool Focus(const std::wstring& id) {
    return Send(MainWindow(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(std::stoi(id))), TRUE)
        .has_value();
}

bool Hover(const std::wstring& id) {
    const HWND control = Control(std::stoi(id));
    RECT place{};
    if (GetWindowRect(control, &place) == FALSE) return false;
    return SetCursorPos((place.left + place.right) / 2, (place.top + place.bottom) / 2) != FALSE &&
           Send(control, WM_MOUSEMOVE, 0, MAKELPARAM(1, 1)).has_value() &&
           WaitFor(kActionLimit, [control] { return GetUpdateRect(control, nullptr, FALSE) == FALSE; });
}

bool Close() {
    const HWND window = MainWindow();
    return PostMessageW(window, WM_CLOSE, 0, 0) != FALSE &&
           WaitFor(kActionLimit, [window] { return IsWindow(window) == FALSE; });
}

// Takes the option's value, if it has one, from the arguments.
bool Do(std::wstring_view option, wchar_t**& argument) {
    const auto value = [&argument] { return std::wstring(*argument != nullptr ? *argument++ : L""); };
    if (option == L"--wait") return Wait(value());
    if (option == L"--category") return ChooseCategory(value());
    if (option == L"--plugin") return SelectPlugin(value());
    if (option == L"--press") return Press(value());
    if (option == L"--command") return Command(value());
    if (option == L"--leave-menu") return Send(MainWindow(), WM_CANCELMODE).has_value();
    if (option == L"--menu") return OpenMenu(value());
    if (option == L"--drop") return Drop(value());
    if (option == L"--key" || option == L"--type") {
        const std::wstring id = value();
        return option == L"--key" ? Key(id, value()) : Type(id, value());
    }
    if (option == L"--open-item") return OpenItem(value());
    if (option == L"--popup") return WaitForPopup(value());
    if (option == L"--dialog") return WaitForDialog();
    if (option == L"--first-file") return ChooseFirstFile();
    if (option == L"--size") return Resize(value());
    if (option == L"--geometry") return PrintGeometry();
    if (option == L"--toolbar") return PrintToolbar();
    if (option == L"--focus") return Focus(value());
    if (option == L"--hover") return Hover(value());
    if (option == L"--close") return Close();
    if (option == L"--load") return LoadLibraryW(value().c_str()) != nullptr;
    if (option == L"--sleep") Sleep(INFINITE);
    return false;
}

}  // namespace

int wmain(int, wchar_t** argv) {
    wchar_t** argument = argv + 1;
    while (*argument != nullptr) {
        const wchar_t* option = *argument++;
        if (Do(option, argument)) continue;
        std::fwprintf(stderr, L"window_probe: %ls failed\n", option);
        return 1;
    }
    return 0;
}
