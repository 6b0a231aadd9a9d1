#include "SetLoading.h"

#include <algorithm>
#include <optional>

#include "CorvaneKeys.h"
#include "ExclusionList.h"
#include "LayoutFolder.h"
#include "PluginRecords.h"
#include "PresentStudio.h"
#include "PresetTransfer.h"
#include "XmlDoc.h"

namespace {

/// The system's error; ERROR_CANCELLED when the user has ended it.
DWORD ErrorOf(int presetResult) {
    if (presetResult >= 0) return ERROR_SUCCESS;
    return presetResult == kPresetEnded ? ERROR_CANCELLED : ERROR_WRITE_FAULT;
}

}  // namespace

DWORD CSetLoading::Run() {
    for (const SetEntry& entry : m_load.entries) {
        if (!entry.chosen || entry.part == SetPart::Presets) continue;
        if (!m_events.GoesOn()) return ERROR_CANCELLED;
        if (const DWORD error = Write(entry)) return error;
    }
    return ImportPresets();
}

void CSetLoading::MarkLayouts() const {
    const bool any = std::ranges::any_of(
        m_load.entries, [](const SetEntry& entry) { return entry.chosen && entry.part == SetPart::Layout; });
    const auto key = any ? CRegKey::Create(HKEY_CURRENT_USER, kManagerKey) : std::optional<CRegKey>();
    if (key) key->WriteDword(L"MenuLayoutsDirty", 1);
}

void CSetLoading::TakeNamesBack() {
    for (const auto& [item, name] : m_renamed) m_names.Rename(item, name);
}

DWORD CSetLoading::Write(const SetEntry& entry) {
    switch (entry.part) {
        case SetPart::Exclusion:
            return WriteExclusion(entry) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
        case SetPart::PluginName:
            return WriteName(m_load.set.names[entry.index]);
        case SetPart::Layout:
            return WriteLayout(entry);
        case SetPart::Presets:
            break;
    }
    return ERROR_SUCCESS;
}

bool CSetLoading::WriteExclusion(const SetEntry& entry) const {
    if (entry.change == SetChange::Surplus) return CExclusionList::Enable(m_load.excluded[entry.index].clsid);
    const auto& [clsid, name] = m_load.set.exclusions[entry.index];
    return CExclusionList::Exclude(clsid, name);
}

DWORD CSetLoading::WriteName(const StudioSet::PluginName& name) {
    const auto plugin = FindNamed(m_inventory, name);
    if (!plugin) return ERROR_FILE_NOT_FOUND;
    m_renamed.emplace_back(plugin->item, plugin->name);
    return m_names.Rename(plugin->item, name.name) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

DWORD CSetLoading::WriteLayout(const SetEntry& entry) const {
    const std::wstring path = FolderPrefix(m_layoutFolder) + entry.target;
    // On a new computer the folder may not be there yet.
    if (const DWORD error = MakeFolders(path.substr(0, path.find_last_of(L'\\')))) return error;
    if (IsThere(path)) return ERROR_FILE_EXISTS;  // it was free before
    return CXmlDoc::SaveText(path, m_load.set.layouts[entry.index].xml);
}

DWORD CSetLoading::ImportPresets() const {
    if (!m_presets) return ERROR_SUCCESS;
    m_presets->Seek(0);
    bool refused = false;
    const DWORD error =
        ErrorOf(ImportPresetsOfPlugins(*m_presets, m_load.ChosenForPresets(),
                                       {.invalidPreset = [&](const std::wstring&) { refused = true; },
                                        .progress = [this] { return m_events.GoesOn(); }}));
    return error == ERROR_SUCCESS && refused ? DWORD{ERROR_ACCESS_DENIED} : error;
}
