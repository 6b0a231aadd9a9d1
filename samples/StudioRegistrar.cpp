// Registers the sample studio's filters and media objects, and lays down its tools and placeholders for the
// other files that the studio's registrations name. Load studio.reg first. "--remove" takes all of that away
// again.
#include <windows.h>

#include <dmo.h>
#include <dshow.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>
#include <wrl/client.h>

#include "AudioRegistration.h"
#include "RegKey.h"
#include "StudioTables.h"

namespace {

using Microsoft::WRL::ComPtr;
using studio::Kind;
using studio::Plugin;

constexpr wchar_t kAdapterInventory[] = L"Software\\Corvane Music Software\\Corvane VST Adapter\\Inventory\\";
constexpr wchar_t kClasses[] = L"Software\\Classes\\CLSID\\";
constexpr wchar_t kSoftSynths[] = L"Software\\Classes\\QtzSoftSynths\\";
constexpr wchar_t kFiles[] = L"Software\\Corvane Sample Studio\\Files";

bool IsWrapped(const Plugin& plugin) {
    return plugin.kind == Kind::WrappedEffect || plugin.kind == Kind::WrappedInstrument;
}

DWORD UniqueId(const Plugin& plugin) {
    DWORD id = 0;
    for (const char* letter = plugin.code; *letter != '\0'; ++letter)
        id = id << 8U | static_cast<unsigned char>(*letter);
    return id;
}

GUID ClassId(const Plugin& plugin) {
    return {UniqueId(plugin), 0x4458, 0x4600, {0x8A, 0x01, 0x5A, 0x3C, 0x1E, 0x90, 0xB7, 0x64}};
}

std::wstring ToText(const GUID& guid) {
    std::array<wchar_t, 39> text{};
    StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
    return text.data();
}

std::filesystem::path FileOf(const Plugin& plugin) {
    const std::filesystem::path root = IsWrapped(plugin) ? L"C:\\Program Files\\Corvane Studio\\Wrapped"
                                                         : L"C:\\Program Files\\Common Files\\DirectX";
    return root / plugin.maker / (std::wstring(plugin.name) + L".dll");
}

bool SetText(const std::wstring& path, const wchar_t* name, const std::wstring& text) {
    const auto key = CRegKey::Create(HKEY_LOCAL_MACHINE, path);
    return key && key->WriteString(name, text);
}

bool SetNumber(const std::wstring& path, const wchar_t* name, DWORD number) {
    const auto key = CRegKey::Create(HKEY_LOCAL_MACHINE, path);
    return key && key->WriteDword(name, number);
}

bool AddPlaceholder(const std::filesystem::path& file) {
    std::error_code error;
    if (std::filesystem::exists(file, error)) return true;
    std::filesystem::create_directories(file.parent_path(), error);
    std::ofstream stream(file, std::ios::binary);
    stream << "Placeholder of the sample studio\n";
    return stream.good();
}

// The studio's tools are programs: each is a copy of the one that plays them.
bool AddTool(const std::filesystem::path& file) {
    std::array<wchar_t, MAX_PATH> self{};
    GetModuleFileNameW(nullptr, self.data(), MAX_PATH);
    const auto standIn = std::filesystem::path(self.data()).replace_filename(L"stand_in_tool.exe");
    std::error_code error;
    std::filesystem::create_directories(file.parent_path(), error);
    return std::filesystem::copy_file(standIn, file, std::filesystem::copy_options::overwrite_existing,
                                      error);
}

bool AddFile(const std::filesystem::path& file) {
    return file.extension() == L".exe" ? AddTool(file) : AddPlaceholder(file);
}

bool RemoveFile(const std::filesystem::path& file) {
    std::error_code error;
    std::filesystem::remove(file, error);
    return !error;
}

// The adapter stores the name without the "VST " that it puts before it.
bool AddToAdapterInventory(const Plugin& plugin, const std::wstring& clsid) {
    const std::wstring key = kAdapterInventory + clsid;
    return SetText(key, L"clsidPlug", clsid) && SetText(key, L"FullPath", FileOf(plugin).wstring()) &&
           SetText(key, L"FullName", std::wstring(plugin.name).substr(4)) &&
           SetText(key, L"Vendor", plugin.maker) && SetNumber(key, L"addVstPrefix", 1) &&
           SetNumber(key, L"uniqueId", UniqueId(plugin)) && SetNumber(key, L"isVst", 1) &&
           SetNumber(key, L"registerAsSynth", plugin.kind == Kind::WrappedInstrument ? 1 : 0);
}

bool Add(IFilterMapper2& mapper, const Plugin& plugin) {
    const std::wstring clsid = ToText(ClassId(plugin));
    const std::wstring server = kClasses + clsid;
    if (plugin.hasFile && !AddPlaceholder(FileOf(plugin))) return false;
    if (!SetText(server, nullptr, plugin.name)) return false;
    if (!SetText(server + L"\\InprocServer32", nullptr, FileOf(plugin).wstring())) return false;
    if (plugin.kind == Kind::Instrument && !SetText(kSoftSynths + clsid, L"Description", plugin.name))
        return false;
    if (IsWrapped(plugin) && !AddToAdapterInventory(plugin, clsid)) return false;
    return plugin.kind == Kind::MediaObject ? RegisterAudioDmo(ClassId(plugin), plugin.name)
                                            : RegisterAudioFilter(mapper, ClassId(plugin), plugin.name);
}

// What is already gone counts as removed.
bool Remove(IFilterMapper2& mapper, const Plugin& plugin) {
    const GUID id = ClassId(plugin);
    if (plugin.kind == Kind::MediaObject)
        DMOUnregister(id, DMOCATEGORY_AUDIO_EFFECT);
    else
        mapper.UnregisterFilter(&CLSID_LegacyAmFilterCategory, nullptr, id);
    for (const wchar_t* parent : {kClasses, kSoftSynths, kAdapterInventory})
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, (parent + ToText(id)).c_str());
    return RemoveFile(FileOf(plugin));
}

// The files that studio.reg names, numbered from 1.
std::vector<std::filesystem::path> ListedFiles() {
    std::vector<std::filesystem::path> files;
    const auto key = CRegKey::Open(HKEY_CURRENT_USER, kFiles);
    for (int number = 1; key; ++number) {
        const auto path = key->ReadString(std::to_wstring(number).c_str(), kNameBytes);
        if (!path) break;
        files.emplace_back(*path);
    }
    return files;
}

int Complain(const wchar_t* what) {
    std::fwprintf(stderr, L"studio_registrar: %ls\n", what);
    return 1;
}

int Run(bool remove) {
    ComPtr<IFilterMapper2> mapper;
    if (FAILED(CoCreateInstance(CLSID_FilterMapper2, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&mapper))))
        return Complain(L"there is no filter mapper");
    for (const Plugin& plugin : studio::kPlugins)
        if (!(remove ? Remove(*mapper.Get(), plugin) : Add(*mapper.Get(), plugin)))
            return Complain(plugin.name);
    const auto files = ListedFiles();
    if (files.empty()) return Complain(L"studio.reg is to be loaded first");
    for (const auto& file : files)
        if (!(remove ? RemoveFile(file) : AddFile(file))) return Complain(file.c_str());
    return 0;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    const bool remove = argc == 2 && std::wstring(argv[1]) == L"--remove";
    if (argc > 1 && !remove) return Complain(L"the only argument is --remove");
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return Complain(L"COM can't be used");
    const int result = Run(remove);
    CoUninitialize();
    return result;
}
