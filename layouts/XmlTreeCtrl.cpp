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
    if (m_unsavedFile) m_layoutName = XmlTextOf(m_layoutName);
    if (!IsXmlText(m_layoutName)) {
        m_failure = Failure::Text;
        m_failedName = m_layoutName;
    }
    return CreateRootElement(L"PluginMenuLayout") && SetAttribute(L"DocSchema", L"1") &&
           SetAttribute(L"Name", m_layoutName) && (!m_unsavedFile || SetText(kUnsavedFile, *m_unsavedFile)) &&
           WriteItems(first, 1);
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
    return AppendChildElement(L"Folder") && SetText(L"Name", record.name) && WriteItems(first, depth + 1);
}

bool CXMLTreeCtrl::SetText(std::wstring_view name, const std::wstring& text) {
    return m_unsavedFile ? SetAttribute(name, XmlTextOf(text)) : SetAttribute(name, text);
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
              SetText(L"Name", record.name) && SetText(L"OriginalName", record.originalName);
    if (written && !record.defaultPreset.empty()) written = SetText(L"DefaultPreset", record.defaultPreset);
    return written;
}

bool CXMLTreeCtrl::HandleNode(IXMLDOMNode* node) {
    if (!m_tree.Tree().IsLive() || !CLayoutReader::HandleNode(node)) return false;
    const CRedrawLock noRedraw(m_tree.Tree());
    m_tree.Clear(noRedraw);
    m_lastFolder = nullptr;
    const bool inserted = InsertItems(nullptr, TakeItems());
    m_tree.Tree().ScrollToTop(m_tree.Tree().Root());
    // Each folder read becomes the selection; only the last one's lasts, and each costs a walk of the tree.
    if (m_lastFolder) m_tree.Tree().Select(m_lastFolder);
    m_tree.Tree().Focus();
    return inserted;
}

bool CXMLTreeCtrl::InsertItems(HTREEITEM parent, std::vector<LayoutNode> nodes) {
    bool hasFolder = false;
    // From the last to the first: to add behind others, the control would walk all of them each time.
    for (std::size_t left = nodes.size(); left > 0; --left) {
        auto& [record, children] = nodes[left - 1];
        const bool isFolder = record.kind == LayoutKind::Folder;
        const HTREEITEM item = m_tree.Prepend(parent, std::move(record));
        if (!item || !InsertItems(item, std::move(children))) return false;
        if (!isFolder) continue;
        hasFolder = true;
        if (!m_lastFolder) m_lastFolder = item;
    }
    // Selecting a folder would open the one that it lies in.
    if (parent && hasFolder) m_tree.Tree().Expand(parent, true);
    return true;
}
