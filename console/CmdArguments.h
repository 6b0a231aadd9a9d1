// The command line of the console companion.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "PluginCategory.h"

enum class CmdVerb { List, Exclude, Enable, PresetsExport, PresetsImport, SetSave, SetLoad, Verify };

/// Which plug-ins are listed.
enum class ListOnly { All, Enabled, Excluded, Missing, Duplicate };
enum class ListFormat { Table, Csv, Json };

struct CmdArguments {
    std::optional<CmdVerb> verb;  // nothing only where help was asked for
    bool help = false;
    std::vector<std::wstring> operands;  // files and class ids, in their order
    std::optional<Category> category;
    ListOnly only = ListOnly::All;
    ListFormat format = ListFormat::Table;
    std::wstring match;
    std::wstring from;    // a file, or "-"
    std::wstring vstKey;  // below the current user's root; empty for the usual one
    bool dryRun = false;
    bool presets = false;
    bool same = false;
    bool noPresets = false;
};

/// What is wrong with it, in English: scripts are written with the documentation at hand.
struct CmdUsageError {
    std::optional<CmdVerb> verb;  // as far as it was understood
    std::wstring text;
};

/// `tokens` are the arguments without the program's name.
std::variant<CmdArguments, CmdUsageError> ParseCmdArguments(std::span<const std::wstring> tokens);

/// The command as it is typed: "presets export".
std::wstring_view CmdName(CmdVerb verb);
