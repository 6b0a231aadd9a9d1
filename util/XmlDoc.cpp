#include "XmlDoc.h"

#include <cassert>

#include "DocumentType.h"
#include "DomDocument.h"
#include "Variant.h"
#include "XmlText.h"

using Microsoft::WRL::ComPtr;

namespace {

constexpr std::string_view kHeading = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n";

std::string InUtf8(const std::wstring& text) {
    const int length = static_cast<int>(text.size());
    std::string bytes(static_cast<std::size_t>(::WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr,
                                                                     0, nullptr, nullptr)),
                      '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), static_cast<int>(bytes.size()),
                          nullptr, nullptr);
    return bytes;
}

/// A file that is too large to be read again is not written.
DWORD WriteDocument(const std::wstring& path, const std::string& bytes) {
    return bytes.size() <= CXmlDoc::kLargestFile ? ReplaceFileContents(path, bytes) : ERROR_FILE_TOO_LARGE;
}

}  // namespace

bool CXmlDoc::Fail(std::wstring_view error) {
    m_lastError = error;
    return false;
}

bool CXmlDoc::CreateDocument() {
    m_current.Reset();
    m_root.Reset();
    m_path.clear();
    m_document = NewDomDocument();
    if (m_document && m_keepsBlanks) m_document->put_preserveWhiteSpace(VARIANT_TRUE);
    return m_document || Fail(L"CXmlDoc: there is no XML parser");
}

bool CXmlDoc::Load(const std::wstring& path, bool rootOnly) {
    CPatience patience;
    if (!LoadRoot(path, patience)) return false;
    if (rootOnly) return true;
    const bool accepted = HandleNode(m_root.Get());
    ParseNode(m_root.Get());
    return accepted;
}

bool CXmlDoc::LoadRoot(const std::wstring& path, CPatience& patience) {
    m_lastError.clear();
    if (!CreateDocument()) return false;
    std::string bytes;
    if (ReadWholeFile(path, kLargestFile, bytes, patience) != FileRead::Whole || !Parse(bytes)) return false;
    ParseNode(m_root.Get());
    return true;
}

bool CXmlDoc::LoadText(const std::wstring& xml) {
    m_lastError.clear();
    if (!CreateDocument() || !Parse(std::string(kHeading) + InUtf8(xml))) return false;
    ParseNode(m_root.Get());
    return true;
}

bool CXmlDoc::Parse(const std::string& bytes) {
    constexpr wchar_t kNoDocumentTypes[] = L"CXmlDoc: a document type is not allowed";
    if (HasDocumentType(bytes)) return Fail(kNoDocumentTypes);
    if (!ParseBytes(*m_document.Get(), bytes)) return Fail(ParseErrorOf(*m_document.Get()));
    ComPtr<IXMLDOMDocumentType> type;
    if (m_document->get_doctype(&type) == S_OK && type) return Fail(kNoDocumentTypes);
    return m_document->get_documentElement(&m_root) == S_OK && m_root;
}

bool CXmlDoc::Save(const std::wstring& path) {
    assert(m_document);
    m_saveError = ERROR_SUCCESS;
    const auto bytes = m_document ? BytesOf(*m_document.Get()) : std::nullopt;
    if (!bytes) return false;
    m_saveError = WriteDocument(path, *bytes);
    return m_saveError == ERROR_SUCCESS;
}

DWORD CXmlDoc::SaveText(const std::wstring& path, const std::wstring& xml) {
    return WriteDocument(path, std::string(kHeading) + InUtf8(xml) + "\r\n");
}

bool CXmlDoc::HandleNode(IXMLDOMNode* node) {
    ParseNode(node);
    OnNode(node);
    if (TypeOf(*node) != NODE_ELEMENT) return true;
    const std::size_t depth = m_path.size();
    m_path += m_tag;
    const bool accepted = VisitChildren([this](IXMLDOMNode* child) { return HandleNode(child); });
    m_path.resize(depth);
    return accepted;
}

void CXmlDoc::ParseNode(IXMLDOMNode* node) {
    m_current = node;
    m_tag.clear();
    m_attributeNames.clear();
    m_attributeValues.clear();
    m_found = -1;
    const DOMNodeType type = TypeOf(*node);
    m_name = type == NODE_TEXT ? L"#TEXT#" : type == NODE_CDATA_SECTION ? L"#CDATA#" : NameOf(*node);
    if (type == NODE_ELEMENT || type == NODE_TEXT || type == NODE_CDATA_SECTION)
        m_tag.append(1, L'<').append(m_name).append(1, L'>');
    if (type == NODE_ELEMENT) ReadAttributes();
}

