// Plug-ins for a registry of the test's own.
#pragma once

#include <string>

#include "ClsidText.h"
#include "support/RegistrySandbox.h"

namespace support {

inline std::wstring IdText(unsigned number) { return ClsidText({number, 1, 2, {}}); }

/// An entry of the VST inventory of 64 bits, with IdText(number) as its id and IdText(number + 100) as its
/// MD5 id. Its file exists.
inline void AddVst(unsigned number, const std::wstring& name, bool vst3 = false) {
    const std::wstring path = L"Software\\Corvane Music Software\\Corvane VST\\Inventory\\" + name;
    SetDword(HKEY_CURRENT_USER, path, vst3 ? L"isVst3" : L"isVst", 1);
    SetDword(HKEY_CURRENT_USER, path, L"isX64", 1);
    SetDword(HKEY_CURRENT_USER, path, L"uniqueId", static_cast<DWORD>(-5));
    SetText(HKEY_CURRENT_USER, path, L"clsidPlug", IdText(number));
    SetText(HKEY_CURRENT_USER, path, L"clsidPlugMD5", IdText(number + 100));
    SetText(HKEY_CURRENT_USER, path, L"FullPath", L"C:\\windows\\regedit.exe");
    SetText(HKEY_CURRENT_USER, path, L"FullName", name);
    SetText(HKEY_CURRENT_USER, path, L"Vendor", L"Tarnwick");
}

inline constexpr wchar_t kVstEffects[] = L"VST Audio Effects (VST)";

}  // namespace support
