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

struct Attribute {
    std::wstring_view name;
    std::wstring_view value;
};

class CSetWriter : public CXmlDoc {
  public:
    CSetWriter() { KeepBlanks(); }
    bool Build(const StudioSet& set) {
        bool built = NewDocument() && SetHeader(L"xml", L"encoding", L"UTF-8") && CreateRootElement(kRoot) &&
                     SetAttribute(L"Schema", kSchema);
        for (const auto& [clsid, name] : set.exclusions)
            built = built && Add(L"Exclusion", {{L"CLSID", ClsidText(clsid)}, {L"Name", XmlTextOf(name)}});
        for (const auto& [clsid, md5Clsid, name] : set.names)
            built = built &&
                    Add(L"PluginName",
                        {{L"CLSID", ClsidText(clsid)}, {L"CLSIDMD5", ClsidText(md5Clsid)}, {L"Name", name}});
        for (const auto& [file, xml] : set.layouts) built = built && Add(L"Layout", {{L"File", file}}, xml);
        return built;
    }

  private:
    /// On a line of its own: a set may be kept where versions are compared.
    bool Add(std::wstring_view element, std::initializer_list<Attribute> attributes,
             const std::wstring& content = {}) {
        const CKeepNode keep(*this);
        if (!AppendChildElement(element) || !AddBefore(Kind::Text, L"\n") ||
            !std::ranges::all_of(attributes,
                                 [this](const Attribute& one) { return SetAttribute(one.name, one.value); }))
            return false;
        if (content.empty()) return true;
        CXmlDoc copied;
        copied.KeepBlanks();
        return copied.LoadText(content) && AppendCopyOf(copied);
    }
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
    CSetWriter writer;
    if (!writer.Build(set)) return ERROR_INVALID_NAME;
    if (writer.Save(path)) return ERROR_SUCCESS;
    return writer.SaveError() != ERROR_SUCCESS ? writer.SaveError() : DWORD{ERROR_WRITE_FAULT};
}

std::wstring PresetFileOf(const std::wstring& set) {
    constexpr std::wstring_view kExtension = L".pgset";
    // Under any other name the presets must not get the set's own.
    const bool isUsual = HasExtension(set, kExtension);
    return set.substr(0, set.size() - (isUsual ? kExtension.size() : 0)) + L".spp";
}
