#include <windows.h>

#include <objbase.h>

#include <cstdio>
#include <exception>

#include "ChosenLanguage.h"
#include "CmdHelp.h"
#include "Commands.h"
#include "IdList.h"
#include "Messages.h"
#include "ProgramArguments.h"

namespace {

class CComUse {
  public:
    CComUse() : m_ready(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    ~CComUse() {
        if (m_ready) ::CoUninitialize();
    }
    CComUse(const CComUse&) = delete;
    CComUse& operator=(const CComUse&) = delete;

  private:
    bool m_ready;
};

CmdExit Refuse(const CmdUsageError& error) {
    const std::wstring command = error.verb ? L' ' + std::wstring(CmdName(*error.verb)) : std::wstring();
    CConsole::Say(L"PluginManagerCmd: " + error.text + L"\nTry: PluginManagerCmd" + command + L" --help");
    return CmdExit::Usage;
}

/// Ids are told from files by their place; they are looked at here, because a wrong one is a matter of usage.
std::optional<CmdUsageError> WrongId(const CmdArguments& arguments) {
    const auto verb = arguments.verb;
    const bool afterFile = verb == CmdVerb::PresetsExport;
    if (!afterFile && verb != CmdVerb::Exclude && verb != CmdVerb::Enable) return std::nullopt;
    for (std::size_t i = afterFile ? 1 : 0; i < arguments.operands.size(); ++i) {
        if (!ParseIdText(arguments.operands[i]))
            return CmdUsageError{verb, L"no class id: " + arguments.operands[i]};
    }
    return std::nullopt;
}

CmdExit Execute(const CmdArguments& arguments) {
    const CComUse com;
    CCmdStudio studio(arguments.vstKey);
    switch (*arguments.verb) {
        case CmdVerb::List:
            return ListPlugins(arguments, studio);
        case CmdVerb::Exclude:
        case CmdVerb::Enable:
            return ChangeExclusions(arguments, studio);
        case CmdVerb::PresetsExport:
            return ExportPresetFile(arguments, studio);
        case CmdVerb::PresetsImport:
            return ImportPresetFile(arguments, studio);
        case CmdVerb::SetSave:
            return SaveSet(arguments, studio);
        case CmdVerb::SetLoad:
            return LoadSet(arguments, studio);
        case CmdVerb::Verify:
            return VerifyFiles(arguments, studio);
    }
    return CmdExit::Usage;
}

CmdExit Run() {
    const std::vector<std::wstring> tokens = ProgramArguments();
    const auto parsed = ParseCmdArguments(tokens);
    if (const auto* error = std::get_if<CmdUsageError>(&parsed)) return Refuse(*error);
    const auto& arguments = std::get<CmdArguments>(parsed);
    if (arguments.help) return WriteData(CmdHelp(arguments.verb));
    if (const auto error = WrongId(arguments)) return Refuse(*error);
    return Execute(arguments);
}

}  // namespace

int wmain() {
    // What is loaded from here on comes from the system's folder, never from the current one.
    ::SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    // Nobody is there to close a box: an empty drive is an error like others, and a crash ends the process.
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    TakeSystemLanguage();
    TakeSettingLanguage();
    try {
        return static_cast<int>(Run());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "PluginManagerCmd: %s\n", error.what());
        return static_cast<int>(CmdExit::Failed);
    }
}
