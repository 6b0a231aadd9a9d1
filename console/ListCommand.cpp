#include <algorithm>

#include "ClsidText.h"
#include "Commands.h"
#include "Console.h"
#include "Duplicates.h"
#include "Files.h"
#include "FoldedText.h"
#include "Messages.h"
#include "PluginOverview.h"
#include "PluginTexts.h"
#include "WordMatch.h"

namespace {

/// Under each of the ids that the list of the main window has it by.
bool Matches(const StudioPlugin& plugin, std::span<const std::wstring> words) {
    return std::ranges::any_of(ExclusionIdsOf(plugin), [&](const Guid& id) {
        return MatchesWords(SearchText(plugin.name, plugin.vendor, FileNameOf(plugin.file), id), words);
    });
}

bool IsAskedFor(const PluginTableRow& row, ListOnly only) {
    switch (only) {
        case ListOnly::All:
            return true;
        case ListOnly::Enabled:
            return !row.excluded && !row.permanent;
        case ListOnly::Excluded:
            return row.excluded;
        case ListOnly::Missing:
            return row.missing;
        case ListOnly::Duplicate:
            return !row.duplicateOf.empty();
    }
    return true;
}

std::wstring IdText(const Guid& id) { return id.IsNull() ? std::wstring() : ClsidText(id); }

PluginTableRow RowOf(const StudioPlugin& plugin, FileState state) {
    return {.category = plugin.item.category,
            .name = plugin.name,
            .vendor = plugin.vendor,
            .clsid = ClsidText(plugin.item.clsid),
            .md5 = IdText(plugin.item.md5Clsid),
            .vstId = plugin.item.fromInventory ? std::optional(plugin.uniqueId) : std::nullopt,
            .file = plugin.file,
            .excluded = plugin.excluded,
            .permanent = plugin.permanent,
            .missing = state != FileState::There,
            .duplicateOf = {}};
}

}  // namespace

std::vector<PluginTableRow> RowsToList(const CmdArguments& arguments, std::span<const StudioPlugin> plugins) {
    std::vector<PluginTableRow> all;
    CFileStates files;
    for (const StudioPlugin& plugin : plugins) all.push_back(RowOf(plugin, files.Of(plugin.file)));
    const auto isThere = [&all](std::size_t i) { return !all[i].missing; };
    for (const Duplicate& duplicate : FindDuplicates(plugins, isThere, {&FoldedText, &InCapitals}))
        all[duplicate.plugin].duplicateOf = all[duplicate.original].clsid;
    const std::vector<std::wstring> words = WordsOf(FoldedText(arguments.match));
    std::vector<PluginTableRow> rows;
    for (const Category category : kCategoryListOrder) {
        if (arguments.category && category != *arguments.category) continue;
        for (std::size_t i = 0; i < all.size(); ++i) {
            if (all[i].category != category || !IsAskedFor(all[i], arguments.only)) continue;
            if (words.empty() || Matches(plugins[i], words)) rows.push_back(std::move(all[i]));
        }
    }
    return rows;
}

std::wstring ListText(std::span<const PluginTableRow> rows, ListFormat format) {
    switch (format) {
        case ListFormat::Csv:
            return CsvOf(rows);
        case ListFormat::Json:
            return JsonOf(rows);
        case ListFormat::Table:
            break;
    }
    return TableOf(rows, CConsole::Width());
}

CmdExit ListPlugins(const CmdArguments& arguments, const CCmdStudio& studio) {
    return WriteData(ListText(RowsToList(arguments, studio.Plugins()), arguments.format));
}
