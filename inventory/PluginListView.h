// The category list and the plug-in list, their captions, and which panes go with a category.
#pragma once

#include <array>
#include <deque>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "ButtonRules.h"
#include "Dialog.h"
#include "ExclusionList.h"
#include "PluginInventory.h"
#include "PluginRecords.h"
#include "PluginTexts.h"
#include "PresetPlugin.h"
#include "RememberedRows.h"
#include "VisibilityRule.h"
#include "VstToolPaths.h"

/// A caption as the template has it, and with a count: "Registered Plug-ins (12 found)".
class CCountedCaption {
  public:
    void Attach(CWindow control);
    void ShowPlain() const { m_control.SetText(m_caption); }
    void ShowCount(unsigned count) const;
    /// The count when there is anything to count, else the plain caption.
    void Show(unsigned count) const { count == 0 ? ShowPlain() : ShowCount(count); }

  private:
    CWindow m_control;
    std::wstring m_caption;
};

/// A row that stands for a plug-in.
struct PluginRow {
    PluginListItem item;
    std::wstring name;  // as shown
};

class CPluginListView {
  public:
    CPluginListView(CDialog& dialog, CPluginInventory& inventory, const CExclusionList& exclusions,
                    const Visibility& visibility, const VstToolPaths& tools);

    void OnInitDialog();
    void OnDestroy();

    /// Finds all plug-ins anew and fills the category list; the plug-in list stays empty until it is
    /// refilled.
    void EnumeratePlugins();
    /// Called whenever the plug-ins were found anew.
    void WhenEnumerated(std::function<void()> call) { m_whenEnumerated = std::move(call); }
    /// The user chose a category; the one that is shown already is not filled again.
    void RefreshPluginList();
    /// Fills the plug-in list even if its category is shown already.
    void Refill();
    /// The same, and what was remembered is selected again and in view.
    void Refill(const CRememberedRows& rows);
    /// The user selected plug-ins.
    void OnSelectionChanged();

    /// Shows the plug-ins only that have all words of the text, in every category that is shown from now on.
    void Find(const std::wstring& text);
    /// Selects the first plug-in alone; where there is none, shows the next category that has one. False
    /// then.
    bool GoToFirst();
    bool HasPlugins() const { return !m_items.empty(); }

    std::optional<Category> SelectedCategory() const;
    /// The selected plug-ins, from top to bottom.
    std::vector<PluginRow> SelectedRows() const;
    /// The plug-in that is selected alone, else the one under the caret; nothing when there is none.
    std::optional<PluginRow> CaretRow() const;
    /// An item of a row is a PluginListItem, null for the row that says that there are no entries.
    CListBox Plugins() const { return m_dialog.Control<CListBox>(IDC_PLUGINS); }
    bool CanExcludeSelection() const;
    // The same as the preset commands take them.
    std::vector<PresetPlugin> SelectedPlugins() const;
    std::optional<PresetPlugin> CaretPlugin() const;

  private:
    CListBox Categories() const { return m_dialog.Control<CListBox>(IDC_CATEGORIES); }
    void FillCategories(bool withLegacy) const;
    void ClearPlugins();
    bool ShowsClsid(const Guid& clsid) const;
    void AddRow(CListBox plugins, const std::wstring& name, const PluginListItem& item);
    void FillFromEntries(Category category);
    void FillFromInventory(Category category);
    using CategoryCounts = std::array<unsigned, kCategories.size()>;
    /// How many rows each category's list would have.
    CategoryCounts CountRows();
    void ShowCount(CListBox plugins, bool isEmpty);
    void ShowNextCategory();
    void Fill(Category category);
    void ShowNoSelection(Category category) const;
    void ShowSelection();
    void PutCaretOnSelection() const;
    void ShowPanesOf(Category category) const;
    void EnableButtons(std::span<const ButtonRule> rules, const PaneState& state) const;
    PaneState StateOf(Category category) const;

    CDialog& m_dialog;
    CPluginInventory& m_inventory;
    const CExclusionList& m_exclusions;
    const Visibility& m_visibility;
    const VstToolPaths& m_tools;

    CCountedCaption m_categoriesCaption;
    CCountedCaption m_pluginsCaption;
    CCountedCaption m_presetsCaption;
    std::function<void()> m_whenEnumerated;
    std::optional<Category> m_shown;     // nothing: the next refresh fills, whatever is selected
    std::deque<PluginListItem> m_items;  // the rows' data; a deque keeps its places
    std::vector<std::wstring> m_words;   // that all rows have
    CPluginTexts m_texts;                // up to date while there are words
    // Of what is selected, so that they are not counted again when the list is narrowed.
    std::unordered_map<Guid, unsigned, GuidHash> m_presets;
};
