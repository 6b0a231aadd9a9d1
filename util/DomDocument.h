// The system's XML parser: documents from bytes and to bytes, and what stands in their nodes.
#pragma once

#include <windows.h>

#include <msxml2.h>
#include <optional>
#include <string>
#include <string_view>
#include <wrl/client.h>

/// A new document, which allows no document type and looks at no other file; null when there is no parser.
Microsoft::WRL::ComPtr<IXMLDOMDocument2> NewDomDocument();

/// False when the bytes are no document; ParseErrorOf then says why.
bool ParseBytes(IXMLDOMDocument2& document, std::string_view bytes);
/// The parser's reason, and below it the offending line.
std::wstring ParseErrorOf(IXMLDOMDocument2& document);
/// What a file of the document consists of; nothing when it fails.
std::optional<std::string> BytesOf(IXMLDOMDocument2& document);

DOMNodeType TypeOf(IXMLDOMNode& node);
std::wstring NameOf(IXMLDOMNode& node);
/// Empty for a node without a value.
std::wstring ValueOf(IXMLDOMNode& node);
