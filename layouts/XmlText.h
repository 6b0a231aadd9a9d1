// Which texts an XML document can hold.
#pragma once

#include <string>
#include <string_view>

/// XML has no way to write most control characters, nor half a surrogate pair.
bool IsXmlText(std::wstring_view text);
/// The same with a replacement mark for each of these.
std::wstring XmlTextOf(std::wstring_view text);
