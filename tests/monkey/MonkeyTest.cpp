// The random user's walk, and what has to be so after each step.
//
//   MONKEY_SEED   another one is another walk
//   MONKEY_STEPS  how far it goes
//   MONKEY_FIRST  the step that it begins with: what went before may not have been needed
//   MONKEY_ALL    1: everything is checked after every step
#include <windows.h>

#include <commctrl.h>
#include <shlwapi.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <set>
#include <sstream>

#include "FoldedText.h"
#include "PermanentExclusions.h"
#include "PresetListMgr.h"
#include "ProgramPath.h"
#include "RegValues.h"
#include "XmlTreeCtrl.h"
#include "monkey/RandomUser.h"
#include "support/Holdings.h"

namespace {

using namespace support;
using State = std::map<std::wstring, std::wstring>;

/// What the program may change, as the names of keys, and of values in them.
constexpr const wchar_t* kMayChange[] = {
    L"User\\Software\\Corvane Music Software\\Corvane Plugin Manager\\*",
    L"User\\Software\\Corvane Music Software\\ExcludedPlugIns\\*",
    L"User\\Software\\Corvane Music Software\\ActiveMovie\\Presets\\*",
    L"User\\Software\\Corvane Music Software\\MIDI Filters\\*",
    L"User\\Software\\Corvane Music Software\\ControlSurfaces\\*",
    L"User\\Software\\Corvane Music Software\\Corvane VST\\Inventory\\*\\FullName",
    L"Machine\\Software\\Corvane Music Software\\Corvane VST Adapter\\Inventory\\*\\FullName",
    L"Machine\\Software\\Corvane Music Software\\MIDI Filters\\{*}\\",
    L"Machine\\Software\\Classes\\CLSID\\{0*-0001-0002-0000-000000000000}\\*",
    L"Machine\\Software\\Classes\\CLSID\\{083863F1-70DE-11D0-BD40-00A0C911CE86}\\Instance\\*",
    L"Machine\\Software\\Classes\\CorvaneControlSurfaces\\{*}\\Description",
    L"Machine\\Software\\Classes\\DirectShow\\MediaObjects\\*",
    L"Machine\\Software\\Classes\\Filter\\{*}\\",
    L"Machine\\Software\\Classes\\QtzSoftSynths\\*",
    // The system's own.
    L"User\\Software\\Microsoft\\*",
    L"User\\Software\\Wine\\*",
    L"Machine\\Software\\Microsoft\\*",
};

void Gather(const CRegKey& key, const std::wstring& path, std::map<std::wstring, std::wstring>& state) {
    state[path];
    const std::wstring within = path + L'\\';
    for (CRegValues values(key, 16383); values.Next();) {
        std::wstring& data = state[within + values.Name()];
        data = std::to_wstring(values.Type());
        for (const std::byte byte : values.Data()) data += static_cast<wchar_t>(byte);
    }
    for (const std::wstring& name : key.SubkeyNames())
        if (const auto subkey = key.OpenSubkey(name)) Gather(*subkey, within + name, state);
}

/// Words in any order, by hand.
bool HasWords(const std::wstring& text, const std::wstring& words) {
    std::wistringstream stream(FoldedText(words));
    const std::wstring folded = FoldedText(text);
    for (std::wstring word; stream >> word;)
        if (folded.find(word) == std::wstring::npos) return false;
    return true;
}

int Number(const char* name, int otherwise) {
    const char* text = std::getenv(name);
    return text ? std::atoi(text) : otherwise;
}

class Monkey : public RandomUser {
  protected:
    void SetUp() override {
        RandomUser::SetUp();
        m_registry = Registry();
        m_elsewhere = Elsewhere();
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
            {"an unmodified layout is its file's", 20, &Monkey::WrongLayoutFile},
            {"the list shows what is registered and found", 50, &Monkey::WrongRows},
            {"nothing else in the registry changes", 50, &Monkey::WrongKeys},
            {"nothing else is left on the disk", 50, &Monkey::WrongFiles},
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
        const Holdings now = CountHoldings();
        std::printf("%s\n", Utf8(support::TextOf(now)).c_str());
        if (!m_holdings) m_holdings = now;
        constexpr unsigned kSlack = 12;  // what grows for good is found in a long walk
        for (const auto count :
             {&Holdings::handles, &Holdings::gdiObjects, &Holdings::windows, &Holdings::menus})
            EXPECT_LE(now.*count, (*m_holdings).*count + kSlack)
                << "at first: " << Utf8(support::TextOf(*m_holdings));
    }

