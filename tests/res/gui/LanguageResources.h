// The program's resources in one language exactly, without the fallback to English.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace res_test {

struct Language {
    const char* name;
    LANGID id;
    /// The letters that the system's own commands take in the system menu of this language.
    std::wstring_view systemMenuLetters;
    /// The face of a dialog on a system of this language; null where it is that of English.
    const wchar_t* dialogFace = nullptr;
};

inline constexpr Language kLanguages[] = {
    {"English", 1033, L"RMSNXC"},
    {"German", 1031, L"WVGÄNXSC"},
    {"French", 1036, L"RDTUNAF"},
    {"Italian", 1040, L"RSDUNIC"},
    {"Japanese", 1041, L"RMSNXC", L"MS UI Gothic"},
    {"Portuguese", 1046, L"RMTNXF"},
    {"Russian", 1049, L"ВПРСЗ"},
    {"Chinese", 2052, L"RMSNXC", L"SimSun"},
    {"Spanish", 3082, L"RMTNXC"},
};
inline constexpr const Language& kEnglish = kLanguages[0];

inline void PrintTo(const Language& language, std::ostream* out) { *out << language.name; }

/// Empty when this language does not have it.
std::span<const std::byte> ResourceIn(const Language& language, const wchar_t* type, UINT id);

/// Ids of a type of resource, whichever language has them, in ascending order.
std::vector<UINT> ResourceIds(const wchar_t* type);

/// A text of the string table; nothing when this language does not have it.
std::optional<std::wstring> TextIn(const Language& language, UINT id);

struct MenuCommand {
    UINT id;  // 0 for a separator
    std::wstring text;
    bool operator==(const MenuCommand&) const = default;
};
/// What a context menu shows: the commands of its first submenu; none when this language does not have it.
std::vector<MenuCommand> MenuIn(const Language& language, UINT id);

}  // namespace res_test
