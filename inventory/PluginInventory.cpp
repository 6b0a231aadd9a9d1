#include "PluginInventory.h"

#include <windows.h>

#include <shlwapi.h>

#include <algorithm>
#include <array>

#include "ClsidText.h"
#include "CorvaneKeys.h"
#include "RegKey.h"
#include "RegisteredFile.h"

namespace {

/// The longest name of a class or a media object, and description of a control surface, in bytes.
constexpr std::size_t kRegisteredNameBytes = 256;

std::optional<std::wstring> ServerOf(HKEY root, const Guid& clsid) {
    const auto server =
        CRegKey::Open(root, L"Software\\Classes\\CLSID\\" + ClsidText(clsid) + L"\\InprocServer32");
    return server ? server->ReadUnterminated(nullptr, kPathBytes) : std::nullopt;
}

/// A bare name that is not found is taken for that of a file in the system's folder.
std::wstring FoundFile(const std::wstring& path) {
    std::wstring file = UnquotedPath(path);
    if (!IsBareName(file)) return file;
    std::array<wchar_t, MAX_PATH> text{};
    const std::wstring system(text.data(), ::GetSystemDirectoryW(text.data(), MAX_PATH));
    std::wstring usual = system + L'\\' + file;
    if (::PathFileExistsW(usual.c_str())) return usual;
    const DWORD length = ::SearchPathW(nullptr, file.c_str(), L".dll", MAX_PATH, text.data(), nullptr);
    return length > 0 && length < MAX_PATH ? std::wstring(text.data(), length) : usual;
}

}  // namespace

void CPluginInventory::Clear() {
    m_entries.clear();
    m_clsids.clear();
    m_filters.clear();
    m_filtersAndMediaObjects = 0;
    m_complete = false;
}

SourceCounts CPluginInventory::Counts() const {
    // A filter whose class id did not parse ended the enumeration, and those after it have no entry.
    return {.filters = std::min(m_filters.size(), m_entries.size()),
            .filtersAndMediaObjects = m_filtersAndMediaObjects};
}

void CPluginInventory::SetName(const PluginListItem& item, const std::wstring& name) {
    ++m_renamings;
    if (item.fromInventory) {
        m_vst.SetName(item.clsid, name);
    } else if (item.sourceIndex < m_entries.size() && m_entries[item.sourceIndex].clsid == item.clsid) {
        PluginEntry& entry = m_entries[item.sourceIndex];
        entry.name = name;
        if (!m_database.IsOpen()) entry.ownName = name;
    }
}

bool CPluginInventory::Append(FoundPlugins found, const NameMap& names, bool classified) {
    for (FoundPlugin& plugin : found.plugins) {
        PluginEntry& entry = m_entries.emplace_back();
        entry.clsid = plugin.clsid;
        m_clsids.insert(entry.clsid);
        entry.name = plugin.name;
        entry.ownName = std::move(plugin.name);
        if (auto known = names.empty() ? std::nullopt : FindName(names, ClsidText(entry.clsid)))
            entry.name = known;
        const RegistrationFacts facts = m_index.FactsOf(entry.clsid);
        if (classified || facts.answersAsDmo) entry.category = ClassifyPluginCategory(facts);
    }
    return found.complete;
}

bool CPluginInventory::Enumerate(bool classified) {
    Clear();
    m_index.Read();
    const NameMap names = m_database.Names();
    const NameMap ownNames;  // media objects and control surfaces are not renamed by the database
    const auto room = [this] { return kMaxEntries - m_entries.size(); };

    m_filters = FindFilterMonikers(room());
    const bool complete = Append(ReadFilters(m_filters), names, classified) &&
                          Append(FindMediaObjects(room()), ownNames, classified);
    m_filtersAndMediaObjects = m_entries.size();
    if (!complete) return false;
    if (!Append(ReadMidiEffects(m_index.MidiFilterNames(), names, room()), ownNames, classified))
        return false;
    if (!Append(ReadControlSurfaces(m_index.ControlSurfaceNames(), room()), ownNames, classified))
        return false;
    m_vst.Read(names, classified);
    m_complete = true;
    return true;
}

std::optional<PresetPlugin> CPluginInventory::FindForPresets(const Guid& clsid, const Guid& category) const {
    if (clsid.IsNull() || !IsInstalled(clsid)) return std::nullopt;
    const auto fits = [&](const std::optional<Category>& own) {
        return own && (category.IsNull() || RowOf(*own).guid == category);
    };
    const auto* record = m_vst.Find(clsid);
    if (record && fits(record->category) && IsListedUnder(*record, clsid))
        return PresetPlugin{clsid, RowOf(*record->category).guid, record->name};
    const auto entry = std::ranges::find_if(m_entries, [&](const PluginEntry& candidate) {
        return candidate.clsid == clsid && candidate.name && fits(candidate.category);
    });
    if (entry == m_entries.end()) return std::nullopt;
    return PresetPlugin{clsid, RowOf(*entry->category).guid, *entry->name};
}

std::optional<std::wstring> CPluginInventory::PathOf(const Guid& clsid, Category category) const {
    if (const auto* record = m_vst.Find(clsid)) return record->path;
    const std::wstring clsidText = ClsidText(clsid);
    if (IsLegacyWrapped(category)) return m_index.Adapter().PathOf(clsidText);
    if (IsVstCategory(category)) {
        const auto entry = m_vst.OpenEntry(clsid);
        return entry ? entry->ReadPath(L"FullPath") : std::nullopt;
    }
    return ServerOf(HKEY_LOCAL_MACHINE, clsid);
}

std::wstring CPluginInventory::FileOf(const Guid& clsid, Category category) const {
    return FoundFile(PathOf(clsid, category).value_or(L""));
}

std::wstring CPluginInventory::LoadedFileOf(const Guid& clsid, Category category) const {
    const bool isServer = !IsVstCategory(category) && !IsLegacyWrapped(category);
    const auto own = isServer ? ServerOf(HKEY_CURRENT_USER, clsid) : std::nullopt;
    return own && !own->empty() ? FoundFile(*own) : FileOf(clsid, category);
}

std::optional<std::wstring> CPluginInventory::RegisteredNameOf(const Guid& clsid, Category category) const {
    if (IsVstCategory(category)) {
        const auto* record = m_vst.Find(clsid);
        return record ? std::optional(record->name) : std::nullopt;
    }
    const std::wstring text = ClsidText(clsid);
    const auto read = [](const std::wstring& path, const wchar_t* name) -> std::optional<std::wstring> {
        const auto key = CRegKey::Open(HKEY_CLASSES_ROOT, path);
        return key ? key->ReadString(name, kRegisteredNameBytes) : std::nullopt;
    };
    if (category == Category::MediaObjects) {
        // The media object registry names its keys without the braces.
        return read(std::wstring(kMediaObjectsKey) + L"\\" + text.substr(1, text.size() - 2), nullptr);
    }
    if (category == Category::ControlSurfaces)
        return read(std::wstring(kControlSurfacesKey) + L"\\" + text, L"Description");
    return read(L"CLSID\\" + text, nullptr);
}