  private:
    /// With a count where there is something to count.
    std::wstring Caption(int id, std::size_t count) {
        return m_captions[id] +
               (count == 0 ? L"" : L" (" + std::to_wstring(count) + L" " + LoadText(IDS_FOUND) + L")");
    }
    bool IsChecked(int id) const { return Item(id).Send(BM_GETCHECK) == BST_CHECKED; }
    CPluginListView& List() { return m_dialog->View<CPluginListView>(); }
    VisibilityMode Mode() const {
        return IsChecked(IDC_SHOW_ENABLED) ? VisibilityMode::Enabled : VisibilityMode::Excluded;
    }

    std::wstring WrongRecords() {
        const CTreeCtrlEx& tree = Tree();
        std::unordered_set<LayoutItemId> ids;
        for (HTREEITEM item = tree.Root(); item; item = tree.NextInOrder(item)) {
            const std::wstring label = tree.ItemText(item);
            const LayoutItem* record = Layout().Find(item);
            if (!record) return L"no record of " + label;
            const LayoutItemId id = record->id;
            const bool kindFits = record->kind == LayoutKind::Folder   ? IsFolderId(id)
                                  : record->kind == LayoutKind::Plugin ? IsPluginId(id)
                                                                       : IsSeparatorId(id);
            if (!kindFits || (record->kind != LayoutKind::Folder && tree.Child(item)))
                return L"kind of " + label;
            if (static_cast<LayoutItemId>(tree.Data(item)) != id || Layout().HandleOf(id) != item ||
                !ids.insert(id).second)
                return L"id of " + label;
            if (!record->name.starts_with(label) || label.empty() != record->name.empty())
                return label + L" shows " + record->name;
            if (tree.IsSelected(item) && tree.Shown(item) != item) return L"selected and hidden: " + label;
        }
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
        const bool any = tree.Root() != nullptr;
        for (const auto& [id, can] :
             {std::pair(IDC_EXPAND_ALL, any),
              {IDC_COLLAPSE_ALL, any},
              {IDC_SORT_ALL, any},
              {IDC_REMOVE, !selected.empty()},
              {IDC_PROMOTE, !selected.empty() &&
                                std::ranges::all_of(
                                    selected, [&](HTREEITEM item) { return tree.Parent(item) != nullptr; })},
              {IDC_MOVE_UP, only && tree.PreviousSibling(only)},
              {IDC_MOVE_DOWN, only && tree.NextSibling(only)}})
            if (IsEnabled(id) != can) return Text(id) + (can ? L" is disabled" : L" is enabled");
        return {};
    }

    std::wstring WrongKeyboard() {
        const HWND focus = ::GetFocus();
        if (!focus && ::GetActiveWindow() == m_dialog->Handle() && !::IsIconic(m_dialog->Handle()))
            return L"nothing has it";
        if (focus && (!::IsWindowEnabled(focus) || !::IsWindowVisible(focus)))
            return L"on " + std::to_wstring(::GetDlgCtrlID(focus)) + L", which can't be used";
        return m_dialog->IsEnabled() ? L"" : L"the dialog is disabled";
    }

    std::wstring WrongCaptions() {
        std::size_t rows = 0;
        for (int row = 0; row < List().Plugins().Count(); ++row)
            rows += List().Plugins().ItemOf<PluginListItem>(row) != nullptr;
        for (const auto& [id, count] : {std::pair(IDC_PLUGINS_LABEL, rows),
                                        {IDC_CATEGORIES_LABEL, kCategories.size()},
                                        {IDC_EXCLUSION_GROUP, 0},
                                        {IDC_VST_GROUP, 0},
                                        {IDC_ADAPTER_GROUP, 0}})
            if (Text(id) != Caption(id, count)) return Text(id) + L" instead of " + Caption(id, count);
        return {};
    }

