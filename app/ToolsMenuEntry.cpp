#include "ToolsMenuEntry.h"

#include <windows.h>

#include <string>

#include "CorvaneKeys.h"
#include "NameOrder.h"
#include "ProgramPath.h"
#include "RegKey.h"
#include "Resources.h"
#include "resource.h"

namespace {

constexpr wchar_t kEntryName[] = L"Plugin Manager";
constexpr wchar_t kOldEntryName[] = L"Ostrel Plugin Manager";

// The host replaces each "$" by the value.
constexpr wchar_t kArguments[] = L"/ParentWnd$ /VSTInventoryRegKey$";
constexpr DWORD kNotModal = 0;

}  // namespace

bool RegisterInToolsMenu() {
    const auto menu = CRegKey::Create(HKEY_LOCAL_MACHINE, kToolsMenuKey);
    if (!menu) return false;
    const std::wstring programPath = ProgramPath();
    CRegKey::DeleteTree(HKEY_LOCAL_MACHINE, std::wstring(kToolsMenuKey) + L"\\" + kOldEntryName);

    bool existed = false;
    const auto entry = CRegKey::Create(menu->Handle(), kEntryName, KEY_ALL_ACCESS, &existed);
    if (!entry) return false;
    if (existed && SamePath(entry->ReadString(L"ExePath", kPathBytes).value_or(L""), programPath)) {
        entry->WriteString(L"CmdArgs", kArguments);
        entry->WriteDword(L"Modal", kNotModal);
        return false;
    }
    entry->WriteString(L"ExePath", programPath);
    entry->WriteString(L"MenuText", LoadText(IDS_TOOLS_MENU_TEXT));
    entry->WriteString(L"StatusBarText", LoadText(IDS_TOOLS_MENU_STATUS));
    entry->WriteString(L"Type", L"Generic");
    entry->WriteDword(L"Modal", kNotModal);
    entry->WriteString(L"CmdArgs", kArguments);
    return true;
}
