#include "FriendlyNameRules.h"

#include <string_view>

#include "TextFormat.h"

std::wstring KeyPath(const NamePlace& place, const std::wstring& clsid) {
    std::wstring id = clsid;
    if (place.bareId) std::erase_if(id, [](wchar_t c) { return c == L'{' || c == L'}'; });
    return FormatText(place.path, id);
}

std::wstring StoredFullName(const std::wstring& name, bool hostAddsPrefix) {
    constexpr std::wstring_view kPrefix = L"VST ";
    return hostAddsPrefix && name.starts_with(kPrefix) ? name.substr(kPrefix.size()) : name;
}
