// The interface languages: those of res/Languages.inc.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// The system's identifier of the language with this name in the settings, case ignored; nothing for any
/// other text.
std::optional<std::uint16_t> FindInterfaceLanguage(std::wstring_view name);

/// The one that serves a user of the given system language: by its primary language, else English.
std::uint16_t NearestInterfaceLanguage(std::uint16_t systemLanguage);
