#include "StudioSetRows.h"

#include <algorithm>
#include <array>

#include "Files.h"
#include "NumberText.h"
#include "Resources.h"
#include "TextFormat.h"
#include "resource.h"

namespace {

/// By part.
constexpr std::array<UINT, 4> kParts = {IDS_SET_EXCLUSIONS, IDS_SET_NAMES, IDS_SET_LAYOUTS, IDS_FILE_PRESETS};
struct TroubleRow {
    SetPart part;
    UINT text;
};
/// By trouble.
constexpr TroubleRow kTroubles[] = {
    {SetPart::Presets, IDS_SET_OTHER_TYPE}, {SetPart::Presets, IDS_SET_FILE_LOST},
    {SetPart::Presets, IDS_SET_NO_DATA},    {SetPart::Presets, IDS_SET_NAME_UNFIT},
    {SetPart::Presets, IDS_SET_NAME_UNFIT}, {SetPart::PluginName, IDS_SET_NAME_UNFIT},
    {SetPart::Layout, IDS_SET_NAME_UNFIT},  {SetPart::Layout, IDS_SET_LAYOUT_UNREADABLE}};

std::wstring PartText(SetPart part) { return LoadText(kParts[static_cast<std::size_t>(part)]); }

/// In the order that they are given in, whatever they are called.
ReviewRow Row(const std::wstring& part, std::int64_t order, const std::wstring& name,
              const std::wstring& change) {
    return {.cells = {{part, order}, {name}, {change}}, .canBeChecked = false};
}

ReviewRow Row(SetPart part, const std::wstring& name, const std::wstring& change) {
    return Row(PartText(part), static_cast<std::int64_t>(part), name, change);
}

void Tick(ReviewRow& row, bool can) { row.checked = row.canBeChecked = can; }

std::wstring ChangeText(const SetEntry& entry) {
    switch (entry.change) {
        case SetChange::New:
            if (entry.part == SetPart::Presets)
                return FormatText(LoadText(IDS_SET_PRESETS_NEW), NumberText(entry.presets));
            return LoadText(entry.installed ? IDS_SET_NEW : IDS_SET_NEW_LATER);
        case SetChange::Differs:
            if (entry.part == SetPart::PluginName) return FormatText(LoadText(IDS_SET_NAME_NOW), entry.now);
            if (entry.part == SetPart::Layout) return FormatText(LoadText(IDS_SET_LAYOUT_AS), entry.target);
            return FormatText(LoadText(IDS_SET_PRESETS_REPLACED), NumberText(entry.presets),
                              NumberText(entry.replaced));
        case SetChange::Surplus:
            return LoadText(IDS_SET_SURPLUS);
        case SetChange::NotInstalled:
            return LoadText(IDS_SET_NOT_INSTALLED);
        case SetChange::NoFolder:
            return LoadText(IDS_SET_NO_FOLDER);
        case SetChange::Same:
            break;
    }
    return LoadText(IDS_SET_SAME);
}

}  // namespace

std::vector<ReviewColumn> StudioSetColumns() {
    return {
        {LoadText(IDS_SET_WHAT), ReviewOrder::ByKey}, {LoadText(IDS_SET_NAME)}, {LoadText(IDS_SET_CHANGE)}};
}

std::vector<ReviewRow> RowsOf(const SetToSave& save, const std::wstring& noLayoutFolder) {
    const StudioSet& set = save.set;
    std::vector<ReviewRow> rows = {
        Row(SetPart::Exclusion, NumberText(set.exclusions.size()), {}),
        Row(SetPart::PluginName, NumberText(set.names.size()), {}),
        Row(SetPart::Layout, NumberText(set.layouts.size()), noLayoutFolder),
        Row(SetPart::Presets, NumberText(save.CountPresets()),
            FormatText(LoadText(IDS_SET_PRESETS_BESIDE), NumberText(save.presets.size())))};
    Tick(rows[static_cast<std::size_t>(SavedRow::Names)], true);
    Tick(rows[static_cast<std::size_t>(SavedRow::Layouts)], noLayoutFolder.empty());
    Tick(rows[static_cast<std::size_t>(SavedRow::Presets)], !save.presets.empty());
    for (const auto& [name, preset, trouble] : save.leftOut) {
        const auto& [part, text] = kTroubles[static_cast<std::size_t>(trouble)];
        rows.push_back(
            Row(part, part == SetPart::Presets ? FormatText(L"%s: %s", name, preset) : name, LoadText(text)));
    }
    return rows;
}

std::vector<ReviewRow> RowsOf(const SetToLoad& load, std::vector<std::size_t>& entries) {
    std::vector<ReviewRow> rows;
    std::array<std::size_t, kParts.size()> same{};
    entries.clear();
    for (std::size_t i = 0; i < load.entries.size(); ++i) {
        const SetEntry& entry = load.entries[i];
        if (entry.change == SetChange::Same) {
            ++same[static_cast<std::size_t>(entry.part)];
            continue;
        }
        ReviewRow& row = rows.emplace_back(Row(entry.part, entry.name, ChangeText(entry)));
        row.canBeChecked = entry.CanBeChosen();
        row.checked = entry.chosen;
        entries.push_back(i);
    }
    for (std::size_t part = 0; part < same.size(); ++part) {
        if (same[part] > 0)
            rows.push_back(Row(static_cast<SetPart>(part), NumberText(same[part]), LoadText(IDS_SET_SAME)));
    }
    if (load.presetsUnreadable)
        rows.push_back(Row(SetPart::Presets, FileNameOf(load.presetFile), LoadText(IDS_SET_UNREADABLE)));
    if (load.set.passedOver > 0)
        rows.push_back(Row({}, static_cast<std::int64_t>(kParts.size()), NumberText(load.set.passedOver),
                           LoadText(IDS_SET_PASSED_OVER)));
    return rows;
}
