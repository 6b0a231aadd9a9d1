#include <algorithm>

#include "ClsidText.h"
#include "Commands.h"
#include "ExclusionPlan.h"
#include "Files.h"
#include "IdList.h"
#include "Messages.h"
#include "NumberText.h"
#include "TextBytes.h"

namespace {

/// As long as a list of ids may be.
constexpr std::uint64_t kLongestList = 64U << 20;

/// What --from names; nothing, after a word on why, when it can't be read.
std::optional<std::wstring> ReadList(const std::wstring& from) {
    std::optional<std::string> bytes;
    if (from == L"-") {
        bytes = CConsole::ReadInput();
    } else {
        CPatience patience;
        if (ReadWholeFile(from, kLongestList, bytes.emplace(), patience) != FileRead::Whole) bytes.reset();
    }
    if (!bytes) {
        SayFileError(from, ::GetLastError());
        return std::nullopt;
    }
    auto text = TextOfBytes(*bytes);
    if (!text) Say(IDS_CMD_MALFORMED, from);
    return text;
}

/// The ids of the command line or of the list; nothing, after a word on why, when there is one that is none.
std::optional<std::vector<Guid>> IdsOf(const CmdArguments& arguments) {
    const auto text = arguments.from.empty() ? std::wstring() : ReadList(arguments.from);
    if (!text) return std::nullopt;
    auto ids = ReadIdList(*text);
    if (const auto* bad = std::get_if<BadIdLine>(&ids)) {
        Say(IDS_CMD_BAD_LINE, arguments.from, NumberText(bad->number), bad->text);
        return std::nullopt;
    }
    auto& list = std::get<std::vector<Guid>>(ids);
    for (const std::wstring& operand : arguments.operands) list.push_back(ParseIdText(operand).value());
    return std::move(list);
}

std::wstring NameOf(const ExclusionLine& line) { return NameWithId(line.name, line.clsid); }

/// Says why nothing is done about it.
CmdExit Refuse(const ExclusionLine& line, bool exclude) {
    switch (line.fate) {
        case ExclusionFate::Changed:
            return CmdExit::Done;
        case ExclusionFate::Already:
            Say(exclude ? IDS_CMD_WAS_EXCLUDED : IDS_CMD_WAS_ENABLED, NameOf(line));
            return CmdExit::Done;
        case ExclusionFate::Unknown:
            Say(IDS_CMD_UNKNOWN, NameOf(line));
            break;
        case ExclusionFate::Permanent:
            Say(IDS_CMD_PERMANENT, NameOf(line));
            break;
        case ExclusionFate::NotExcludable:
            Say(IDS_CMD_NOT_EXCLUDABLE, NameOf(line));
            break;
        case ExclusionFate::NoRoom:
            Say(IDS_CMD_NO_ROOM, NameOf(line), NumberText(kMaxEntries));
            break;
    }
    return CmdExit::Findings;
}

void Write(const ExclusionLine& line, bool exclude) {
    for (const Guid& id : line.changes) {
        if (exclude) {
            CExclusionList::Exclude(id, line.name);
        } else {
            CExclusionList::Enable(id);
        }
    }
}

}  // namespace

CmdExit ChangeExclusions(const CmdArguments& arguments, CCmdStudio& studio) {
    const bool exclude = arguments.verb == CmdVerb::Exclude;
    const auto ids = IdsOf(arguments);
    if (!ids) return CmdExit::Failed;
    CExclusionList& exclusions = studio.Exclusions();
    const std::vector<ExclusionLine> lines =
        PlanExclusions(*ids, exclude,
                       {.plugins = studio.Plugins(),
                        .isExcluded = [&exclusions](const Guid& id) { return exclusions.Contains(id); },
                        .count = exclusions.Count()});
    CmdExit result = CmdExit::Done;
    for (const ExclusionLine& line : lines) result = Worse(result, Refuse(line, exclude));
    const bool changes =
        std::ranges::find(lines, ExclusionFate::Changed, &ExclusionLine::fate) != lines.end();
    if (!changes && result == CmdExit::Done) Say(IDS_CMD_NOTHING_TO_DO);
    if (!changes) return result;
    if (arguments.dryRun) {
        Say(IDS_CMD_DRY_RUN);
    } else {
        for (const ExclusionLine& line : lines) Write(line, exclude);
        exclusions.Load();
        CCmdStudio::TellHost(kPluginsChanged);
    }
    for (const ExclusionLine& line : lines) {
        if (line.fate != ExclusionFate::Changed) continue;
        const bool done = arguments.dryRun || std::ranges::all_of(line.changes, [&](const Guid& id) {
                              return exclusions.Contains(id) == exclude;
                          });
        Say(!done ? IDS_CMD_NOT_WRITTEN : exclude ? IDS_CMD_EXCLUDED : IDS_CMD_ENABLED, NameOf(line));
        if (!done) result = CmdExit::Failed;
    }
    return result;
}
