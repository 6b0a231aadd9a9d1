// Which texts an XML document can hold, and how it writes them.
#pragma once

#include <string>
#include <string_view>

/// XML has no way to write most control characters, nor half a surrogate pair.
bool IsXmlText(std::wstring_view text);
/// The text, with what XML can't hold replaced by the character for what is unknown.
std::wstring XmlTextOf(std::wstring_view text);
/// The same as it stands between the quotes of an attribute.
std::wstring XmlAttributeOf(std::wstring_view text);
