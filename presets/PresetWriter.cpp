#include "PresetWriter.h"

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

}  // namespace

bool CPresetWriter::Store(const ImportedPreset& preset) {
    if (preset.data.empty()) return false;
    if (!m_key) m_key = m_plugin.OpenPluginKey(true);
    if (!m_key) return false;
    if (preset.type == kPresetInFile || preset.data.size() >= kLargeData) return StoreInFile(preset);
    // Kept: whether the registry took the value is not asked.
    m_key->WriteValue(preset.name.c_str(), REG_BINARY, preset.data);
    return true;
}

bool CPresetWriter::FindFolder() {
    if (!m_folder.empty()) return true;
    // Without the root, the path would lead to the top of the current drive.
    const std::wstring& root = AppDataRoot();
    if (root.empty()) return false;
    const std::wstring shared = root + L"\\Shared Presets";
    const std::wstring folder = shared + L"\\" + ClsidText(m_plugin.Clsid());
    if (!MakeFolder(shared) || !MakeFolder(folder)) return false;
    m_folder = folder;
    return true;
}

bool CPresetWriter::StoreInFile(const ImportedPreset& preset) {
    if (!IsPlainFileName(preset.name) || !FindFolder()) return false;
    const std::wstring path = m_folder + L"\\" + preset.name;
    return ReplaceFileContents(path, BytesOf(preset)) == ERROR_SUCCESS &&
           m_key->WriteString(preset.name.c_str(), path);
}