void CXmlDoc::ReadAttributes() {
    ComPtr<IXMLDOMNamedNodeMap> attributes;
    if (m_current->get_attributes(&attributes) != S_OK || !attributes) return;
    ComPtr<IXMLDOMNode> attribute;
    while (attributes->nextNode(&attribute) == S_OK && attribute) {
        m_attributeNames.push_back(NameOf(*attribute.Get()));
        m_attributeValues.push_back(ValueOf(*attribute.Get()));
    }
}

bool CXmlDoc::FindAttribute(std::wstring_view name) {
    m_found = -1;
    for (std::size_t i = 0; i < m_attributeNames.size() && m_found < 0; ++i) {
        if (m_attributeNames[i] == name) m_found = static_cast<int>(i);
    }
    return m_found >= 0;
}

std::optional<std::wstring> CXmlDoc::TextAt(const std::vector<std::wstring>& texts, int index,
                                            std::wstring_view error) {
    if (index >= 0 && index < static_cast<int>(texts.size())) return texts[static_cast<std::size_t>(index)];
    Fail(error);
    return std::nullopt;
}

std::optional<std::wstring> CXmlDoc::FoundAttribute() {
    return TextAt(m_attributeValues, m_found, L"Can't Retrieve an Attribute");
}

std::optional<std::wstring> CXmlDoc::AttributeName(int index) {
    return TextAt(m_attributeNames, index, L"XML_PARSER::Get_Attribute_Name(int) failed");
}

std::optional<std::wstring> CXmlDoc::AttributeValue(int index) {
    return TextAt(m_attributeValues, index, L"XML_PARSER::Get_Attribute_Value(int) failed");
}

void CXmlDoc::ToElement(const ComPtr<IXMLDOMElement>& element) {
    m_current = m_elementNode = m_element = element;
}

IXMLDOMElement* CXmlDoc::CurrentElement() {
    // Each attribute of an element asks for it. With some headers two ComPtr compare by whether both are set.
    if (m_elementNode.Get() != m_current.Get()) {
        m_elementNode = m_current;
        m_element.Reset();
        if (m_current)
            m_current->QueryInterface(IID_IXMLDOMElement, reinterpret_cast<void**>(m_element.GetAddressOf()));
    }
    return m_element.Get();
}

void CXmlDoc::ToFirstChild() {
    ComPtr<IXMLDOMNode> child;
    if (m_current) m_current->get_firstChild(&child);
    m_current = child;
}

void CXmlDoc::ToNextSibling() {
    ComPtr<IXMLDOMNode> next;
    if (m_current) m_current->get_nextSibling(&next);
    m_current = next;
}

std::optional<std::wstring> CXmlDoc::TextValue() {
    UniqueBstr text;
    if (m_current && SUCCEEDED(m_current->get_text(text.Put()))) return TextOf(text.Get());
    Fail(L"CXmlDoc::Get_TextValue() Can't set text on NULL node");
    return std::nullopt;
}

std::optional<std::wstring> CXmlDoc::Xml() const {
    UniqueBstr xml;
    if (!m_current || FAILED(m_current->get_xml(xml.Put()))) return std::nullopt;
    std::wstring text = TextOf(xml.Get());
    if (text.find(L"&#x") == std::wstring::npos) return text;
    // Where a file names no encoding, some parsers write letters as numbers.
    CXmlDoc parsed;
    parsed.m_keepsBlanks = m_keepsBlanks;
    if (parsed.LoadText(text) && SUCCEEDED(parsed.m_root->get_xml(xml.Put()))) return TextOf(xml.Get());
    return text;
}

bool CXmlDoc::SetTextValue(const std::wstring& text) {
    if (m_current && IsXmlText(text) && SUCCEEDED(m_current->put_text(BstrOf(text).Get()))) return true;
    return Fail(L"CXmlDoc::Set_TextValue(LPCTSTR)   : Can't set a Text on a NULL Node");
}

bool CXmlDoc::NewDocument() {
    VARIANT_BOOL loaded = VARIANT_FALSE;
    if (!CreateDocument() ||
        FAILED(m_document->loadXML(BstrOf(L"<?xml version=\"1.0\"?><root></root>").Get(), &loaded)) ||
        loaded != VARIANT_TRUE || FAILED(m_document->get_documentElement(&m_root)))
        return false;
    m_current = m_root;
    return true;
}

