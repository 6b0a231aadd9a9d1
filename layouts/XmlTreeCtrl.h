// A menu layout as a document: reads a layout file into the tree, and writes the tree as a layout file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "LayoutReader.h"
#include "TreeCtrlWrapper.h"

/// Failure contract: Load and Save give false. A file is read to its end before the tree is touched, so that
/// one that is no layout leaves the tree alone. A load leaves the layout marked as modified; the caller
/// clears that.
class CXMLTreeCtrl : public CLayoutReader {
  public:
    CXMLTreeCtrl(CTreeCtrlWrapper& tree, const LayoutPlugins& plugins)
        : CLayoutReader(plugins), m_tree(tree) {}

    /// A layout without a name gets the name of its first item. An item with a text that XML can't hold makes
    /// this fail.
    bool Save(const std::wstring& path) override;

    /// From now on a save makes a copy of a layout that would be lost otherwise. It notes the layout's file,
    /// if any, keeps the name as it is, even none, and writes what a save fails at: without the characters
    /// that XML can't hold, and without the folders that are nested too deep, whose items it keeps.
    void NoteUnsavedFile(const std::wstring& path) { m_unsavedFile = path; }

    /// Why the last save failed; File: the document's SaveError says more.
    enum class Failure { Unknown, Text, Nesting, File };
    Failure LastFailure() const { return m_failure; }
    /// The item at which the last save broke off; null when no item was the reason.
    HTREEITEM FailedItem() const { return m_failedItem; }
    /// Its name; the layout's when that is what could not be written.
    const std::wstring& FailedName() const { return m_failedName; }

  protected:
    /// The root element handler: rebuilds the tree.
    bool HandleNode(IXMLDOMNode* node) override;

  private:
    bool BuildDocument();
    bool WriteItems(HTREEITEM first, int depth);
    bool WriteItem(HTREEITEM item, const LayoutItem& record, int depth);
    bool WriteFolder(HTREEITEM item, const LayoutItem& record, int depth);
    bool WritePlugin(const LayoutItem& record);
    /// Writes an item's text; into a copy what XML can't hold goes as unknown characters.
    bool SetText(std::wstring_view name, const std::wstring& text);
    void NoteFailure(HTREEITEM item, const LayoutItem& record, int depth);

    bool InsertItems(HTREEITEM parent, std::vector<LayoutNode> nodes);

    CTreeCtrlWrapper& m_tree;
    HTREEITEM m_lastFolder = nullptr;
    Failure m_failure = Failure::Unknown;
    HTREEITEM m_failedItem = nullptr;
    std::wstring m_failedName;
};
