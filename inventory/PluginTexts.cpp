#include "PluginTexts.h"

#include "ClsidText.h"
#include "Files.h"
#include "FoldedText.h"
#include "WordMatch.h"

/// Of the file its name alone: the folders would be found with nearly every plug-in.
std::wstring SearchText(const std::wstring& name, const std::wstring& vendor, const std::wstring& fileName,
                        const Guid& clsid) {
    return FoldedText(name + L'\n' + vendor + L'\n' + fileName + L'\n' + ClsidText(clsid));
}

void CPluginTexts::Clear() {
    m_files.clear();
    m_renamings.reset();
}

void CPluginTexts::Update(const CPluginInventory& inventory) {
    if (m_renamings == inventory.Renamings()) return;
    const auto& entries = inventory.Entries();
    for (std::size_t i = m_files.size(); i < entries.size(); ++i) {
        const auto path =
            entries[i].category ? inventory.PathOf(entries[i].clsid, *entries[i].category) : std::nullopt;
        m_files.push_back(FileNameOf(path.value_or(L"")));
    }
    m_entries.clear();
    for (std::size_t i = 0; i < entries.size(); ++i)
        m_entries.push_back(SearchText(entries[i].name.value_or(L""), L"", m_files[i], entries[i].clsid));
    m_records.clear();
    for (const auto& [clsid, record] : inventory.Vst().Records())
        m_records.push_back(SearchText(record.name, record.vendor, FileNameOf(record.path), clsid));
    m_renamings = inventory.Renamings();
}

bool CPluginTexts::EntryHas(std::size_t index, std::span<const std::wstring> words) const {
    return words.empty() || MatchesWords(m_entries[index], words);
}

bool CPluginTexts::RecordHas(std::size_t index, std::span<const std::wstring> words) const {
    return words.empty() || MatchesWords(m_records[index], words);
}
