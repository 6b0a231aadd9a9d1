#include "ChosenLanguage.h"

#include <windows.h>

#include "CorvaneKeys.h"
#include "InterfaceLanguage.h"
#include "RegKey.h"
#include "Resources.h"

void TakeSystemLanguage() { SetResourceLanguage(NearestInterfaceLanguage(::GetUserDefaultUILanguage())); }

void TakeSettingLanguage() {
    constexpr std::size_t kLanguageBytes = 64;
    const auto key = CRegKey::Open(HKEY_LOCAL_MACHINE, kCompanyKey);
    const auto name = key ? key->ReadUnterminated(L"Language", kLanguageBytes) : std::nullopt;
    const auto language = name ? FindInterfaceLanguage(*name) : std::nullopt;
    if (!language) return;
    ::SetThreadUILanguage(*language);
    SetResourceLanguage(*language);
}
