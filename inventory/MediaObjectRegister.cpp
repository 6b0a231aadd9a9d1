#include "MediaObjectRegister.h"

#include <array>

#include "ClsidText.h"

const CMediaObjectRegister& CMediaObjectRegister::Instance() {
    static const CMediaObjectRegister instance;
    return instance;
}

CMediaObjectRegister::CMediaObjectRegister(const wchar_t* library)
    : m_library(::LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {
    const HMODULE module = m_library.Get();
    const bool complete = module && FindFunction(module, "DMOEnum", m_enumerate) &&
                          FindFunction(module, "DMOGetName", m_getName) &&
                          FindFunction(module, "DMOUnregister", m_unregister);
    if (!complete) m_library.Reset();
}

bool CMediaObjectRegister::Contains(const Guid& clsid) const {
    // The buffer's size is the function's contract: 80 characters.
    std::array<wchar_t, 80> name{};
    return m_library && m_getName(ToSystem(clsid), name.data()) == S_OK;
}

Microsoft::WRL::ComPtr<IEnumDMO> CMediaObjectRegister::AudioEffects() const {
    Microsoft::WRL::ComPtr<IEnumDMO> effects;
    if (m_library)
        m_enumerate(DMOCATEGORY_AUDIO_EFFECT, DMO_ENUMF_INCLUDE_KEYED, 0, nullptr, 0, nullptr, &effects);
    return effects;
}

void CMediaObjectRegister::RemoveAudioEffect(const Guid& clsid) const {
    if (m_library) m_unregister(ToSystem(clsid), DMOCATEGORY_AUDIO_EFFECT);
}
