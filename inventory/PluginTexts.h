// The texts in which plug-ins are looked for.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "PluginInventory.h"

/// In which the words to find are looked for. A word holds no end of a line, and so occurs in one of them.
std::wstring SearchText(const std::wstring& name, const std::wstring& vendor, const std::wstring& fileName,
                        const Guid& clsid);

/// Of each plug-in its name, vendor, file's name and class id, folded once and kept until something of that
/// has changed.
class CPluginTexts {
  public:
    /// The plug-ins were found anew.
    void Clear();
    /// Brings the texts up to date. Only the first time after Clear it reads the registry, for the files.
    void Update(const CPluginInventory& inventory);

    // Both give true without words, and for an index of the inventory that Update was given last.
    bool EntryHas(std::size_t index, std::span<const std::wstring> words) const;
    /// Records are counted in the order of their map.
    bool RecordHas(std::size_t index, std::span<const std::wstring> words) const;

  private:
    std::vector<std::wstring> m_files;  // of the entries
    std::vector<std::wstring> m_entries;
    std::vector<std::wstring> m_records;
    std::optional<unsigned> m_renamings;  // of the inventory, when the texts were made
};
