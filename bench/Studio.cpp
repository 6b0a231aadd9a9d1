#include "Studio.h"

#include <windows.h>

#include <uuids.h>

#include <string>
#include <wrl/client.h>

#include "AudioRegistration.h"
#include "ClsidText.h"
#include "RegKey.h"
#include "RegistrationIndex.h"
#include "VstInventory.h"
#include "VstToolPaths.h"

namespace {

constexpr int kAdapterEntries = 200;
constexpr int kTwinEvery = 20;

enum class Kind : std::uint16_t {
    Filter = 1,
    MediaObject,
    MidiEffect,
    ControlSurface,
    Vst,
    VstTwin,
    Md5,
    Adapter
};

Guid ClsidOf(Kind kind, int number) {
    return {static_cast<std::uint32_t>(number),
            static_cast<std::uint16_t>(kind),
            0xBE9C,
            {1, 2, 3, 4, 5, 6, 7, 8}};
}

std::wstring NameOf(const wchar_t* kind, int number) {
    // Not in order, so that sorted lists have something to do.
    return std::to_wstring(number * 7919 % 10007) + L" Bench " + kind + L" " + std::to_wstring(number);
}

void AddServer(const Guid& clsid, const std::wstring& name) {
    const std::wstring path = L"Software\\Classes\\CLSID\\" + ClsidText(clsid);
    CRegKey::Create(HKEY_LOCAL_MACHINE, path)->WriteString(nullptr, name);
    CRegKey::Create(HKEY_LOCAL_MACHINE, path + L"\\InprocServer32")
        ->WriteString(nullptr, L"C:\\Bench\\plugin.dll");
}

void AddVst(int number) {
    const bool twin = number % kTwinEvery == kTwinEvery - 1;
    Guid clsid = ClsidOf(Kind::Vst, twin ? number - 1 : number);
    if (twin) clsid.data4[7] = 0x32;  // beyond the part that twins share
    const auto key = CRegKey::Create(
        HKEY_CURRENT_USER, std::wstring(kDefaultVstKey) + L"\\Inventory\\" + std::to_wstring(number));
    key->WriteDword(L"isVst", 1);
    key->WriteDword(L"isVst3", 0);
    key->WriteDword(L"isShell", 0);
    key->WriteDword(L"isShellRoot", 0);
    key->WriteDword(L"isBad", 0);
    key->WriteString(L"clsidPlugMD5", ClsidText(ClsidOf(Kind::Md5, number)));
    key->WriteString(L"clsidPlug", ClsidText(clsid));
    key->WriteString(L"FullPath",
                     L"C:\\Program Files\\Vst Plug-ins\\Bench\\plugin" + std::to_wstring(number) + L".dll");
    key->WriteDword(L"registerAsSynth", 0);
    key->WriteString(L"FullName", NameOf(L"VST", number));
    key->WriteDword(L"uniqueId", static_cast<DWORD>(number));
    key->WriteString(L"Vendor", L"Bench Vendor");
    key->WriteDword(L"isX64", twin ? 0 : 1);
}

void AddAdapterInventory() {
    for (int number = 0; number < kAdapterEntries; ++number) {
        const auto key = CRegKey::Create(
            HKEY_LOCAL_MACHINE, std::wstring(kAdapterKey) + L"\\Inventory\\" + std::to_wstring(number));
        key->WriteString(L"clsidPlug", ClsidText(ClsidOf(Kind::Adapter, number)));
        key->WriteString(L"FullPath", L"C:\\Bench\\wrapped.dll");
        key->WriteDword(L"isVst", 1);
        key->WriteDword(L"registerAsSynth", 0);
    }
}

int g_perSource = 0;
int g_vstEntries = 0;

}  // namespace

bool IsBenchRegistry() {
    const auto key = CRegKey::Open(HKEY_CURRENT_USER, L"Software\\Corvane Music Software");
    return key && key->IsSet(L"BenchPrefix");
}

void GrowVstInventory(int entries) {
    for (; g_vstEntries < entries; ++g_vstEntries) AddVst(g_vstEntries);
}

void GrowStudio(int total) {
    if (g_perSource == 0) AddAdapterInventory();
    Microsoft::WRL::ComPtr<IFilterMapper2> mapper;
    ::CoCreateInstance(CLSID_FilterMapper2, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&mapper));
    for (; g_perSource < total / 8; ++g_perSource) {
        const int number = g_perSource;
        RegisterAudioFilter(*mapper.Get(), ToSystem(ClsidOf(Kind::Filter, number)),
                            NameOf(L"Filter", number).c_str());
        RegisterAudioDmo(ToSystem(ClsidOf(Kind::MediaObject, number)), NameOf(L"DMO", number).c_str());
        const Guid midi = ClsidOf(Kind::MidiEffect, number);
        CRegKey::Create(HKEY_LOCAL_MACHINE, std::wstring(kMidiFiltersKey) + L"\\" + ClsidText(midi));
        AddServer(midi, NameOf(L"MIDI", number));
        const std::wstring surface = ClsidText(ClsidOf(Kind::ControlSurface, number));
        CRegKey::Create(HKEY_CLASSES_ROOT, std::wstring(kControlSurfacesKey) + L"\\" + surface)
            ->WriteString(L"Description", NameOf(L"Surface", number));
    }
    GrowVstInventory(total / 2);
}
