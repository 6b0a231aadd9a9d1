// Command lines: those of both programs, an argument a line, and of the programs that they start; lists of
// class ids that come from a file.
#include "CmdArguments.h"
#include "CmdLine.h"
#include "IdList.h"
#include "PluginTable.h"
#include "VstToolCommands.h"
#include "fuzz/FuzzInput.h"

using support::Require;

namespace {

constexpr wchar_t kBlanks[] = L" \t";

void TryArguments(const std::vector<std::wstring>& tokens) {
    const auto line = CPluginManagerCmdLine::Parse(tokens);
    for (const std::wstring& text : {line.fileParam, line.vstInventoryKey})
        Require(text.empty() || std::ranges::find(tokens, text) != tokens.end());
}

void TryConsole(const std::vector<std::wstring>& tokens) {
    const auto parsed = ParseCmdArguments(tokens);
    if (const auto* error = std::get_if<CmdUsageError>(&parsed)) return Require(!error->text.empty());
    const auto& arguments = std::get<CmdArguments>(parsed);
    Require(arguments.help || arguments.verb);
    for (const std::wstring& text : arguments.operands)
        Require(std::ranges::find(tokens, text) != tokens.end());
}

/// Whatever the plug-ins are called, the list that is written is read again; `text` may be any file.
void TryIdList(const std::vector<std::wstring>& names, std::wstring_view text) {
    std::vector<PluginTableRow> rows;
    for (const std::wstring& name : names)
        rows.push_back({.name = name, .clsid = L"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}"});
    const std::vector ids(names.size(), "{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}"_guid);
    const auto read = ReadIdList(CsvOf(rows));
    Require(std::holds_alternative<std::vector<Guid>>(read) && std::get<0>(read) == ids);
    const auto any = ReadIdList(text);
    const auto lines = static_cast<std::size_t>(std::ranges::count(text, L'\n')) + 1;
    if (const auto* bad = std::get_if<BadIdLine>(&any)) Require(bad->number >= 1 && bad->number <= lines);
}

void TryProgram(const std::wstring& commandLine) {
    const std::wstring arguments = WithoutProgram(commandLine);
    Require(commandLine.ends_with(arguments) && arguments.find_first_of(kBlanks) != 0);
    Require(WithoutProgram(L"\"C:\\a b.exe\" " + arguments) == arguments);
    for (const std::wstring& candidate : ProgramsOnTheWay(commandLine))
        Require(candidate.ends_with(L".exe") || commandLine.starts_with(candidate + L' ') ||
                commandLine.starts_with(candidate + L'\t'));
}

}  // namespace

void TryInput(std::string_view bytes) {
    const auto lines = support::LinesOf(bytes);
    TryArguments(lines);
    TryConsole(lines);
    TryIdList(lines, support::TextOf(bytes));
    for (const std::wstring& line : lines) TryProgram(line);
}
