// A registry of the test's own, and short ways to fill and read it.
#pragma once

#include "RegKey.h"

namespace support {

/// While it lives, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE and HKEY_CLASSES_ROOT of this process are empty
/// scratch keys, but for the categories of plug-ins that the system's filter mapper can't do without: what a
/// test registers is all that it lists. HKEY_CLASSES_ROOT is the same key as Software\Classes of
/// HKEY_LOCAL_MACHINE. CoCreateInstance and OleRegGetUserType go on reading the user's real registry.
///
/// One sandbox at a time, of one test process at a time. What a crashed run left is removed first.
/// Throws when the roots can't be redirected, because the test would then write into the user's registry.
class RegistrySandbox {
  public:
    RegistrySandbox();
    ~RegistrySandbox();
    RegistrySandbox(const RegistrySandbox&) = delete;
    RegistrySandbox& operator=(const RegistrySandbox&) = delete;

  private:
    static CRegKey FreshScratch();

    CRegKey m_top = FreshScratch();
    CRegKey m_user = CRegKey::Create(m_top.Handle(), L"User").value();
    CRegKey m_machine = CRegKey::Create(m_top.Handle(), L"Machine").value();
    CRegKey m_classes = CRegKey::Create(m_machine.Handle(), L"Software\\Classes").value();
};

// These work on whatever `root` is at the moment, redirected or not. Keys are created as needed, a null name
// is the default value, and a write that fails throws.

void CreateKey(HKEY root, const std::wstring& path);
void SetText(HKEY root, const std::wstring& path, const wchar_t* name, const std::wstring& text);
void SetDword(HKEY root, const std::wstring& path, const wchar_t* name, DWORD value);
void SetRaw(HKEY root, const std::wstring& path, const wchar_t* name, DWORD type,
            const std::vector<BYTE>& bytes);
/// The characters alone, without a terminator: for a text that is malformed on purpose.
std::vector<BYTE> Bytes(std::wstring_view text);

bool Exists(HKEY root, const std::wstring& path);
/// Nothing unless the value is a text with a terminator.
std::optional<std::wstring> Text(HKEY root, const std::wstring& path, const wchar_t* name);
std::optional<DWORD> Dword(HKEY root, const std::wstring& path, const wchar_t* name);
std::vector<std::wstring> Subkeys(HKEY root, const std::wstring& path);
void DeleteTree(HKEY root, const std::wstring& path);

/// Registers an audio filter with one input and one output. `clsid` is the text in braces.
void RegisterAudioFilter(const std::wstring& clsid, const std::wstring& name);
/// Registers an audio effect with the media object registry.
void RegisterAudioDmo(const std::wstring& clsid, const std::wstring& name);

}  // namespace support
