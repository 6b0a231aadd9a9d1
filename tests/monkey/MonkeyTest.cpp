// The random user's walk, and what has to be so after each step.
//
//   MONKEY_SEED   another one is another walk
//   MONKEY_STEPS  how far it goes
//   MONKEY_FIRST  the step that it begins with: what went before may not have been needed
//   MONKEY_ALL    1: everything is checked after every step
#include <windows.h>

#include <commctrl.h>
#include <shlwapi.h>
#include <winternl.h>

#include <algorithm>
#include <cstdlib>
#include <set>

#include "Files.h"
#include "FoldedText.h"
#include "LayoutReader.h"
#include "PermanentExclusions.h"
#include "PluginOverview.h"
#include "PluginTexts.h"
#include "PresetListMgr.h"
#include "ProgramPath.h"
#include "WordMatch.h"
#include "monkey/RandomUser.h"
#include "support/Snapshot.h"

namespace {

using namespace support;

/// What the program may change: keys, values in them, and files.
constexpr const wchar_t* kMayChange[] = {
    L"User\\Software\\Corvane Music Software\\Corvane Plugin Manager\\*",
    L"User\\Software\\Corvane Music Software\\ExcludedPlugIns\\*",
    L"User\\Software\\Corvane Music Software\\ActiveMovie\\Presets\\*",
    L"User\\Software\\Corvane Music Software\\MIDI Filters\\*",
    L"User\\Software\\Corvane Music Software\\ControlSurfaces\\*",
    L"*\\Software\\Corvane Music Software\\Corvane VST*\\Inventory\\*\\FullName",
    L"Machine\\Software\\Corvane Music Software\\MIDI Filters\\{*}\\",
    L"Machine\\Software\\Classes\\CLSID\\{0*-0001-0002-0000-000000000000}\\*",
    L"Machine\\Software\\Classes\\CLSID\\{083863F1-70DE-11D0-BD40-00A0C911CE86}\\Instance\\*",
    L"Machine\\Software\\Classes\\CorvaneControlSurfaces\\{*}\\Description",
    L"Machine\\Software\\Classes\\DirectShow\\MediaObjects\\*",
    L"Machine\\Software\\Classes\\Filter\\{*}\\",
    L"Machine\\Software\\Classes\\QtzSoftSynths\\*",
    L"Layouts\\*.pgl",
    L"Layouts\\*.pgset",
    L"Layouts\\*.spp",
    L"Elsewhere\\Plug-in Manager files * data",
    // The system's own.
    L"*\\Software\\Microsoft\\*",
    L"User\\Software\\Wine\\*",
};

/// The name that the system's kernel has for a handle, or for its type.
std::wstring KernelName(HANDLE handle, int which) {
    using NtQueryObject = LONG(WINAPI*)(HANDLE, int, void*, ULONG, ULONG*);
    static const auto query = reinterpret_cast<NtQueryObject>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "NtQueryObject")));
    alignas(UNICODE_STRING) std::array<std::byte, 4096> answer{};
    ULONG size = 0;
    query(handle, which, answer.data(), ULONG{answer.size()}, &size);
    const auto& text = *reinterpret_cast<const UNICODE_STRING*>(answer.data());
    return {text.Buffer, text.Length / sizeof(wchar_t)};
}

/// The system's own enumeration of filters leaves keys open: of keys only the host's count.
bool IsHandle(std::uintptr_t number) {
    constexpr int kName = 1, kType = 2;
    const auto handle = reinterpret_cast<HANDLE>(number);
    DWORD flags = 0;
    return ::GetHandleInformation(handle, &flags) &&
           (KernelName(handle, kType) != L"Key" ||
            KernelName(handle, kName).find(L"Corvane Music") != std::wstring::npos);
}
bool IsGdiObject(std::uintptr_t number) { return ::GetObjectType(reinterpret_cast<HGDIOBJ>(number)) != 0; }
bool IsMenuHandle(std::uintptr_t number) { return ::IsMenu(reinterpret_cast<HMENU>(number)) != FALSE; }
bool IsOwnWindow(std::uintptr_t number) {
    return ::GetWindowThreadProcessId(reinterpret_cast<HWND>(number), nullptr) == ::GetCurrentThreadId();
}

