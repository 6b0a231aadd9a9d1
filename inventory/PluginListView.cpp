#include "PluginListView.h"

#include <algorithm>
#include <numeric>

#include "FoldedText.h"
#include "FriendlyNames.h"
#include "PermanentExclusions.h"
#include "PluginDetails.h"
#include "PresetListMgr.h"
#include "Resources.h"
#include "TextFormat.h"
#include "WholeRows.h"
#include "WordMatch.h"

namespace {

/// About the length of a plug-in's name, for the list box's storage.
constexpr int kTypicalNameCharacters = 24;

/// The dialog that manages the presets of one plug-in shows this much of its name.
constexpr std::size_t kMaxCaretName = 128;

/// Nothing for the row that says that there are no entries.
std::optional<PluginRow> PluginAt(const CListBox& plugins, int row) {
    const auto* item = plugins.ItemOf<PluginListItem>(row);
    return item ? std::optional(PluginRow{*item, plugins.RowText(row)}) : std::nullopt;
}

PresetPlugin PresetPluginOf(PluginRow row) {
    return {row.item.clsid, RowOf(row.item.category).guid, std::move(row.name)};
}

}  // namespace

void CCountedCaption::Attach(CWindow control) {
    m_control = control;
    m_caption = control.Text();
}

void CCountedCaption::ShowCount(unsigned count) const {
    m_control.SetText(FormatText(L"%s (%d %s)", m_caption, count, LoadText(IDS_FOUND)));
}

CPluginListView::CPluginListView(CDialog& dialog, CPluginInventory& inventory,
                                 const CExclusionList& exclusions, const Visibility& visibility,
                                 const VstToolPaths& tools)
    : m_dialog(dialog),
      m_inventory(inventory),
      m_exclusions(exclusions),
      m_visibility(visibility),
      m_tools(tools) {}

void CPluginListView::OnInitDialog() {
    m_categoriesCaption.Attach(m_dialog.Item(IDC_CATEGORIES_LABEL));
    m_pluginsCaption.Attach(m_dialog.Item(IDC_PLUGINS_LABEL));
    m_presetsCaption.Attach(m_dialog.Item(IDC_PRESETS_GROUP));
    ShowWholeRows(Plugins().Handle());
}

void CPluginListView::OnDestroy() {
    ClearPlugins();
    m_inventory.Clear();
}

void CPluginListView::EnumeratePlugins() {
    const CWaitCursor wait;
    const int selected = Categories().CurrentRow().value_or(0);
    Categories().Clear();
    m_categoriesCaption.ShowCount(0);
    ClearPlugins();
    CPluginDetails(m_dialog).Clear();
    m_texts.Clear();

    FillCategories(m_inventory.ReadAdapterInventory());
    // The rows of the adapter's plug-ins come last; they go when it is removed.
    const bool classified = Categories().SetCurrentRow(selected) || Categories().SetCurrentRow(0);
    // Kept: the caption tells the size of the table, not the number of rows.
    m_categoriesCaption.ShowCount(kCategories.size());
    // Once: where a name can't be kept, it would have to be corrected for ever.
    if (m_inventory.Enumerate(classified) && CFriendlyNames::CorrectWrapped(m_inventory) > 0)
        m_inventory.Enumerate(classified);
    if (m_whenEnumerated) m_whenEnumerated();
}

void CPluginListView::FillCategories(bool withLegacy) const {
    const std::size_t rows = kCategoryListOrder.size() - (withLegacy ? 0 : kLegacyCategories);
    for (std::size_t i = 0; i < rows; ++i) {
        const int row = Categories().Add(LoadText(RowOf(kCategoryListOrder[i]).captionId));
        Categories().SetData(row, static_cast<LPARAM>(kCategoryListOrder[i]));
    }
}

std::optional<Category> CPluginListView::SelectedCategory() const {
    const auto row = Categories().CurrentRow();
    if (!row) return std::nullopt;
    return static_cast<Category>(Categories().Data(*row));
}

std::vector<PluginRow> CPluginListView::SelectedRows() const {
    const CListBox plugins = Plugins();
    std::vector<PluginRow> selected;
    for (const int row : plugins.SelectedRows()) {
        if (auto plugin = PluginAt(plugins, row)) selected.push_back(std::move(*plugin));
    }
    return selected;
}

std::optional<PluginRow> CPluginListView::CaretRow() const {
    const auto row = Plugins().CurrentRow();
    return row ? PluginAt(Plugins(), *row) : std::nullopt;
}

std::vector<PresetPlugin> CPluginListView::SelectedPlugins() const {
    std::vector<PresetPlugin> plugins;
    for (PluginRow& row : SelectedRows()) plugins.push_back(PresetPluginOf(std::move(row)));
    return plugins;
}

std::optional<PresetPlugin> CPluginListView::CaretPlugin() const {
    auto row = CaretRow();
    if (!row) return std::nullopt;
    row->name.resize(std::min(row->name.size(), kMaxCaretName));
    return PresetPluginOf(std::move(*row));
}

