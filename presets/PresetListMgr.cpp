#include "PresetListMgr.h"

#include "ClsidText.h"
#include "PresetWriter.h"

namespace {

constexpr REGSAM kReadWrite = KEY_READ | KEY_WRITE;

constexpr wchar_t kAudioRoot[] = L"SOFTWARE\\Corvane Music Software\\ActiveMovie\\Presets";
constexpr wchar_t kMidiRoot[] = L"SOFTWARE\\Corvane Music Software\\MIDI Filters\\Presets";
constexpr wchar_t kSurfaceRoot[] = L"SOFTWARE\\Corvane Music Software\\ControlSurfaces\\Presets";

struct StoreRoot {
    Guid category;
    const wchar_t* path;
};

constexpr StoreRoot kStoreRoots[] = {
    {"{083863F1-70DE-11D0-BD40-00A0C911CE86}"_guid, kAudioRoot},    // DirectX effects
    {"{F2B30048-71CC-4182-A042-5F9719265B2D}"_guid, kAudioRoot},    // DirectX instruments
    {"{018A6D0F-344A-40DF-864C-3D83A94844E4}"_guid, kAudioRoot},    // DirectX media objects
    {"{B84F08B7-2DF0-438B-A5B4-E7700FE06A18}"_guid, kAudioRoot},    // VST effects
    {"{FDB0F208-FD06-4195-BC36-4BC5AFC89581}"_guid, kAudioRoot},    // VST instruments
    {"{5B3CB5A1-2452-4C7B-A445-0A84580F9D7C}"_guid, kAudioRoot},    // VST3 effects
    {"{8D3D44A4-FB4A-4E34-AF6D-910531720233}"_guid, kAudioRoot},    // VST3 instruments
    {"{2BB55B37-EAF2-434F-B82E-AEA2156366CF}"_guid, kAudioRoot},    // legacy wrapped VST effects
    {"{A21768E5-211E-4A57-98D6-F32D57061A1A}"_guid, kAudioRoot},    // legacy wrapped VST instruments
    {"{EA928480-B8A3-43C0-8FA0-CCAD36569849}"_guid, kMidiRoot},     // MIDI effects
    {"{E26F299E-B4BC-49E6-99BF-275210DDC844}"_guid, kSurfaceRoot},  // control surfaces
};

const wchar_t* StoreRootOf(const Guid& category) {
    for (const StoreRoot& root : kStoreRoots) {
        if (root.category == category) return root.path;
    }
    return nullptr;
}

/// Kept: the path in the store is believed, wherever it leads.
void DeleteFileOf(DWORD type, std::span<const std::byte> data, CPatience& patience) {
    if (type == REG_SZ) DeleteHeldFile(TextOf(data), patience);
}

}  // namespace

std::optional<CRegKey> CPresetListMgr::OpenStoreRoot(bool create) const {
    const wchar_t* path = StoreRootOf(m_inFile.plugin.category);
    if (!path) return std::nullopt;
    return create ? CRegKey::Create(HKEY_CURRENT_USER, path, kReadWrite)
                  : CRegKey::Open(HKEY_CURRENT_USER, path, kReadWrite);
}

std::optional<CRegKey> CPresetListMgr::OpenPluginKey(bool create) const {
    // In one step, because this is asked for each of many selected plug-ins.
    const wchar_t* root = StoreRootOf(m_inFile.plugin.category);
    if (!root) return std::nullopt;
    const std::wstring path = std::wstring(root) + L"\\" + ClsidText(Clsid());
    return create ? CRegKey::Create(HKEY_CURRENT_USER, path, kReadWrite)
                  : CRegKey::Open(HKEY_CURRENT_USER, path, kReadWrite);
}

unsigned CPresetListMgr::CountPresets() {
    unsigned count = 0;
    if (const auto key = OpenPluginKey(false)) {
        for (CRegValues values(*key, kMaxPresetName, CRegValues::Read::Names); values.Next();) ++count;
    }
    m_inFile.presets = static_cast<std::int32_t>(count);
    return count;
}

bool CPresetListMgr::DeletePreset(const std::wstring& name, CPatience& patience) const {
    const auto key = OpenPluginKey(false);
    if (!key) return false;
    if (const auto value = key->ReadValue(name.c_str())) DeleteFileOf(value->type, value->data, patience);
    return key->DeleteValue(name.c_str());
}

bool CPresetListMgr::DeleteAllPresets() const {
    const auto root = OpenStoreRoot(false);
    const auto key = OpenPluginKey(false);
    if (!root || !key) return false;
    CPatience patience;
    for (CRegValues values(*key, kMaxPresetName); values.Next();)
        DeleteFileOf(values.Type(), values.Data(), patience);
    return CRegKey::DeleteTree(root->Handle(), ClsidText(Clsid()));
}

bool CPresetListMgr::RenamePreset(const std::wstring& oldName, const std::wstring& newName) const {
    // A longer name would never be read back.
    if (newName.size() > kMaxPresetName) return false;
    const auto key = OpenPluginKey(false);
    const auto value = key ? key->ReadValue(oldName.c_str()) : std::nullopt;
    if (!value || key->HasValue(newName.c_str())) return false;
    return key->WriteValue(newName.c_str(), value->type, value->data) && key->DeleteValue(oldName.c_str());
}

bool CPresetListMgr::StoreImportedPreset(const ImportedPreset& preset) const {
    return CPresetWriter(*this).Store(preset);
}
