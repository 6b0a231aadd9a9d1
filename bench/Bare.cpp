#include "Bare.h"

#include <dmo.h>
#include <shlwapi.h>
#include <strmif.h>
#include <uuids.h>

#include <ole2.h>
#include <vector>
#include <wrl/client.h>

#include "CorvaneKeys.h"
#include "PluginRecords.h"

using Microsoft::WRL::ComPtr;

namespace {

class CBareEnumeration {
  public:
    explicit CBareEnumeration(BareFiles files) : m_files(files) {}
    int Filters() const;
    void MediaObjects() const;
    void MidiEffects() const;
    void ControlSurfaces() const;

  private:
    void Plugin(const GUID& clsid) const;
    BareFiles m_files;
};

GUID ClsidFrom(const wchar_t* text) {
    GUID clsid{};
    ::CLSIDFromString(text, &clsid);
    return clsid;
}

/// Whether it answers as a media object decides about the category.
void CBareEnumeration::Plugin(const GUID& clsid) const {
    std::array<wchar_t, 80> name;
    ::DMOGetName(clsid, name.data());
    if (m_files == BareFiles::None) return;
    std::array<wchar_t, 40> text;
    ::StringFromGUID2(clsid, text.data(), static_cast<int>(text.size()));
    const CBareKey server(HKEY_LOCAL_MACHINE,
                          std::wstring(L"Software\\Classes\\CLSID\\") + text.data() + L"\\InprocServer32");
    const std::wstring path = server.Handle() ? server.Ask(nullptr) : L"";
    if (m_files == BareFiles::Asked && !path.empty()) ::PathFileExistsW(path.c_str());
}

int CBareEnumeration::Filters() const {
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
            if (SUCCEEDED(bag->Read(property, &value, nullptr)) && value.vt == VT_BSTR && *property == L'C')
                clsid = ClsidFrom(value.bstrVal);
            ::VariantClear(&value);
        }
        Plugin(clsid);
    }
    return static_cast<int>(count);
}

void CBareEnumeration::MediaObjects() const {
    ComPtr<IEnumDMO> enumerator;
    ::DMOEnum(DMOCATEGORY_AUDIO_EFFECT, DMO_ENUMF_INCLUDE_KEYED, 0, nullptr, 0, nullptr, &enumerator);
    std::vector<CLSID> clsids(kMaxEntries);
    std::vector<wchar_t*> names(kMaxEntries);
    DWORD count = 0;
    enumerator->Next(static_cast<DWORD>(clsids.size()), clsids.data(), names.data(), &count);
    for (DWORD i = 0; i < count; ++i) {
        ::CoTaskMemFree(names[i]);
        Plugin(clsids[i]);
    }
}

void CBareEnumeration::MidiEffects() const {
    CBareKey(HKEY_LOCAL_MACHINE, kMidiFiltersKey).ForSubkeys([&](const wchar_t* name) {
        const GUID clsid = ClsidFrom(name);
        wchar_t* userType = nullptr;
        ::OleRegGetUserType(clsid, USERCLASSTYPE_FULL, &userType);
        ::CoTaskMemFree(userType);
        Plugin(clsid);
    });
}

void CBareEnumeration::ControlSurfaces() const {
    const CBareKey key(HKEY_CLASSES_ROOT, kControlSurfacesKey);
    key.ForSubkeys([&](const wchar_t* name) {
        CBareKey(key.Handle(), name).Ask(L"Description");
        Plugin(ClsidFrom(name));
    });
}

/// The last of the values names a file.
void BareInventory(HKEY root, const std::wstring& path, REGSAM access, const auto& values, bool askFiles) {
    const CBareKey key(root, path + L"\\Inventory", access);
    key.ForSubkeys([&](const wchar_t* name) {
        const CBareKey entry(key.Handle(), name, access);
        std::wstring last;
        for (const wchar_t* value : values) last = entry.Ask(value);
        if (askFiles) ::PathFileExistsW(last.c_str());
    });
}

}  // namespace

std::wstring CBareKey::Ask(const wchar_t* value) const {
    std::array<wchar_t, 260> data;
    DWORD size = sizeof data;
    if (::RegQueryValueExW(m_key, value, nullptr, nullptr, reinterpret_cast<BYTE*>(data.data()), &size) !=
            ERROR_SUCCESS ||
        size < sizeof(wchar_t))
        return {};
    return {data.data(), size / sizeof(wchar_t) - 1};
}

int BareEnumeration(BareFiles files) {
    static constexpr std::array kAdapterValues = {L"clsidPlug", L"isVst", L"registerAsSynth", L"FullPath"};
    static constexpr std::array kVstValues = {L"isVst",    L"registerAsSynth", L"isShell",   L"isBad",
                                              L"isX64",    L"uniqueId",        L"clsidPlug", L"clsidPlugMD5",
                                              L"FullName", L"Vendor",          L"FullPath"};
    BareInventory(HKEY_LOCAL_MACHINE, kAdapterKey, KEY_READ, kAdapterValues, false);
    CBareKey(HKEY_CLASSES_ROOT, kSoftSynthsKey).ForSubkeys(&ClsidFrom);
    const CBareEnumeration all(files);
    const int filters = all.Filters();
    all.MediaObjects();
    all.MidiEffects();
    all.ControlSurfaces();
    BareInventory(HKEY_CURRENT_USER, kDefaultVstKey, KEY_ALL_ACCESS, kVstValues, files == BareFiles::Asked);
    return filters;
}
