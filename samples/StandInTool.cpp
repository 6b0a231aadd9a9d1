// Plays the VST scanner and the adapter's configuration program for the sample studio. It writes its command
// line to stand-in-tool.log in the folder for temporary files. A scan finds one more plug-in, as long as
// there are any; all else shows what was asked for. The value "Do" of HKEY_CURRENT_USER\Software\Corvane
// Sample Studio\Tool changes that:
//   add        finds one more plug-in
//   nothing    ends at once
//   forget     removes the whole inventory
//   crash      ends by an access violation
//   wait       waits until the value is another one, and does that
#include <windows.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "RegKey.h"

namespace {

constexpr wchar_t kSettings[] = L"Software\\Corvane Sample Studio\\Tool";
constexpr DWORD kPollInterval = 20;
constexpr ULONGLONG kLongestWait = 60000;

// Further members of a shell whose file the studio has.
constexpr wchar_t kShellFile[] = L"C:\\Program Files\\Common Files\\VST2\\Quillgate\\Quillgate Rack.dll";
struct Found {
    const wchar_t* name;
    DWORD uniqueId;
};
constexpr Found kFound[] = {
    {L"Quill Vibrato", 0x51675669}, {L"Quill Wah", 0x51675761}, {L"Quill Zoom", 0x51675A6D}};

std::wstring WhatToDo() {
    const auto key = CRegKey::Open(HKEY_CURRENT_USER, kSettings);
    return key ? key->ReadString(L"Do", kNameBytes).value_or(L"") : L"";
}

std::wstring Awaited() {
    const ULONGLONG end = GetTickCount64() + kLongestWait;
    std::wstring what = WhatToDo();
    for (; what == L"wait" && GetTickCount64() < end; what = WhatToDo()) Sleep(kPollInterval);
    return what;
}

void Log(const std::wstring& commandLine) {
    const std::filesystem::path text(commandLine);  // knows how to become UTF-8
    const auto bytes = text.u8string();
    std::ofstream file(std::filesystem::temp_directory_path() / L"stand-in-tool.log",
                       std::ios::app | std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()))
        << '\n';
}

// Empty when the command line names none, as the adapter program's does.
std::wstring InventoryOf(const std::wstring& commandLine) {
    constexpr std::wstring_view kSwitch = L"VSTRegKey:\"";
    const auto found = commandLine.find(kSwitch);
    if (found == std::wstring::npos) return {};
    const auto begin = found + kSwitch.size();
    return commandLine.substr(begin, commandLine.find(L'"', begin) - begin) + L"\\Inventory";
}

std::wstring ClassId(const Found& plugin, const wchar_t* kind) {
    std::array<wchar_t, 39> text{};
    std::swprintf(text.data(), text.size(), L"{%08X-%ls-8A01-5A3C1E90B764}",
                  static_cast<unsigned>(plugin.uniqueId), kind);
    return text.data();
}

void FindOneMore(const std::wstring& inventory) {
    for (const Found& plugin : kFound) {
        bool existed = false;
        const auto key =
            CRegKey::Create(HKEY_CURRENT_USER, inventory + L'\\' + plugin.name, KEY_WRITE, &existed);
        if (existed) continue;
        key->WriteString(L"FullPath", kShellFile);
        key->WriteString(L"FullName", plugin.name);
        key->WriteString(L"Vendor", L"Quillgate");
        key->WriteString(L"clsidPlug", ClassId(plugin, L"5653-5400"));
        key->WriteString(L"clsidPlugMD5", ClassId(plugin, L"4D44-3500"));
        key->WriteDword(L"uniqueId", plugin.uniqueId);
        for (const wchar_t* mark : {L"isVst", L"isX64", L"isShell"}) key->WriteDword(mark, 1);
        FILETIME now{};
        GetSystemTimeAsFileTime(&now);
        CRegKey::Create(HKEY_CURRENT_USER, inventory)
            ->WriteValue(L"lastUpdateTime", REG_BINARY, std::as_bytes(std::span(&now, 1)));
        return;
    }
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    const std::wstring commandLine = GetCommandLineW();
    Log(commandLine);
    const std::wstring inventory = InventoryOf(commandLine);
    const std::wstring what = Awaited();
    const bool scans = commandLine.find(L"Props") == std::wstring::npos && !inventory.empty();
    if (what == L"add" || (what.empty() && scans)) {
        FindOneMore(inventory);
    } else if (what == L"forget") {
        RegDeleteTreeW(HKEY_CURRENT_USER, inventory.c_str());
    } else if (what == L"crash") {
        RaiseException(EXCEPTION_ACCESS_VIOLATION, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    } else if (what.empty()) {
        MessageBoxW(nullptr, commandLine.c_str(), L"Stand-in of a tool", MB_OK | MB_ICONINFORMATION);
    }
    return 0;
}
