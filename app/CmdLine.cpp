#include "CmdLine.h"

#include "AsciiCase.h"
#include "PointerText.h"

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
