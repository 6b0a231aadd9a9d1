// Plug-ins for a registry of the test's own.
#pragma once

#include "ClsidText.h"
#include "support/RegistrySandbox.h"

namespace support {

inline Guid Id(unsigned number) { return {number, 1, 2, {}}; }
inline std::wstring IdText(unsigned number) { return ClsidText(Id(number)); }

/// A file that is there on every system.
inline constexpr wchar_t kSomeFile[] = L"C:\\windows\\regedit.exe";

// Where the host and the system keep their plug-ins.
inline constexpr wchar_t kVstInventory[] = L"Software\\Corvane Music Software\\Corvane VST\\Inventory\\";
inline constexpr wchar_t kAdapterInventory[] =
    L"Software\\Corvane Music Software\\Corvane VST Adapter\\Inventory\\";
inline constexpr wchar_t kExcludedPlugins[] = L"Software\\Corvane Music Software\\ExcludedPlugIns\\";
inline constexpr wchar_t kMidiFilters[] = L"SOFTWARE\\Corvane Music Software\\MIDI Filters\\";
inline constexpr wchar_t kSurfaces[] = L"CorvaneControlSurfaces\\";
inline constexpr wchar_t kSoftSynths[] = L"QtzSoftSynths\\";
inline constexpr wchar_t kFilterInstances[] = L"CLSID\\{083863F1-70DE-11D0-BD40-00A0C911CE86}\\Instance\\";

inline constexpr wchar_t kPresets[] = L"SOFTWARE\\Corvane Music Software\\ActiveMovie\\Presets\\";

/// In the registry, of one byte.
inline void AddPreset(const std::wstring& clsid, const std::wstring& name, BYTE data = 1) {
    SetRaw(HKEY_CURRENT_USER, kPresets + clsid, name.c_str(), REG_BINARY, {data});
}

/// A key under construction; a value that is set again is replaced.
class Entry {
  public:
    Entry(HKEY root, std::wstring path) : m_root(root), m_path(std::move(path)) {}
    const Entry& Text(const wchar_t* name, const std::wstring& text) const {
        SetText(m_root, m_path, name, text);
        return *this;
    }
    const Entry& Number(const wchar_t* name, DWORD value) const {
        SetDword(m_root, m_path, name, value);
        return *this;
    }

  private:
    HKEY m_root;
    std::wstring m_path;
};

/// An entry of the VST inventory of 64 bits, with IdText(number) as its id and IdText(number + 100) as its
/// MD5 id. Its file exists.
inline Entry AddVst(unsigned number, const std::wstring& name, bool vst3 = false) {
    return Entry(HKEY_CURRENT_USER, kVstInventory + name)
        .Number(L"isVst", !vst3)
        .Number(L"isVst3", vst3)
        .Number(L"isX64", 1)
        .Number(L"uniqueId", static_cast<DWORD>(-5))
        .Text(L"clsidPlug", IdText(number))
        .Text(L"clsidPlugMD5", IdText(number + 100))
        .Text(L"FullPath", kSomeFile)
        .Text(L"FullName", name)
        .Text(L"Vendor", L"Tarnwick");
}

/// An audio filter, and an entry of the legacy adapter that wraps a VST effect as this filter.
inline Entry Wrap(unsigned number, const std::wstring& name) {
    RegisterAudioFilter(IdText(number), name);
    return Entry(HKEY_LOCAL_MACHINE, kAdapterInventory + name)
        .Text(L"clsidPlug", IdText(number))
        .Number(L"isVst", 1);
}

inline void AddSurface(unsigned number, const std::wstring& name) {
    SetText(HKEY_CLASSES_ROOT, kSurfaces + IdText(number), L"Description", name);
}

inline void AddFilter(unsigned number, const std::wstring& name, const std::wstring& file) {
    RegisterAudioFilter(IdText(number), name);
    SetText(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID\\" + IdText(number) + L"\\InprocServer32", nullptr,
            file);
}

inline constexpr wchar_t kVstEffects[] = L"VST Audio Effects (VST)";

}  // namespace support