/// What a process holds of the system. Counted one by one: not every system tells how many there are.
constexpr struct {
    const char* name;
    bool (*isOne)(std::uintptr_t number);
    std::uintptr_t step, end;
    int slack;  // some come with the first use
} kHeld[] = {
    {"handles", &IsHandle, 4, 0x20000, 4},
    {"GDI objects", &IsGdiObject, 1, 0x4000, 20},
    {"windows", &IsOwnWindow, 1, 0x10000, 2},
    {"menus", &IsMenuHandle, 1, 0x10000, 2},
};

int Number(const char* name, int otherwise) {
    const char* text = std::getenv(name);
    return text ? std::atoi(text) : otherwise;
}

class Monkey : public RandomUser {
  protected:
    void SetUp() override {
        RandomUser::SetUp();
        m_before = World();
    }
    void Check(int number) {
        struct Invariant {
            const char* what;
            int every;  // steps
            std::wstring (Monkey::*wrong)();
        };
        static constexpr Invariant kInvariants[] = {
            {"items and records are one to one", 1, &Monkey::WrongRecords},
            {"the tree's buttons go by its items", 1, &Monkey::WrongLayoutButtons},
            {"the keyboard reaches the dialog", 1, &Monkey::WrongKeyboard},
            {"captions tell what is there", 1, &Monkey::WrongCaptions},
            {"the panes' buttons go by the selection", 10, &Monkey::WrongPaneButtons},
            {"an unmodified layout is its file's", 1, &Monkey::WrongLayoutFile},
            {"the list shows what is registered and found", 50, &Monkey::WrongRows},
            {"nothing else changes in the registry or on the disk", 50, &Monkey::WrongWorld},
        };
        for (const auto& [what, every, wrong] : kInvariants) {
            if (!IsOpen() || number % every != 0) continue;
            const std::wstring found = (this->*wrong)();
            if (!found.empty()) ADD_FAILURE() << "not so: " << what << ": " << Utf8(found + L"\n" + Shape());
        }
    }
    /// Ends the program, and compares what it leaves with what it left the first time.
    void CheckHoldings() {
        m_dialog.reset();
        m_host.reset();
        // The tips of a docked dialog outlive it: in the program the process ends with it.
        HWND foreign = nullptr;
        while (const HWND tip = ::FindWindowExW(nullptr, foreign, TOOLTIPS_CLASSW, nullptr))
            if (!::DestroyWindow(tip)) foreign = tip;
        for (const auto& [name, isOne, step, end, slack] : kHeld) {
            int count = 0;
            for (std::uintptr_t number = step; number < end; number += step) count += isOne(number);
            std::printf("%d %s\n", count, name);
            EXPECT_LE(count, m_held.try_emplace(name, count).first->second + slack) << name;
        }
    }

  private:
    CPluginListView& List() { return m_dialog->View<CPluginListView>(); }
    bool IsChecked(int id) const { return Item(id).Send(BM_GETCHECK) == BST_CHECKED; }
    Visibility Shown() const {
        return {IsChecked(IDC_SHOW_ENABLED) ? VisibilityMode::Enabled : VisibilityMode::Excluded,
                IsChecked(IDC_SHOW_PERMANENT)};
    }
    /// Of the plug-ins that are listed.
    std::multiset<std::wstring> Names() {
        std::multiset<std::wstring> names;
        const CListBox list = List().Plugins();
        for (int row = 0; row < list.Count(); ++row)
            if (list.ItemOf<PluginListItem>(row)) names.insert(list.RowText(row));
        return names;
    }
    /// With a count where there is something to count.
    std::wstring WrongCaption(int id, std::size_t count) {
        const std::wstring text = Text(id);
        std::wstring caption = m_captions.try_emplace(id, text.substr(0, text.rfind(L" ("))).first->second;
        if (count > 0) caption += L" (" + std::to_wstring(count) + L" " + LoadText(IDS_FOUND) + L")";
        return text == caption ? L"" : text + L" instead of " + caption;
    }

