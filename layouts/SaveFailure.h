// What a user is told of a layout that could not be saved.
#pragma once

#include <string>

#include "XmlTreeCtrl.h"

/// Why the document's last save failed; empty when that is not known.
std::wstring SaveFailureText(const CXMLTreeCtrl& document);