void CPluginListView::ClearPlugins() {
    Plugins().Clear();
    m_items.clear();
    m_pluginsCaption.ShowPlain();
}

void CPluginListView::Refill() {
    m_shown.reset();
    RefreshPluginList();
}

void CPluginListView::Refill(const CRememberedRows& rows) {
    Refill();
    rows.Restore(Plugins());
    OnSelectionChanged();
}

void CPluginListView::RefreshPluginList() {
    const auto category = SelectedCategory();
    if (!category || category == m_shown) return;
    Fill(*category);
    ShowNoSelection(*category);
}

void CPluginListView::Fill(Category category) {
    m_shown = category;
    if (!m_words.empty()) m_texts.Update(m_inventory);
    IsVstCategory(category) ? FillFromInventory(category) : FillFromEntries(category);
}

void CPluginListView::ShowNoSelection(Category category) const {
    const CPluginDetails details(m_dialog);
    details.Clear();
    details.ShowFieldsOf(category);
    ShowPanesOf(category);
    m_presetsCaption.ShowPlain();
}

bool CPluginListView::ShowsClsid(const Guid& clsid) const {
    return IsListed(m_visibility, IsPermanentlyExcluded(clsid), m_exclusions.Contains(clsid));
}

void CPluginListView::AddRow(CListBox plugins, const std::wstring& name, const PluginListItem& item) {
    const int row = plugins.Add(name);
    if (row >= 0) plugins.SetData(row, reinterpret_cast<LPARAM>(&m_items.emplace_back(item)));
}

void CPluginListView::FillFromEntries(Category category) {
    ClearPlugins();
    const auto& entries = m_inventory.Entries();
    const CListBox plugins = Plugins();  // looked up once: that costs more than adding a row
    bool isEmpty = true;
    std::unordered_map<Guid, unsigned, GuidHash> namesakes;
    const CRedrawLock noRedraw(plugins);
    const CQuickFill quick(plugins.Handle());
    const CWaitCursor wait;
    plugins.Reserve(static_cast<int>(entries.size()), kTypicalNameCharacters);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const PluginEntry& entry = entries[i];
        if (!HasRow(entry) || entry.category != category) continue;
        isEmpty = false;
        if (!ShowsClsid(entry.clsid)) continue;
        // Counted with those that aren't found: it is the same plug-in whatever is looked for.
        const unsigned namesake = namesakes[entry.clsid]++;
        if (!m_texts.EntryHas(i, m_words)) continue;
        AddRow(plugins, *entry.name,
               {.sourceIndex = static_cast<unsigned>(i),
                .clsid = entry.clsid,
                .md5Clsid = {},
                .fromInventory = false,
                .isX64 = false,
                .category = category,
                .namesake = namesake});
    }
    ShowCount(plugins, isEmpty);
}

void CPluginListView::FillFromInventory(Category category) {
    ClearPlugins();
    const auto& records = m_inventory.Vst().Records();
    const CListBox plugins = Plugins();
    bool isEmpty = true;
    std::size_t place = 0;
    const CRedrawLock noRedraw(plugins);
    const CQuickFill quick(plugins.Handle());
    const CWaitCursor wait;
    plugins.Reserve(static_cast<int>(records.size()), kTypicalNameCharacters);
    for (const auto& [clsid, record] : records) {
        const std::size_t index = place++;
        if (!HasRow(clsid, record) || record.category != category) continue;
        isEmpty = false;
        if (!ShowsClsid(clsid) || !m_texts.RecordHas(index, m_words)) continue;
        AddRow(plugins, record.name,
               {.sourceIndex = 0,
                .clsid = clsid,
                .md5Clsid = record.md5Clsid,
                .fromInventory = true,
                .isX64 = record.isX64,
                .category = category,
                .namesake = 0});
    }
    ShowCount(plugins, isEmpty);
}

CPluginListView::CategoryCounts CPluginListView::CountRows() {
    if (!m_words.empty()) m_texts.Update(m_inventory);
    CategoryCounts counts{};
    const auto& entries = m_inventory.Entries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const PluginEntry& entry = entries[i];
        if (HasRow(entry) && ShowsClsid(entry.clsid) && m_texts.EntryHas(i, m_words))
            ++counts[static_cast<std::size_t>(*entry.category)];
    }
    std::size_t place = 0;
    for (const auto& [clsid, record] : m_inventory.Vst().Records()) {
        const std::size_t index = place++;
        if (HasRow(clsid, record) && ShowsClsid(clsid) && m_texts.RecordHas(index, m_words))
            ++counts[static_cast<std::size_t>(*record.category)];
    }
    return counts;
}