    std::wstring WrongRecords() {
        const CTreeCtrlEx& tree = Tree();
        const CTreeView control(Window());  // which keeps the items once more
        if (tree.Root() != control.Root()) return L"the first item";
        std::unordered_set<LayoutItemId> ids;
        std::vector<HTREEITEM> selected;
        for (HTREEITEM item = tree.Root(); item; item = tree.NextInOrder(item)) {
            if (tree.IsSelected(item)) selected.push_back(item);
            const std::wstring label = tree.ItemText(item);
            const LayoutItem* record = Layout().Find(item);
            if (!record) return L"no record of " + label;
            const LayoutItemId id = record->id;
            constexpr bool (*kIsOfKind[])(LayoutItemId) = {&IsFolderId, &IsPluginId, &IsSeparatorId};
            if (!kIsOfKind[static_cast<std::size_t>(record->kind)](id) ||
                (record->kind != LayoutKind::Folder && tree.Child(item)))
                return L"kind of " + label;
            if (static_cast<LayoutItemId>(control.Data(item)) != id || Layout().HandleOf(id) != item ||
                !ids.insert(id).second)
                return L"id of " + label;
            if (tree.Parent(item) != control.Parent(item) || tree.Child(item) != control.Child(item) ||
                tree.NextSibling(item) != control.NextSibling(item) ||
                tree.PreviousSibling(item) != control.PreviousSibling(item))
                return L"place of " + label;
            if (!record->name.starts_with(label) || label.empty() != record->name.empty())
                return label + L" shows " + record->name;
            if (tree.IsSelected(item) && tree.Shown(item) != item) return L"selected and hidden: " + label;
        }
        if (tree.SelectedItems() != selected) return L"what is selected, in its order";
        for (const LayoutItemId id : m_ids)
            if (!ids.contains(id) && Layout().HandleOf(id)) return L"a record has no item";
        m_ids = std::move(ids);
        return {};
    }

    std::wstring WrongLayoutButtons() {
        const CTreeCtrlEx& tree = Tree();
        if (tree.IsPressing() || ::GetCapture()) return {};
        const auto selected = tree.SelectedItems();
        const HTREEITEM only = selected.size() == 1 ? selected.front() : nullptr;
        std::wstring can = tree.Root() ? L"ECS" : L"";
        if (!selected.empty()) can += L'R';
        if (only && tree.PreviousSibling(only)) can += L'U';
        if (only && tree.NextSibling(only)) can += L'D';
        if (!selected.empty() &&
            std::ranges::all_of(selected, [&](HTREEITEM item) { return tree.Parent(item); }))
            can += L'P';
        return Buttons() == can ? L"" : Buttons() + L" instead of " + can;
    }

    std::wstring WrongKeyboard() {
        const HWND focus = ::GetFocus();
        if (!focus && ::GetActiveWindow() == m_dialog->Handle() && !::IsIconic(m_dialog->Handle()))
            return L"nothing has it";
        if (focus && (!::IsWindowEnabled(focus) || !::IsWindowVisible(focus)))
            return L"on " + std::to_wstring(::GetDlgCtrlID(focus)) + L", which can't be used";
        return m_dialog->IsEnabled() ? L"" : L"the dialog is disabled";
    }

    /// But that of the presets: to count these takes time.
    std::wstring WrongCaptions() {
        for (const auto& [id, count] : Table<int, std::size_t>{{IDC_PLUGINS_LABEL, Names().size()},
                                                               {IDC_CATEGORIES_LABEL, kCategories.size()},
                                                               {IDC_EXCLUSION_GROUP, 0},
                                                               {IDC_VST_GROUP, 0},
                                                               {IDC_ADAPTER_GROUP, 0}})
            if (std::wstring wrong = WrongCaption(id, count); !wrong.empty()) return wrong;
        return {};
    }

    std::wstring WrongPaneButtons() {
        const auto category = List().SelectedCategory();
        const auto selected = List().SelectedPlugins();
        const bool enabledShown = Shown().mode == VisibilityMode::Enabled;
        if (IsEnabled(IDC_SHOW_PERMANENT) == enabledShown) return Text(IDC_SHOW_PERMANENT);
        if (Text(IDC_EXCLUDE) != LoadText(enabledShown ? IDS_EXCLUDE_PLUGIN : IDS_ENABLE_PLUGIN))
            return Text(IDC_EXCLUDE);
        if (!category || selected.empty()) return {};
        PaneState state{.category = *category,
                        .mode = Shown().mode,
                        .selectedRows = static_cast<int>(SelectedRows(Control(IDC_PLUGINS)).size())};
        for (const PresetPlugin& plugin : selected) state.presets += CPresetListMgr(plugin).CountPresets();
        for (const ButtonRule& rule : buttons::kAfterSelection)
            if (IsEnabled(rule.id) != rule.canBeUsed(state)) return Text(rule.id);
        return WrongCaption(IDC_PRESETS_GROUP, state.presets);
    }

