#include "ManagerSettings.h"

#include <array>
#include <optional>

#include "ProgramPath.h"
#include "RegKey.h"
#include "ToolsMenuEntry.h"

namespace {

/// Hexadecimal, padded with zeros to the width of a pointer, as "%p" prints it.
std::wstring HandleText(HWND window) {
    std::array<wchar_t, sizeof(UINT_PTR) * 2> digits{};
    auto value = reinterpret_cast<UINT_PTR>(window);
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, value >>= 4) {
        *digit = L"0123456789ABCDEF"[value & 0xF];
    }
    return {digits.data(), digits.size()};
}

}  // namespace

ManagerSettings LoadManagerSettings(bool registerOnly, HWND host) {
    ManagerSettings settings;
    std::optional<CRegKey> machineKey;
    if (registerOnly) {
        machineKey = CRegKey::Create(HKEY_LOCAL_MACHINE, kManagerKey);
        if (!machineKey) return settings;
    }
    const auto userKey = CRegKey::Create(HKEY_CURRENT_USER, kManagerKey);
    if (userKey) settings.layoutFolder = userKey->ReadPath(L"MenuLayoutsPath").value_or(L"");

    if (machineKey) machineKey->WriteString(L"ExePath", ProgramPath());
    if (userKey) {
        userKey->WriteString(L"ExePath", ProgramPath());
        if (::IsWindow(host)) userKey->WriteString(L"ParentWindow", HandleText(host));
    }
    settings.succeeded = !registerOnly || RegisterInToolsMenu();
    return settings;
}

void ForgetParentWindow() {
    if (const auto key = CRegKey::Open(HKEY_CURRENT_USER, kManagerKey, KEY_WRITE))
        key->DeleteValue(L"ParentWindow");
}
