#include "CmdArguments.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

#include "CategoryTokens.h"

namespace {

constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

struct Command {
    std::wstring_view words;
    std::size_t leastOperands;
    std::size_t mostOperands;
};

/// In the order of CmdVerb.
constexpr std::array kCommands = {
    Command{L"list", 0, 0},
    Command{L"exclude", 0, kAnyNumber},
    Command{L"enable", 0, kAnyNumber},
    Command{L"presets export", 1, kAnyNumber},
    Command{L"presets import", 1, 1},
    Command{L"set save", 1, 1},
    Command{L"set load", 1, 1},
    Command{L"verify", 1, kAnyNumber},
};

constexpr unsigned For(std::initializer_list<CmdVerb> verbs) {
    unsigned mask = 0;
    for (const CmdVerb verb : verbs) mask |= 1U << static_cast<unsigned>(verb);
    return mask;
}
constexpr unsigned kEach = ~0U;

struct Flag {
    std::wstring_view name;
    bool CmdArguments::*flag;
    unsigned verbs;
};
constexpr Flag kFlags[] = {
    {L"--help", &CmdArguments::help, kEach},
    {L"--dry-run", &CmdArguments::dryRun,
     For({CmdVerb::Exclude, CmdVerb::Enable, CmdVerb::PresetsExport, CmdVerb::PresetsImport,
          CmdVerb::SetLoad})},
    {L"--presets", &CmdArguments::presets, For({CmdVerb::SetSave})},
    {L"--same", &CmdArguments::same, For({CmdVerb::SetLoad})},
    {L"--no-presets", &CmdArguments::noPresets, For({CmdVerb::SetLoad})},
};

/// Takes the word that it stands for; false when it stands for none.
template <typename T, std::size_t N>
bool TakeWord(const std::array<std::wstring_view, N>& words, std::wstring_view word, T& value) {
    const auto found = std::ranges::find(words, word);
    if (found == words.end()) return false;
    value = static_cast<T>(found - words.begin());
    return true;
}

bool TakeCategory(CmdArguments& arguments, const std::wstring& value) {
    return TakeWord(kCategoryTokens, value, arguments.category.emplace());
}

bool TakeOnly(CmdArguments& arguments, const std::wstring& value) {
    static constexpr std::array<std::wstring_view, 5> kWords = {L"all", L"enabled", L"excluded", L"missing",
                                                                L"duplicate"};
    return TakeWord(kWords, value, arguments.only);
}

bool TakeFormat(CmdArguments& arguments, const std::wstring& value) {
    static constexpr std::array<std::wstring_view, 3> kWords = {L"table", L"csv", L"json"};
    return TakeWord(kWords, value, arguments.format);
}

template <std::wstring CmdArguments::*Text>
bool TakeText(CmdArguments& arguments, const std::wstring& value) {
    arguments.*Text = value;
    return !value.empty();
}

struct Option {
    std::wstring_view name;
    bool (*take)(CmdArguments& arguments, const std::wstring& value);
    unsigned verbs;
};
constexpr Option kOptions[] = {
    {L"--category", &TakeCategory, For({CmdVerb::List})},
    {L"--only", &TakeOnly, For({CmdVerb::List})},
    {L"--match", &TakeText<&CmdArguments::match>, For({CmdVerb::List})},
    {L"--format", &TakeFormat, For({CmdVerb::List})},
    {L"--from", &TakeText<&CmdArguments::from>, For({CmdVerb::Exclude, CmdVerb::Enable})},
    {L"--vst-key", &TakeText<&CmdArguments::vstKey>, kEach},
};

/// Takes the arguments one after the other; `error` says what is wrong with the first that is.
class CParser {
  public:
    explicit CParser(std::span<const std::wstring> tokens) : m_tokens(tokens) {}

    bool Parse();
    CmdArguments arguments;
    std::wstring error;

  private:
    bool Fail(std::wstring text) {
        error = std::move(text);
        return false;
    }
    bool TakeOption(const std::wstring& token);
    bool TakePlain(const std::wstring& token);
    bool Check();
    /// Whether the option is one of the command, which may still be unknown.
    bool Fits(unsigned verbs) const {
        return !arguments.verb || (verbs >> static_cast<unsigned>(*arguments.verb) & 1U) != 0;
    }

