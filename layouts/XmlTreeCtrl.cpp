#include "XmlTreeCtrl.h"

#include "ClsidText.h"
#include "XmlText.h"

namespace {

// Categories in layout files.
constexpr int kVstEffects = static_cast<int>(Category::VstEffects);
constexpr int kVstInstruments = static_cast<int>(Category::VstInstruments);

}  // namespace

bool CXMLTreeCtrl::Save(const std::wstring& path) {
    m_failure = Failure::Unknown;
    m_failedItem = nullptr;
    if (!BuildDocument()) return false;
    if (CXmlDoc::Save(path)) return true;
    if (SaveError() != ERROR_SUCCESS) m_failure = Failure::File;
    return false;
}

bool CXMLTreeCtrl::BuildDocument() {
    if (!m_tree.Tree().IsLive() || !NewDocument() || !SetHeader(L"xml", L"encoding", L"UTF-8")) return false;
    const HTREEITEM first = m_tree.Tree().Root();
    if (m_layoutName.empty() && !m_unsavedFile) {
        const LayoutItem* record = m_tree.Find(first);
        if (!record) return false;
        // Kept: the host's users know layouts that are named after their first item.
        m_layoutName = record->name;
    }
    m_layoutName = Writable(m_layoutName);
    if (!IsXmlText(m_layoutName)) {
        m_failure = Failure::Text;
        m_failedName = m_layoutName;
    }
    return CreateRootElement(L"PluginMenuLayout") && SetAttribute(L"DocSchema", L"1") &&
           SetAttribute(L"Name", m_layoutName) &&
           (!m_unsavedFile || SetAttribute(kUnsavedFile, Writable(*m_unsavedFile))) && WriteItems(first, 1);
}

void CXMLTreeCtrl::NoteFailure(HTREEITEM item, const LayoutItem& record, int depth) {
    if (m_failedItem) return;  // the innermost was noted first; its folders fail with it
    m_failedItem = item;
    m_failedName = record.name;
    if (!IsXmlText(record.name) || !IsXmlText(record.originalName) || !IsXmlText(record.defaultPreset))
        m_failure = Failure::Text;
    else if (depth > kDeepestNesting)
        m_failure = Failure::Nesting;
}

bool CXMLTreeCtrl::WriteItems(HTREEITEM first, int depth) {
    for (HTREEITEM item = first; item; item = m_tree.Tree().NextSibling(item)) {
        const LayoutItem* record = m_tree.Find(item);
        const CKeepNode keep(*this);
        if (record && WriteItem(item, *record, depth)) continue;
        if (record) NoteFailure(item, *record, depth);
        return false;
    }
    return true;
}

bool CXMLTreeCtrl::WriteItem(HTREEITEM item, const LayoutItem& record, int depth) {
    switch (record.kind) {
        case LayoutKind::Folder:
            return WriteFolder(item, record, depth);
        case LayoutKind::Plugin:
            return WritePlugin(record);
        case LayoutKind::Separator:
            return AppendChildElement(L"Separator");
    }
    return true;
}

bool CXMLTreeCtrl::WriteFolder(HTREEITEM item, const LayoutItem& record, int depth) {
    const HTREEITEM first = m_tree.Tree().Child(item);
    if (depth > kDeepestNesting) return m_unsavedFile && WriteItems(first, depth);
    return AppendChildElement(L"Folder") && SetAttribute(L"Name", Writable(record.name)) &&
           WriteItems(first, depth + 1);
}

std::wstring CXMLTreeCtrl::Writable(const std::wstring& text) const {
    return m_unsavedFile ? XmlTextOf(text) : text;
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
              SetAttribute(L"Name", Writable(record.name)) &&
              SetAttribute(L"OriginalName", Writable(record.originalName));
    if (written && !record.defaultPreset.empty())
        written = SetAttribute(L"DefaultPreset", Writable(record.defaultPreset));
    return written;
}

bool CXMLTreeCtrl::HandleNode(IXMLDOMNode* node) {
    if (!m_tree.Tree().IsLive() || !CLayoutReader::HandleNode(node)) return false;
    m_tree.Clear();
    m_lastFolder = nullptr;
    const CRedrawLock noRedraw{CWindow(m_tree.Tree().Handle())};
    const bool inserted = InsertItems(nullptr, Items());
    m_tree.Tree().ScrollToTop(m_tree.Tree().Root());
    // Each folder read becomes the selection; only the last one's lasts, and each costs a walk of the tree.
    if (m_lastFolder) m_tree.Tree().Select(m_lastFolder);
    m_tree.Tree().Focus();
    return inserted;
}

bool CXMLTreeCtrl::InsertItems(HTREEITEM parent, const std::vector<LayoutNode>& nodes) {
    bool hasFolder = false;
    // From the last to the first: to add behind others, the control would walk all of them each time.
    for (std::size_t left = nodes.size(); left > 0; --left) {
        const LayoutNode& node = nodes[left - 1];
        const HTREEITEM item = m_tree.Prepend(parent, node.record);
        if (!item || !InsertItems(item, node.children)) return false;
        if (node.record.kind != LayoutKind::Folder) continue;
        hasFolder = true;
        if (!m_lastFolder) m_lastFolder = item;
    }
    // Selecting a folder would open the one that it lies in.
    if (parent && hasFolder) m_tree.Tree().Expand(parent, true);
    return true;
}
