// Which texts an XML document can hold.
#pragma once

#include <string_view>

/// XML has no way to write most control characters, nor half a surrogate pair.
bool IsXmlText(std::wstring_view text);
