#include "PluginRemoval.h"

#include <windows.h>

#include <strmif.h>
#include <uuids.h>

#include <string>
#include <wrl/client.h>

#include "ClsidText.h"
#include "CorvaneKeys.h"
#include "MediaObjectRegister.h"
#include "RegKey.h"

void UnregisterPlugin(const Guid& clsid, Category category) {
    if (category == Category::MediaObjects) {
        CMediaObjectRegister::Instance().RemoveAudioEffect(clsid);
        return;
    }
    Microsoft::WRL::ComPtr<IFilterMapper> mapper;
    if (SUCCEEDED(
            ::CoCreateInstance(CLSID_FilterMapper, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&mapper)))) {
        mapper->UnregisterFilter(ToSystem(clsid));
        // Not every mapper's older interface sees what was registered through the newer one.
        Microsoft::WRL::ComPtr<IFilterMapper2> newer;
        if (SUCCEEDED(mapper.As(&newer))) newer->UnregisterFilter(nullptr, nullptr, ToSystem(clsid));
    }
    if (category == Category::DirectXInstruments) {
        CRegKey::DeleteTree(HKEY_CLASSES_ROOT, std::wstring(kSoftSynthsKey) + L"\\" + ClsidText(clsid));
    }
}
