#include "PresetWriter.h"

#include <algorithm>

#include "AppDataRoot.h"
#include "ClsidText.h"
#include "Files.h"
#include "PresetName.h"

namespace {

/// From this size on, data go to a file.
constexpr std::size_t kLargeData = 1024;

bool MakeFolder(const std::wstring& path) {
    return ::CreateDirectoryW(path.c_str(), nullptr) || ::GetLastError() == ERROR_ALREADY_EXISTS;
}

std::string_view BytesOf(const ImportedPreset& preset) {
    return {reinterpret_cast<const char*>(preset.data.data()), preset.data.size()};
}

std::wstring SharedPresets() { return AppDataRoot() + L"\\Shared Presets"; }

}  // namespace

bool GoesToFile(std::int32_t type, std::size_t length) {
    return type == kPresetInFile || length >= kLargeData;
}

bool CanBeStored(const PresetRecordHead& preset) {
    return preset.length > 0 && preset.name.size() <= kMaxPresetName &&
           (!GoesToFile(preset.type, preset.length) || PresetFileName(preset.name));
}

std::optional<std::wstring> FileOfImport(const Guid& clsid, const PresetRecordHead& preset) {
    const auto fileName = PresetFileName(preset.name);
    // Without the root, the path would lead to the top of the current drive.
    if (!GoesToFile(preset.type, preset.length) || !fileName || AppDataRoot().empty()) return std::nullopt;
    return SharedPresets() + L"\\" + ClsidText(clsid) + L"\\" + std::wstring(*fileName);
}

bool CPresetWriter::StoreImportedPreset(const ImportedPreset& preset) {
    // A longer name would never be read back.
    if (preset.data.empty() || preset.name.size() > kMaxPresetName) return false;
    if (!m_key) m_key = m_plugin.OpenPluginKey(true);
    if (!m_key) return false;
    if (GoesToFile(preset.type, preset.data.size())) return StoreInFile(preset);
    // Kept: it counts as stored whatever the registry answers.
    m_refused = !m_key->WriteValue(preset.name.c_str(), REG_BINARY, preset.data) || m_refused;
    return true;
}

bool CPresetWriter::FindFolder() {
    if (!m_folder.empty()) return true;
    if (AppDataRoot().empty()) return false;
    const std::wstring shared = SharedPresets();
    const std::wstring folder = shared + L"\\" + ClsidText(m_plugin.Clsid());
    if (!MakeFolder(shared) || !MakeFolder(folder)) return false;
    m_folder = folder;
    return true;
}

/// "Wide" and "Wide..." have the same file: the second of them is refused. Kept: under its own name, a preset
/// overwrites what a rename has left there.
bool CPresetWriter::IsFileOfAnother(const std::wstring& path, std::wstring_view fileName,
                                    const std::wstring& name) {
    if (!m_presetsOfFiles) {
        m_presetsOfFiles.emplace();
        for (CRegValues values(*m_key, kMaxPresetName); values.Next();) {
            if (values.Type() != REG_SZ) continue;
            std::wstring file = TextOf(values.Data());
            file.resize(file.find_last_not_of(L". ") + 1);
            m_presetsOfFiles->emplace(InCapitals(file), InCapitals(values.Name()));
        }
    }
    const std::wstring file = InCapitals(std::wstring(fileName));
    const auto [first, last] = m_presetsOfFiles->equal_range(InCapitals(path));
    return std::any_of(first, last, [&](const auto& entry) {
        return entry.second != InCapitals(name) && (fileName != name || PresetFileName(entry.second) == file);
    });
}

bool CPresetWriter::StoreInFile(const ImportedPreset& preset) {
    const auto fileName = PresetFileName(preset.name);
    if (!fileName || !FindFolder()) return false;
    const std::wstring path = m_folder + L"\\" + std::wstring(*fileName);
    const bool isNew = ::GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES;
    if ((!isNew || *fileName != preset.name) && IsFileOfAnother(path, *fileName, preset.name)) return false;
    if (!(isNew ? StoreNewFile(preset, path) : StoreOverFile(preset, path))) return false;
    if (m_presetsOfFiles) m_presetsOfFiles->emplace(InCapitals(path), InCapitals(preset.name));
    return true;
}

/// The file first, so that at no moment a value names a file that is not there.
bool CPresetWriter::StoreNewFile(const ImportedPreset& preset, const std::wstring& path) const {
    if (ReplaceFileContents(path, BytesOf(preset)) != ERROR_SUCCESS) return false;
    if (m_key->WriteString(preset.name.c_str(), path)) return true;
    CPatience patience;
    DeleteHeldFile(path, patience);
    return false;
}

/// The value first: it can be taken back, the old file can't.
bool CPresetWriter::StoreOverFile(const ImportedPreset& preset, const std::wstring& path) const {
    const wchar_t* name = preset.name.c_str();
    const auto old = m_key->ReadValue(name);
    if (!m_key->WriteString(name, path)) return false;
    if (ReplaceFileContents(path, BytesOf(preset)) == ERROR_SUCCESS) return true;
    if (old) {
        m_key->WriteValue(name, old->type, old->data);
    } else {
        m_key->DeleteValue(name);
    }
    return false;
}
