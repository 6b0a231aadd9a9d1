// The system's register of media objects, through a library that is loaded at run time.
#pragma once

#include <windows.h>

#include <dmo.h>

#include <wrl/client.h>

#include "Guid.h"
#include "Handles.h"

/// Some editions of the system lack the library: nothing is registered then.
class CMediaObjectRegister {
  public:
    /// The program's own one, loaded with the first use.
    static const CMediaObjectRegister& Instance();

    /// A library of the system folder; never one from anywhere else.
    explicit CMediaObjectRegister(const wchar_t* library = L"msdmo.dll");

    bool Contains(const Guid& clsid) const;
    /// The audio effects; null when they can't be listed.
    Microsoft::WRL::ComPtr<IEnumDMO> AudioEffects() const;
    void RemoveAudioEffect(const Guid& clsid) const;

  private:
    UniqueLibrary m_library;
    decltype(&::DMOEnum) m_enumerate = nullptr;
    decltype(&::DMOGetName) m_getName = nullptr;
    decltype(&::DMOUnregister) m_unregister = nullptr;
};
