#include "RegistrationIndex.h"

#include "ClsidText.h"
#include "CorvaneKeys.h"
#include "MediaObjectRegister.h"
#include "RegKey.h"

void CClsidSubkeys::Read(HKEY root, const wchar_t* path) {
    m_names.clear();
    m_clsids.clear();
    const auto key = CRegKey::Open(root, path);
    if (!key) return;
    m_names = key->SubkeyNames();
    for (const std::wstring& name : m_names) {
        // A program id would be resolved to a class id, but the key's own name is what has to match.
        const auto clsid = name.starts_with(L'{') ? ParseClsid(name) : std::nullopt;
        if (clsid) m_clsids.insert(*clsid);
    }
}

void CRegistrationIndex::Read() {
    m_softSynths.Read(HKEY_CLASSES_ROOT, kSoftSynthsKey);
    m_midiFilters.Read(HKEY_LOCAL_MACHINE, kMidiFiltersKey);
    m_controlSurfaces.Read(HKEY_CLASSES_ROOT, kControlSurfacesKey);
}

RegistrationFacts CRegistrationIndex::FactsOf(const Guid& clsid) const {
    return {.answersAsDmo = CMediaObjectRegister::Instance().Contains(clsid),
            .wrapsVstSynth = m_adapter.WrapsVstSynth(ClsidText(clsid)),
            .markedSoftSynth = m_softSynths.Contains(clsid),
            .isMidiFilter = m_midiFilters.Contains(clsid),
            .isControlSurface = m_controlSurfaces.Contains(clsid)};
}
