#include "CmdLine.h"

#include "AsciiCase.h"

namespace {

std::optional<unsigned> HexDigit(wchar_t c) {
    const wchar_t lower = AsciiLower(c);
    if (lower >= L'0' && lower <= L'9') return static_cast<unsigned>(lower - L'0');
    if (lower >= L'a' && lower <= L'f') return static_cast<unsigned>(lower - L'a') + 10;
    return std::nullopt;
}

}  // namespace

std::optional<std::uintptr_t> ParsePointer(std::wstring_view text) {
    const auto start = text.find_first_not_of(L" \t");
    if (start == std::wstring_view::npos) return std::nullopt;
    text.remove_prefix(start);
    if (text.size() > 2 && text[0] == L'0' && AsciiLower(text[1]) == L'x' && HexDigit(text[2]))
        text.remove_prefix(2);

    constexpr std::uintptr_t kTopDigit = std::uintptr_t{0xF} << (sizeof(std::uintptr_t) * 8 - 4);
    std::uintptr_t value = 0;
    std::size_t digits = 0;
    for (; digits < text.size(); ++digits) {
        const auto digit = HexDigit(text[digits]);
        if (!digit) break;
        if (value & kTopDigit) return std::nullopt;
        value = value << 4 | *digit;
    }
    return digits == 0 ? std::nullopt : std::optional(value);
}

std::wstring WithoutProgram(const std::wstring& commandLine) {
    constexpr wchar_t kBlanks[] = L" \t";
    const bool quoted = commandLine.starts_with(L'"');
    auto end = quoted ? commandLine.find(L'"', 1) : commandLine.find_first_of(kBlanks);
    // A path in quotes ends with them, whatever follows.
    if (quoted && end != std::wstring::npos) ++end;
    const auto arguments = commandLine.find_first_not_of(kBlanks, end);
    return arguments == std::wstring::npos ? L"" : commandLine.substr(arguments);
}

CPluginManagerCmdLine CPluginManagerCmdLine::Parse(const std::vector<std::wstring>& tokens) {
    CPluginManagerCmdLine line;
    for (const std::wstring& token : tokens) {
        if (token.starts_with(L'/') || token.starts_with(L'-')) {
            line.TakeSwitch(std::wstring_view(token).substr(1));
        } else {
            line.TakeParameter(token);
        }
    }
    return line;
}

void CPluginManagerCmdLine::TakeSwitch(std::wstring_view name) {
    struct Switch {
        std::wstring_view name;
        bool CPluginManagerCmdLine::*flag;
    };
    static constexpr Switch kSwitches[] = {
        {L"Register", &CPluginManagerCmdLine::registerOnly},
        {L"ParentWnd", &CPluginManagerCmdLine::parentWndPending},
        {L"w", &CPluginManagerCmdLine::parentWndPending},
        {L"Float", &CPluginManagerCmdLine::floating},
        {L"VSTInventoryRegKey", &CPluginManagerCmdLine::inventoryKeyPending},
        {L"UseDatabase", &CPluginManagerCmdLine::useDatabase},
    };
    for (const Switch& known : kSwitches) {
        if (EqualsIgnoringCase(name, known.name)) this->*known.flag = true;
    }
}

void CPluginManagerCmdLine::TakeParameter(const std::wstring& text) {
    if (parentWndPending) {
        parentWnd = ParsePointer(text).value_or(parentWnd);
        parentWndPending = false;
    } else if (inventoryKeyPending) {
        vstInventoryKey = text;
        inventoryKeyPending = false;
    } else {
        fileParam = text;
    }
}
