#include "XmlDoc.h"

#include <objbase.h>
#include <shlwapi.h>

#include <cassert>

#include "DocumentType.h"
#include "Handles.h"

using Microsoft::WRL::ComPtr;

namespace {

// The compiler's headers stop at an earlier version of the parser.
constexpr CLSID kDomDocument60 = {
    0x88D96A05, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};
constexpr IID kDomDocument2 = {0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

using UniqueBstr = UniqueHandle<BSTR, &::SysFreeString>;

UniqueBstr BstrOf(std::wstring_view text) {
    return UniqueBstr(::SysAllocStringLen(text.data(), static_cast<UINT>(text.size())));
}
std::wstring TextOf(BSTR text) { return text ? std::wstring(text, ::SysStringLen(text)) : std::wstring(); }

/// A text as a method's argument; the BSTR stays the caller's.
VARIANT ArgumentOf(const UniqueBstr& text) {
    VARIANT argument;
    ::VariantInit(&argument);
    argument.vt = VT_BSTR;
    argument.bstrVal = text.Get();
    return argument;
}

DOMNodeType TypeOf(IXMLDOMNode* node) {
    DOMNodeType type = NODE_INVALID;
    node->get_nodeType(&type);
    return type;
}

std::wstring NodeName(IXMLDOMNode* node) {
    UniqueBstr name;
    node->get_nodeName(name.Put());
    return TextOf(name.Get());
}

std::wstring NodeValue(IXMLDOMNode* node) {
    VARIANT value;
    ::VariantInit(&value);
    node->get_nodeValue(&value);
    std::wstring text = value.vt == VT_BSTR ? TextOf(value.bstrVal) : std::wstring();
    ::VariantClear(&value);
    return text;
}

}  // namespace

/// XML has no way to write most control characters, nor half a surrogate pair.
bool CXmlDoc::IsXmlText(std::wstring_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (IS_HIGH_SURROGATE(c)) {
            if (++i == text.size() || !IS_LOW_SURROGATE(text[i])) return false;
        } else if (IS_LOW_SURROGATE(c) || c >= 0xFFFE ||
                   (c < L' ' && c != L'\t' && c != L'\n' && c != L'\r')) {
            return false;
        }
    }
    return true;
}

bool CXmlDoc::Fail(std::wstring_view error) {
    m_lastError = error;
    return false;
}

