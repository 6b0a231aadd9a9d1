#include "RememberedRows.h"

#include <algorithm>
#include <unordered_map>

namespace {

struct PluginIdHash {
    std::size_t operator()(const PluginId& id) const { return GuidHash()(id.clsid) + id.namesake; }
};

std::optional<PluginId> PluginAt(const CListBox& plugins, int row) {
    const auto* item = plugins.ItemOf<PluginListItem>(row);
    return item ? std::optional(item->Id()) : std::nullopt;
}

/// Enters the row of each plug-in that is a key. One walk, because the list looks up no row by its data.
void FindRows(const CListBox& plugins, std::unordered_map<PluginId, int, PluginIdHash>& rows) {
    std::size_t missing = rows.size();
    const int count = plugins.Count();
    for (int row = 0; row < count && missing > 0; ++row) {
        const auto plugin = PluginAt(plugins, row);
        const auto found = plugin ? rows.find(*plugin) : rows.end();
        if (found == rows.end()) continue;
        found->second = row;
        --missing;
    }
}

}  // namespace

CRememberedRows::Place CRememberedRows::PlaceAt(const CListBox& plugins, int row) {
    return {PluginAt(plugins, row), row};
}

CRememberedRows CRememberedRows::Of(const CListBox& plugins) {
    CRememberedRows rows = SelectionOf(plugins);
    rows.m_caret = PlaceAt(plugins, plugins.CaretRow().value_or(0));
    rows.m_top = PlaceAt(plugins, plugins.TopRow());
    return rows;
}

CRememberedRows CRememberedRows::SelectionOf(const CListBox& plugins) {
    CRememberedRows rows;
    for (const int row : plugins.SelectedRows()) {
        if (const auto plugin = PluginAt(plugins, row)) rows.m_selected.push_back(*plugin);
    }
    return rows;
}

CRememberedRows CRememberedRows::BehindSelection(const CListBox& plugins) {
    const std::vector<int> going = plugins.SelectedRows();
    const auto firstToStay = [&](int row) {
        auto next = std::ranges::lower_bound(going, row);
        for (; next != going.end() && *next == row; ++next) ++row;
        Place place = PlaceAt(plugins, row);
        place.row -= static_cast<int>(next - going.begin());
        return place;
    };
    CRememberedRows rows;
    rows.m_caret = firstToStay(going.empty() ? plugins.CaretRow().value_or(0) : going.back());
    rows.m_top = firstToStay(plugins.TopRow());
    return rows;
}

void CRememberedRows::Restore(const CListBox& plugins) const {
    const int last = plugins.Count() - 1;
    if (last < 0) return;
    std::unordered_map<PluginId, int, PluginIdHash> rows;
    constexpr int kGone = -1;
    for (const PluginId& plugin : m_selected) rows.emplace(plugin, kGone);
    for (const Place* place : {&m_caret, &m_top}) {
        if (place->plugin) rows.emplace(*place->plugin, kGone);
    }
    FindRows(plugins, rows);

    const auto rowOf = [&](const Place& place) {
        const int row = place.plugin ? rows.at(*place.plugin) : kGone;
        return row == kGone ? std::min(place.row, last) : row;
    };
    const CRedrawLock noRedraw(plugins);
    for (const PluginId& plugin : m_selected) {
        if (const int row = rows.at(plugin); row != kGone) plugins.Select(row);
    }
    plugins.SetCaretRow(rowOf(m_caret));
    plugins.SetTopRow(rowOf(m_top));
}
