#include "Studio.h"

#include <windows.h>

#include <uuids.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <wrl/client.h>

#include "AudioRegistration.h"
#include "ClsidText.h"
#include "RegKey.h"
#include "RegistrationIndex.h"
#include "VstInventory.h"
#include "VstToolPaths.h"

namespace {

const std::wstring kVstFolder = L"C:\\Program Files\\Vst Plug-ins\\Bench\\";
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
    Adapter,
    Wrapper
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
    // A plug-in without its file would be asked about when it is excluded.
    std::filesystem::create_directories(kVstFolder);
    std::ofstream(std::filesystem::path(BenchVstFile(number))).put('b');
    key->WriteString(L"FullPath", BenchVstFile(number));
    key->WriteDword(L"registerAsSynth", 0);
    key->WriteString(L"FullName", NameOf(L"VST", number));
    key->WriteDword(L"uniqueId", static_cast<DWORD>(number));
    key->WriteString(L"Vendor", L"Bench Vendor");
    key->WriteDword(L"isX64", twin ? 0 : 1);
}

void AddAdapterEntry(Kind kind, int number) {
    const std::wstring name = (kind == Kind::Wrapper ? L"w" : L"") + std::to_wstring(number);
    const auto key = CRegKey::Create(HKEY_LOCAL_MACHINE, std::wstring(kAdapterKey) + L"\\Inventory\\" + name);
    key->WriteString(L"clsidPlug", ClsidText(ClsidOf(kind, number)));
    key->WriteString(L"FullPath", L"C:\\Bench\\wrapped.dll");
    key->WriteDword(L"isVst", 1);
    key->WriteDword(L"registerAsSynth", 0);
}

Microsoft::WRL::ComPtr<IFilterMapper2> NewMapper() {
    Microsoft::WRL::ComPtr<IFilterMapper2> mapper;
    ::CoCreateInstance(CLSID_FilterMapper2, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&mapper));
    return mapper;
}

int g_perSource = 0;
int g_vstEntries = 0;
int g_wrapped = 0;

}  // namespace

bool IsBenchRegistry() {
    const auto key = CRegKey::Open(HKEY_CURRENT_USER, L"Software\\Corvane Music Software");
    return key && key->IsSet(L"BenchPrefix");
}

std::wstring BenchVstFile(int number) { return kVstFolder + std::to_wstring(number) + L".dll"; }

void GrowStudio(int total) {
    for (int number = 0; g_perSource == 0 && number < kAdapterEntries; ++number)
        AddAdapterEntry(Kind::Adapter, number);
    const auto mapper = NewMapper();
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
    for (; g_vstEntries < total / 2; ++g_vstEntries) AddVst(g_vstEntries);
}

void GrowWrapped(int filters) {
    const auto mapper = NewMapper();
    for (; g_wrapped < filters; ++g_wrapped) {
        const Guid clsid = ClsidOf(Kind::Wrapper, g_wrapped);
        const std::wstring name = NameOf(L"Wrapped", g_wrapped);
        RegisterAudioFilter(*mapper.Get(), ToSystem(clsid), name.c_str());
        AddServer(clsid, name);
        AddAdapterEntry(Kind::Wrapper, g_wrapped);
    }
}
