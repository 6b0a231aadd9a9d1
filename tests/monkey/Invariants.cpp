// What has to be so after each step of the random user.
#include <windows.h>

#include <commctrl.h>
#include <shlwapi.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <sstream>

#include "FoldedText.h"
#include "PermanentExclusions.h"
#include "PresetListMgr.h"
#include "ProgramPath.h"
#include "RegValues.h"
#include "Resources.h"
#include "XmlTreeCtrl.h"
#include "monkey/RandomUser.h"

using namespace support;

namespace {

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

/// What grows for good is found in a long walk.
constexpr unsigned kSlack = 12;

void Gather(const CRegKey& key, const std::wstring& path, std::map<std::wstring, std::wstring>& state) {
    state[path];
    for (CRegValues values(key, 16383); values.Next();) {
        std::wstring& data = state[path + L"\\" + values.Name()];
        data = std::to_wstring(values.Type());
        for (const std::byte byte : values.Data()) data += static_cast<wchar_t>(byte);
    }
    for (const std::wstring& name : key.SubkeyNames())
        if (const auto subkey = key.OpenSubkey(name)) Gather(*subkey, path + L"\\" + name, state);
}

/// Words in any order, by hand.
bool HasWords(const std::wstring& text, const std::wstring& words) {
    std::wistringstream stream(FoldedText(words));
    const std::wstring folded = FoldedText(text);
    for (std::wstring word; stream >> word;)
        if (folded.find(word) == std::wstring::npos) return false;
    return true;
}

std::wstring FileName(const std::wstring& path) { return path.substr(path.rfind(L'\\') + 1); }

}  // namespace

const RandomUser::Invariant RandomUser::kInvariants[] = {
    {"items and records are one to one", 1, &RandomUser::WrongRecords},
    {"the tree's buttons go by its items", 1, &RandomUser::WrongLayoutButtons},
    {"the keyboard and the mouse are free", 1, &RandomUser::WrongWindows},
    {"captions tell what is there", 1, &RandomUser::WrongCaptions},
    {"the panes' buttons go by the selection", 10, &RandomUser::WrongPaneButtons},
    {"the list shows what is registered and found", 50, &RandomUser::WrongRows},
    {"an unmodified layout is its file's", 20, &RandomUser::WrongLayoutFile},
    {"nothing else in the registry changes", 50, &RandomUser::WrongKeys},
    {"nothing else is left on the disk", 50, &RandomUser::WrongFiles},
};

void RandomUser::Check(int number) {
    for (const auto& [what, every, wrong] : kInvariants) {
        if (!IsOpen() || number % every != 0) continue;
        const std::wstring found = (this->*wrong)();
        if (!found.empty())
            ADD_FAILURE() << "not so: " << what << ": " << Utf8(found) << "\n" << Utf8(Shape());
    }
}

void RandomUser::CheckHoldings() {
    m_dialog.reset();
    m_host.reset();
    const Holdings now = CountHoldings();
    std::printf("%s\n", Utf8(TextOf(now)).c_str());
    if (!m_holdings) m_holdings = now;
    for (const auto count : {&Holdings::handles, &Holdings::gdiObjects, &Holdings::windows, &Holdings::menus})
        EXPECT_LE(now.*count, (*m_holdings).*count + kSlack)
            << "more than at first: " << Utf8(TextOf(*m_holdings));
}

std::wstring RandomUser::ItemsOf(const CTreeCtrlWrapper& layout) {
    std::wstring items;
    const CTreeCtrlEx& tree = layout.Tree();
    for (HTREEITEM item = tree.Root(); item; item = tree.NextInOrder(item)) {
        for (HTREEITEM parent = tree.Parent(item); parent; parent = tree.Parent(parent)) items += L' ';
        const LayoutItem* record = layout.Find(item);
        if (!record) continue;
        items += std::to_wstring(static_cast<int>(record->kind)) + record->name + L'|' +
                 record->defaultPreset + L'\n';
    }
    return items;
}