bool CXmlDoc::SetHeader(const std::wstring& name, const std::wstring& attribute, const std::wstring& value) {
    if (name != L"xml" || (attribute != L"encoding" && attribute != L"standalone"))
        return Fail(L"CXmlDoc::Set_Header() : bad value structure");
    if (!m_document) return Fail(L"CXmlDoc::Set_Header() : Can't create the new processing instruction node");
    ComPtr<IXMLDOMProcessingInstruction> header;
    const std::wstring data = L"version=\"1.0\" " + attribute + L"=\"" + value + L"\"";
    if (FAILED(m_document->createProcessingInstruction(BstrOf(name).Get(), BstrOf(data).Get(), &header)))
        return Fail(L"PARSER_XML::SetHeader() : Can't create new Processing node");
    ComPtr<IXMLDOMNode> first;
    if (m_document->get_firstChild(&first) != S_OK || !first)
        return Fail(L"PARSER_XML::SetHeader() : Can't insert Processing node in the empty document");
    const HRESULT result = NameOf(*first.Get()) == L"xml"
                               ? m_document->replaceChild(header.Get(), first.Get(), nullptr)
                               : m_document->insertBefore(header.Get(), CVariant(first.Get()).Get(), nullptr);
    if (SUCCEEDED(result)) return true;
    return Fail(L"PARSER_XML::SetHeader() : Can't insert Processing node after the root document");
}

std::optional<std::wstring> CXmlDoc::HeaderValue(const std::wstring& attribute) {
    ComPtr<IXMLDOMNode> first;
    if (!m_document || m_document->get_firstChild(&first) != S_OK) {
        Fail(L"CXmlDoc::Get_Header() : The XML Document is a null pointer");
        return std::nullopt;
    }
    const std::wstring data = NameOf(*first.Get()) == L"xml" ? ValueOf(*first.Get()) : std::wstring();
    const std::wstring opening = attribute + L"=\"";
    const std::size_t begin = data.find(opening);
    const std::size_t end = begin == std::wstring::npos ? begin : data.find(L'"', begin + opening.size());
    if (end != std::wstring::npos) return data.substr(begin + opening.size(), end - begin - opening.size());
    Fail(L"CXmlDoc::Get_Header() : bad value structure");
    return std::nullopt;
}

ComPtr<IXMLDOMElement> CXmlDoc::CreateElement(std::wstring_view name) const {
    ComPtr<IXMLDOMElement> element;
    if (!m_document || FAILED(m_document->createElement(BstrOf(name).Get(), &element))) return {};
    return element;
}

ComPtr<IXMLDOMNode> CXmlDoc::Create(Kind kind, std::wstring_view text) const {
    ComPtr<IXMLDOMText> plain;
    ComPtr<IXMLDOMCDATASection> cdata;
    ComPtr<IXMLDOMNode> node;
    if (!m_document) return node;
    const UniqueBstr content = BstrOf(text);
    switch (kind) {
        case Kind::Element:
            node = CreateElement(text);
            break;
        case Kind::Text:
            if (IsXmlText(text) && SUCCEEDED(m_document->createTextNode(content.Get(), &plain))) node = plain;
            break;
        case Kind::CData:
            if (IsXmlText(text) && SUCCEEDED(m_document->createCDATASection(content.Get(), &cdata)))
                node = cdata;
            break;
    }
    return node;
}

bool CXmlDoc::CreateRootElement(std::wstring_view name) {
    const auto root = CreateElement(name);
    if (!root || FAILED(m_document->putref_documentElement(root.Get()))) return false;
    m_root = root;
    ToElement(root);
    return true;
}

bool CXmlDoc::AppendChildElement(std::wstring_view name) {
    const auto child = CreateElement(name);
    if (!child || !m_current || FAILED(m_current->appendChild(child.Get(), nullptr))) return false;
    ToElement(child);
    return true;
}

bool CXmlDoc::SetAttribute(std::wstring_view name, std::wstring_view value) {
    if (!IsXmlText(value)) return Fail(L"CXmlDoc: a text holds a character that XML does not have");
    IXMLDOMElement* const element = CurrentElement();
    return element && SUCCEEDED(element->setAttribute(BstrOf(name).Get(), CVariant(value).Get()));
}

bool CXmlDoc::AddBeside(Kind kind, const std::wstring& text, bool after) {
    ComPtr<IXMLDOMNode> parent;
    if (!m_current || m_current.Get() == m_root.Get() || m_current->get_parentNode(&parent) != S_OK) {
        if (!after)
            return Fail(L"CXmlDoc::_add_before()   : Can't add node at same level that the root node");
        return Fail(
            kind == Kind::CData
                ? L"CXmlDoc::Add_CDataAfter(LPCTSTR)   : Can't add node at same level that the root node"
                : L"CXmlDoc::Add_NodeAfter(LPCTSTR)   : Can't add node at same level that the root node");
    }
    const ComPtr<IXMLDOMNode> added = Create(kind, text);
    ComPtr<IXMLDOMNode> follower = m_current;
    if (after) {
        follower.Reset();
        m_current->get_nextSibling(&follower);
    }
    if (!added || FAILED(parent->insertBefore(added.Get(), CVariant(follower.Get()).Get(), nullptr)))
        return false;
    if (kind == Kind::Element) m_current = added;
    return true;
}