/// Where nothing is found, the one row tells of other categories; a category without any plug-in says so;
/// one whose plug-ins are all hidden stays blank.
void CPluginListView::ShowCount(CListBox plugins, bool isEmpty) {
    const CategoryCounts counts = m_items.empty() && !m_words.empty() ? CountRows() : CategoryCounts{};
    if (const unsigned elsewhere = std::accumulate(counts.begin(), counts.end(), 0U)) {
        plugins.Add(FormatText(LoadText(IDS_FOUND_ELSEWHERE), elsewhere));
    } else if (isEmpty) {
        plugins.Add(LoadText(IDS_NO_ENTRIES));
    }
    m_pluginsCaption.Show(static_cast<unsigned>(m_items.size()));
}

PaneState CPluginListView::StateOf(Category category) const {
    return {.category = category,
            .mode = m_visibility.mode,
            .selectedRows = Plugins().SelectedCount(),
            .presets = 0,
            .scannerExists = m_tools.ScannerExists(),
            .adapterProgramExists = m_tools.AdapterProgramExists()};
}

bool CPluginListView::CanExcludeSelection() const {
    const auto category = SelectedCategory();
    return category && buttons::Excludable(StateOf(*category));
}

void CPluginListView::ShowPanesOf(Category category) const {
    const bool legacy = IsLegacyWrapped(category);
    for (const int id : {IDC_VST_GROUP, IDC_VST_OPTIONS, IDC_VST_PROPERTIES, IDC_VST_SCAN}) {
        m_dialog.Item(id).Show(!legacy);
    }
    for (const int id : {IDC_ADAPTER_GROUP, IDC_ADAPTER_WIZARD, IDC_ADAPTER_PROPERTIES})
        m_dialog.Item(id).Show(legacy);
    EnableButtons(buttons::kAfterFill, StateOf(category));
}

void CPluginListView::EnableButtons(std::span<const ButtonRule> rules, const PaneState& state) const {
    for (const ButtonRule& rule : rules) m_dialog.EnableItem(rule.id, rule.canBeUsed(state), IDC_PLUGINS);
}

/// Where one row alone is left selected, keys and commands go on from there; the list does not move for that.
void CPluginListView::PutCaretOnSelection() const {
    const CListBox plugins = Plugins();
    const auto row = plugins.CurrentRow();
    if (row == plugins.CaretRow()) return;
    const int top = plugins.TopRow();
    plugins.SetCaretRow(*row);
    plugins.SetTopRow(top);
}

void CPluginListView::Find(const std::wstring& text) {
    auto words = WordsOf(FoldedText(text));
    if (words == m_words) return;
    m_words = std::move(words);
    const auto category = SelectedCategory();
    if (!category) return;
    const CListBox plugins = Plugins();
    const int selectedBefore = plugins.SelectedCount();
    const auto rows = CRememberedRows::SelectionOf(plugins);
    Fill(*category);
    rows.Restore(plugins);
    const auto selected = plugins.SelectedRows();
    if (!selected.empty()) plugins.SetCaretRow(selected.front());
    // What the panes show of the same plug-ins need not be read again with every key.
    if (std::ssize(selected) == selectedBefore) return;
    selected.empty() ? ShowNoSelection(*category) : ShowSelection();
}

bool CPluginListView::GoToFirst() {
    if (m_items.empty()) {
        ShowNextCategory();
        return false;
    }
    const CListBox plugins = Plugins();
    constexpr int kAllRows = -1;
    plugins.Select(kAllRows, false);
    plugins.Select(0);
    plugins.SetCaretRow(0);
    OnSelectionChanged();
    return true;
}

/// The one below the present category, or above it behind the last; nothing when there is none.
void CPluginListView::ShowNextCategory() {
    const CategoryCounts counts = CountRows();
    const CListBox categories = Categories();
    const int rows = categories.Count();
    const int current = categories.CurrentRow().value_or(0);
    for (int step = 1; step < rows; ++step) {
        const int row = (current + step) % rows;
        if (counts[static_cast<std::size_t>(categories.Data(row))] == 0) continue;
        categories.SetCurrentRow(row);
        return RefreshPluginList();
    }
}

void CPluginListView::OnSelectionChanged() {
    m_presets.clear();
    ShowSelection();
}

void CPluginListView::ShowSelection() {
    const auto category = SelectedCategory();
    const auto plugins = SelectedPlugins();
    if (!category || plugins.empty()) return;
    PutCaretOnSelection();

    PaneState state = StateOf(*category);
    for (const PresetPlugin& plugin : plugins) {
        const auto [known, isNew] = m_presets.try_emplace(plugin.clsid);
        if (isNew) known->second = CPresetListMgr(plugin).CountPresets();
        state.presets += known->second;
    }
    EnableButtons(buttons::kAfterSelection, state);

    const CPluginDetails details(m_dialog);
    plugins.size() == 1 ? details.ShowPlugin(m_inventory, plugins.front().clsid, *category)
                        : details.ShowSeveral(*category);
    m_presetsCaption.Show(state.presets);
}