    std::wstring WrongRows() {
        wchar_t cue[256] = L"";
        Item(IDC_FIND).Send(EM_GETCUEBANNER, cue, 256);
        const auto category = List().SelectedCategory();
        if (!category || cue == LoadText(IDS_FIND_IN_LAYOUT_CUE)) return {};  // its words are the tree's then
        const CPluginDatabase none;
        CPluginInventory inventory(kDefaultVstKey, none);
        inventory.ReadAdapterInventory();
        inventory.Enumerate(true);
        CExclusionList excluded;
        excluded.Load();
        const auto words = WordsOf(FoldedText(Text(IDC_FIND)));
        std::multiset<std::wstring> expected;
        for (const StudioPlugin& plugin : ListAllPlugins(inventory, excluded))
            for (const Guid& id : ExclusionIdsOf(plugin)) {
                const auto text = SearchText(plugin.name, plugin.vendor, FileNameOf(plugin.file), id);
                if (plugin.item.category == category && MatchesWords(FoldedText(text), words) &&
                    IsListed(Shown(), IsPermanentlyExcluded(id), excluded.Contains(id)))
                    expected.insert(plugin.name);
            }
        std::vector<std::wstring> wrong;
        std::ranges::set_symmetric_difference(Names(), expected, std::back_inserter(wrong));
        return wrong.empty() ? L"" : wrong.front();
    }

    static std::wstring ItemsOf(const std::vector<LayoutNode>& nodes, std::size_t depth) {
        std::wstring items;
        for (const auto& [record, children] : nodes)
            items += LineOf(record, depth) + ItemsOf(children, depth + 1);
        return items;
    }
    std::wstring WrongLayoutFile() {
        const std::wstring file = Text(IDC_LAYOUT_FILE);
        if (Layout().IsModified() || file.empty() || View().IsEditingLabel()) return {};
        const LayoutPlugins plugins{[](const Guid&) { return nullptr; }, [](LayoutItem&) {}};
        CLayoutReader reader(plugins);
        const std::wstring read =
            reader.Load(m_files.Path(file), false) ? ItemsOf(reader.Items(), 0) : L"none";
        return read == Items() ? L"" : file + L" holds\n" + read + L"and the tree\n" + Items();
    }

    Snapshot World() const {
        Snapshot world;
        AddKey(world, *CRegKey::Open(HKEY_CURRENT_USER, L""), L"User");
        AddKey(world, *CRegKey::Open(HKEY_LOCAL_MACHINE, L""), L"Machine");
        for (const auto& [name, folder] :
             Table<Line, std::filesystem::path>{{L"Layouts\\", m_files.Folder()},
                                                {L"Elsewhere\\", m_files.Folder().parent_path()},
                                                {L"Elsewhere\\", ProgramFolder()}})
            for (const auto& entry : std::filesystem::directory_iterator(folder))
                world[name + entry.path().filename().wstring()];
        return world;
    }
    std::wstring WrongWorld() {
        for (const std::wstring& path : Differences(m_before, World())) {
            const auto matches = [&path](const wchar_t* may) {
                return ::PathMatchSpecW((path + L'\\').c_str(), may) || ::PathMatchSpecW(path.c_str(), may);
            };
            if (std::ranges::none_of(kMayChange, matches)) return path;
        }
        return {};
    }

    Snapshot m_before;                  // the first step
    std::map<std::string, int> m_held;  // after the first thousand steps
};

TEST_F(Monkey, Walks) {
    const auto seed = static_cast<unsigned>(Number("MONKEY_SEED", 1));
    const int last = Number("MONKEY_STEPS", 5000);
    const bool all = Number("MONKEY_ALL", 0) != 0;
    for (int step = Number("MONKEY_FIRST", 1); step <= last && !HasFailure(); ++step) {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
        Step(seed, step);
        if (!HasFailure()) Check(all ? 0 : step);
        constexpr int kFarApart = 1000;
        if (!HasFailure() && (step % kFarApart == 0 || step == last)) CheckHoldings();
    }
}

}  // namespace
