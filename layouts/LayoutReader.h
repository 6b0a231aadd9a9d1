// Reads a layout file.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "LayoutItem.h"
#include "PluginRecords.h"
#include "XmlDoc.h"

/// What reading and writing ask of the plug-ins that were found.
struct LayoutPlugins {
    /// The VST record under either of its class ids; null when there is none.
    std::function<const VstInventoryRecord*(const Guid&)> findVst;
    /// Notes in a plug-in's record whether it is installed, and where it stands.
    std::function<void(LayoutItem&)> mark;
};

/// An item of a layout, with what is in it.
struct LayoutNode {
    LayoutItem record;
    std::vector<LayoutNode> children;
};

/// Failure contract: Load gives false for a file that is no layout.
class CLayoutReader : public CXmlDoc {
  public:
    explicit CLayoutReader(const LayoutPlugins& plugins) : m_plugins(plugins) {}

    /// What the last load has read.
    const std::vector<LayoutNode>& Items() const { return m_items; }
    const std::wstring& LayoutName() const { return m_layoutName; }
    void SetLayoutName(const std::wstring& name) { m_layoutName = name; }
    /// The file of the layout that is noted in a copy of an unsaved one; nothing in any other file.
    const std::optional<std::wstring>& UnsavedFile() const { return m_unsavedFile; }

    /// The parser's own limit is a little above; a deeper layout is not written, because it could not be
    /// read.
    static constexpr int kDeepestNesting = 250;

  protected:
    /// The root element handler. Refuses everything below the root.
    bool HandleNode(IXMLDOMNode* node) override;
    /// Once, after which there are none.
    std::vector<LayoutNode> TakeItems() { return std::exchange(m_items, {}); }

    static constexpr wchar_t kUnsavedFile[] = L"UnsavedFile";
    const LayoutPlugins& m_plugins;
    std::wstring m_layoutName;
    std::optional<std::wstring> m_unsavedFile;

  private:
    bool ReadChildren(std::vector<LayoutNode>& nodes, int depth);
    bool ReadNode(IXMLDOMNode* node, std::vector<LayoutNode>& nodes, int depth);
    bool ReadPlugin(std::vector<LayoutNode>& nodes);
    bool ReadFolder(std::vector<LayoutNode>& nodes, int depth);
    static bool Add(std::vector<LayoutNode>& nodes, LayoutItem record);
    std::wstring AttributeOr(std::wstring_view name, const std::wstring& otherwise);

    std::vector<LayoutNode> m_items;
};
