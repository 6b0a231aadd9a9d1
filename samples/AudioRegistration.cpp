#include "AudioRegistration.h"

#include <dmo.h>
#include <dmoreg.h>
#include <uuids.h>

#include <array>

bool RegisterAudioFilter(IFilterMapper2& mapper, const CLSID& clsid, const wchar_t* name) {
    const REGPINTYPES audio{&MEDIATYPE_Audio, &MEDIASUBTYPE_PCM};
    std::array<REGFILTERPINS2, 2> pins{};
    for (REGFILTERPINS2& pin : pins) {
        pin.cInstances = 1;
        pin.nMediaTypes = 1;
        pin.lpMediaType = &audio;
    }
    pins[1].dwFlags = REG_PINFLAG_B_OUTPUT;
    REGFILTER2 filter{};
    filter.dwVersion = 2;
    filter.dwMerit = MERIT_DO_NOT_USE;
    filter.cPins2 = static_cast<ULONG>(pins.size());
    filter.rgPins2 = pins.data();
    return SUCCEEDED(
        mapper.RegisterFilter(clsid, name, nullptr, &CLSID_LegacyAmFilterCategory, nullptr, &filter));
}

bool RegisterAudioDmo(const CLSID& clsid, const wchar_t* name) {
    DMO_PARTIAL_MEDIATYPE audio{MEDIATYPE_Audio, MEDIASUBTYPE_PCM};
    return SUCCEEDED(DMORegister(name, clsid, DMOCATEGORY_AUDIO_EFFECT, 0, 1, &audio, 1, &audio));
}
