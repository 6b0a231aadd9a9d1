#include "FriendlyNameRules.h"

#include <limits>
#include <string_view>

namespace {

/// In characters, without the terminator that the buffers of the readers have to hold as well.
constexpr std::size_t LongestName(Category category) {
    if (IsVstCategory(category)) return 2048 / 2 - 1;
    if (category == Category::ControlSurfaces) return 256 / 2 - 1;
    if (category == Category::MediaObjects) return 80 - 1;
    return std::numeric_limits<std::size_t>::max();
}

constexpr bool IsFirstHalf(wchar_t c) { return c >= 0xD800 && c <= 0xDBFF; }

}  // namespace

std::wstring KeyPath(const NamePlace& place, const std::wstring& clsid) {
    if (place.end == PathEnd::Nothing) return place.path;
    const bool bare = place.end == PathEnd::BareClassId;
    return std::wstring(place.path) + L"\\" + (bare ? clsid.substr(1, clsid.size() - 2) : clsid);
}

bool IsBlank(std::wstring_view name) {
    constexpr wchar_t kBlanks[] = L" \t\r\n\x00A0\x3000";  // also those that don't break and that are wide
    return name.find_first_not_of(kBlanks) == std::wstring_view::npos;
}

std::wstring StoredFullName(const std::wstring& name, bool hostAddsPrefix) {
    constexpr std::wstring_view kPrefix = L"VST ";
    if (!hostAddsPrefix || !name.starts_with(kPrefix)) return name;
    std::wstring rest = name.substr(kPrefix.size());
    return IsBlank(rest) ? name : rest;
}

std::wstring ReadableName(const std::wstring& name, Category category) {
    std::wstring readable = name.substr(0, LongestName(category));
    if (readable.size() < name.size() && IsFirstHalf(readable.back())) readable.pop_back();
    return readable;
}
