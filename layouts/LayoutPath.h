// Paths of layout files.
#pragma once

#include <string>
#include <string_view>

#include "NameOrder.h"

/// Case is ignored.
bool HasExtension(std::wstring_view path, std::wstring_view extension);