std::wstring RandomUser::WrongRecords() {
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
        if (!kindFits || (record->kind != LayoutKind::Folder && tree.Child(item))) return L"kind of " + label;
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

std::wstring RandomUser::WrongLayoutButtons() {
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
          {IDC_PROMOTE,
           !selected.empty() &&
               std::ranges::all_of(selected, [&](HTREEITEM item) { return tree.Parent(item) != nullptr; })},
          {IDC_MOVE_UP, only && tree.PreviousSibling(only)},
          {IDC_MOVE_DOWN, only && tree.NextSibling(only)}})
        if (IsEnabled(id) != can) return Text(id) + (can ? L" is disabled" : L" is enabled");
    return {};
}

std::wstring RandomUser::WrongWindows() {
    const HWND focus = ::GetFocus();
    if (focus && (!::IsWindowEnabled(focus) || !::IsWindowVisible(focus)))
        return L"the focus is on a control that can't be used: " + std::to_wstring(::GetDlgCtrlID(focus));
    if (!m_dialog->IsEnabled()) return L"the dialog is disabled";
    if (View().CanUndo() == View().UndoName().empty() || View().CanRedo() == View().RedoName().empty())
        return L"a step without a name";
    return {};
}

std::wstring RandomUser::WrongCaptions() {
    const auto counted = [&](int id, std::size_t count) {
        return m_captions[id] + L" (" + std::to_wstring(count) + L" " + LoadText(IDS_FOUND) + L")";
    };
    const auto plugins = m_dialog->View<CPluginListView>().Plugins();
    std::size_t rows = 0;
    for (int row = 0; row < plugins.Count(); ++row) rows += plugins.ItemOf<PluginListItem>(row) != nullptr;
    for (const auto& [id, text] : {std::pair(IDC_PLUGINS_LABEL, rows == 0 ? m_captions[IDC_PLUGINS_LABEL]
                                                                          : counted(IDC_PLUGINS_LABEL, rows)),
                                   {IDC_CATEGORIES_LABEL, counted(IDC_CATEGORIES_LABEL, kCategories.size())},
                                   {IDC_EXCLUSION_GROUP, m_captions[IDC_EXCLUSION_GROUP]},
                                   {IDC_VST_GROUP, m_captions[IDC_VST_GROUP]},
                                   {IDC_ADAPTER_GROUP, m_captions[IDC_ADAPTER_GROUP]}})
        if (Text(id) != text) return Text(id) + L" instead of " + text;
    return {};
}

std::wstring RandomUser::WrongPaneButtons() {
    const auto& list = m_dialog->View<CPluginListView>();
    const auto tools = VstToolPaths::Read(kDefaultVstKey);
    const auto selected = list.SelectedPlugins();
    const auto category = list.SelectedCategory();
    if (!category) return {};
    const auto isChecked = [&](int id) { return Item(id).Send(BM_GETCHECK) == BST_CHECKED; };
    PaneState state{.category = *category,
                    .mode = isChecked(IDC_SHOW_ENABLED) ? VisibilityMode::Enabled : VisibilityMode::Excluded,
                    .selectedRows = static_cast<int>(SelectedRows(Control(IDC_PLUGINS)).size()),
                    .presets = 0,
                    .scannerExists = tools.ScannerExists(),
                    .adapterProgramExists = tools.AdapterProgramExists()};
    for (const PresetPlugin& plugin : selected) state.presets += CPresetListMgr(plugin).CountPresets();
    const bool enabledShown = state.mode == VisibilityMode::Enabled;
    if (IsEnabled(IDC_SHOW_PERMANENT) == enabledShown) return Text(IDC_SHOW_PERMANENT);
    if (Text(IDC_EXCLUDE) != LoadText(enabledShown ? IDS_EXCLUDE_PLUGIN : IDS_ENABLE_PLUGIN))
        return Text(IDC_EXCLUDE);
    if (selected.empty()) return {};
    for (const ButtonRule& rule : buttons::kAfterSelection)
        if (IsEnabled(rule.id) != rule.canBeUsed(state)) return Text(rule.id);
    const std::wstring& plain = m_captions[IDC_PRESETS_GROUP];
    const std::wstring presets = state.presets == 0 ? plain
                                                    : plain + L" (" + std::to_wstring(state.presets) + L" " +
                                                          LoadText(IDS_FOUND) + L")";
    return Text(IDC_PRESETS_GROUP) == presets ? L"" : Text(IDC_PRESETS_GROUP) + L" instead of " + presets;
}

