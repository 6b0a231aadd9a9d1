// Paths of layout files.
#pragma once

#include <string>
#include <string_view>

#include "NameOrder.h"

/// Case is ignored.
bool HasExtension(std::wstring_view path, std::wstring_view extension);
/// A path from the command line may be relative, and one from the registry may have detours.
std::wstring FullPathOf(const std::wstring& path);
std::wstring FileNameOf(const std::wstring& path);
