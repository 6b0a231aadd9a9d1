// What the VST scanner and the adapter's configuration program are asked to do, and how.
#pragma once

#include <string>
#include <vector>

enum class VstProgram { Scanner, AdapterWizard };

/// One of the buttons that start a program.
struct VstToolAction {
    VstProgram program;
    const wchar_t* arguments;
    bool namesPlugin;  // the current plug-in's class id follows the arguments
    bool refreshes;    // the program may have changed what is listed
};

inline constexpr VstToolAction kScanPlugins{VstProgram::Scanner, L"", false, true};
inline constexpr VstToolAction kScannerOptions{VstProgram::Scanner, L" /ScanProps", false, true};
inline constexpr VstToolAction kVstProperties{VstProgram::Scanner, L" /VstProps:", true, false};
inline constexpr VstToolAction kAdapterWizard{VstProgram::AdapterWizard, L" /NoWelcome", false, true};
inline constexpr VstToolAction kAdapterProperties{VstProgram::AdapterWizard,
                                                  L" /NoWelcome /SilentScan /VstProps:", true, true};

/// Below the current user's root.
struct VstKey {
    std::wstring path;
    bool given = false;  // on the command line
};

/// What follows the program's path in the command, from the blank on; `clsid` is only looked at when the
/// action names a plug-in.
std::wstring ArgumentsOf(const VstToolAction& action, const std::wstring& clsid, const VstKey& key);

/// The files that the system takes for the program of a command before it comes to `program`, when that
/// stands there without quotes: "C:\Tools Dir\scan.exe" starts C:\Tools.exe, if there is one.
std::vector<std::wstring> ProgramsOnTheWay(const std::wstring& program);
