#include "LayoutPath.h"

bool HasExtension(std::wstring_view path, std::wstring_view extension) {
    return path.size() >= extension.size() &&
           SamePath(path.substr(path.size() - extension.size()), extension);
}