std::wstring RandomUser::WrongRows() {
    wchar_t cue[256] = L"";
    Item(IDC_FIND).Send(EM_GETCUEBANNER, cue, 256);
    const auto category = m_dialog->View<CPluginListView>().SelectedCategory();
    if (!category || cue == LoadText(IDS_FIND_IN_LAYOUT_CUE)) return {};  // its words are the tree's then
    const CPluginDatabase none;
    CPluginInventory inventory(kDefaultVstKey, none);
    inventory.ReadAdapterInventory();
    inventory.Enumerate(true);
    CExclusionList excluded;
    excluded.Load();
    const auto isChecked = [&](int id) { return Item(id).Send(BM_GETCHECK) == BST_CHECKED; };
    const Visibility visibility{
        isChecked(IDC_SHOW_ENABLED) ? VisibilityMode::Enabled : VisibilityMode::Excluded,
        isChecked(IDC_SHOW_PERMANENT)};
    std::multiset<std::wstring> expected;
    const auto add = [&](const Guid& clsid, const std::wstring& name, const std::wstring& vendor,
                         const std::wstring& file) {
        if (IsListed(visibility, IsPermanentlyExcluded(clsid), excluded.Contains(clsid)) &&
            HasWords(name + L'\n' + vendor + L'\n' + FileName(file) + L'\n' + ClsidText(clsid),
                     Text(IDC_FIND)))
            expected.insert(name);
    };
    for (const PluginEntry& entry : inventory.Entries())
        if (HasRow(entry) && entry.category == category && !IsVstCategory(*category))
            add(entry.clsid, *entry.name, L"", inventory.PathOf(entry.clsid, *category).value_or(L""));
    for (const auto& [clsid, record] : inventory.Vst().Records())
        if (HasRow(clsid, record) && record.category == category)
            add(clsid, record.name, record.vendor, record.path);
    const auto plugins = m_dialog->View<CPluginListView>().Plugins();
    std::multiset<std::wstring> listed;
    for (int row = 0; row < plugins.Count(); ++row)
        if (plugins.ItemOf<PluginListItem>(row)) listed.insert(plugins.RowText(row));
    if (listed == expected) return {};
    std::wstring all = L"listed:";
    for (const auto& name : listed) all += L' ' + name;
    all += L", expected:";
    for (const auto& name : expected) all += L' ' + name;
    return all;
}

std::wstring RandomUser::WrongLayoutFile() {
    const std::wstring file = Text(IDC_LAYOUT_FILE);
    if (Layout().IsModified() || file.empty() || View().IsEditingLabel()) return {};
    const CWindow window(::CreateWindowExW(0, WC_TREEVIEWW, L"", WS_CHILD, 0, 0, 9, 9, m_dialog->Handle(),
                                           nullptr, nullptr, nullptr));
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

RandomUser::State RandomUser::Registry() {
    State state;
    for (const auto& [root, name] : {std::pair(HKEY_CURRENT_USER, L"User"), {HKEY_LOCAL_MACHINE, L"Machine"}})
        if (const auto key = CRegKey::Open(root, L"")) Gather(*key, name, state);
    return state;
}

std::wstring RandomUser::WrongKeys() {
    const State now = Registry();
    std::vector<State::value_type> changed;
    std::ranges::set_symmetric_difference(m_registry, now, std::back_inserter(changed));
    for (const auto& [path, data] : changed)
        if (std::ranges::none_of(kMayChange, [&](const wchar_t* may) {
                return ::PathMatchSpecW((path + L"\\").c_str(), may) || ::PathMatchSpecW(path.c_str(), may);
            }))
            return path;
    return {};
}

std::set<std::wstring> RandomUser::Elsewhere() const {
    std::set<std::wstring> names;
    for (const auto& folder :
         {m_files.Folder().parent_path(), m_current, std::filesystem::path(ProgramFolder())})
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            names.insert(entry.path().wstring());
    names.erase(m_data.wstring());
    return names;
}

std::wstring RandomUser::WrongFiles() {
    for (const std::wstring& name : m_files.Names())
        if (!name.ends_with(L".pgl") && !name.ends_with(L".spp") && name != L"folder") return name;
    for (const std::wstring& path : Elsewhere())
        if (!m_elsewhere.contains(path)) return path;
    return {};
}
