// The program's command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the command line asked for. A plain parameter is the value of a switch that waits for one: of
/// /ParentWnd before /VSTInventoryRegKey.
struct CPluginManagerCmdLine {
    bool registerOnly = false;         // /Register
    bool parentWndPending = false;     // /ParentWnd or /w: the next plain parameter is the window
    bool floating = false;             // /Float
    bool inventoryKeyPending = false;  // /VSTInventoryRegKey: the next plain parameter is the key
    bool useDatabase = false;          // /UseDatabase
    std::uintptr_t parentWnd = 0;      // handle of the host's main window, not checked
    std::wstring fileParam;            // the last plain parameter that no switch asked for
    std::wstring vstInventoryKey;      // below the current user's root; empty for the default

    /// `tokens` are the arguments without the program's name. Unknown switches and invalid handles are
    /// ignored.
    static CPluginManagerCmdLine Parse(const std::vector<std::wstring>& tokens);

  private:
    void TakeSwitch(std::wstring_view name);
    void TakeParameter(const std::wstring& text);
};

/// What follows the program in the command line of a process, as it stands.
std::wstring WithoutProgram(const std::wstring& commandLine);
