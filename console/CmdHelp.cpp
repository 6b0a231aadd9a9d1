#include "CmdHelp.h"

#include <array>
#include <cstddef>

namespace {

struct CommandHelp {
    std::wstring_view usage;    // behind the program's name
    std::wstring_view purpose;  // one line
    std::wstring_view details;
};

constexpr std::wstring_view kDryRunLine =
    L"  --dry-run           says what would be done, and does nothing\n";

/// In the order of CmdVerb.
constexpr std::array kHelp = {
    CommandHelp{
        L"list [--category TOKEN] [--only WHICH] [--match WORDS] [--format FORMAT]", L"lists the plug-ins",
        L"  --category TOKEN    one of dx, vst, vst3, dxi, vsti, vst3i, qtz (MIDI effects), dmo, surface,\n"
        L"                      wrapped-vst, wrapped-vsti\n"
        L"  --only WHICH        all, enabled, excluded, missing (the file is not there) or duplicate\n"
        L"  --match WORDS       all of the words occur in name, vendor, file name or class id\n"
        L"  --format FORMAT     table, csv or json\n"},
    CommandHelp{L"exclude CLSID... | --from FILE", L"takes plug-ins out of the host's menus",
                L"  CLSID               class ids, with or without braces; of a VST3 one of its two will do\n"
                L"  --from FILE         reads them from a file, one a line or as list --format csv writes\n"
                L"                      them; - for the standard input\n"},
    CommandHelp{L"enable CLSID... | --from FILE", L"brings excluded plug-ins back",
                L"  CLSID, --from FILE  as for exclude\n"},
    CommandHelp{L"presets export FILE.spp [CLSID...]", L"writes presets to a preset file",
                L"  CLSID               of these plug-ins; without, of all that have presets\n"},
    CommandHelp{L"presets import FILE.spp", L"brings presets back, for all plug-ins that are installed here",
                L""},
    CommandHelp{L"set save FILE.pgset [--presets]", L"writes exclusions, names and menu layouts to one file",
                L"  --presets           and all presets to a preset file of the same name beside it\n"},
    CommandHelp{L"set load FILE.pgset [--same] [--no-presets]",
                L"brings them here, with the presets beside it",
                L"  --same              also enables what the set has not excluded\n"
                L"  --no-presets        leaves the preset file beside the set alone\n"},
    CommandHelp{L"verify FILE...", L"checks layouts (.pgl), preset files (.spp) and studio sets (.pgset)",
                L"Prints a line for each file: ok, findings or unreadable, a tab, and its path.\n"},
};

constexpr std::wstring_view kProgram = L"PluginManagerCmd ";

constexpr std::wstring_view kCommon =
    L"  --vst-key KEY       the host's VST key below HKEY_CURRENT_USER, where it is not the usual one\n"
    L"  --help              help on a command\n"
    L"\n"
    L"Exit codes: 0 done, or nothing was left to do; 1 findings, a class id that is not known here, or\n"
    L"partly done; 2 wrong arguments; 3 missing rights, a file that can't be read or written, or a\n"
    L"malformed one.\n";

constexpr bool HasDryRun(CmdVerb verb) {
    return verb != CmdVerb::List && verb != CmdVerb::SetSave && verb != CmdVerb::Verify;
}

std::wstring HelpOn(CmdVerb verb) {
    const CommandHelp& help = kHelp[static_cast<std::size_t>(verb)];
    std::wstring text = L"Usage: ";
    text.append(kProgram).append(help.usage).append(HasDryRun(verb) ? L" [--dry-run]" : L"");
    text.append(L"\n").append(help.purpose).append(L"\n\n").append(help.details);
    if (HasDryRun(verb)) text += kDryRunLine;
    return text.append(kCommon);
}

}  // namespace

std::wstring CmdHelp(std::optional<CmdVerb> verb) {
    if (verb) return HelpOn(*verb);
    std::wstring text = L"Usage:\n";
    for (const CommandHelp& help : kHelp) {
        text.append(L"  ").append(kProgram).append(help.usage).append(L"\n      ");
        text.append(help.purpose).append(L"\n");
    }
    return text.append(L"\n").append(kCommon);
}
