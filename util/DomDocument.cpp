#include "DomDocument.h"

#include <objbase.h>
#include <shlwapi.h>

#include "Variant.h"

using Microsoft::WRL::ComPtr;

namespace {

// The compiler's headers stop at an earlier version of the parser.
constexpr CLSID kDomDocument60 = {
    0x88D96A05, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};
constexpr IID kDomDocument2 = {0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

}  // namespace

ComPtr<IXMLDOMDocument2> NewDomDocument() {
    ComPtr<IXMLDOMDocument2> document;
    if (FAILED(::CoCreateInstance(kDomDocument60, nullptr, CLSCTX_INPROC_SERVER, kDomDocument2,
                                  reinterpret_cast<void**>(document.GetAddressOf()))))
        return {};
    document->put_async(VARIANT_FALSE);
    document->put_validateOnParse(VARIANT_FALSE);
    document->put_resolveExternals(VARIANT_FALSE);
    document->setProperty(BstrOf(L"ProhibitDTD").Get(), CVariant(VARIANT_TRUE).Get());
    return document;
}

bool ParseBytes(IXMLDOMDocument2& document, std::string_view bytes) {
    // From memory, because the parser takes a path for an address, in which "#" and "%" have a meaning.
    ComPtr<IStream> stream;
    stream.Attach(
        ::SHCreateMemStream(reinterpret_cast<const BYTE*>(bytes.data()), static_cast<UINT>(bytes.size())));
    VARIANT_BOOL loaded = VARIANT_FALSE;
    return stream && SUCCEEDED(document.load(CVariant(stream.Get()).Get(), &loaded)) &&
           loaded == VARIANT_TRUE;
}

std::wstring ParseErrorOf(IXMLDOMDocument2& document) {
    ComPtr<IXMLDOMParseError> error;
    if (FAILED(document.get_parseError(&error)) || !error) return {};
    UniqueBstr reason;
    UniqueBstr source;
    error->get_reason(reason.Put());
    error->get_srcText(source.Put());
    return TextOf(reason.Get()) + L"\n" + TextOf(source.Get());
}

std::optional<std::string> BytesOf(IXMLDOMDocument2& document) {
    ComPtr<IStream> stream;
    STATSTG facts{};
    if (FAILED(::CreateStreamOnHGlobal(nullptr, TRUE, &stream)) ||
        FAILED(document.save(CVariant(stream.Get()).Get())) || FAILED(stream->Stat(&facts, STATFLAG_NONAME)))
        return std::nullopt;
    std::string bytes(facts.cbSize.QuadPart, '\0');
    ULONG read = 0;
    if (FAILED(stream->Seek({}, STREAM_SEEK_SET, nullptr)) ||
        FAILED(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read)) || read != bytes.size())
        return std::nullopt;
    return bytes;
}

DOMNodeType TypeOf(IXMLDOMNode& node) {
    DOMNodeType type = NODE_INVALID;
    node.get_nodeType(&type);
    return type;
}

std::wstring NameOf(IXMLDOMNode& node) {
    UniqueBstr name;
    node.get_nodeName(name.Put());
    return TextOf(name.Get());
}

std::wstring ValueOf(IXMLDOMNode& node) {
    CVariant value;
    node.get_nodeValue(&value.Get());
    return value.Text().value_or(L"");
}
