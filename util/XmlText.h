// Which texts an XML document can hold, and how it writes them.
#pragma once

#include <string>
#include <string_view>

/// XML has no way to write most control characters, nor half a surrogate pair.
bool IsXmlText(std::wstring_view text);
/// The text, with what XML can't hold replaced by the character for what is unknown.
std::wstring XmlTextOf(std::wstring_view text);
/// An attribute, with the blank before it, and with what XML can't hold replaced in its value.
void AppendXmlAttribute(std::wstring& text, std::wstring_view name, std::wstring_view value);
