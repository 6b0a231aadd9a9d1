#include "BareEnumeration.h"

#include <windows.h>

#include <dmo.h>
#include <strmif.h>
#include <uuids.h>

#include <array>
#include <ole2.h>
#include <string>
#include <vector>
#include <wrl/client.h>

#include "CorvaneKeys.h"
#include "PluginRecords.h"

using Microsoft::WRL::ComPtr;

namespace {

HKEY BareOpen(HKEY root, const wchar_t* path, REGSAM access = KEY_READ) {
    HKEY key = nullptr;
    ::RegOpenKeyExW(root, path, 0, access, &key);
    return key;
}

template <typename TWork>
void BareSubkeys(HKEY key, TWork&& work) {
    std::array<wchar_t, 260> name;
    for (DWORD index = 0;; ++index) {
        DWORD length = name.size();
        if (::RegEnumKeyExW(key, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS)
            return;
        work(name.data());
    }
}

template <std::size_t N>
void BareValues(HKEY parent, const wchar_t* subkey, REGSAM access,
                const std::array<const wchar_t*, N>& values) {
    const HKEY key = BareOpen(parent, subkey, access);
    std::array<BYTE, 520> data;
    for (const wchar_t* value : values) {
        DWORD size = data.size();
        ::RegQueryValueExW(key, value, nullptr, nullptr, data.data(), &size);
    }
    ::RegCloseKey(key);
}

void BareDmoName(const GUID& clsid) {
    std::array<wchar_t, 80> name;
    ::DMOGetName(clsid, name.data());
}

void BareKeyNames(HKEY root, const wchar_t* path, bool asPlugins) {
    const HKEY key = BareOpen(root, path);
    BareSubkeys(key, [asPlugins](const wchar_t* name) {
        GUID clsid{};
        ::CLSIDFromString(name, &clsid);
        if (asPlugins) BareDmoName(clsid);
    });
    ::RegCloseKey(key);
}

int BareFilters() {
    ComPtr<IFilterMapper2> mapper;
    ::CoCreateInstance(CLSID_FilterMapper2, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&mapper));
    const std::array<GUID, 2> audio = {MEDIATYPE_Audio, GUID{}};
    ComPtr<IEnumMoniker> enumerator;
    mapper->EnumMatchingFilters(&enumerator, 0, FALSE, 0, TRUE, 1, audio.data(), nullptr, nullptr, FALSE,
                                TRUE, 0, nullptr, nullptr, nullptr);
    std::vector<IMoniker*> monikers(kMaxEntries);
    ULONG count = 0;
    enumerator->Next(static_cast<ULONG>(monikers.size()), monikers.data(), &count);
    for (ULONG i = 0; i < count; ++i) {
        ComPtr<IMoniker> moniker;
        moniker.Attach(monikers[i]);
        ComPtr<IPropertyBag> bag;
        moniker->BindToStorage(nullptr, nullptr, IID_PPV_ARGS(&bag));
        GUID clsid{};
        for (const wchar_t* property : {L"FriendlyName", L"CLSID"}) {
            VARIANT value;
            ::VariantInit(&value);
            if (SUCCEEDED(bag->Read(property, &value, nullptr)) && value.vt == VT_BSTR && *property == L'C') {
                ::CLSIDFromString(value.bstrVal, &clsid);
            }
            ::VariantClear(&value);
        }
        BareDmoName(clsid);
    }
    return static_cast<int>(count);
}

void BareMediaObjects() {
    ComPtr<IEnumDMO> enumerator;
    ::DMOEnum(DMOCATEGORY_AUDIO_EFFECT, DMO_ENUMF_INCLUDE_KEYED, 0, nullptr, 0, nullptr, &enumerator);
    std::vector<CLSID> clsids(kMaxEntries);
    std::vector<wchar_t*> names(kMaxEntries);
    DWORD count = 0;
    enumerator->Next(static_cast<DWORD>(clsids.size()), clsids.data(), names.data(), &count);
    for (DWORD i = 0; i < count; ++i) {
        ::CoTaskMemFree(names[i]);
        BareDmoName(clsids[i]);
    }
}

void BareMidiNames() {
    const HKEY key = BareOpen(HKEY_LOCAL_MACHINE, kMidiFiltersKey);
    BareSubkeys(key, [](const wchar_t* name) {
        GUID clsid{};
        ::CLSIDFromString(name, &clsid);
        wchar_t* userType = nullptr;
        ::OleRegGetUserType(clsid, USERCLASSTYPE_FULL, &userType);
        ::CoTaskMemFree(userType);
        BareDmoName(clsid);
    });
    ::RegCloseKey(key);
}

void BareControlSurfaces() {
    const HKEY key = BareOpen(HKEY_CLASSES_ROOT, kControlSurfacesKey);
    BareSubkeys(key, [key](const wchar_t* name) {
        BareValues(key, name, KEY_READ, std::array{L"Description"});
        GUID clsid{};
        ::CLSIDFromString(name, &clsid);
        BareDmoName(clsid);
    });
    ::RegCloseKey(key);
}

void BareInventory(HKEY root, const std::wstring& path, REGSAM access, const auto& values) {
    const HKEY key = BareOpen(root, path.c_str(), access);
    BareSubkeys(key, [&](const wchar_t* name) { BareValues(key, name, access, values); });
    ::RegCloseKey(key);
}

}  // namespace

int BareEnumeration() {
    static constexpr std::array kAdapterValues = {L"clsidPlug", L"FullPath", L"isVst", L"registerAsSynth"};
    static constexpr std::array kVstValues = {L"isVst",    L"registerAsSynth", L"isShell",   L"isBad",
                                              L"isX64",    L"uniqueId",        L"clsidPlug", L"clsidPlugMD5",
                                              L"FullPath", L"FullName",        L"Vendor"};
    BareInventory(HKEY_LOCAL_MACHINE, std::wstring(kAdapterKey) + L"\\Inventory", KEY_READ, kAdapterValues);
    BareKeyNames(HKEY_CLASSES_ROOT, kSoftSynthsKey, false);
    const int filters = BareFilters();
    BareMediaObjects();
    BareMidiNames();
    BareControlSurfaces();
    BareInventory(HKEY_CURRENT_USER, std::wstring(kDefaultVstKey) + L"\\Inventory", KEY_ALL_ACCESS,
                  kVstValues);
    return filters;
}
