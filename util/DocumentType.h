// Finding out whether an XML file declares a document type, before a parser sees it.
#pragma once

#include <string_view>

/// Looks at what stands before the root element. A document type can make a small file huge and draw in other
/// files, and not every parser can be told to refuse it. Works on 8-bit text, and on 16-bit text of either
/// byte order.
bool HasDocumentType(std::string_view bytes);
