#include "LayoutReader.h"

#include <cwchar>
#include <utility>

#include "ClsidText.h"

namespace {

constexpr wchar_t kUnnamedFolder[] = L"??????";

/// What is no number counts as 0, and what follows a number is ignored.
int NumberOf(const std::wstring& text) { return static_cast<int>(std::wcstol(text.c_str(), nullptr, 10)); }

/// Only the form in braces: the system would look for other texts among its program ids.
Guid ClsidOf(const std::wstring& text) {
    return text.starts_with(L'{') ? ParseClsid(text).value_or(Guid{}) : Guid{};
}

}  // namespace

bool CLayoutReader::HandleNode(IXMLDOMNode* node) {
    ParseNode(node);
    if (!IsPathEmpty() || !TagIs(L"<PluginMenuLayout>")) return false;
    const int schema = NumberOf(AttributeOr(L"DocSchema", L"0"));
    m_layoutName = AttributeOr(L"Name", m_layoutName);
    if (FindAttribute(kUnsavedFile)) m_unsavedFile = FoundAttribute();
    m_items.clear();
    return schema >= 1 && ReadChildren(m_items, 1);
}

bool CLayoutReader::ReadChildren(std::vector<LayoutNode>& nodes, int depth) {
    return VisitChildren([&](IXMLDOMNode* node) { return ReadNode(node, nodes, depth); });
}

bool CLayoutReader::ReadNode(IXMLDOMNode* node, std::vector<LayoutNode>& nodes, int depth) {
    ParseNode(node);
    // Whatever stands within a plug-in or a separator is ignored.
    if (TagIs(L"<Plugin>")) return ReadPlugin(nodes);
    if (TagIs(L"<Separator>")) return Add(nodes, NewSeparator());
    if (TagIs(L"<Folder>")) return ReadFolder(nodes, depth);
    // An unknown element passes only without content: its nodes come to HandleNode, which refuses them.
    return CXmlDoc::HandleNode(node);
}

bool CLayoutReader::ReadFolder(std::vector<LayoutNode>& nodes, int depth) {
    return depth <= kDeepestNesting && Add(nodes, NewFolder(AttributeOr(L"Name", kUnnamedFolder))) &&
           ReadChildren(nodes.back().children, depth + 1);
}

bool CLayoutReader::ReadPlugin(std::vector<LayoutNode>& nodes) {
    if (!FindAttribute(L"Category")) return false;
    LayoutItem plugin = NewPlugin();
    plugin.category = NumberOf(*FoundAttribute());
    if (!FindAttribute(L"CLSIDMD5") && !FindAttribute(L"CLSID")) return false;
    const std::wstring clsid = *FoundAttribute();
    if (clsid.empty() || !FindAttribute(L"Name")) return false;
    plugin.name = *FoundAttribute();
    plugin.clsid = ClsidOf(clsid);
    plugin.originalName = AttributeOr(L"OriginalName", L"");
    plugin.defaultPreset = AttributeOr(L"DefaultPreset", L"");
    m_plugins.mark(plugin);
    return Add(nodes, std::move(plugin));
}

/// False when the ids are used up: the tree would not take the item.
bool CLayoutReader::Add(std::vector<LayoutNode>& nodes, LayoutItem record) {
    if (record.id == kInvalidItemId) return false;
    nodes.push_back({std::move(record), {}});
    return true;
}

std::wstring CLayoutReader::AttributeOr(std::wstring_view name, const std::wstring& otherwise) {
    return FindAttribute(name) ? *FoundAttribute() : otherwise;
}
