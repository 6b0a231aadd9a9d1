#include "PluginRemoval.h"

#include <windows.h>

#include <strmif.h>
#include <uuids.h>

#include <string>
#include <utility>
#include <wrl/client.h>

#include "ClsidText.h"
#include "CorvaneKeys.h"
#include "MediaObjectRegister.h"
#include "RegKey.h"
#include "RegSnapshot.h"

namespace {

/// The category of media objects that plug-ins are registered under, as its key is called.
constexpr wchar_t kAudioEffects[] = L"F3602B3F-0592-48DF-A4CD-674721E7EBEB";

}  // namespace

std::vector<BackupKey> RegistrationKeys(const Guid& clsid, Category category) {
    const std::wstring id = ClsidText(clsid);
    std::vector<BackupKey> keys;
    for (const BackupHive hive : {BackupHive::User, BackupHive::Machine}) {
        const auto add = [&](const std::wstring& path, std::vector<std::wstring> values = {}) {
            keys.push_back({hive, L"Software\\Classes\\" + path, std::move(values)});
        };
        if (category == Category::MediaObjects) {
            const std::wstring bare = id.substr(1, id.size() - 2);
            add(std::wstring(kMediaObjectsKey) + L"\\" + bare);
            add(std::wstring(kMediaObjectsKey) + L"\\Categories\\" + kAudioEffects + L"\\" + bare);
            continue;
        }
        const std::wstring server = L"CLSID\\" + id;
        add(L"CLSID\\" + ClsidText(RowOf(Category::DirectXEffects).guid) + L"\\Instance\\" + id);
        add(L"Filter\\" + id);
        // The rest of this key is the plug-in's own.
        if (CRegKey::Open(RootOf(hive), L"Software\\Classes\\" + server)) add(server, {L"Merit"});
        add(server + L"\\Pins");
        if (category == Category::DirectXInstruments) add(std::wstring(kSoftSynthsKey) + L"\\" + id);
    }
    return keys;
}

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
