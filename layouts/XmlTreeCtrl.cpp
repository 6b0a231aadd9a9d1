#include "XmlTreeCtrl.h"

#include <cwchar>

#include "ClsidText.h"

namespace {

/// The parser's own limit is a little above; a deeper layout is not written, because it could not be read.
constexpr int kDeepestNesting = 250;

constexpr wchar_t kUnnamedFolder[] = L"??????";

// Categories in layout files.
constexpr int kVstEffects = static_cast<int>(Category::VstEffects);
constexpr int kVstInstruments = static_cast<int>(Category::VstInstruments);

/// What is no number counts as 0, and what follows a number is ignored.
int NumberOf(const std::wstring& text) { return static_cast<int>(std::wcstol(text.c_str(), nullptr, 10)); }

/// Only the form in braces: the system would look for other texts among its program ids.
Guid ClsidOf(const std::wstring& text) {
    return text.starts_with(L'{') ? ParseClsid(text).value_or(Guid{}) : Guid{};
}

}  // namespace

bool CXMLTreeCtrl::Save(const std::wstring& path) {
    m_failedItem = nullptr;
    return BuildDocument() && CXmlDoc::Save(path);
}

bool CXMLTreeCtrl::BuildDocument() {
    if (!m_tree.Tree().IsLive() || !NewDocument() || !SetHeader(L"xml", L"encoding", L"UTF-8")) return false;
    const HTREEITEM first = m_tree.FirstTopLevel();
    if (m_layoutName.empty()) {
        const LayoutItem* record = m_tree.Find(first);
        if (!record) return false;
        // Kept: the host's users know layouts that are named after their first item.
        m_layoutName = record->name;
    }
    return CreateRootElement(L"PluginMenuLayout") && SetAttribute(L"DocSchema", L"1") &&
           SetAttribute(L"Name", m_layoutName) && WriteItems(first, 1);
}

bool CXMLTreeCtrl::WriteItems(HTREEITEM first, int depth) {
    for (HTREEITEM item = first; item; item = m_tree.NextSibling(item)) {
        const LayoutItem* record = m_tree.Find(item);
        const CKeepNode keep(*this);
        if (record && WriteItem(item, *record, depth)) continue;
        if (!m_failedItem) m_failedItem = item;
        return false;
    }
    return true;
}

bool CXMLTreeCtrl::WriteItem(HTREEITEM item, const LayoutItem& record, int depth) {
    switch (record.kind) {
        case LayoutKind::Folder:
            return depth <= kDeepestNesting && AppendChildElement(L"Folder") &&
                   SetAttribute(L"Name", record.name) && WriteItems(m_tree.FirstChild(item), depth + 1);
        case LayoutKind::Plugin:
            return WritePlugin(record);
        case LayoutKind::Separator:
            return AppendChildElement(L"Separator");
    }
    return true;
}

bool CXMLTreeCtrl::WritePlugin(const LayoutItem& record) {
    if (!AppendChildElement(L"Plugin")) return false;
    const VstInventoryRecord* vst = m_plugins.findVst(record.clsid);
    const Guid clsid = vst ? vst->clsid : record.clsid;
    const Guid md5Clsid = vst ? vst->md5Clsid : record.clsid;
    bool written = SetAttribute(L"CLSID", ClsidText(clsid));
    // Kept: instruments carry the second id whatever it is, effects only one that is not null, and no other
    // category has it.
    if ((written && !md5Clsid.IsNull() && record.category == kVstEffects) ||
        record.category == kVstInstruments)
        written = SetAttribute(L"CLSIDMD5", ClsidText(md5Clsid));
    written = written && SetAttribute(L"Category", std::to_wstring(record.category)) &&
              SetAttribute(L"Name", record.name) && SetAttribute(L"OriginalName", record.originalName);
    if (written && !record.defaultPreset.empty())
        written = SetAttribute(L"DefaultPreset", record.defaultPreset);
    return written;
}

bool CXMLTreeCtrl::HandleNode(IXMLDOMNode* node) {
    if (!m_tree.Tree().IsLive()) return false;
    ParseNode(node);
    if (!IsPathEmpty() || !TagIs(L"<PluginMenuLayout>")) return false;
    m_schema = NumberOf(AttributeOr(L"DocSchema", L"0"));
    m_layoutName = AttributeOr(L"Name", m_layoutName);
    if (m_schema < 1) return false;
    m_tree.Clear();
    m_lastFolder = nullptr;
    const CRedrawLock noRedraw{CWindow(m_tree.Tree().Handle())};
    const bool read = ReadChildren(nullptr, 1);
    // Each folder read becomes the selection; only the last one's lasts, and each costs a walk of the tree.
    if (m_lastFolder) m_tree.Tree().Select(m_lastFolder);
    m_tree.Tree().Focus();
    return read;
}

bool CXMLTreeCtrl::ReadChildren(HTREEITEM parent, int depth) {
    const CKeepNode keep(*this);
    bool read = true;
    for (ToFirstChild(); read && HasNode(); ToNextSibling()) {
        const CKeepNode keepChild(*this);
        read = ReadNode(parent, depth);
    }
    return read;
}

bool CXMLTreeCtrl::ReadNode(HTREEITEM parent, int depth) {
    ParseNode(Current());
    // Whatever stands within a plug-in or a separator is ignored.
    if (TagIs(L"<Plugin>")) return ReadPlugin(parent);
    if (TagIs(L"<Separator>")) return m_tree.Append(parent, NewSeparator()) != nullptr;
    if (TagIs(L"<Folder>")) return ReadFolder(parent, depth);
    // An unknown element passes only without content: its nodes come to HandleNode, which refuses them.
    return CXmlDoc::HandleNode(Current());
}

bool CXMLTreeCtrl::ReadFolder(HTREEITEM parent, int depth) {
    if (depth > kDeepestNesting) return false;
    const HTREEITEM folder = m_tree.Append(parent, NewFolder(AttributeOr(L"Name", kUnnamedFolder)));
    if (!folder) return false;
    m_lastFolder = folder;
    // Selecting a folder would open the one that it lies in.
    if (parent) m_tree.Tree().Expand(parent, true);
    return ReadChildren(folder, depth + 1);
}

bool CXMLTreeCtrl::ReadPlugin(HTREEITEM parent) {
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
    return m_tree.Append(parent, plugin) != nullptr;
}

std::wstring CXMLTreeCtrl::AttributeOr(std::wstring_view name, const std::wstring& otherwise) {
    return FindAttribute(name) ? *FoundAttribute() : otherwise;
}
