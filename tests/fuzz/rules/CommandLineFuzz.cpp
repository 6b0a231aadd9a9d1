// Command lines: the program's own, an argument a line, and those of the programs that it starts.
#include <cerrno>
#include <cwchar>
#include <cwctype>
#include <tuple>

#include "CmdLine.h"
#include "PointerText.h"
#include "VstToolCommands.h"
#include "fuzz/FuzzInput.h"

using support::Require;

namespace {

constexpr wchar_t kBlanks[] = L" \t";

auto Facts(const CPluginManagerCmdLine& line) {
    return std::make_tuple(line.registerOnly, line.parentWndPending, line.floating, line.inventoryKeyPending,
                           line.useDatabase, line.parentWnd, line.fileParam, line.vstInventoryKey);
}

void TryArguments(std::vector<std::wstring> tokens) {
    const auto line = CPluginManagerCmdLine::Parse(tokens);
    for (const std::wstring& text : {line.fileParam, line.vstInventoryKey})
        Require(text.empty() || std::ranges::find(tokens, text) != tokens.end());
    for (std::size_t i = 0; i <= tokens.size(); i += 3) {
        const auto unknown = tokens.insert(tokens.begin() + static_cast<std::ptrdiff_t>(i), L"-Unknown");
        Require(Facts(CPluginManagerCmdLine::Parse(tokens)) == Facts(line));
        tokens.erase(unknown);
    }
}

void TryPointer(const std::wstring& text) {
    const auto pointer = ParsePointer(text);
    const std::size_t start = text.find_first_not_of(kBlanks);
    if (start == std::wstring::npos || !std::iswxdigit(static_cast<std::wint_t>(text[start])))
        return Require(!pointer);
    errno = 0;
    const auto expected = std::wcstoull(text.c_str(), nullptr, 16);
    Require(errno == ERANGE ? !pointer : pointer == expected);
}

void TryProgram(const std::wstring& commandLine) {
    const std::wstring arguments = WithoutProgram(commandLine);
    Require(commandLine.ends_with(arguments) && arguments.find_first_of(kBlanks) != 0);
    Require(WithoutProgram(L"\"C:\\a b.exe\" " + arguments) == arguments);
    std::size_t last = 0;
    for (const std::wstring& candidate : ProgramsOnTheWay(commandLine)) {
        const bool completed = !commandLine.starts_with(candidate);
        const std::size_t end = candidate.size() - (completed ? 4 : 0);
        Require(!completed ||
                (candidate.ends_with(L".exe") && candidate.starts_with(commandLine.substr(0, end))));
        Require(end >= last && commandLine.find_first_of(kBlanks, end) == end);
        last = end;
    }
}

}  // namespace

void TryInput(std::string_view bytes) {
    const auto lines = support::LinesOf(bytes);
    TryArguments(lines);
    for (const std::wstring& line : lines) {
        TryPointer(line);
        TryProgram(line);
    }
}
