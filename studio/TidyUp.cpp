#include "TidyUp.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <unordered_set>

#include "BackupQuestion.h"
#include "Files.h"
#include "FoldedText.h"
#include "LongWork.h"
#include "MessageCaption.h"
#include "PluginOverview.h"
#include "PluginRemoval.h"
#include "RememberedRows.h"
#include "Resources.h"
#include "TextFormat.h"
#include "resource.h"

namespace {

/// By reason.
constexpr std::array<UINT, 6> kReasons = {IDS_TIDY_GONE,  IDS_TIDY_OUT_OF_REACH, IDS_TIDY_ALSO_VST3,
                                          IDS_TIDY_TWICE, IDS_TIDY_MAY_BOTH,     IDS_TIDY_IN_LAYOUT};

constexpr std::size_t kMostNames = 15;

std::wstring CaptionOf(int category) {
    return category < 0 || category >= static_cast<int>(kCategories.size())
               ? std::wstring()
               : LoadText(kCategories[static_cast<std::size_t>(category)].captionId);
}

std::vector<SharedLayoutItem> ItemsOf(const CLayoutTreeView& view, const CTreeCtrlWrapper& layout) {
    const CTreeCtrlEx& tree = view.Tree();
    std::vector<SharedLayoutItem> items;
    for (HTREEITEM item = tree.Root(); item; item = tree.NextInOrder(item)) {
        if (SharedLayoutItem record = layout.Share(item)) items.push_back(std::move(record));
    }
    return items;
}

/// A title of the table of plug-ins.
std::wstring PluginTitle(int column) {
    std::wstring titles = LoadText(IDS_PLUGIN_TABLE);
    for (; column > 0; --column) titles.erase(0, titles.find(L'\t') + 1);
    return titles.substr(0, titles.find(L'\t'));
}

/// One a line; of very many the first.
std::wstring Lines(const std::vector<std::wstring>& names) {
    std::wstring lines;
    for (std::size_t i = 0; i < std::min(names.size(), kMostNames); ++i) lines += names[i] + L'\n';
    if (names.size() > kMostNames)
        lines += FormatText(LoadText(IDS_AND_MORE), std::to_wstring(names.size() - kMostNames));
    return lines;
}

}  // namespace

void CTidyUp::Say(const std::wstring& text, UINT look) const {
    if (m_dialog.IsLive()) ShowMessage(m_dialog.Handle(), text, kMessageCaption, look);
}

/// False when the user has ended it.
bool CTidyUp::Look(State& state) {
    const CWaitCursor wait;
    m_rooms.exclusions.Load();
    state.plugins = ListAllPlugins(m_rooms.inventory, m_rooms.exclusions);
    CLongWork work(m_dialog, IDC_EXCLUSION_GROUP, IDS_TIDY_LOOKING, state.plugins.size());
    CFileStates files;
    for (const StudioPlugin& plugin : state.plugins) {
        if (!work.Next()) return false;
        state.files.push_back(files.Of(plugin.file));
    }
    state.layout = ItemsOf(m_rooms.tree, m_rooms.tree.Layout());
    state.findings =
        FindUntidy(state.plugins, state.files, state.layout, {.text = &FoldedText, .path = &InCapitals});
    // What an enumeration that broke off has not come to may well be there.
    for (TidyFinding& finding : state.findings)
        finding.ticked &= finding.action != TidyAction::TakeOut || m_rooms.inventory.IsComplete();
    return true;
}

std::vector<ReviewRow> CTidyUp::RowsOf(const State& state) const {
    std::vector<ReviewRow> rows;
    for (const TidyFinding& finding : state.findings) {
        ReviewRow& row = rows.emplace_back();
        row.checked = finding.ticked;
        row.canBeChecked = finding.action != TidyAction::None;
        const std::wstring why = LoadText(kReasons[static_cast<std::size_t>(finding.reason)]);
        if (finding.action == TidyAction::TakeOut) {
            const LayoutItem& item = *state.layout[finding.index];
            row.cells = {{item.name}, {item.vendor.value_or(L"")}, {CaptionOf(item.category)}, {why}, {}};
        } else {
            const StudioPlugin& plugin = state.plugins[finding.index];
            const std::wstring category = CaptionOf(static_cast<int>(plugin.item.category));
            row.cells = {{plugin.name}, {plugin.vendor}, {category}, {why}, {plugin.file}};
        }
    }
    return rows;
}

void CTidyUp::OnTidyUp() {
    m_rooms.tree.EndInput();
    State state;
    if (!Look(state) || !m_dialog.IsLive()) return;
    if (state.findings.empty()) return Say(LoadText(IDS_TIDY_NOTHING), MB_ICONINFORMATION);
    CReviewDlg list(
        {.caption = LoadText(IDS_STEP_TIDY_UP),
         .heading = LoadText(IDS_TIDY_HEADING),
         .button = LoadText(IDS_TIDY_TICKED)},
        {{PluginTitle(0)}, {PluginTitle(1)}, {PluginTitle(2)}, {LoadText(IDS_TIDY_WHY)}, {PluginTitle(4)}},
        RowsOf(state));
    if (list.RunModal(m_dialog.Handle()) == IDOK && m_dialog.IsLive())
        Tidy(state, TickedOf(state, list.Checked()));
}