    std::span<const std::wstring> m_tokens;
    std::wstring m_firstWord;  // of a command that has two
    std::vector<std::pair<std::wstring, unsigned>> m_given;
};

bool CParser::Parse() {
    bool optionsEnded = false;
    while (!m_tokens.empty()) {
        const std::wstring token = m_tokens.front();
        m_tokens = m_tokens.subspan(1);
        if (!optionsEnded && token == L"--") {
            optionsEnded = true;
        } else if (!optionsEnded && token.size() > 1 && token.starts_with(L'-')) {
            if (!TakeOption(token)) return false;
        } else if (!TakePlain(token)) {
            return false;
        }
    }
    return arguments.help || Check();
}

bool CParser::TakeOption(const std::wstring& token) {
    const std::size_t sign = token.find(L'=');
    const std::wstring name = token.substr(0, sign);
    if (const auto* const flag = std::ranges::find(kFlags, name, &Flag::name); flag != std::end(kFlags)) {
        if (sign != std::wstring::npos) return Fail(name + L" takes no value");
        m_given.emplace_back(name, flag->verbs);
        arguments.*(flag->flag) = true;
        return true;
    }
    const auto* const option = std::ranges::find(kOptions, name, &Option::name);
    if (option == std::end(kOptions)) return Fail(L"unknown option: " + name);
    m_given.emplace_back(name, option->verbs);
    if (sign == std::wstring::npos && m_tokens.empty()) return Fail(name + L" needs a value");
    std::wstring value = token.substr(sign == std::wstring::npos ? 0 : sign + 1);
    if (sign == std::wstring::npos) {
        value = m_tokens.front();
        m_tokens = m_tokens.subspan(1);
    }
    return option->take(arguments, value) || Fail(name + L" knows no \"" + value + L"\"");
}

bool CParser::TakePlain(const std::wstring& token) {
    if (arguments.verb) {
        arguments.operands.push_back(token);
        return true;
    }
    const std::wstring words = m_firstWord.empty() ? token : m_firstWord + L' ' + token;
    const auto* const command = std::ranges::find(kCommands, words, &Command::words);
    if (command != kCommands.end()) {
        arguments.verb = static_cast<CmdVerb>(command - kCommands.begin());
        return true;
    }
    const auto begins = [&](const Command& longer) { return longer.words.starts_with(words + L' '); };
    if (std::ranges::none_of(kCommands, begins)) return Fail(L"unknown command: " + words);
    m_firstWord = words;
    return true;
}

bool CParser::Check() {
    if (!arguments.verb)
        return Fail(m_firstWord.empty() ? L"a command is missing" : L"incomplete command: " + m_firstWord);
    for (const auto& [name, verbs] : m_given) {
        if (!Fits(verbs)) return Fail(L"not an option of this command: " + name);
    }
    const Command& command = kCommands[static_cast<std::size_t>(*arguments.verb)];
    const std::size_t count = arguments.operands.size();
    if (count < command.leastOperands) return Fail(L"a file is missing");
    if (count > command.mostOperands)
        return Fail(L"one argument too many: " + arguments.operands[command.mostOperands]);
    if (*arguments.verb == CmdVerb::Exclude || *arguments.verb == CmdVerb::Enable) {
        if (count == 0 && arguments.from.empty()) return Fail(L"class ids or --from are missing");
        if (count > 0 && !arguments.from.empty()) return Fail(L"either class ids or --from");
    }
    return true;
}

}  // namespace

std::variant<CmdArguments, CmdUsageError> ParseCmdArguments(std::span<const std::wstring> tokens) {
    CParser parser(tokens);
    if (parser.Parse()) return std::move(parser.arguments);
    return CmdUsageError{parser.arguments.verb, std::move(parser.error)};
}

std::wstring_view CmdName(CmdVerb verb) { return kCommands[static_cast<std::size_t>(verb)].words; }