bool CXmlDoc::CreateDocument() {
    m_current.Reset();
    m_root.Reset();
    m_document.Reset();
    m_path.clear();
    if (FAILED(::CoCreateInstance(kDomDocument60, nullptr, CLSCTX_INPROC_SERVER, kDomDocument2,
                                  reinterpret_cast<void**>(m_document.GetAddressOf()))))
        return Fail(L"CXmlDoc: there is no XML parser");
    m_document->put_async(VARIANT_FALSE);
    m_document->put_validateOnParse(VARIANT_FALSE);
    m_document->put_resolveExternals(VARIANT_FALSE);
    VARIANT yes;
    ::VariantInit(&yes);
    yes.vt = VT_BOOL;
    yes.boolVal = VARIANT_TRUE;
    m_document->setProperty(BstrOf(L"ProhibitDTD").Get(), yes);
    return true;
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

bool CXmlDoc::Parse(const std::string& bytes) {
    constexpr wchar_t kNoDocumentTypes[] = L"CXmlDoc: a document type is not allowed";
    if (HasDocumentType(bytes)) return Fail(kNoDocumentTypes);
    // From memory, because the parser takes a path for an address, in which "#" and "%" have a meaning.
    ComPtr<IStream> stream;
    stream.Attach(
        ::SHCreateMemStream(reinterpret_cast<const BYTE*>(bytes.data()), static_cast<UINT>(bytes.size())));
    VARIANT source;
    ::VariantInit(&source);
    source.vt = VT_UNKNOWN;
    source.punkVal = stream.Get();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    if (!stream || FAILED(m_document->load(source, &loaded)) || loaded != VARIANT_TRUE) {
        ReadParseError();
        return false;
    }
    ComPtr<IXMLDOMDocumentType> type;
    if (m_document->get_doctype(&type) == S_OK && type) return Fail(kNoDocumentTypes);
    return m_document->get_documentElement(&m_root) == S_OK && m_root;
}

void CXmlDoc::ReadParseError() {
    ComPtr<IXMLDOMParseError> error;
    if (FAILED(m_document->get_parseError(&error)) || !error) return;
    UniqueBstr reason;
    UniqueBstr source;
    error->get_reason(reason.Put());
    error->get_srcText(source.Put());
    m_lastError = TextOf(reason.Get()) + L"\n" + TextOf(source.Get());
}

bool CXmlDoc::Save(const std::wstring& path) {
    assert(m_document);
    m_saveError = ERROR_SUCCESS;
    ComPtr<IStream> stream;
    if (!m_document || FAILED(::CreateStreamOnHGlobal(nullptr, TRUE, &stream))) return false;
    VARIANT target;
    ::VariantInit(&target);
    target.vt = VT_UNKNOWN;
    target.punkVal = stream.Get();
    STATSTG facts{};
    HGLOBAL memory = nullptr;
    if (FAILED(m_document->save(target)) || FAILED(stream->Stat(&facts, STATFLAG_NONAME)) ||
        FAILED(::GetHGlobalFromStream(stream.Get(), &memory)))
        return false;
    const auto* bytes = static_cast<const char*>(::GlobalLock(memory));
    const std::size_t size = facts.cbSize.QuadPart;
    // A file that is too large to be read again is not written.
    if (bytes)
        m_saveError = size <= kLargestFile ? ReplaceFileContents(path, {bytes, size}) : ERROR_FILE_TOO_LARGE;
    ::GlobalUnlock(memory);
    return bytes && m_saveError == ERROR_SUCCESS;
}

bool CXmlDoc::HandleNode(IXMLDOMNode* node) {
    ParseNode(node);
    OnNode(node);
    if (TypeOf(node) != NODE_ELEMENT) return true;
    const std::size_t depth = m_path.size();
    m_path += m_tag;
    bool accepted = true;
    const CKeepNode keep(*this);
    for (ToFirstChild(); accepted && HasNode();) {
        const ComPtr<IXMLDOMNode> child = m_current;
        accepted = HandleNode(child.Get());
        m_current = child;
        ToNextSibling();
    }
    m_path.resize(depth);
    return accepted;
}

void CXmlDoc::ParseNode(IXMLDOMNode* node) {
    m_current = node;
    m_tag.clear();
    m_attributeNames.clear();
    m_attributeValues.clear();
    m_found = -1;
    switch (TypeOf(node)) {
        case NODE_ELEMENT:
            m_name = NodeName(node);
            m_tag = L'<' + m_name + L'>';
            ReadAttributes();
            return;
        case NODE_TEXT:
            m_name = L"#TEXT#";
            break;
        case NODE_CDATA_SECTION:
            m_name = L"#CDATA#";
            break;
        default:
            m_name = NodeName(node);
            return;
    }
    m_tag = L'<' + m_name + L'>';
}

void CXmlDoc::ReadAttributes() {
    ComPtr<IXMLDOMNamedNodeMap> attributes;
    if (m_current->get_attributes(&attributes) != S_OK || !attributes) return;
    ComPtr<IXMLDOMNode> attribute;
    while (attributes->nextNode(&attribute) == S_OK && attribute) {
        m_attributeNames.push_back(NodeName(attribute.Get()));
        m_attributeValues.push_back(NodeValue(attribute.Get()));
    }
}

bool CXmlDoc::FindAttribute(std::wstring_view name) {
    m_found = -1;
    for (std::size_t i = 0; i < m_attributeNames.size() && m_found < 0; ++i) {
        if (m_attributeNames[i] == name) m_found = static_cast<int>(i);
    }
    return m_found >= 0;
}

std::optional<std::wstring> CXmlDoc::FoundAttribute() {
    if (m_found >= 0) return m_attributeValues[static_cast<std::size_t>(m_found)];
    Fail(L"Can't Retrieve an Attribute");
    return std::nullopt;
}

std::optional<std::wstring> CXmlDoc::AttributeName(int index) {
    if (index >= 0 && index < static_cast<int>(m_attributeNames.size()))
        return m_attributeNames[static_cast<std::size_t>(index)];
    Fail(L"XML_PARSER::Get_Attribute_Name(int) failed");
    return std::nullopt;
}

std::optional<std::wstring> CXmlDoc::AttributeValue(int index) {
    if (index >= 0 && index < static_cast<int>(m_attributeValues.size()))
        return m_attributeValues[static_cast<std::size_t>(index)];
    Fail(L"XML_PARSER::Get_Attribute_Value(int) failed");
    return std::nullopt;
}

ComPtr<IXMLDOMElement> CXmlDoc::CurrentElement() const {
    ComPtr<IXMLDOMElement> element;
    if (m_current)
        m_current->QueryInterface(IID_IXMLDOMElement, reinterpret_cast<void**>(element.GetAddressOf()));
    return element;
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
    HRESULT result = S_OK;
    if (NodeName(first.Get()) == L"xml") {
        result = m_document->replaceChild(header.Get(), first.Get(), nullptr);
    } else {
        VARIANT before;
        ::VariantInit(&before);
        before.vt = VT_UNKNOWN;
        before.punkVal = first.Get();
        result = m_document->insertBefore(header.Get(), before, nullptr);
    }
    if (SUCCEEDED(result)) return true;
    return Fail(L"PARSER_XML::SetHeader() : Can't insert Processing node after the root document");
}

std::optional<std::wstring> CXmlDoc::HeaderValue(const std::wstring& attribute) {
    ComPtr<IXMLDOMNode> first;
    if (!m_document || m_document->get_firstChild(&first) != S_OK) {
        Fail(L"CXmlDoc::Get_Header() : The XML Document is a null pointer");
        return std::nullopt;
    }
    const std::wstring data = NodeName(first.Get()) == L"xml" ? NodeValue(first.Get()) : std::wstring();
    const std::wstring opening = attribute + L"=\"";
    const std::size_t begin = data.find(opening);
    const std::size_t end = begin == std::wstring::npos ? begin : data.find(L'"', begin + opening.size());
    if (end != std::wstring::npos) return data.substr(begin + opening.size(), end - begin - opening.size());
    Fail(L"CXmlDoc::Get_Header() : bad value structure");
    return std::nullopt;
}

ComPtr<IXMLDOMNode> CXmlDoc::Create(Kind kind, std::wstring_view text) const {
    ComPtr<IXMLDOMElement> element;
    ComPtr<IXMLDOMText> plain;
    ComPtr<IXMLDOMCDATASection> cdata;
    ComPtr<IXMLDOMNode> node;
    if (!m_document) return node;
    const UniqueBstr content = BstrOf(text);
    switch (kind) {
        case Kind::Element:
            if (SUCCEEDED(m_document->createElement(content.Get(), &element))) node = element;
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
    if (!m_document) return false;
    ComPtr<IXMLDOMElement> root;
    if (FAILED(m_document->createElement(BstrOf(name).Get(), &root)) ||
        FAILED(m_document->putref_documentElement(root.Get())))
        return false;
    m_root = root;
    m_current = root;
    return true;
}

bool CXmlDoc::AppendChildElement(std::wstring_view name) {
    const ComPtr<IXMLDOMNode> child = Create(Kind::Element, name);
    if (!child || !m_current || FAILED(m_current->appendChild(child.Get(), nullptr))) return false;
    m_current = child;
    return true;
}

bool CXmlDoc::SetAttribute(std::wstring_view name, std::wstring_view value) {
    if (!IsXmlText(value)) return Fail(L"CXmlDoc: a text holds a character that XML does not have");
    const ComPtr<IXMLDOMElement> element = CurrentElement();
    const UniqueBstr text = BstrOf(value);
    return element && SUCCEEDED(element->setAttribute(BstrOf(name).Get(), ArgumentOf(text)));
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
    VARIANT before;
    ::VariantInit(&before);
    before.vt = follower ? VT_UNKNOWN : VT_NULL;
    before.punkVal = follower.Get();
    if (!added || FAILED(parent->insertBefore(added.Get(), before, nullptr))) return false;
    if (kind == Kind::Element) m_current = added;
    return true;
}
