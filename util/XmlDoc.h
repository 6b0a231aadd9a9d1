// A document object over the system's XML parser.
#pragma once

#include <windows.h>

#include <msxml2.h>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <wrl/client.h>

#include "Files.h"

/// Operations work on the current node. Failure contract: one that fails gives false, or nothing, and most
/// leave a text in LastError. Nothing is thrown. A document with a document type is never loaded.
/// The layouts do without some of them, which complete the class: OnNode, the attributes by number, the text
/// of a node, the header's value, and nodes added before or behind another.
class CXmlDoc {
  public:
    CXmlDoc() = default;
    virtual ~CXmlDoc() = default;
    CXmlDoc(const CXmlDoc&) = delete;
    CXmlDoc& operator=(const CXmlDoc&) = delete;

    /// Parses the file, makes its root element current and parses that; with `rootOnly` that is all, else the
    /// root element is given to HandleNode first, whose answer is the result.
    virtual bool Load(const std::wstring& path, bool rootOnly);
    /// Load with `rootOnly`, for one of several files that are waited for together.
    bool LoadRoot(const std::wstring& path, CPatience& patience);
    /// From now on, what is loaded keeps the blanks between its elements, and so is written as it was.
    void KeepBlanks() { m_keepsBlanks = true; }
    /// There must be a document. A file of that name stays as it was when this fails.
    virtual bool Save(const std::wstring& path);
    /// Writes the text of an element, as Xml gives it, without parsing it again. Gives what SaveError would.
    static DWORD SaveText(const std::wstring& path, const std::wstring& xml);

  protected:
    /// Called by the default handler for each node that it gets.
    virtual void OnNode(IXMLDOMNode* /*node*/) {}
    /// The default passes an element's children on, in order, until one gives false; other nodes are ignored.
    virtual bool HandleNode(IXMLDOMNode* node);

  public:
    const std::wstring& LastError() const { return m_lastError; }
    /// What kept the last save from writing the file: the system's error, ERROR_FILE_TOO_LARGE for a file
    /// that Load would refuse; ERROR_SUCCESS when it was nothing about the file.
    DWORD SaveError() const { return m_saveError; }
    static constexpr std::size_t kLargestFile = 64U << 20;  // a hundred thousand items take about half of it

    // The node parsed last.
    /// The element's name in angle brackets; "<#TEXT#>" and "<#CDATA#>" for texts; empty for others.
    const std::wstring& Tag() const { return m_tag; }
    const std::wstring& Name() const { return m_name; }
    bool TagIs(std::wstring_view tag) const { return m_tag == tag; }
    /// Whether the default handler stands at the root, in no element.
    bool IsPathEmpty() const { return m_path.empty(); }
    /// An exact match; remembered for FoundAttribute.
    bool FindAttribute(std::wstring_view name);
    std::optional<std::wstring> FoundAttribute();
    std::optional<std::wstring> AttributeName(int index);
    std::optional<std::wstring> AttributeValue(int index);

    // The current node.
    void ParseNode(IXMLDOMNode* node);
    bool HasNode() const { return m_current != nullptr; }
    IXMLDOMNode* Current() const { return m_current.Get(); }
    /// Null where the current node is none. Good until that changes.
    IXMLDOMElement* CurrentElement();
    void ToFirstChild();
    void ToNextSibling();
    /// Read from the document with each call: an element's text is that of everything within it.
    std::optional<std::wstring> TextValue();
    /// The node with all that is in it, as it is written.
    std::optional<std::wstring> Xml() const;
    bool SetTextValue(const std::wstring& text);

    // Building. An element that is added becomes current.
    bool NewDocument();
    /// The first line: version 1.0 and one more attribute, "encoding" or "standalone".
    bool SetHeader(const std::wstring& name, const std::wstring& attribute, const std::wstring& value);
    std::optional<std::wstring> HeaderValue(const std::wstring& attribute);
    bool CreateRootElement(std::wstring_view name);
    bool AppendChildElement(std::wstring_view name);
    /// Refuses a text that XML can't hold.
    bool SetAttribute(std::wstring_view name, std::wstring_view value);
    enum class Kind { Element, Text, CData };
    /// Nothing can stand beside the root element.
    bool AddBefore(Kind kind, const std::wstring& text) { return AddBeside(kind, text, false); }
    bool AddAfter(Kind kind, const std::wstring& text) { return AddBeside(kind, text, true); }

    /// Goes back to the node that was current, and its tag, at the end of a walk.
    class CKeepNode {
      public:
        explicit CKeepNode(CXmlDoc& document)
            : m_document(document), m_node(document.m_current), m_tag(document.m_tag) {}
        ~CKeepNode() {
            m_document.m_current = std::move(m_node);
            m_document.m_tag = std::move(m_tag);
        }
        CKeepNode(const CKeepNode&) = delete;
        CKeepNode& operator=(const CKeepNode&) = delete;

      private:
        CXmlDoc& m_document;
        Microsoft::WRL::ComPtr<IXMLDOMNode> m_node;
        std::wstring m_tag;
    };

  protected:
    /// Makes the current node's children current in turn, until one gives false, and then goes back.
    template <typename TVisit>
    bool VisitChildren(TVisit&& visit) {
        const CKeepNode keep(*this);
        bool accepted = true;
        for (ToFirstChild(); accepted && HasNode();) {
            const Microsoft::WRL::ComPtr<IXMLDOMNode> child = m_current;
            accepted = visit(child.Get());
            m_current = child;
            ToNextSibling();
        }
        return accepted;
    }

  private:
    bool Fail(std::wstring_view error);
    bool CreateDocument();
    bool LoadText(const std::wstring& xml);
    bool Parse(const std::string& bytes);
    void ReadAttributes();
    /// Fails with that error for an index out of range.
    std::optional<std::wstring> TextAt(const std::vector<std::wstring>& texts, int index,
                                       std::wstring_view error);
    bool AddBeside(Kind kind, const std::wstring& text, bool after);
    Microsoft::WRL::ComPtr<IXMLDOMNode> Create(Kind kind, std::wstring_view text) const;
    Microsoft::WRL::ComPtr<IXMLDOMElement> CreateElement(std::wstring_view name) const;
    void ToElement(const Microsoft::WRL::ComPtr<IXMLDOMElement>& element);

    std::wstring m_tag;
    std::wstring m_name;
    std::wstring m_path;  // the tags of the elements around
    Microsoft::WRL::ComPtr<IXMLDOMDocument2> m_document;
    Microsoft::WRL::ComPtr<IXMLDOMElement> m_root;
    Microsoft::WRL::ComPtr<IXMLDOMNode> m_current;
    // The node that was asked last whether it is an element, and what it was then.
    Microsoft::WRL::ComPtr<IXMLDOMNode> m_elementNode;
    Microsoft::WRL::ComPtr<IXMLDOMElement> m_element;
    std::wstring m_lastError;
    DWORD m_saveError = ERROR_SUCCESS;
    std::vector<std::wstring> m_attributeNames;
    std::vector<std::wstring> m_attributeValues;
    int m_found = -1;
    bool m_keepsBlanks = false;
};
