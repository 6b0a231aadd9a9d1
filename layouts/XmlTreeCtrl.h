// A menu layout as a document: reads a layout file into the tree, and writes the tree as a layout file.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Guid.h"
#include "LayoutItem.h"
#include "PluginRecords.h"
#include "TreeCtrlWrapper.h"
#include "XmlDoc.h"

/// What reading and writing ask of the plug-ins that were found.
struct LayoutPlugins {
    /// The VST record under either of its class ids; null when there is none.
    std::function<const VstInventoryRecord*(const Guid&)> findVst;
    /// Notes in a plug-in's record whether it is installed, and where it stands.
    std::function<void(LayoutItem&)> mark;
};

/// Failure contract: Load and Save give false. A file is read to its end before the tree is touched, so that
/// one that is no layout leaves the tree alone. A load leaves the layout marked as modified; the caller
/// clears that.
class CXMLTreeCtrl : public CXmlDoc {
  public:
    CXMLTreeCtrl(CTreeCtrlWrapper& tree, const LayoutPlugins& plugins) : m_tree(tree), m_plugins(plugins) {}

    /// A layout without a name gets the name of its first item. An item with a text that XML can't hold makes
    /// this fail.
    bool Save(const std::wstring& path) override;

    /// From now on a save makes a copy of a layout that would be lost otherwise. It notes the layout's file,
    /// if any, keeps the name as it is, even none, and writes what a save fails at: without the characters
    /// that XML can't hold, and without the folders that are nested too deep, whose items it keeps.
    void NoteUnsavedFile(const std::wstring& path) { m_unsavedFile = path; }
    /// What such a copy notes; nothing in any other file.
    const std::optional<std::wstring>& UnsavedFile() const { return m_unsavedFile; }

    const std::wstring& LayoutName() const { return m_layoutName; }
    void SetLayoutName(const std::wstring& name) { m_layoutName = name; }

    /// Why the last save failed; File: the document's SaveError says more.
    enum class Failure { Unknown, Text, Nesting, File };
    Failure LastFailure() const { return m_failure; }
    /// The item at which the last save broke off; null when no item was the reason.
    HTREEITEM FailedItem() const { return m_failedItem; }
    /// Its name; the layout's when that is what could not be written.
    const std::wstring& FailedName() const { return m_failedName; }
    /// The parser's own limit is a little above; a deeper layout is not written, because it could not be
    /// read.
    static constexpr int kDeepestNesting = 250;

  protected:
    /// The root element handler: rebuilds the tree. Refuses everything below the root.
    bool HandleNode(IXMLDOMNode* node) override;

  private:
    bool BuildDocument();
    bool WriteItems(HTREEITEM first, int depth);
    bool WriteItem(HTREEITEM item, const LayoutItem& record, int depth);
    bool WriteFolder(HTREEITEM item, const LayoutItem& record, int depth);
    bool WritePlugin(const LayoutItem& record);
    std::wstring Writable(const std::wstring& text) const;
    void NoteFailure(HTREEITEM item, const LayoutItem& record, int depth);

    /// An item that was read, with what is in it.
    struct Node {
        LayoutItem record;
        std::vector<Node> children;
    };
    bool ReadChildren(std::vector<Node>& nodes, int depth);
    bool ReadNode(std::vector<Node>& nodes, int depth);
    bool ReadPlugin(std::vector<Node>& nodes);
    bool ReadFolder(std::vector<Node>& nodes, int depth);
    static bool Add(std::vector<Node>& nodes, LayoutItem record);
    bool InsertItems(HTREEITEM parent, const std::vector<Node>& nodes);
    std::wstring AttributeOr(std::wstring_view name, const std::wstring& otherwise);

    CTreeCtrlWrapper& m_tree;
    const LayoutPlugins& m_plugins;
    std::wstring m_layoutName;
    std::optional<std::wstring> m_unsavedFile;
    int m_schema = 0;
    HTREEITEM m_lastFolder = nullptr;
    Failure m_failure = Failure::Unknown;
    HTREEITEM m_failedItem = nullptr;
    std::wstring m_failedName;
};
