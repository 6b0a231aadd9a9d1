// Texts for XML documents, and files that might declare a document type.
#include "DocumentType.h"
#include "XmlText.h"
#include "fuzz/FuzzInput.h"

using support::Require;

namespace {

void TryDocument(std::string_view bytes) {
    // Those that begin otherwise are of 16 bits already.
    if (!bytes.starts_with('<') || bytes.substr(1, 1) == std::string_view("\0", 1)) return;
    const bool has = HasDocumentType(bytes);
    const std::string file(bytes);
    Require(HasDocumentType("\xEF\xBB\xBF" + file) == has);
    Require(HasDocumentType("<?xml version='1.0'?>\r\n<!-- > <!DOCTYPE a> -->" + file) == has);
    Require(HasDocumentType("<!DOCTYPE a []>" + file) && !HasDocumentType("<a>" + file));
    if (bytes.find("<!") == std::string_view::npos && bytes.find('\0') == std::string_view::npos)
        Require(!has);
}

}  // namespace

void TryInput(std::string_view bytes) {
    const std::wstring text = support::TextOf(bytes);
    const std::wstring writable = XmlTextOf(text);
    Require(IsXmlText(writable) && writable.size() == text.size());
    Require(IsXmlText(text) == (writable == text));
    for (std::size_t i = 0; i < text.size(); ++i)
        Require(writable[i] == text[i] || (writable[i] == 0xFFFD && !IsXmlText(text.substr(i, 1))));
    TryDocument(bytes);
}