CTidyUp::Ticked CTidyUp::TickedOf(const State& state, const std::vector<std::size_t>& rows) {
    Ticked ticked;
    for (const std::size_t row : rows) {
        const TidyFinding& finding = state.findings[row];
        switch (finding.action) {
            case TidyAction::Remove:
                ticked.removed.push_back(finding.index);
                break;
            case TidyAction::Exclude:
                ticked.excluded.push_back(finding.index);
                ticked.scanHelps = ticked.scanHelps || finding.reason == TidyReason::FileGone;
                break;
            case TidyAction::TakeOut:
                ticked.items.push_back(state.layout[finding.index]->id);
                break;
            case TidyAction::None:
                break;
        }
    }
    return ticked;
}

/// Says so when not: what the list can't hold would be read as not excluded.
bool CTidyUp::HasRoomFor(const std::vector<IdToExclude>& exclusions) const {
    const CExclusionList& list = m_rooms.exclusions;
    std::unordered_set<Guid, GuidHash> added;
    for (const IdToExclude& each : exclusions) {
        if (!list.Contains(each.clsid)) added.insert(each.clsid);
    }
    const std::size_t all = list.Count() + added.size();
    if (added.empty() || all <= kMaxEntries) return true;
    Say(FormatText(LoadText(IDS_TIDY_TOO_MANY), static_cast<int>(kMaxEntries), static_cast<int>(all)),
        MB_ICONEXCLAMATION);
    return false;
}

void CTidyUp::Tidy(const State& state, Ticked ticked) {
    const CWaitCursor wait;
    std::vector<IdToExclude> exclusions = ExclusionsOf(state.plugins, ticked.excluded);
    if (!HasRoomFor(exclusions) || !ChangePlugins(state, ticked, exclusions) || !m_dialog.IsLive()) return;
    if (!ticked.items.empty())
        m_rooms.tree.Edit(IDS_STEP_TIDY_UP, [&] { m_rooms.tree.Layout().Delete(ticked.items); });
    Report(state, ticked, exclusions);
}

/// One backup for all. False when the user would not have it begin; what it was ended before is taken off the
/// lists.
bool CTidyUp::ChangePlugins(const State& state, Ticked& ticked, std::vector<IdToExclude>& exclusions) {
    BackupStep step{
        .kind = BackupKind::Registry, .name = LoadText(IDS_STEP_TIDY_UP), .keys = {}, .files = {}};
    for (const std::size_t i : ticked.removed) {
        const PluginListItem& item = state.plugins[i].item;
        std::ranges::move(RegistrationKeys(item.clsid, item.category), std::back_inserter(step.keys));
    }
    const auto backup = BackUpOrAsk(m_rooms.backups, step, m_dialog.Handle());
    if (!backup || !m_dialog.IsLive()) return false;
    {
        CLongWork work(m_dialog, IDC_EXCLUSION_GROUP, IDS_TIDYING, ticked.removed.size() + exclusions.size());
        const auto cut = [&](auto& list, const auto& change) {
            const auto left = std::ranges::find_if_not(list, [&](const auto& each) {
                if (!work.Next() || !m_dialog.IsLive()) return false;
                change(each);
                return true;
            });
            list.erase(left, list.end());
        };
        cut(ticked.removed, [&](std::size_t i) {
            UnregisterPlugin(state.plugins[i].item.clsid, state.plugins[i].item.category);
        });
        cut(exclusions, [&](const IdToExclude& each) {
            CExclusionList::Exclude(each.clsid, state.plugins[each.plugin].name);
        });
        if (work.WasEnded()) {
            ticked.items.clear();
            ticked.scanHelps = false;
        }
    }
    if (m_dialog.IsLive()) Refresh(ticked);
    return true;
}

void CTidyUp::Refresh(const Ticked& ticked) const {
    if (ticked.removed.empty() && ticked.excluded.empty()) return;
    const auto rows = CRememberedRows::Of(m_rooms.list.Plugins());
    m_rooms.exclusions.Load();
    if (!ticked.removed.empty()) m_rooms.list.EnumeratePlugins();
    m_rooms.list.Refill(rows);
    m_rooms.host.Tell(kPluginsChanged);
}

void CTidyUp::Report(const State& state, const Ticked& ticked,
                     const std::vector<IdToExclude>& exclusions) const {
    std::vector<std::wstring> failed;
    const auto name = [&](std::size_t plugin) {
        const std::wstring& text = state.plugins[plugin].name;
        if (failed.empty() || failed.back() != text) failed.push_back(text);
    };
    for (const std::size_t i : ticked.removed) {
        if (m_rooms.inventory.IsInstalled(state.plugins[i].item.clsid)) name(i);
    }
    for (const IdToExclude& each : exclusions) {
        if (!m_rooms.exclusions.Contains(each.clsid)) name(each.plugin);
    }
    if (!failed.empty()) Say(FormatText(LoadText(IDS_TIDY_FAILED), Lines(failed)), MB_ICONEXCLAMATION);
    if (ticked.scanHelps) Say(LoadText(IDS_TIDY_SCAN), MB_ICONINFORMATION);
}
