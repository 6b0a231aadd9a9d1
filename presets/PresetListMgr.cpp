#include "PresetListMgr.h"

#include <algorithm>

#include "ClsidText.h"
#include "CorvaneKeys.h"
#include "PluginCategory.h"

namespace {

/// Below the current user's root; empty for a category without a preset store.
std::wstring KeyPathOf(const PresetPlugin& plugin) {
    const Guid& category = plugin.category;
    if (std::ranges::find(kCategories, category, &PluginCategory::guid) == kCategories.end()) return {};
    const wchar_t* root = kAudioPresetsKey;
    if (category == RowOf(Category::MidiEffects).guid) root = kMidiPresetsKey;
    if (category == RowOf(Category::ControlSurfaces).guid) root = kSurfacePresetsKey;
    return std::wstring(root) + L"\\" + ClsidText(plugin.clsid);
}

/// Kept: the path in the store is believed, wherever it leads.
void DeleteFileOf(DWORD type, std::span<const std::byte> data, CPatience& patience) {
    if (type == REG_SZ) DeleteHeldFile(TextOf(data), patience);
}

}  // namespace

std::optional<CRegKey> CPresetListMgr::OpenPluginKey(bool create) const {
    constexpr REGSAM kReadWrite = KEY_READ | KEY_WRITE;
    const std::wstring path = KeyPathOf(m_plugin);
    if (path.empty()) return std::nullopt;
    return create ? CRegKey::Create(HKEY_CURRENT_USER, path, kReadWrite)
                  : CRegKey::Open(HKEY_CURRENT_USER, path, kReadWrite);
}

unsigned CPresetListMgr::CountPresets() const {
    unsigned count = 0;
    if (const auto key = OpenPluginKey(false)) {
        for (CRegValues values(*key, kMaxPresetName, CRegValues::Read::Names); values.Next();) ++count;
    }
    return count;
}

void CPresetListMgr::NameIn(BackupStep& step, std::vector<std::wstring> names, bool withFiles) const {
    const std::wstring path = KeyPathOf(m_plugin);
    if (path.empty()) return;
    LSTATUS status = ERROR_SUCCESS;
    const auto key = CRegKey::Open(HKEY_CURRENT_USER, path, KEY_READ, &status);
    if (!key && status != ERROR_FILE_NOT_FOUND) step.error = static_cast<std::uint32_t>(status);
    const auto nameFile = [&](DWORD type, std::span<const std::byte> data) {
        const std::wstring file = type == REG_SZ ? TextOf(data) : std::wstring();
        if (!file.empty()) step.files.push_back(file);
    };
    if (key && withFiles && names.empty()) {
        CRegValues values(*key, kMaxPresetName);
        while (values.Next()) nameFile(values.Type(), values.Data());
        if (values.HasFailed()) step.error = ERROR_READ_FAULT;
    }
    for (const std::wstring& name : names) {
        const auto value = key && withFiles ? key->ReadValue(name.c_str()) : std::nullopt;
        if (value) nameFile(value->type, value->data);
        if (key && withFiles && !value && key->HasValue(name.c_str())) step.error = ERROR_READ_FAULT;
    }
    step.keys.push_back({BackupHive::User, path, std::move(names)});
}

bool CPresetListMgr::DeletePreset(const std::wstring& name, CPatience& patience) const {
    const auto key = OpenPluginKey(false);
    if (!key) return false;
    if (const auto value = key->ReadValue(name.c_str())) DeleteFileOf(value->type, value->data, patience);
    return key->DeleteValue(name.c_str());
}

bool CPresetListMgr::DeleteAllPresets(const std::function<bool()>& goOn) const {
    const auto key = OpenPluginKey(false);
    if (!key) return false;
    CPatience patience;
    std::vector<std::wstring> gone;
    for (CRegValues values(*key, kMaxPresetName); values.Next();) {
        if (!goOn()) {
            for (const std::wstring& name : gone) key->DeleteValue(name.c_str());
            return true;
        }
        DeleteFileOf(values.Type(), values.Data(), patience);
        gone.emplace_back(values.Name());
    }
    return CRegKey::DeleteTree(HKEY_CURRENT_USER, KeyPathOf(m_plugin));
}

bool CPresetListMgr::RenamePreset(const std::wstring& oldName, const std::wstring& newName) const {
    // A longer name would never be read back.
    if (newName.size() > kMaxPresetName) return false;
    const auto key = OpenPluginKey(false);
    const auto value = key ? key->ReadValue(oldName.c_str()) : std::nullopt;
    if (!value || key->HasValue(newName.c_str())) return false;
    return key->WriteValue(newName.c_str(), value->type, value->data) && key->DeleteValue(oldName.c_str());
}