    std::wstring WrongPaneButtons() {
        const auto category = List().SelectedCategory();
        const auto selected = List().SelectedPlugins();
        const bool enabledShown = Mode() == VisibilityMode::Enabled;
        if (IsEnabled(IDC_SHOW_PERMANENT) == enabledShown) return Text(IDC_SHOW_PERMANENT);
        if (Text(IDC_EXCLUDE) != LoadText(enabledShown ? IDS_EXCLUDE_PLUGIN : IDS_ENABLE_PLUGIN))
            return Text(IDC_EXCLUDE);
        if (!category || selected.empty()) return {};
        PaneState state{.category = *category,
                        .mode = Mode(),
                        .selectedRows = static_cast<int>(SelectedRows(Control(IDC_PLUGINS)).size())};
        for (const PresetPlugin& plugin : selected) state.presets += CPresetListMgr(plugin).CountPresets();
        for (const ButtonRule& rule : buttons::kAfterSelection)
            if (IsEnabled(rule.id) != rule.canBeUsed(state)) return Text(rule.id);
        const std::wstring presets = Caption(IDC_PRESETS_GROUP, state.presets);
        return Text(IDC_PRESETS_GROUP) == presets ? L"" : Text(IDC_PRESETS_GROUP) + L" instead of " + presets;
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
        const Visibility visibility{Mode(), IsChecked(IDC_SHOW_PERMANENT)};
        std::multiset<std::wstring> expected;
        const auto add = [&](const Guid& clsid, const std::wstring& name, const std::wstring& vendor,
                             const std::wstring& file) {
            if (IsListed(visibility, IsPermanentlyExcluded(clsid), excluded.Contains(clsid)) &&
                HasWords(name + L'\n' + vendor + L'\n' + file.substr(file.rfind(L'\\') + 1) + L'\n' +
                             ClsidText(clsid),
                         Text(IDC_FIND)))
                expected.insert(name);
        };
        for (const PluginEntry& entry : inventory.Entries())
            if (HasRow(entry) && entry.category == category && !IsVstCategory(*category))
                add(entry.clsid, *entry.name, L"", inventory.PathOf(entry.clsid, *category).value_or(L""));
        for (const auto& [clsid, record] : inventory.Vst().Records())
            if (HasRow(clsid, record) && record.category == category)
                add(clsid, record.name, record.vendor, record.path);
        std::multiset<std::wstring> listed;
        for (int row = 0; row < List().Plugins().Count(); ++row)
            if (List().Plugins().ItemOf<PluginListItem>(row)) listed.insert(List().Plugins().RowText(row));
        std::vector<std::wstring> wrong;
        std::ranges::set_symmetric_difference(listed, expected, std::back_inserter(wrong));
        return wrong.empty() ? L"" : wrong.front();
    }

    std::wstring WrongLayoutFile() {
        const std::wstring file = Text(IDC_LAYOUT_FILE);
        if (Layout().IsModified() || file.empty() || View().IsEditingLabel()) return {};
        const CFocusKeeper focus;
        const CWindow window(::CreateWindowExW(0, WC_TREEVIEWW, L"", WS_CHILD | TVS_NOTOOLTIPS, 0, 0, 9, 9,
                                               m_dialog->Handle(), nullptr, nullptr, nullptr));
        std::wstring read;
        {
            CTreeCtrlEx tree;
            tree.Attach(window.Handle(), {.isGrey = [](HTREEITEM) { return false; },
                                          .onInput = [] {},
                                          .onCommandKey = [](UINT) { return false; },
                                          .onTimer = [] {}});
            CTreeCtrlWrapper layout(tree);
            const LayoutPlugins plugins{[](const Guid&) { return nullptr; }, [](LayoutItem&) {}};
            read = CXMLTreeCtrl(layout, plugins).Load(m_files.Path(file), false) ? ItemsOf(layout) : L"none";
        }
        ::DestroyWindow(window.Handle());
        return read == Items() ? L"" : file + L" holds\n" + read + L"and the tree\n" + Items();
    }

    static State Registry() {
        State state;
        for (const auto& [root, name] :
             {std::pair(HKEY_CURRENT_USER, L"User"), {HKEY_LOCAL_MACHINE, L"Machine"}})
            if (const auto key = CRegKey::Open(root, L"")) Gather(*key, name, state);
        return state;
    }

    std::wstring WrongKeys() {
        const State now = Registry();
        std::vector<State::value_type> changed;
        std::ranges::set_symmetric_difference(m_registry, now, std::back_inserter(changed));
        for (const auto& change : changed) {
            const std::wstring& path = change.first;
            const auto matches = [&](const wchar_t* may) {
                return ::PathMatchSpecW((path + L'\\').c_str(), may) || ::PathMatchSpecW(path.c_str(), may);
            };
            if (std::ranges::none_of(kMayChange, matches)) return path;
        }
        return {};
    }

    std::set<std::wstring> Elsewhere() const {
        std::set<std::wstring> names;
        for (const auto& folder :
             {m_files.Folder().parent_path(), m_current, std::filesystem::path(ProgramFolder())})
            for (const auto& entry : std::filesystem::directory_iterator(folder))
                names.insert(entry.path().wstring());
        names.erase(m_data.wstring());
        return names;
    }

    std::wstring WrongFiles() {
        for (const std::wstring& name : m_files.Names())
            if (!name.ends_with(L".pgl") && !name.ends_with(L".spp") && name != L"folder") return name;
        for (const std::wstring& path : Elsewhere())
            if (!m_elsewhere.contains(path)) return path;
        return {};
    }

    State m_registry;                    // at the start
    std::set<std::wstring> m_elsewhere;  // files at the start
    std::optional<Holdings> m_holdings;
};

TEST_F(Monkey, Walks) {
    const auto seed = static_cast<unsigned>(Number("MONKEY_SEED", 1));
    const int last = Number("MONKEY_STEPS", 3000);
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
