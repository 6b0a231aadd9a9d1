#include "StudioSetFile.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>

#include "ClsidText.h"
#include "Files.h"
#include "FriendlyNameRules.h"
#include "LayoutPath.h"
#include "XmlDoc.h"
#include "XmlText.h"

namespace {

constexpr wchar_t kRoot[] = L"StudioSet";
constexpr wchar_t kSchema[] = L"1";
constexpr wchar_t kLayoutRoot[] = L"PluginMenuLayout";
/// Of one kind; no studio has so many.
constexpr std::size_t kMostEntries = 20'000;
/// In characters, as the inventory reads them.
constexpr std::size_t kLongestName = 1023;

/// The text of a set. A document object that is built to be written once would take longer than all reading.
class CSetText {
  public:
    explicit CSetText(const StudioSet& set) {
        m_text = std::wstring(L"<") + kRoot;
        Add(L"Schema", kSchema);
        m_text += L'>';
        for (const auto& [clsid, name] : set.exclusions) {
            Begin(L"Exclusion");
            Add(L"CLSID", ClsidText(clsid));
            Add(L"Name", name);
            m_text += L"/>";
        }
        for (const auto& [clsid, md5Clsid, name] : set.names) {
            Begin(L"PluginName");
            Add(L"CLSID", ClsidText(clsid));
            Add(L"CLSIDMD5", ClsidText(md5Clsid));
            Add(L"Name", name);
            m_text += L"/>";
        }
        for (const auto& [file, xml] : set.layouts) {
            Begin(L"Layout");
            Add(L"File", file);
            m_text += L'>' + xml + L"</Layout>";
        }
        m_text += std::wstring(L"\r\n</") + kRoot + L'>';
    }
    const std::wstring& Text() const { return m_text; }

  private:
    /// On a line of its own: a set may be kept where versions are compared.
    void Begin(const wchar_t* element) { m_text += std::wstring(L"\r\n<") + element; }
    void Add(const wchar_t* attribute, const std::wstring& value) {
        AppendXmlAttribute(m_text, attribute, value);
    }

    std::wstring m_text;
};

class CSetReader : public CXmlDoc {
  public:
    explicit CSetReader(StudioSet& set) : m_set(set) { KeepBlanks(); }

    SetFileRead Read(const std::wstring& path) {
        if (!Load(path, true) || Name() != kRoot) return SetFileRead::Malformed;
        const std::wstring schema = Value(L"Schema");
        const bool isNumber =
            !schema.empty() && std::ranges::all_of(schema, [](wchar_t c) { return c >= L'0' && c <= L'9'; });
        if (!isNumber || schema.find_first_not_of(L'0') == std::wstring::npos) return SetFileRead::Malformed;
        if (schema != kSchema) return SetFileRead::Newer;
        for (ToFirstChild(); HasNode(); ToNextSibling()) {
            ParseNode(Current());
            if (Tag().empty() || TagIs(L"<#TEXT#>") || TagIs(L"<#CDATA#>")) continue;
            if (!ReadEntry()) ++m_set.passedOver;
            if (IsTooMuch()) return SetFileRead::Malformed;
        }
        return SetFileRead::Read;
    }

  private:
    bool IsTooMuch() const {
        return std::max({m_set.exclusions.size(), m_set.names.size(), m_set.layouts.size()}) > kMostEntries;
    }

    /// False when it is of no use, or stands there already.
    bool ReadEntry() {
        if (TagIs(L"<Exclusion>")) {
            const auto clsid = Clsid(L"CLSID");
            const std::wstring name = Value(L"Name");
            if (!clsid || name.size() > kLongestName || !m_excluded.insert(*clsid).second) return false;
            m_set.exclusions.push_back({*clsid, name});
            return true;
        }
        if (TagIs(L"<PluginName>")) return ReadName();
        return TagIs(L"<Layout>") && ReadLayout();
    }

    bool ReadName() {
        const auto clsid = Clsid(L"CLSID");
        const auto md5Clsid = Clsid(L"CLSIDMD5");
        const std::wstring name = Value(L"Name");
        if ((!clsid && !md5Clsid) || IsBlank(name) || name.size() > kLongestName) return false;
        const StudioSet::PluginName entry{clsid.value_or(Guid{}), md5Clsid.value_or(Guid{}), name};
        if (!m_named.insert(ClsidText(entry.clsid) + ClsidText(entry.md5Clsid)).second) return false;
        m_set.names.push_back(entry);
        return true;
    }

    bool ReadLayout() {
        const std::wstring file = Value(L"File");
        if (!IsLayoutFileName(file) || !m_files.insert(InCapitals(file)).second) return false;
        const CKeepNode keep(*this);
        std::optional<std::wstring> xml;
        for (ToFirstChild(); HasNode(); ToNextSibling()) {
            ParseNode(Current());
            if (Tag().empty() || TagIs(L"<#TEXT#>")) continue;
            if (xml || Name() != kLayoutRoot) return false;
            xml = Xml();
        }
        if (!xml) return false;
        m_set.layouts.push_back({file, std::move(*xml)});
        return true;
    }

    std::wstring Value(std::wstring_view name) {
        return FindAttribute(name) ? FoundAttribute().value_or(L"") : std::wstring();
    }
    /// Only the form in braces, and not the null id: the system would look for other texts among its program
    /// ids.
    std::optional<Guid> Clsid(std::wstring_view name) {
        const std::wstring text = Value(name);
        const auto clsid = text.starts_with(L'{') ? ParseClsid(text) : std::nullopt;
        return clsid && !clsid->IsNull() ? clsid : std::nullopt;
    }

    StudioSet& m_set;
    std::set<Guid, GuidByteOrder> m_excluded;
    std::set<std::wstring> m_named;  // both ids
    std::set<std::wstring> m_files;  // in capitals
};

}  // namespace

SetFileRead ReadStudioSet(const std::wstring& path, StudioSet& set) {
    CPatience patience;
    if (!OpenForReading(path, patience)) return SetFileRead::NotOpened;
    return CSetReader(set).Read(path);
}

DWORD WriteStudioSet(const std::wstring& path, const StudioSet& set) {
    return CXmlDoc::SaveText(path, CSetText(set).Text());
}

std::wstring PresetFileOf(const std::wstring& set) {
    constexpr std::wstring_view kExtension = L".pgset";
    // Under any other name the presets must not get the set's own.
    const bool isUsual = HasExtension(set, kExtension);
    return set.substr(0, set.size() - (isUsual ? kExtension.size() : 0)) + L".spp";
}
